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

    [[nodiscard]] bool abarca(QDate fecha) const;
    /// "El día 25 de Diciembre de cada año."
    [[nodiscard]] QString texto() const;
    bool operator==(const DiaNoLaborable &) const = default;
};

/// Whether any day off of the professional holds the date.
[[nodiscard]] bool esNoLaborable(db::Connection &conexion, int iddoctor, QDate fecha);
/// Latest first.
[[nodiscard]] QVector<DiaNoLaborable> listarDiasNoLaborables(db::Connection &conexion, int iddoctor);
/// Which days of a range they hold.
[[nodiscard]] std::set<QDate> diasNoLaborablesEntre(const QVector<DiaNoLaborable> &lista, QDate desde, QDate hasta);
/// Stores all of them or none; an empty choice is refused.
[[nodiscard]] base::Control
agregarDiasNoLaborables(db::Connection &conexion, int iddoctor, const QVector<DiaNoLaborable> &dias);
/// Asks and deletes; false when the person said no.
bool eliminarDiaNoLaborable(db::Entorno &entorno, int id);

/// A date that is to get an appointment must be a working day.
[[nodiscard]] base::Control controlarDiaLaborable(db::Connection &conexion, int iddoctor, QDate fecha);

} // namespace agenda
