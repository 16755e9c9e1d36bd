// How the window "agendas" gives an appointment another hour: cut and paste, and dragging.

#include "agenda/CambiosTurno.h"
#include "agenda/Textos.h"
#include "agenda/TurnoGuardado.h"
#include "agenda/forms/CalendarioMes.h"
#include "agenda/forms/GrillaTurnos.h"
#include "agenda/forms/agendas.h"
#include "base/Fechas.h"
#include "db/Entorno.h"
#include "db/ListaDoctores.h"

#include <QAction>
#include <QLabel>

namespace agenda {

void agendas::conectarMover()
{
    lista->setArrastrables([this](qint64 clave) {
        const FilaDia *fila = filaDe(clave);
        return fila && fila->clase == FilaDia::Clase::Turno;
    });
    lista->setDestinos([this](qint64 clave) {
        const FilaDia *fila = filaDe(clave);
        return fila && fila->clase != FilaDia::Clase::Bloqueado;
    });
    connect(lista, &GrillaTurnos::soltado, this, [this](qint64 id, qint64 clave) {
        intentar([&] { soltarEn(id, clave); });
    });
    connect(fechadia, &CalendarioMes::turnoSoltado, this, [this](qint64 id, QDate fecha) {
        // A day is not yet an hour: the person chooses it there.
        intentar([&] { cortar(id); });
        if (m_corte)
            irA(fecha);
        lista->setFocus();
    });
    connect(menucortar, &QAction::triggered, this, [this] {
        if (const auto fila = turnoActual())
            intentar([&] { cortar(fila->id); });
    });
    connect(menupegar, &QAction::triggered, this, [this] { intentar([this] { pegar(); }); });
}

std::optional<TurnoGuardado> agendas::leerOAvisar(qint64 id)
{
    auto turno = leerTurnoGuardado(conexion(), id);
    if (!turno) {
        aceptado(registroEliminado());
        recargar();
    }
    return turno;
}

void agendas::cortar(qint64 id)
{
    if (!aceptado(db::controlarDerecho(entorno(), derechoCambios)))
        return;
    const auto turno = leerOAvisar(id);
    if (!turno)
        return;
    m_corte = Corte{turno->id, turno->doctor, turno->titulo()};
    avisocorte->setText(
        tr("Turno cortado:  %1.  Elija el nuevo horario y presione Ctrl+V; Esc lo cancela.").arg(m_corte->titulo));
    avisocorte->show();
    lista->viewport()->update();
    habilitar();
}

void agendas::quitarCorte()
{
    m_corte.reset();
    avisocorte->hide();
    lista->viewport()->update();
    habilitar();
}

base::Control agendas::controlarDestino(int doctor, const FilaDia *destino) const
{
    if (destino && destino->clase == FilaDia::Clase::Bloqueado)
        return base::Rechazo{base::titulo::atencion, tr("En el horario elegido no se atiende.")};
    if (doctor != m_dia.doctor)
        return base::Rechazo{
            base::titulo::atencion,
            tr("El turno es de otro profesional: sólo puede pasarse a otro horario del mismo profesional.")};
    return std::nullopt;
}

void agendas::pegar()
{
    if (!m_corte)
        return;
    const FilaDia *fila = filaActual();
    if (!fila && !m_dia.filas.empty()) {
        aceptado(base::Rechazo{base::titulo::atencion, tr("Seleccione el horario al que pasa el turno.")});
        return;
    }
    if (!aceptado(controlarDestino(m_corte->doctor, fila)))
        return;
    if (fila)
        moverA(m_corte->id, m_dia.momento(*fila));
    else
        pegarEscribiendoHora();
}

void agendas::pegarEscribiendoHora()
{
    const qint64 id = m_corte->id;
    ui::Pedido pedido;
    pedido.datos = {{QStringLiteral("id"), id}, {QStringLiteral("fecha"), m_dia.fecha}};
    const QPointer<agendas> esta(this);
    pedido.alTerminar = [esta, id](const QVariantMap &) {
        if (!esta)
            return;
        esta->intentar([&] {
            esta->quitarCorte();
            esta->trasCambio({});
            esta->lista->elegirClave(id);
            esta->lista->setFocus();
        });
    };
    abrirVentana(QStringLiteral("agendamodifturno"), pedido);
    if (!leerTurnoGuardado(conexion(), id)) // the window has said so
        quitarCorte();
}

void agendas::soltarEn(qint64 id, qint64 clave)
{
    const FilaDia *destino = filaDe(clave);
    if (!destino || destino->id == id)
        return;
    const auto turno = leerOAvisar(id);
    if (!turno)
        return;
    const QDateTime momento = m_dia.momento(*destino);
    if (!aceptado(controlarDestino(turno->doctor, destino)) || turno->fecha == momento)
        return;
    // The mouse slips: a drag asks where the keys do not.
    QString pregunta = tr("¿Desea pasar el turno de %1 del %2 al %3?")
                           .arg(turno->paciente, base::fechaHoraTexto(turno->fecha), base::fechaHoraTexto(momento));
    if (destino->clase == FilaDia::Clase::Turno)
        pregunta += tr("\nEn ese horario ya hay un turno asignado.");
    if (entorno().mensajes().pregunta(base::titulo::confirmacion, pregunta))
        moverA(id, momento);
}

void agendas::moverA(qint64 id, const QDateTime &momento)
{
    auto rechazo = modificar(entorno(), id, {.fecha = momento});
    if (rechazo)
        rechazo->campo.clear(); // the focus stays on the row
    const bool movido = aceptado(rechazo);
    if (m_corte && m_corte->id == id && (movido || !leerTurnoGuardado(conexion(), id)))
        quitarCorte();
    trasCambio(momento.time());
    if (movido)
        lista->elegirClave(id);
}

} // namespace agenda
