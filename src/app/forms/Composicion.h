#pragma once

namespace db {
class Entorno;
}
namespace ui {
class Ventanas;
}

namespace app {

class CambioDeRuta;

/// Makes every window of the system known under its name. `red` is what the window 'Red' changes; without it that
/// window declines to open.
void registrarVentanas(db::Entorno &entorno, ui::Ventanas &ventanas, CambioDeRuta *red = nullptr);

} // namespace app
