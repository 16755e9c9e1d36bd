#pragma once

#include "agenda/TodasAgendas.h"

namespace agenda {

/// How the days of several professionals stand side by side: a line per time at which anybody has something, several
/// where somebody has more than one appointment. A row of a day takes its line and those that its slot lasts, up to the
/// next row of the same professional.
struct CuadroDia {
    struct Celda {
        int fila = 0; ///< place in the day's `filas`
        int renglon = 0; ///< its first line
        int alto = 1; ///< lines it takes
    };

    std::vector<QTime> horas; ///< of each line; the same one where several lines share it
    std::vector<std::vector<Celda>> columnas; ///< by professional, from top to bottom

    /// The cell that covers a line; null where the professional has nothing then.
    [[nodiscard]] const Celda *celda(int columna, int renglon) const;
};

[[nodiscard]] CuadroDia armarCuadro(const std::vector<const AgendaDelDia *> &agendas);

} // namespace agenda
