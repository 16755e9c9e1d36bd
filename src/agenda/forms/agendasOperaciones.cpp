// What the window "agendas" does with appointments, beside moving them.

#include "agenda/AtenderTurno.h"
#include "agenda/CambiosTurno.h"
#include "agenda/forms/AbrirFicha.h"
#include "agenda/forms/CalendarioMes.h"
#include "agenda/forms/GrillaTurnos.h"
#include "agenda/forms/agendas.h"
#include "db/Config.h"
#include "db/Entorno.h"
#include "ui/ListaCombo.h"

#include <QApplication>
#include <QComboBox>
#include <QContextMenuEvent>
#include <QPushButton>
#include <QSignalBlocker>

namespace agenda {

void agendas::activarFila()
{
    const FilaDia *fila = filaActual();
    if (!fila || fila->clase == FilaDia::Clase::Bloqueado)
        return;
    if (fila->clase == FilaDia::Clase::Libre) {
        abrirReserva();
    } else if (!entorno().modoTurno()) {
        atenderActual();
    } else {
        // On a computer that works on the appointment, and not on the patient, all that can be done with it.
        const QPoint lugar = lista->visualRect(lista->currentIndex()).bottomLeft() + QPoint(40, 0);
        QContextMenuEvent menu(QContextMenuEvent::Keyboard, lugar, lista->viewport()->mapToGlobal(lugar));
        QApplication::sendEvent(lista->viewport(), &menu);
    }
}

void agendas::abrirReserva()
{
    ui::Pedido pedido;
    pedido.datos
        = {{QStringLiteral("doctor"), m_doctor},
           {QStringLiteral("turnos"), turnosElegidos()},
           {QStringLiteral("fecha"), m_dia.fecha}};
    const QPointer<agendas> esta(this);
    pedido.alTerminar = [esta, hora = horaActual()](const QVariantMap &) {
        if (esta)
            esta->intentar([&] { esta->trasCambio(hora); });
    };
    ventanas().abrir(QStringLiteral("agendanuevoturno"), pedido, this);
}

void agendas::liberarElegidos()
{
    QVector<qint64> ids;
    for (const qint64 clave : lista->clavesElegidas())
        if (clave > 0)
            ids.append(clave);
    if (ids.isEmpty())
        return;
    const auto hora = horaActual();
    const auto resultado = agenda::liberar(entorno(), ids);
    if (!resultado)
        aceptado(resultado.rechazo());
    else if (*resultado > 0 && m_corte && ids.contains(m_corte->id))
        quitarCorte();
    trasCambio(hora);
}

void agendas::bloquearElegidos()
{
    QVector<QDateTime> libres;
    for (const qint64 clave : lista->clavesElegidas())
        if (const FilaDia *fila = filaDe(clave); fila && fila->clase == FilaDia::Clase::Libre)
            libres.append(m_dia.momento(*fila));
    if (libres.isEmpty())
        return;
    const auto hora = horaActual();
    aceptado(agenda::bloquear(entorno(), m_doctor, libres));
    trasCambio(hora);
}

void agendas::atenderActual()
{
    const auto fila = turnoActual();
    if (!fila)
        return;
    if (const auto rechazo = abrirFichaDeTurno(entorno(), ventanas(), fila->id)) {
        aceptado(rechazo);
        recargar();
    }
}

void agendas::marcarAtencion()
{
    const auto fila = turnoActual();
    if (!fila)
        return;
    const bool atendido = !fila->atendido;
    if (cambiar([&](const FilaDia &f) { return marcarAtendido(entorno(), f.id, atendido); }) && atendido)
        ofrecerSesion(entorno(), ventanas(), *this, fila->id, fila->nrohc);
}

void agendas::pagarActual()
{
    const bool enCaja = db::Config(conexion()).bandera(u"pagocaja");
    abrirDeTurno(enCaja ? QStringLiteral("agendapagocaja") : QStringLiteral("agendapagoorden"));
}

void agendas::buscarTurnos()
{
    const auto fila = turnoActual();
    if (entorno().modoTurno() && fila && !fila->pacienteEliminado)
        abrirVentana(
            QStringLiteral("resulbusque"),
            {.datos = {{QStringLiteral("nrohc"), fila->nrohc}, {QStringLiteral("nombre"), fila->paciente}}});
    else
        abrirVentana(QStringLiteral("elecpaci"), {.datos = {{QStringLiteral("modo"), 3}}});
}

void agendas::abrirTodas()
{
    const QVariantMap datos{{QStringLiteral("doctor"), m_doctor}, {QStringLiteral("fecha"), m_dia.fecha}};
    if (abrirVentana(QStringLiteral("agendastodas"), {.datos = datos}))
        anotarTodasLasAgendas(entorno());
}

void agendas::abrirProximosLibres()
{
    const QPointer<agendas> esta(this);
    ui::Pedido pedido;
    pedido.datos = {{QStringLiteral("doctor"), m_doctor}};
    pedido.alTerminar = [esta](const QVariantMap &elegido) {
        if (!esta)
            return;
        esta->intentar([&] {
            {
                const QSignalBlocker callaLista(esta->lisdocto), callaFecha(esta->fechadia);
                ui::elegirId(*esta->lisdocto, elegido.value(QStringLiteral("doctor")).toInt());
                esta->fechadia->setFecha(elegido.value(QStringLiteral("fecha")).toDate());
            }
            esta->recargar();
            esta->elegirHora(
                QTime::fromString(elegido.value(QStringLiteral("hora")).toString(), QStringLiteral("HH:mm")));
            esta->lista->setFocus();
        });
    };
    ventanas().abrir(QStringLiteral("agendalibres"), pedido, this);
}

bool agendas::cambiar(const std::function<base::Control(const FilaDia &)> &cambio)
{
    const auto fila = turnoActual();
    if (!fila)
        return false;
    const bool hecho = aceptado(cambio(*fila));
    trasCambio(fila->hora);
    return hecho;
}

void agendas::abrirDeTurno(const QString &ventana)
{
    const auto fila = turnoActual();
    if (!fila)
        return;
    ui::Pedido pedido;
    pedido.datos
        = {{QStringLiteral("id"), fila->id},
           {QStringLiteral("doctor"), m_dia.doctor},
           {QStringLiteral("fecha"), m_dia.fecha},
           {QStringLiteral("nrohc"), fila->nrohc},
           {QStringLiteral("paciente"), fila->paciente}};
    const QPointer<agendas> esta(this);
    pedido.alTerminar = [esta, hora = fila->hora](const QVariantMap &) {
        if (esta)
            esta->intentar([&] { esta->trasCambio(hora); });
    };
    abrirVentana(ventana, pedido);
    // Gone meanwhile: the window has said so and the day must show it.
    if (!ventanas().buscar(ventana))
        recargar();
}

void agendas::conectarOperaciones()
{
    alPulsar(nuevo, [this] { abrirReserva(); });
    alPulsar(liberar, [this] { liberarElegidos(); });
    alPulsar(bloquear, [this] { bloquearElegidos(); });
    alPulsar(atender, [this] { atenderActual(); });
    alPulsar(sinollego, [this] {
        cambiar([this](const FilaDia &f) { return marcarLlegado(entorno(), f.id, !f.llegado); });
    });
    alPulsar(sinoatendido, [this] { marcarAtencion(); });
    alPulsar(pagar, [this] { pagarActual(); });
    alPulsar(modifobservacion, [this] { abrirDeTurno(QStringLiteral("agendaobservacion")); });
    alPulsar(modifmoticonsul, [this] { abrirDeTurno(QStringLiteral("agendamotivo")); });
    alPulsar(modifhora, [this] { abrirDeTurno(QStringLiteral("agendamodifturno")); });
    alPulsar(buscar, [this] { buscarTurnos(); });
    alPulsar(botagentodas, [this] { abrirTodas(); });
    alPulsar(telefonos, [this] { abrirVentana(QStringLiteral("telefonos")); });
    alPulsar(proximolibre, [this] { abrirProximosLibres(); });
    alPulsar(horarios, [this] {
        abrirVentana(QStringLiteral("agendahorarios"), {.datos = {{QStringLiteral("doctor"), m_doctor}}});
    });
}

} // namespace agenda
