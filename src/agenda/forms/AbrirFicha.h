#pragma once

#include "base/Rechazo.h"

namespace ui {
class Ventanas;
}

namespace agenda {

/// Opens the file of a patient; refused while one is open. Nothing happens when the file's own window declines, which
/// has told why. Call it from within Ventana::intentar().
[[nodiscard]] base::Control abrirFicha(ui::Ventanas &ventanas, int nrohc);

} // namespace agenda
