#include "agenda/ReservaNueva.h"

#include "db/Entorno.h"
#include "db/ListaDoctores.h"

namespace agenda {

namespace {

base::Rechazo rechazoNinguno()
{
    return {
        base::titulo::atencion,
        QStringLiteral("No puede registrar más sobreturnos. El paciente y el turno no serán registrados."),
        QStringLiteral("listaturnos"),
        base::Icono::Advertencia};
}

} // namespace

base::Control ReservaNueva::informe() const { return noAsignados.isEmpty() ? base::Control() : rechazoNinguno(); }

base::Control controlarReservaNueva(db::Entorno &entorno)
{
    if (auto sinDerecho = patients::controlarAlta(entorno))
        return sinDerecho;
    return db::controlarDerecho(entorno, derechoReserva);
}

base::Resultado<ReservaNueva>
reservarPacienteNuevo(db::Entorno &entorno, const patients::DatosReducidos &datos, const Reserva &reserva)
{
    if (auto sinDerecho = controlarReservaNueva(entorno))
        return *sinDerecho;
    // Before the person is asked about a patient of the same name.
    if (auto rechazo = patients::controlarReducido(entorno.conexion(), datos))
        return *rechazo;
    if (auto rechazo = controlarTurnos(entorno, reserva))
        return *rechazo;

    ReservaNueva nueva;
    const auto turnos = [&](const patients::PacienteCreado &creado) -> base::Control {
        Reserva suya = reserva;
        suya.nrohc = creado.nrohc;
        const auto hecha = reservar(entorno, suya);
        if (!hecha)
            return hecha.rechazo();
        nueva.ids = hecha->ids;
        nueva.noAsignados = hecha->noAsignados;
        return nueva.informe();
    };
    const patients::Alta alta = patients::guardarReducido(entorno, datos, turnos);
    if (!alta && nueva.noAsignados.isEmpty())
        return alta.rechazo();
    if (alta)
        nueva.paciente = *alta;
    else
        nueva.ids.clear(); // undone together with the patient
    return nueva;
}

} // namespace agenda
