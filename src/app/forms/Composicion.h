#pragma once

namespace db {
class Entorno;
}
namespace ui {
class Ventanas;
}

namespace app {

/// Makes every window of the system known under its name.
void registrarVentanas(db::Entorno &entorno, ui::Ventanas &ventanas);

} // namespace app
