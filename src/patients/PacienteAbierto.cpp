#include "patients/PacienteAbierto.h"

#include "base/Rechazo.h"
#include "db/Error.h"

namespace patients {

std::optional<PacienteAbierto> PacienteAbierto::abrir(db::Connection &conexion, int nrohc)
{
    if (nrohc == 0)
        return std::nullopt; // nobody's number
    const db::Rows rows = conexion.query(QStringLiteral("SELECT id FROM [Pacientes] WHERE NroHC = ?"), {nrohc});
    if (rows->rowCount() == 0)
        return std::nullopt;
    return PacienteAbierto(rows->integer(0, 0), nrohc);
}

db::Recordset PacienteAbierto::fila(db::Connection &conexion) const
{
    db::Recordset suya(
        conexion, QStringLiteral("SELECT * FROM [Pacientes] WHERE id = ? and NroHC = ?"), {m_id, m_nrohc});
    if (suya.isEmpty())
        throw db::Error(db::Error::Kind::RowGone, 0, base::textoRegistroEliminado);
    return suya;
}

bool PacienteAbierto::existe(db::Connection &conexion) const
{
    return conexion.query(QStringLiteral("SELECT id FROM [Pacientes] WHERE id = ? and NroHC = ?"), {m_id, m_nrohc})
               ->rowCount()
        > 0;
}

} // namespace patients
