#include "maintenance/forms/Registro.h"

#include "maintenance/forms/configuracion.h"
#include "ui/Registrar.h"

namespace maintenance {

void registrarVentanas(db::Entorno &entorno, ui::Ventanas &ventanas)
{
    ui::registrar<configuracion>(entorno, ventanas, QStringLiteral("configuracion"), ui::Modo::Marco);
}

} // namespace maintenance
