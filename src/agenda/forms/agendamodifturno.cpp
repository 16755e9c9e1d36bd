#include "agenda/forms/agendamodifturno.h"

#include "agenda/GrillaDia.h"
#include "agenda/MismoDia.h"
#include "agenda/Textos.h"
#include "agenda/forms/CalendarioMes.h"
#include "agenda/forms/LineaAviso.h"
#include "agenda/forms/PanelReserva.h"
#include "agenda/forms/SelectorHora.h"
#include "base/Clock.h"
#include "db/Entorno.h"
#include "ui/BotonLista.h"
#include "ui/Botones.h"
#include "ui/Estilo.h"
#include "ui/ListaCombo.h"

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
    connect(selector, &SelectorHora::aceptada, guardar, &QPushButton::click);
    alPulsar(guardar, [this] { save(); });
    connect(cancelar, &QPushButton::clicked, this, &QWidget::close);
    setEnter(guardar, {hora});
}

bool agendamodifturno::preparar(const ui::Pedido &pedido)
{
    const auto guardado = leerTurnoGuardado(conexion(), pedido.datos.value(QStringLiteral("id")).toLongLong());
    if (!guardado)
        return aceptado(registroEliminado());
    m_guardado = *guardado;
    m_guardado.fecha.setTime(alMinuto(m_guardado.fecha.time()));
    turno->setText(m_guardado.titulo() + QStringLiteral("   ") + nombreProfesional(conexion(), m_guardado.doctor));
    selector->preparar(conexion(), m_guardado.doctor, entorno().clock().today(), m_guardado.fecha);
    ui::cargarLista(
        *motivo,
        conexion(),
        QStringLiteral("Lista Motivos Consulta"),
        QStringLiteral("Motivo"),
        {{tr("<Sin motivo>"), 0}});
    ui::elegirId(*motivo, m_guardado.motivo);
    m_guardado.motivo = ui::idElegido(*motivo); // a reason that was deleted shows as none
    observacionestur->setPlainText(m_guardado.observacionestur);
    m_guardado.observacionestur = observacionestur->toPlainText();
    mostrarAviso();
    fechadia->setFocus();
    return true;
}

void agendamodifturno::refrescar()
{
    ui::cargarLista(
        *motivo,
        conexion(),
        QStringLiteral("Lista Motivos Consulta"),
        QStringLiteral("Motivo"),
        {{tr("<Sin motivo>"), 0}});
    selector->cargar(conexion(), entorno().clock().today());
    mostrarAviso();
}

void agendamodifturno::mostrarAviso()
{
    const QVector<QDateTime> momentos{{fechadia->fecha(), QTime(0, 0)}};
    const auto suyos = turnosDeEsosDias(conexion(), m_guardado.nrohc, momentos, m_guardado.id);
    const bool otroDia = fechadia->fecha() != m_guardado.fecha.date();
    aviso->mostrar(avisoDeReserva(suyos, momentos, otroDia ? entorno().clock().today() : QDate(1, 1, 1)));
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
    ventanas().refrescar(ventanasDelDia());
    terminar({});
}

void agendamodifturno::construir()
{
    turno = new QLabel(this);
    turno->setObjectName(QStringLiteral("turno"));
    turno->setTextFormat(Qt::PlainText);
    QFont negrita = turno->font();
    negrita.setBold(true);
    turno->setFont(negrita);
    selector = new SelectorHora(this);
    mes = selector->mes;
    anio = selector->anio;
    fechadia = selector->fechadia;
    listahoras = selector->listahoras;
    hora = selector->hora;
    motivo = new QComboBox(this);
    motivo->setObjectName(QStringLiteral("motivo"));
    listamotivo = ui::botonLista(
        *this, ventanas(), *motivo, QStringLiteral("Lista Motivos Consulta"), tr("Motivos de Consulta"));
    observacionestur = new QPlainTextEdit(this);
    observacionestur->setObjectName(QStringLiteral("observacionestur"));
    observacionestur->setTabChangesFocus(true);
    observacionestur->setFixedHeight(4 * fontMetrics().lineSpacing());
    aviso = new LineaAviso(this);
    const ui::FinDeFormulario fin = ui::finDeFormulario(this);
    guardar = fin.guardar;
    cancelar = fin.cancelar;

    auto *eleccion = new QHBoxLayout;
    eleccion->addWidget(motivo, 1);
    eleccion->addWidget(listamotivo);
    auto *campos = new QFormLayout;
    campos->setSpacing(ui::espacio);
    campos->addRow(tr("Moti&vo:"), eleccion);
    campos->addRow(tr("O&bservaciones:"), observacionestur);
    qobject_cast<QLabel *>(campos->labelForField(eleccion))->setBuddy(motivo);

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
