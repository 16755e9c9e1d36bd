#pragma once

#include "db/VerificadorHistorial.h"

namespace maintenance {

/// "Registro íntegro desde 12/03/2026 (1.234 acciones)", or what is wrong, in a line.
[[nodiscard]] QString resumenIntegridad(const db::InformeHistorial &informe);

/// A finding as the person reads it: what happened, to how many.
[[nodiscard]] QString textoHallazgo(const db::HallazgoHistorial &hallazgo);
/// When, as far as known: "12/03/2026 09:15", "del 10/03/2026 al 12/03/2026".
[[nodiscard]] QString momentoHallazgo(const db::HallazgoHistorial &hallazgo);

/// Logs that the log was verified and with what outcome. From then on this computer takes the end of the chain as it
/// is: what it missed is told in the log itself. Nothing on a database that is only read.
void registrarVerificacion(db::Entorno &entorno, const db::InformeHistorial &informe);

} // namespace maintenance
