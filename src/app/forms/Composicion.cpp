#include "app/forms/Composicion.h"

#include "agenda/forms/Registro.h"
#include "app/forms/accesored.h"
#include "app/forms/acerca.h"
#include "app/forms/ayuda.h"
#include "app/forms/migracion.h"
#include "maintenance/forms/Registro.h"
#include "patients/forms/Registro.h"
#include "printing/forms/Registro.h"
#include "ui/Registrar.h"
#include "users/forms/Registro.h"

namespace app {

void registrarVentanas(db::Entorno &entorno, ui::Ventanas &ventanas, CambioDeRuta *red)
{
    ventanas.registrar(QStringLiteral("accesored"), ui::Modo::Marco, [&entorno, &ventanas, red] {
        return new accesored(entorno, ventanas, red);
    });
    ventanas.registrar(QStringLiteral("migracion"), ui::Modo::Dialogo, [&entorno, &ventanas, red] {
        return new migracion(entorno, ventanas, red);
    });
    ui::registrar<ayuda>(entorno, ventanas, QStringLiteral("ayuda"), ui::Modo::Marco);
    ui::registrar<acerca>(entorno, ventanas, QStringLiteral("acerca"), ui::Modo::Marco);
    printing::registrarVentanas(entorno, ventanas);
    users::registrarVentanas(entorno, ventanas);
    maintenance::registrarVentanas(entorno, ventanas);
    patients::registrarVentanas(entorno, ventanas);
    agenda::registrarVentanas(entorno, ventanas);
}

} // namespace app
