#pragma once

#include <QDateTime>
#include <QString>
#include <QVector>

#include <vector>

namespace db {
class Connection;
struct Doctor;
} // namespace db

namespace agenda {

/// A day on which a professional has start times left.
struct DiaConLugar {
    int doctor = 0;
    QString profesional;
    QDate fecha;
    QTime primera; ///< first free start time
    int libres = 0; ///< start times without an appointment and not blocked
    bool operator==(const DiaConLugar &) const = default;
};

/// How many days with openings are looked for, and how far ahead.
inline constexpr int diasConLugarBuscados = 10;
inline constexpr int diasVistaLibres = 400;

/// The next days with openings of those professionals, by date, hour and then in the order given. A start time counts
/// from `ahora` on (to the minute), under the template that applies to its day, on no day off, without an appointment
/// and not blocked. The statements do not grow with the days: one for the templates, one for the days off, and one for
/// the appointments of each stretch of days, which is twice as long as the one before.
[[nodiscard]] std::vector<DiaConLugar> proximosLibres(
    db::Connection &conexion,
    const QVector<db::Doctor> &profesionales,
    const QDateTime &ahora,
    int cuantos = diasConLugarBuscados);

} // namespace agenda
