#include "maintenance/forms/Registro.h"

#include "maintenance/forms/historial.h"
#include "ui/Registrar.h"

namespace maintenance {

void registrarVentanas(db::Entorno &entorno, ui::Ventanas &ventanas)
{
    ui::registrar<historial>(entorno, ventanas, QStringLiteral("historial"), ui::Modo::Marco);
}

} // namespace maintenance
