#include "users/forms/acceso2.h"

#include "db/Entorno.h"
#include "db/ListaDoctores.h"
#include "users/Ingreso.h"

namespace users {

acceso2::acceso2(db::Entorno &entorno, ui::Ventanas &ventanas)
    : FormularioIngreso(entorno, ventanas, QStringLiteral("acceso2"), QStringLiteral("Cambiar Usuario del Sistema"))
{
}

bool acceso2::preparar(const ui::Pedido &pedido)
{
    const QString nombre = db::nombreUsuarioActual(entorno());
    setPedido(
        nombre.isEmpty() ? tr("El usuario activo ya no existe. Elija quién sigue trabajando.")
                         : tr("Está trabajando %1. Elija quién sigue.").arg(nombre));
    return FormularioIngreso::preparar(pedido);
}

void acceso2::entrar(const Identidad &quien)
{
    if (quien.id() != entorno().usuarioActual() && !ventanas().cerrarTodas(objectName()))
        return;
    cambiarUsuario(entorno(), quien);
    ventanas().refrescar({QStringLiteral("sistema")});
    terminar({{QStringLiteral("id"), quien.id()}});
}

} // namespace users
