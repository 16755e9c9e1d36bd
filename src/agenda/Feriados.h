#pragma once

#include "base/Rechazo.h"

#include <QDate>
#include <QString>
#include <QVector>

#include <set>

namespace db {
class Connection;
class Entorno;
} // namespace db

namespace agenda {

/// A national holiday of Argentina.
struct Feriado {
    enum class Clase { Inamovible, Trasladable };

    QDate fecha; ///< the day that is kept
    QString nombre;
    Clase clase = Clase::Inamovible;
    QDate original; ///< the day commemorated; another than `fecha` when the holiday was moved

    bool operator==(const Feriado &) const = default;
};

/// The national holidays of a year by date, at most one per name; two may share a date (Good Friday on 2 April).
///
/// Source: Ley 27.399 (2017). Article 1 names the days: 1/1, Carnival Monday and Tuesday, 24/3, 2/4, Good Friday, 1/5,
/// 25/5, 20/6, 9/7, 8/12 and 25/12 stay where they are; 17/6, 17/8, 12/10 and 20/11 move: from Tuesday or Wednesday to
/// the Monday before, from Thursday or Friday to the Monday after, and not at all from Saturday, Sunday or Monday.
///
/// Not computed, as they are decided anew each year: up to three bridge days, and moving one of the four from a
/// Saturday or Sunday to the Friday before or the Monday after (Decreto 614/2025). Empty before 2018, when that law did
/// not yet apply.
[[nodiscard]] QVector<Feriado> feriadosNacionales(int anio);

inline constexpr int primerAnioFeriados = 2018;

/// Easter Sunday of a Gregorian year (1583 on). Source: the Gregorian computus as given by J. Meeus, "Astronomical
/// Algorithms", chapter 8.
[[nodiscard]] QDate domingoDePascua(int anio);

/// A day that is proposed, with every name it has.
struct PropuestaFeriado {
    QDate fecha;
    QString nombre; ///< "Viernes Santo; Día del Veterano..."
    QString clase; ///< "Inamovible", "Trasladado del 17/06" or "Trasladable"
    int yaEstan = 0; ///< how many of the professionals have it as a day off, whatever the row that says so
};

/// The holidays of a year as days off of these professionals, one proposal per date.
[[nodiscard]] QVector<PropuestaFeriado>
proponerFeriados(db::Connection &conexion, const QVector<int> &doctores, int anio);

/// Stores those of the dates that a professional does not have yet, all or none, and logs it. Yields how many rows
/// were added. Refused without the right to the agendas, and when nothing is chosen.
[[nodiscard]] base::Resultado<int>
agregarFeriados(db::Entorno &entorno, const QVector<int> &doctores, int anio, const std::set<QDate> &fechas);

} // namespace agenda
