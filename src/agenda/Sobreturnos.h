#pragma once

#include <QDateTime>

namespace db {
class Connection;
}

namespace agenda {

/// Whether one more appointment may be given at a moment.
enum class Permiso {
    Permitido,
    LimiteHora, ///< that slot time has all the extra appointments it allows
    LimiteDia ///< the day has all the extra hours it allows
};

/// The overbooking test against the limits of the date's template and what is stored now. `idMovido` is the appointment
/// that is being moved, which does not count against itself. To hold until the row is written, call it inside the
/// transaction that writes it.
[[nodiscard]] Permiso
controlarSobreturno(db::Connection &conexion, int doctor, const QDateTime &momento, qint64 idMovido = 0);

} // namespace agenda
