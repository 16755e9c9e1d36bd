#include "users/forms/acceso.h"

#include "users/Ingreso.h"

namespace users {

acceso::acceso(db::Entorno &entorno, ui::Ventanas &ventanas)
    : FormularioIngreso(entorno, ventanas, QStringLiteral("acceso"), tr("Ingreso a Vastelo"))
{
    setPedido(tr("Elija su nombre e ingrese su clave."));
}

void acceso::entrar(const Identidad &quien)
{
    ingresar(entorno(), quien);
    ventanas().refrescar({QStringLiteral("sistema")});
    terminar({{QStringLiteral("id"), quien.id()}});
}

} // namespace users
