#pragma once

#include "agenda/Plantilla.h"

#include <QStringList>

#include <array>
#include <vector>

namespace agenda {

/// A stretch of working hours as it is drawn. Hours are minutes since midnight.
struct Franja {
    int dia = 0; ///< 0 Sunday ... 6 Saturday
    bool tarde = false;
    int desde = 0;
    int hasta = 0; ///< the end as typed
    int fin = 0; ///< end of the last slot; later than `hasta` when that one runs past the end
    int duracion = duracionSupuesta;
    int turnos = 0;

    bool operator==(const Franja &) const = default;
};

/// Minutes of a day that morning and afternoon both claim.
struct Encimada {
    int dia = 0;
    int desde = 0;
    int hasta = 0;

    bool operator==(const Encimada &) const = default;
};

/// The week that a template gives, as numbers to draw.
struct SemanaPlantilla {
    std::vector<Franja> franjas; ///< by day, morning before afternoon; none without slots
    std::vector<Encimada> encimadas; ///< at most one per day
    std::array<int, 7> turnos{}; ///< slots of each day, Sunday first
    int total = 0;
    /// Whole hours that hold every stretch, at least six of them; 8 to 20 when there is none. May reach past 24.
    int primeraHora = 8;
    int ultimaHora = 20;
    /// What was hardly meant: half of an hour pair, hours the wrong way round, stretches that overlap.
    QStringList avisos;
};

[[nodiscard]] SemanaPlantilla semanaDe(const std::array<Jornada, 7> &dias);

/// Weekdays (0 Sunday ... 6 Saturday) in the order of a week that begins on `primerDia`.
[[nodiscard]] std::array<int, 7> ordenSemana(int primerDia);

/// "Domingo" ... "Sábado".
[[nodiscard]] QString nombreDia(int dia);

/// "12 turnos", "1 turno", "sin turnos".
[[nodiscard]] QString turnosTexto(int cantidad);

/// What the dates of a template mean for the others of the same professional: it applies to no day, or shares days with
/// one of `lista`, where the newest applies. `id` is the template's own, 0 for a new one.
[[nodiscard]] QStringList avisosDeFechas(const QVector<PlantillaListada> &lista, int id, QDate desde, QDate hasta);

} // namespace agenda
