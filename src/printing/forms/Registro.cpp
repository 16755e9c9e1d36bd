#include "printing/forms/Registro.h"

#include "ui/Ventanas.h"

namespace printing {

void registrarVentanas(db::Entorno &, ui::Ventanas &) { }

} // namespace printing
