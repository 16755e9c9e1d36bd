#pragma once

#include "agenda/DiaAgenda.h"
#include "printing/Documento.h"

namespace db {
class Entorno;
}

namespace agenda {

/// Which rows of a day the day sheet lists. `soloConTurno` (`imprimirturnos` 1) leaves out free start times and blocked
/// slots. Where the template has `solosobreturnoshoraplanilla`, a start time that holds extra appointments shows only
/// those: its regular one, the first that was stored, is left out. Start times without extra ones are not touched, and
/// hours between the start times are extra ones as a whole.
[[nodiscard]] std::vector<const FilaDia *> filasDePlanilla(const DiaAgenda &dia, bool soloConTurno);

/// The day sheet of a professional: who and which day, the rows above with what the book knows of them, the count of
/// the day's appointments (all of them, without blocked slots) and the practice's foot text (`plantillaagenda`). Its
/// header is that of every print, the active professional's. Throws db::Error.
[[nodiscard]] printing::Documento planillaDia(db::Entorno &entorno, int doctor, QDate fecha);

/// The attended appointments of a day as lines of tab-separated cells below a line of titles, for a spreadsheet;
/// nothing when nobody was attended.
[[nodiscard]] std::optional<QString> plantillaAtendidos(db::Connection &conexion, int doctor, QDate fecha);

} // namespace agenda
