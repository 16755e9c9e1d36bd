#pragma once

#include "base/Rechazo.h"

namespace db {
class Entorno;
}
namespace ui {
class Ventana;
class Ventanas;
} // namespace ui

namespace agenda {

// What the windows that show appointments open for a patient. Call them from within Ventana::intentar(). Nothing
// happens when the window that is to open declines, which has told why.

/// The file of a patient; refused while one is open.
[[nodiscard]] base::Control abrirFicha(ui::Ventanas &ventanas, int nrohc);

/// The file, or the reduced one for whom sees that, of the patient of an appointment, as atender() allows it.
[[nodiscard]] base::Control abrirFichaDeTurno(db::Entorno &entorno, ui::Ventanas &ventanas, qint64 id);

/// After an appointment was attended: offers the orders of the patient that have sessions left, to register one. Only
/// where the session can then be registered: a choice that leads nowhere is none.
void ofrecerSesion(db::Entorno &entorno, ui::Ventanas &ventanas, ui::Ventana &sobre, qint64 id, int nrohc);

} // namespace agenda
