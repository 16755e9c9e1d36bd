#include "agenda/Reserva.h"

#include "agenda/Sobreturnos.h"
#include "agenda/Textos.h"
#include "base/Clock.h"
#include "base/Fechas.h"
#include "db/Config.h"
#include "db/Entorno.h"
#include "db/ListaDoctores.h"
#include "db/Recordset.h"
#include "patients/BusquedaPacientes.h"

namespace agenda {

namespace {

/// Lines of a report that fit on a small screen.
constexpr qsizetype maximoRenglones = 30;

base::Rechazo aviso(const QString &texto, const QString &campo) { return {base::titulo::aviso, texto, campo}; }

base::Control controlar(db::Entorno &entorno, const Reserva &reserva)
{
    if (auto sinDerecho = db::controlarDerecho(entorno, derechoReserva))
        return sinDerecho;
    if (reserva.nrohc == 0) {
        return aviso(
            QStringLiteral("Debe seleccionar el paciente al que le asignará un turno."), QStringLiteral("paciente"));
    }
    return controlarTurnos(entorno, reserva);
}

} // namespace

base::Control controlarTurnos(db::Entorno &entorno, const Reserva &reserva)
{
    if (reserva.turnos.isEmpty()) {
        return aviso(
            QStringLiteral("Debe indicar el día y la hora del turno que le asignará al paciente."),
            QStringLiteral("agregarturno"));
    }
    if (reserva.motivo == 0 && db::Config(entorno.conexion()).bandera(u"forzarmotivo"))
        return aviso(QStringLiteral("Debe indicar el motivo de la consulta."), QStringLiteral("motivo"));
    return std::nullopt;
}

base::Control ReservaHecha::informe() const
{
    if (noAsignados.isEmpty())
        return std::nullopt;
    return rechazoSobreturnos(noAsignados, !ids.isEmpty());
}

base::Resultado<ReservaHecha> reservar(db::Entorno &entorno, const Reserva &reserva)
{
    if (auto rechazo = controlar(entorno, reserva))
        return *rechazo;

    db::Connection &conexion = entorno.conexion();
    const QString usuario = db::nombreUsuarioActual(entorno);
    const QDateTime ahora = entorno.clock().now();

    ReservaHecha hecha;
    db::Transaction transaccion(conexion);
    if (!patients::nombrePaciente(conexion, reserva.nrohc))
        return pacienteInexistente();
    db::Recordset turno(conexion, QStringLiteral("SELECT * FROM [Agenda Turnos] WHERE id = 0"));
    for (const QDateTime &momento : reserva.turnos) {
        if (controlarSobreturno(conexion, reserva.doctor, momento) != Permiso::Permitido) {
            hecha.noAsignados.append(momento);
            continue;
        }
        turno.addNew();
        turno.set(u"NroHC", reserva.nrohc);
        turno.set(u"Fecha", momento);
        turno.set(u"Doctor", reserva.doctor);
        turno.set(u"motivo", reserva.motivo);
        turno.set(u"llegado", false);
        turno.set(u"Atendido", false);
        turno.set(u"pagado", false);
        turno.set(u"idcaja", 0);
        turno.set(u"idorden", 0);
        turno.set(u"idsesion", 0);
        turno.set(u"numesesion", 0);
        turno.set(u"observacionestur", reserva.observacionestur.trimmed());
        turno.set(u"fechahoraasignado", ahora);
        turno.set(u"usuarioasigtur", usuario);
        hecha.ids.append(turno.update());
        hecha.asignados.append(momento);
    }
    transaccion.commit();
    return hecha;
}

base::Resultado<QDateTime> leerTurno(const QString &texto)
{
    if (const auto momento = base::leerFechaHora(texto.trimmed()))
        return *momento;
    return base::Rechazo{
        base::titulo::error, QStringLiteral("ERROR en la Fecha del Turno."), QStringLiteral("nuevoturno")};
}

base::Rechazo rechazoSobreturnos(const QVector<QDateTime> &momentos, bool algunoAsignado)
{
    QString texto = algunoAsignado
        ? QStringLiteral("Los siguientes sobreturnos no se asignaron ya que se alcanzó el límite permitido:")
        : QStringLiteral("No puede registrar más sobreturnos. Los siguientes turnos no se asignaron:");
    // One line each; of a long series as many beside each other as keep the message within the screen.
    const auto juntos = (momentos.size() + maximoRenglones - 1) / maximoRenglones;
    for (qsizetype i = 0; i < momentos.size(); ++i)
        texto
            += (i % juntos == 0 ? QStringLiteral("\n") : QStringLiteral("    ")) + base::fechaHoraTexto(momentos.at(i));
    return {base::titulo::atencion, texto, QStringLiteral("listaturnos"), base::Icono::Advertencia};
}

} // namespace agenda
