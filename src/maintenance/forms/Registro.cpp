#include "maintenance/forms/Registro.h"

#include "maintenance/forms/configuracion.h"
#include "maintenance/forms/historial.h"
#include "maintenance/forms/listamantenimiento.h"
#include "maintenance/forms/listareemplazo.h"
#include "maintenance/forms/mantenimiento.h"
#include "ui/Registrar.h"

namespace maintenance {

void registrarVentanas(db::Entorno &entorno, ui::Ventanas &ventanas)
{
    ui::registrar<mantenimiento>(entorno, ventanas, QStringLiteral("mantenimiento"), ui::Modo::Marco);
    ui::registrar<listamantenimiento>(entorno, ventanas, QStringLiteral("listamantenimiento"), ui::Modo::Dialogo);
    ui::registrar<listareemplazo>(entorno, ventanas, QStringLiteral("listareemplazo"), ui::Modo::Dialogo);
    ui::registrar<configuracion>(entorno, ventanas, QStringLiteral("configuracion"), ui::Modo::Marco);
    ui::registrar<historial>(entorno, ventanas, QStringLiteral("historial"), ui::Modo::Marco);
}

} // namespace maintenance
