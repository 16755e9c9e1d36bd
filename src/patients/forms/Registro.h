#pragma once

namespace db {
class Entorno;
}
namespace ui {
class Ventanas;
}

namespace patients {

/// Makes the windows of this folder known by their names. Both must outlive them.
void registrarVentanas(db::Entorno &entorno, ui::Ventanas &ventanas);

} // namespace patients
