#include "agenda/forms/agendamodifturno.h"

#include "agenda/GrillaDia.h"
#include "agenda/MismoDia.h"
#include "agenda/Textos.h"
#include "agenda/TurnosListados.h"
#include "agenda/forms/CalendarioMes.h"
#include "agenda/forms/LineaAviso.h"
#include "agenda/forms/Motivos.h"
#include "agenda/forms/Registro.h"
#include "agenda/forms/SelectorHora.h"
#include "base/Clock.h"
#include "db/Entorno.h"
#include "db/ListaDoctores.h"
#include "ui/Botones.h"
#include "ui/Estilo.h"
#include "ui/ListaCombo.h"
#include "ui/Rotulos.h"

#include <QComboBox>
#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QToolButton>

namespace agenda {

agendamodifturno::agendamodifturno(db::Entorno &entorno, ui::Ventanas &ventanas)
    : Ventana(entorno, ventanas, QStringLiteral("agendamodifturno"), tr("Modificar Turno"))
{
    construir();
    connect(selector, &SelectorHora::diaCambiado, this, [this] {
        intentar([this] {
            selector->cargar(conexion(), this->entorno().clock().today());
            mostrarAviso();
        });
    });
    connect(selector, &SelectorHora::horaCambiada, this, [this] { intentar([this] { mostrarAviso(); }); });
    connect(selector, &SelectorHora::aceptada, guardar, &QPushButton::click);
    alPulsar(guardar, [this] { save(); });
    connect(cancelar, &QPushButton::clicked, this, &QWidget::close);
    setEnter(guardar, {hora});
}

bool agendamodifturno::preparar(const ui::Pedido &pedido)
{
    if (!aceptado(db::controlarDerecho(entorno(), derechoCambios)))
        return false;
    const auto guardado = leerTurnoGuardado(conexion(), pedido.datos.value(QStringLiteral("id")).toLongLong());
    if (!guardado)
        return aceptado(registroEliminado());
    m_guardado = *guardado;
    m_guardado.fecha.setTime(alMinuto(m_guardado.fecha.time()));
    turno->setText(m_guardado.titulo() + QStringLiteral("   ") + nombreProfesional(conexion(), m_guardado.doctor));
    QDateTime propuesta = m_guardado.fecha;
    if (const QDate fecha = pedido.datos.value(QStringLiteral("fecha")).toDate(); fecha.isValid())
        propuesta.setDate(fecha);
    selector->preparar(conexion(), m_guardado.doctor, entorno().clock().today(), propuesta);
    cargarMotivos(*motivo, conexion());
    ui::elegirId(*motivo, m_guardado.motivo);
    m_guardado.motivo = ui::idElegido(*motivo); // a reason that was deleted shows as none
    observacionestur->setPlainText(m_guardado.observacionestur);
    m_guardado.observacionestur = observacionestur->toPlainText();
    mostrarAviso();
    if (propuesta == m_guardado.fecha) {
        fechadia->setFocus();
    } else {
        hora->setFocus();
        hora->selectAll();
    }
    return true;
}

void agendamodifturno::refrescar()
{
    cargarMotivos(*motivo, conexion());
    selector->cargar(conexion(), entorno().clock().today());
    mostrarAviso();
}

void agendamodifturno::mostrarAviso()
{
    // The hour may be half typed: the day counts.
    const QVector<QDateTime> momentos{selector->momento().value_or(QDateTime(fechadia->fecha(), QTime(0, 0)))};
    const auto suyos = turnosDeEsosDias(conexion(), m_guardado.nrohc, momentos, m_guardado.id);
    const bool otroDia = fechadia->fecha() != m_guardado.fecha.date();
    const bool otraHora = momentos.first() != m_guardado.fecha;
    aviso->mostrar(avisoDeReserva(
        suyos,
        momentos,
        otroDia ? entorno().clock().today() : QDate(1, 1, 1),
        otraHora ? avisoSinAtencion(conexion(), m_guardado.doctor, momentos) : QString()));
}

CambioTurno agendamodifturno::cambioDeTextos() const
{
    CambioTurno cambio;
    if (const int elegido = ui::idElegido(*motivo); elegido != m_guardado.motivo)
        cambio.motivo = elegido;
    if (const QString texto = observacionestur->toPlainText(); texto != m_guardado.observacionestur)
        cambio.observacionestur = texto;
    return cambio;
}

bool agendamodifturno::hayCambios() const
{
    const CambioTurno cambio = cambioDeTextos();
    return cambio.motivo || cambio.observacionestur || selector->momento() != m_guardado.fecha;
}

void agendamodifturno::save()
{
    CambioTurno cambio = cambioDeTextos();
    if (selector->momento() != m_guardado.fecha) {
        const auto momento = selector->elegido(conexion());
        if (!momento) {
            aceptado(momento.rechazo());
            return;
        }
        cambio.fecha = *momento;
    }
    mostrarAviso();
    if (!aceptado(modificar(entorno(), m_guardado.id, cambio)))
        return;
    ventanas().refrescar(ventanasDeTurnos());
    terminar({});
}

void agendamodifturno::construir()
{
    turno = ui::rotuloFuerte(this, QStringLiteral("turno"));
    selector = new SelectorHora(this);
    mes = selector->mes;
    anio = selector->anio;
    fechadia = selector->fechadia;
    listahoras = selector->listahoras;
    hora = selector->hora;
    const EleccionMotivo eleccion = eleccionMotivo(*this, ventanas());
    motivo = eleccion.motivo;
    listamotivo = eleccion.listamotivo;
    observacionestur = new QPlainTextEdit(this);
    observacionestur->setObjectName(QStringLiteral("observacionestur"));
    observacionestur->setTabChangesFocus(true);
    observacionestur->setFixedHeight(4 * fontMetrics().lineSpacing());
    aviso = new LineaAviso(this);
    const ui::FinDeFormulario fin = ui::finDeFormulario(this);
    guardar = fin.guardar;
    cancelar = fin.cancelar;

    auto *campos = new QFormLayout;
    campos->setSpacing(ui::espacio);
    campos->addRow(tr("Moti&vo:"), eleccion.fila);
    campos->addRow(tr("O&bservaciones:"), observacionestur);
    qobject_cast<QLabel *>(campos->labelForField(eleccion.fila))->setBuddy(motivo);

    auto *todo = new QVBoxLayout(this);
    todo->setContentsMargins(ui::margen, ui::margen, ui::margen, ui::margen);
    todo->setSpacing(ui::espacio);
    todo->addWidget(turno);
    todo->addWidget(selector, 1);
    todo->addLayout(campos);
    todo->addWidget(aviso);
    todo->addLayout(fin.fila);
    setMinimumSize(560, 520);
}

} // namespace agenda
