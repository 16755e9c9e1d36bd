#pragma once

#include "app/Opciones.h"
#include "base/Rechazo.h"

namespace app {

/// The program folder to use, made when missing and holding the template: the one asked for, else the executable's when
/// it can be written, else one under the user's data directory; with a demo and no folder asked for, its subfolder
/// "demo". The template and the sound of the notices beside the executable are copied there when it has none. Refused
/// when the folder cannot be made.
[[nodiscard]] base::Resultado<QString> carpetaDePrograma(const Opciones &opciones, const QString &carpetaEjecutable);

} // namespace app
