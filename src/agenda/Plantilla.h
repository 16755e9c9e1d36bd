#pragma once

#include "base/Rechazo.h"

#include <QDate>
#include <QString>
#include <QTime>
#include <QVector>

#include <array>
#include <map>
#include <optional>

namespace db {
class Connection;
class Entorno;
} // namespace db

namespace agenda {

/// Minutes of a slot where the template says none.
inline constexpr int duracionSupuesta = 20;

/// Working hours of one weekday. A half of the day counts only when both its hours are given.
struct Jornada {
    std::optional<QTime> maDesde;
    std::optional<QTime> maHasta;
    std::optional<QTime> taDesde;
    std::optional<QTime> taHasta;
    int duracion = duracionSupuesta; ///< minutes of a slot, always above 0

    bool operator==(const Jornada &) const = default;
};

/// Limits of extra appointments and what is done with them; -1 is "no limit". The defaults hold where no template
/// applies.
struct AjustesSobreturno {
    int cantidadsobreturnos = -1; ///< extra hours per day, at times that are not slot times
    int cantidadsobreturnoshora = -1; ///< extra appointments at one slot time beside the regular one
    bool sobreturnoshoraresaltar = false;
    bool solosobreturnoshoraplanilla = false;

    bool operator==(const AjustesSobreturno &) const = default;
};

/// Days and hours of a professional, valid for a range of dates (both inclusive).
struct Plantilla {
    int id = 0; ///< 0: not stored yet
    int iddoctor = 0;
    QDate fechadesde;
    QDate fechahasta;
    std::array<Jornada, 7> dias; ///< Sunday first
    AjustesSobreturno sobreturnos;

    [[nodiscard]] const Jornada &jornada(QDate fecha) const;
    bool operator==(const Plantilla &) const = default;
};

/// A line of the editor's list: "Plantilla Nº 1 (abarca desde el 01/01/2026 hasta el 31/12/2026)".
struct PlantillaListada {
    int id = 0;
    QString texto;
    QDate fechadesde = {};
    QDate fechahasta = {};
};

/// The newest template (highest `id`) whose range holds the date.
[[nodiscard]] std::optional<Plantilla> elegirPlantilla(db::Connection &conexion, int iddoctor, QDate fecha);
/// The same choice for every professional, by his `id`; those without a template are missing. One statement.
[[nodiscard]] std::map<int, Plantilla> elegirPlantillas(db::Connection &conexion, QDate fecha);
/// Those that still apply on that date or later, newest first; `cuales` is a condition on `iddoctor`.
[[nodiscard]] QVector<Plantilla> plantillasVigentes(db::Connection &conexion, const QString &cuales, QDate desde);
/// What the editor begins a new one with: no hours, and from Monday to Saturday the slot lengths that the practice set.
[[nodiscard]] Plantilla plantillaNueva(db::Connection &conexion, int iddoctor);
[[nodiscard]] std::optional<Plantilla> leerPlantilla(db::Connection &conexion, int id);
[[nodiscard]] QVector<PlantillaListada> listarPlantillas(db::Connection &conexion, int iddoctor);
[[nodiscard]] AjustesSobreturno ajustesSobreturno(db::Connection &conexion, int iddoctor, QDate fecha);

/// Stores a new (`id` 0) or changed template with the dates as typed; its own dates are not looked at. Yields its `id`.
/// Fields of refusals: `fechadesde`, `fechahasta`.
[[nodiscard]] base::Resultado<int>
guardarPlantilla(db::Connection &conexion, Plantilla plantilla, const QString &fechadesde, const QString &fechahasta);

/// The same as the current user's doing: refused without the right to the agendas.
[[nodiscard]] base::Resultado<int> guardarPlantilla(
    db::Entorno &entorno, const Plantilla &plantilla, const QString &fechadesde, const QString &fechahasta);

/// Asks and deletes; false when the person said no. Refused without the right to the agendas, and when it is no longer
/// there.
[[nodiscard]] base::Resultado<bool> eliminarPlantilla(db::Entorno &entorno, int id);

} // namespace agenda
