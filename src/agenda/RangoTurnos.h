#pragma once

#include "base/Rechazo.h"

#include <QDateTime>
#include <QString>
#include <QVector>

namespace db {
class Connection;
}

namespace agenda {

/// Most days of the range over which one hour is spread: a year.
inline constexpr int maximoRango = 366;

/// What spreading an hour over a range of dates gives.
struct TurnosDelRango {
    QVector<QDateTime> momentos; ///< by date
    int ocupados = 0; ///< of those, how many hold an appointment already
    int bloqueados = 0; ///< days left out because that hour is marked as not attended

    /// "Se agregarán 12 turnos, 2 de ellos en horarios ya ocupados."
    [[nodiscard]] QString texto() const;
};

/// The hour on each working day of the range (both ends included) on which it is a start time of the professional.
/// Fields of refusals: `desde`, `hasta`, `hora`, the first two for dates that are none, are missing or exchanged, or
/// hold more than maximoRango days; the last for an hour that none of the days has.
[[nodiscard]] base::Resultado<TurnosDelRango>
repartirHora(db::Connection &conexion, int doctor, QTime hora, const QString &desde, const QString &hasta);

} // namespace agenda
