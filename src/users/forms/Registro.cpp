#include "users/forms/Registro.h"

#include "ui/Registrar.h"
#include "users/forms/acceso.h"
#include "users/forms/acceso2.h"
#include "users/forms/medicos.h"
#include "users/forms/usuariosadmin.h"

namespace users {

void registrarVentanas(db::Entorno &entorno, ui::Ventanas &ventanas)
{
    ui::registrar<acceso>(entorno, ventanas, QStringLiteral("acceso"), ui::Modo::Dialogo);
    ui::registrar<acceso2>(entorno, ventanas, QStringLiteral("acceso2"), ui::Modo::Dialogo);
    ui::registrar<usuariosadmin>(entorno, ventanas, QStringLiteral("usuariosadmin"), ui::Modo::Dialogo);
    ui::registrar<medicos>(entorno, ventanas, QStringLiteral("medicos"), ui::Modo::Dialogo);
}

} // namespace users
