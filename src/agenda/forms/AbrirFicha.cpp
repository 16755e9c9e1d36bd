#include "agenda/forms/AbrirFicha.h"

#include "agenda/AtenderTurno.h"
#include "agenda/OrdenesTurno.h"
#include "db/Entorno.h"
#include "ui/Ventana.h"

namespace agenda {

namespace {

const QString entera = QStringLiteral("pacientes");
const QString reducida = QStringLiteral("pacientesredu");

bool hayFicha(const ui::Ventanas &ventanas) { return ventanas.buscar(entera) || ventanas.buscar(reducida); }

} // namespace

base::Control abrirFicha(ui::Ventanas &ventanas, int nrohc)
{
    if (hayFicha(ventanas))
        return base::Rechazo{
            base::titulo::atencion,
            QStringLiteral("Un Paciente está siendo atendido, para seguir debe cerrar la ficha del Paciente")};
    ventanas.abrir(entera, {.datos = {{QStringLiteral("nrohc"), nrohc}}});
    return std::nullopt;
}

base::Control abrirFichaDeTurno(db::Entorno &entorno, ui::Ventanas &ventanas, qint64 id)
{
    const auto paciente = atender(entorno, id, hayFicha(ventanas));
    if (!paciente)
        return paciente.rechazo();
    const bool laReducida = veFichaReducida(entorno) && ventanas.existe(reducida);
    const QString &ficha = laReducida ? reducida : entera;
    if (ventanas.existe(ficha))
        ventanas.abrir(ficha, {.datos = {{QStringLiteral("nrohc"), *paciente}}});
    else
        base::avisarNoDisponible(entorno.mensajes());
    return std::nullopt;
}

void ofrecerSesion(db::Entorno &entorno, ui::Ventanas &ventanas, ui::Ventana &sobre, qint64 id, int nrohc)
{
    const QString sesion = QStringLiteral("nuevasesion");
    if (!ventanas.existe(sesion) || ordenesConSesiones(entorno.conexion(), nrohc).empty())
        return;
    ui::Pedido pedido;
    pedido.datos = {{QStringLiteral("id"), id}};
    pedido.alTerminar = [&ventanas, sesion, sobre = QPointer<ui::Ventana>(&sobre)](const QVariantMap &elegida) {
        if (sobre)
            sobre->intentar([&] { ventanas.abrir(sesion, {.datos = elegida}, sobre); });
    };
    ventanas.abrir(QStringLiteral("agendaordenes"), pedido, &sobre);
}

} // namespace agenda
