#pragma once

namespace db {
class Entorno;
}
namespace ui {
class Ventanas;
}

namespace agenda {

/// Makes the agenda's windows known under their names.
void registrarVentanas(db::Entorno &entorno, ui::Ventanas &ventanas);

} // namespace agenda
