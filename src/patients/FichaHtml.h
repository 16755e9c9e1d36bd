#pragma once

#include "patients/PacienteAbierto.h"

#include <QString>

namespace db {
class Entorno;
}

namespace patients {

/// The patient's card as simple HTML for printing, headed "DATOS PERSONALES", "SITUACION FAMILIAR" and "PERSONA DE
/// CONTACTO"; what is empty is left out, a heading too. Throws db::Error (RowGone) when he was removed.
[[nodiscard]] QString fichaHtml(db::Entorno &entorno, const PacienteAbierto &paciente);

} // namespace patients
