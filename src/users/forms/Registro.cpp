#include "users/forms/Registro.h"

#include "ui/Ventanas.h"

namespace users {

void registrarVentanas(db::Entorno &, ui::Ventanas &) { }

} // namespace users
