#include "patients/forms/Registro.h"

#include "patients/forms/elecpaci.h"
#include "patients/forms/histoclinica.h"
#include "patients/forms/nuevopaci.h"
#include "patients/forms/pacientes.h"
#include "ui/Registrar.h"

namespace patients {

void registrarVentanas(db::Entorno &entorno, ui::Ventanas &ventanas)
{
    ui::registrar<elecpaci>(entorno, ventanas, QStringLiteral("elecpaci"), ui::Modo::Dialogo);
    ui::registrar<nuevopaci>(entorno, ventanas, QStringLiteral("nuevopaci"), ui::Modo::Dialogo);
    ui::registrar<histoclinica>(entorno, ventanas, QStringLiteral("histoclinica"), ui::Modo::Marco);
    ui::registrar<pacientes>(entorno, ventanas, QStringLiteral("pacientes"), ui::Modo::Marco);
}

} // namespace patients
