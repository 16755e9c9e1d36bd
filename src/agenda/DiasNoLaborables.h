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

/// A day on which the professional does not attend; 0 stands for every day, every month, every year.
struct DiaNoLaborable {
    int id = 0;
    int dia = 0;
    int mes = 0;
    int anio = 0;

    /// The row of one date, or of that day and month of each year.
    [[nodiscard]] static DiaNoLaborable de(QDate fecha, bool deCadaAnio = false);
    [[nodiscard]] bool abarca(QDate fecha) const;
    /// The same days, whatever the row.
    [[nodiscard]] bool igualA(const DiaNoLaborable &otro) const;
    /// "El día 25 de Diciembre de cada año."
    [[nodiscard]] QString texto() const;
    bool operator==(const DiaNoLaborable &) const = default;
};

/// Whether any day off of the professional holds the date.
[[nodiscard]] bool esNoLaborable(db::Connection &conexion, int iddoctor, QDate fecha);
/// The professionals who do not attend on a date; one statement.
[[nodiscard]] std::set<int> quienesNoAtienden(db::Connection &conexion, QDate fecha);
/// Latest first.
[[nodiscard]] QVector<DiaNoLaborable> listarDiasNoLaborables(db::Connection &conexion, int iddoctor);
/// Which days of a range they hold.
[[nodiscard]] std::set<QDate> diasNoLaborablesEntre(const QVector<DiaNoLaborable> &lista, QDate desde, QDate hasta);
/// Stores all of them or none; an empty choice is refused.
[[nodiscard]] base::Control
agregarDiasNoLaborables(db::Connection &conexion, int iddoctor, const QVector<DiaNoLaborable> &dias);

/// "Debe seleccionar la/s fecha/s que no se atenderá."
[[nodiscard]] base::Rechazo sinFechasElegidas();

/// Most days of a range: longer ones are said with "every day" of a month or year.
inline constexpr int maximoPeriodo = 366;
/// A date, or a range of dates (both inclusive) when `hasta` is given, as typed. Fields of refusals: `desde`, `hasta`.
[[nodiscard]] base::Resultado<QVector<DiaNoLaborable>>
leerPeriodo(const QString &desde, const QString &hasta, bool deCadaAnio);

struct AltaDiasNoLaborables {
    int agregados = 0; ///< rows stored
    int yaEstaban = 0; ///< rows left out because that professional had the same one
    int conTurnos = 0; ///< days from today on (400 days ahead) now off that hold appointments; these stay as they are
};
/// Stores them for each of the professionals, all or none. Refused without the right to the agendas, and when nothing
/// is chosen.
[[nodiscard]] base::Resultado<AltaDiasNoLaborables>
agregarDiasNoLaborables(db::Entorno &entorno, const QVector<int> &doctores, const QVector<DiaNoLaborable> &dias);

/// Asks and deletes, all or none; with `deTodos` also the rows of other professionals that say the same days. Yields
/// how many were deleted, 0 when the person said no. Refused when one of them is no longer there.
[[nodiscard]] base::Resultado<int>
eliminarDiasNoLaborables(db::Entorno &entorno, const QVector<int> &ids, bool deTodos = false);

/// A date that is to get an appointment must be a working day.
[[nodiscard]] base::Control controlarDiaLaborable(db::Connection &conexion, int iddoctor, QDate fecha);

} // namespace agenda
