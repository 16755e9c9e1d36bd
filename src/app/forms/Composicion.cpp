#include "app/forms/Composicion.h"

#include "agenda/forms/Registro.h"
#include "maintenance/forms/Registro.h"
#include "patients/forms/Registro.h"
#include "printing/forms/Registro.h"
#include "users/forms/Registro.h"

namespace app {

void registrarVentanas(db::Entorno &entorno, ui::Ventanas &ventanas)
{
    printing::registrarVentanas(entorno, ventanas);
    users::registrarVentanas(entorno, ventanas);
    maintenance::registrarVentanas(entorno, ventanas);
    patients::registrarVentanas(entorno, ventanas);
    agenda::registrarVentanas(entorno, ventanas);
}

} // namespace app
