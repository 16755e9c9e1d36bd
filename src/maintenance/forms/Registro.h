#pragma once

namespace db {
class Entorno;
}
namespace ui {
class Ventanas;
}

namespace maintenance {

/// Registers the windows that keep the system in order: settings, lists, log, network, help.
void registrarVentanas(db::Entorno &entorno, ui::Ventanas &ventanas);

} // namespace maintenance
