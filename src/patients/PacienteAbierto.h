#pragma once

#include "db/Recordset.h"

#include <optional>

namespace patients {

/// The patient that a window works on, fixed when it is opened: the number that every table refers to him by, and the
/// row that number stood in. Whatever is written about him is addressed through this value and nothing else, so that no
/// save can reach another patient's row: neither after another window opened somebody else, nor when the row was
/// removed or belongs to another number meanwhile.
class PacienteAbierto
{
public:
    /// Empty when nobody has that number.
    [[nodiscard]] static std::optional<PacienteAbierto> abrir(db::Connection &conexion, int nrohc);

    [[nodiscard]] int nrohc() const { return m_nrohc; }

    /// His row of [Pacientes] as it stands now, on the first and only row. Throws db::Error (RowGone) when there is no
    /// such row any more, or when it is not his.
    [[nodiscard]] db::Recordset fila(db::Connection &conexion) const;
    [[nodiscard]] bool existe(db::Connection &conexion) const;

    bool operator==(const PacienteAbierto &) const = default;

private:
    PacienteAbierto(qint64 id, int nrohc)
        : m_id(id)
        , m_nrohc(nrohc)
    {
    }

    qint64 m_id;
    int m_nrohc;
};

} // namespace patients
