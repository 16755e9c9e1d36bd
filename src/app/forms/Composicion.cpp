#include "app/forms/Composicion.h"

#include "agenda/forms/Registro.h"
#include "patients/forms/Registro.h"

namespace app {

void registrarVentanas(db::Entorno &entorno, ui::Ventanas &ventanas)
{
    patients::registrarVentanas(entorno, ventanas);
    agenda::registrarVentanas(entorno, ventanas);
}

} // namespace app
