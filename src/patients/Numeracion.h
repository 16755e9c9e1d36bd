#pragma once

#include "base/NumeroHistoria.h"

namespace db {
class Connection;
}

namespace patients {

using base::componerNumeroHistoria;

/// The clinical-history number generated from `prefijohc` and `numerohc`, whether or not some patient has it.
[[nodiscard]] QString numeroHistoriaGenerado(db::Connection &conexion);

/// Adds one to `numerohc`, written back as plain digits. False, and nothing changes, when it is empty or no number:
/// then no numbers are counted.
bool avanzarNumeroHistoria(db::Connection &conexion);

/// The `NroHC` that the next patient would get: `UltimoPaci` + 1, or the number after the highest in use when that one
/// belongs to a patient already (counters of imported or damaged files).
[[nodiscard]] int proximoNroHC(db::Connection &conexion);

/// Takes that number and writes it to `UltimoPaci`. Belongs inside the transaction that inserts the patient.
[[nodiscard]] int tomarNroHC(db::Connection &conexion);

} // namespace patients
