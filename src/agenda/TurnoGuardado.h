#pragma once

#include <QDateTime>
#include <QString>

#include <optional>

namespace db {
class Connection;
}

namespace agenda {

/// What the windows that change one appointment show of it.
struct TurnoGuardado {
    qint64 id = 0;
    int nrohc = 0;
    int doctor = 0;
    QDateTime fecha;
    int motivo = 0;
    QString observacionestur;
    QString paciente; ///< "Apellido, Nombres", or that the patient was deleted

    /// "10:20 Pérez, Ana" with the day in front.
    [[nodiscard]] QString titulo() const;
};

/// Empty optional when the row is gone.
[[nodiscard]] std::optional<TurnoGuardado> leerTurnoGuardado(db::Connection &conexion, qint64 id);

} // namespace agenda
