#include "patients/forms/Registro.h"

#include "patients/forms/elecpaci.h"
#include "patients/forms/nuevopaci.h"
#include "ui/Ventanas.h"

namespace patients {

void registrarVentanas(db::Entorno &entorno, ui::Ventanas &ventanas)
{
    ventanas.registrar(QStringLiteral("elecpaci"), ui::Modo::Dialogo, [&] { return new elecpaci(entorno, ventanas); });
    ventanas.registrar(
        QStringLiteral("nuevopaci"), ui::Modo::Dialogo, [&] { return new nuevopaci(entorno, ventanas); });
}

} // namespace patients
