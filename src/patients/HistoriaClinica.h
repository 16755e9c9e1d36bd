#pragma once

#include "base/Rechazo.h"
#include "patients/PacienteAbierto.h"

#include <QVariantMap>

namespace db {
class Entorno;
}

namespace patients {

/// The columns of the clinical-history sheet.
[[nodiscard]] const QStringList &columnasHistoria();

/// Whether the active user may open and write the sheet.
[[nodiscard]] base::Control controlarHistoria(db::Entorno &entorno);

/// Writes what was changed of the sheet's columns to that patient, read again. Refused when he was removed.
[[nodiscard]] base::Control
guardarHistoria(db::Entorno &entorno, const PacienteAbierto &paciente, const QVariantMap &cambios);

/// The sheet as HTML for printing, from the values of its columns: blood group, Rh factor and alerts, those that there
/// are, above the history. `HC` may be in any stored form (see texto::Formato).
[[nodiscard]] QString historiaHtml(const QVariantMap &valores);

} // namespace patients
