#pragma once

namespace db {
class Entorno;
}
namespace ui {
class Ventanas;
}

namespace printing {

/// Registers the windows of printing: headers and preview.
void registrarVentanas(db::Entorno &entorno, ui::Ventanas &ventanas);

} // namespace printing
