#pragma once

#include "agenda/DiaAgenda.h"

#include <map>

namespace agenda {

// What the day of one professional and the view of all of them read and arrange in the same way.

/// Every professional's rows of a day by his `id`, in the order in which they were given; one statement beside the
/// setting that says what the balances count. Nothing of them knows the slots yet: see acomodar().
[[nodiscard]] std::map<int, std::vector<FilaDia>> leerTurnosDeTodos(db::Connection &conexion, QDate fecha, QDate hoy);

/// Puts rows read into a day whose slots are known: fills its `filas` and `turnos`.
void acomodar(DiaAgenda &dia, std::vector<FilaDia> leidas);

} // namespace agenda
