#include "maintenance/forms/Registro.h"

#include "ui/Ventanas.h"

namespace maintenance {

void registrarVentanas(db::Entorno &, ui::Ventanas &) { }

} // namespace maintenance
