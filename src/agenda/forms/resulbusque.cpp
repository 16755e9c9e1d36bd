#include "agenda/forms/resulbusque.h"

#include "agenda/GrillaDia.h"
#include "agenda/Textos.h"
#include "agenda/TurnoGuardado.h"
#include "agenda/forms/BotonesLista.h"
#include "agenda/forms/ColorTono.h"
#include "base/Clock.h"
#include "db/Entorno.h"
#include "db/ListaDoctores.h"
#include "patients/BusquedaPacientes.h"
#include "ui/Botones.h"
#include "ui/Estilo.h"
#include "ui/Grilla.h"
#include "ui/Rotulos.h"

#include <QLabel>
#include <QPushButton>

#include <algorithm>

namespace agenda {

resulbusque::resulbusque(db::Entorno &entorno, ui::Ventanas &ventanas)
    : Ventana(entorno, ventanas, QStringLiteral("resulbusque"), tr("Turnos del Paciente"))
{
    construir();
    lista->modelo().setFondo([this](int fila) {
        const TurnoPaciente &turno = m_turnos[size_t(fila)];
        const bool pasado = turno.momento.date() < this->entorno().clock().today();
        return colorDe(turno.atendido ? Tono::Atendido : pasado ? Tono::Pasado : Tono::Ninguno);
    });
    lista->modelo().setAyuda([this](int fila) { return m_turnos[size_t(fila)].observaciones; });
    connect(lista, &ui::Grilla::filaCambiada, this, [this](int fila) { veragenda->setEnabled(fila >= 0); });
    connect(lista, &ui::Grilla::activada, this, [this] { intentar([this] { abrirTurno(); }); });
    alPulsar(veragenda, [this] { abrirTurno(); });
    connect(cerrar, &QPushButton::clicked, this, &QWidget::close);
}

bool resulbusque::preparar(const ui::Pedido &pedido)
{
    if (auto sinDerecho = db::controlarDerecho(entorno(), derechoAgendas))
        return aceptado(sinDerecho);
    m_nrohc = pedido.datos.value(QStringLiteral("nrohc")).toInt();
    QString nombre = pedido.datos.value(QStringLiteral("nombre")).toString();
    if (nombre.isEmpty())
        nombre = patients::nombrePaciente(conexion(), m_nrohc).value_or(textoPacienteEliminado);
    paciente->setText(nombre);
    setWindowTitle(tr("Turnos de %1").arg(nombre));
    recargar();
    lista->elegirFila(0);
    lista->setFocus();
    return true;
}

void resulbusque::refrescar() { recargar(); }

QString resulbusque::ayuda() const
{
    return tr("TURNOS: Primero los de hoy en adelante, el más próximo arriba; después los que ya pasaron, en gris, el"
              " último arriba. Los atendidos están en verde. Con Enter se abre la agenda en el turno elegido.");
}

void resulbusque::construir()
{
    paciente = ui::rotuloFuerte(this, QStringLiteral("paciente"), 1.2);
    cantidad = new QLabel(this);
    cantidad->setObjectName(QStringLiteral("cantidad"));
    lista = new ui::Grilla(
        QStringLiteral("lista"),
        QStringLiteral("|^Fecha     |<Día        |^Hora |<Profesional            |<Motivo             |^Llegó |^Atend. "
                       "|<Observaciones"),
        this);
    lista->setElasticas({{3, 3}, {4, 3}, {7, 4}});
    lista->setSelectionMode(QAbstractItemView::SingleSelection);

    auto *abajo = new QHBoxLayout;
    abajo->setSpacing(ui::espacio);
    veragenda = ui::boton(
        this,
        QStringLiteral("veragenda"),
        tr("Ver en la &agenda"),
        QStringLiteral("view-calendar-day"),
        tr("La agenda, en ese turno (Enter)"));
    abajo->addWidget(veragenda);
    abajo->addStretch(1);
    ponerBotonesLista(*this, *lista, *abajo);
    cerrar = ui::boton(
        this, QStringLiteral("cerrar"), tr("Ce&rrar"), QStringLiteral("window-close"), tr("Cerrar la ventana (Esc)"));
    abajo->addWidget(cerrar);

    auto *todo = new QVBoxLayout(this);
    todo->setContentsMargins(ui::margen, ui::margen, ui::margen, ui::margen);
    todo->setSpacing(ui::espacio);
    todo->addWidget(paciente);
    todo->addWidget(lista, 1);
    todo->addWidget(cantidad);
    todo->addLayout(abajo);
    resize(900, 460);
}

void resulbusque::recargar()
{
    const QDate hoy = entorno().clock().today();
    m_turnos = turnosDePaciente(conexion(), m_nrohc, hoy);
    std::vector<QStringList> textos;
    std::vector<qint64> claves;
    for (const TurnoPaciente &turno : m_turnos) {
        textos.push_back(turno.textos());
        claves.push_back(turno.id);
    }
    lista->mostrar(std::move(textos), std::move(claves));

    const auto proximos = std::count_if(
        m_turnos.begin(), m_turnos.end(), [hoy](const TurnoPaciente &t) { return t.momento.date() >= hoy; });
    const auto dicho = [](qsizetype n) { return n == 1 ? tr("1 turno") : tr("%1 turnos").arg(n); };
    cantidad->setText(
        m_turnos.empty() ? tr("Este paciente no tiene turnos.")
                         : tr("%1 desde hoy, %2 anteriores")
                               .arg(proximos == 0 ? tr("Ningún turno") : dicho(proximos))
                               .arg(qsizetype(m_turnos.size()) - proximos));
    veragenda->setEnabled(lista->filaActual() >= 0);
}

void resulbusque::abrirTurno()
{
    const qint64 id = lista->claveActual();
    if (id == 0)
        return;
    // Another station may have moved it, or deleted it.
    const auto turno = leerTurnoGuardado(conexion(), id);
    if (!turno) {
        (void)aceptado(registroEliminado());
        recargar();
        return;
    }
    ventanas().abrir(
        QStringLiteral("agendas"),
        {.datos
         = {{QStringLiteral("doctor"), turno->doctor},
            {QStringLiteral("fecha"), turno->fecha.date()},
            {QStringLiteral("hora"), horaTexto(turno->fecha.time())},
            {QStringLiteral("id"), id}}},
        this);
}

} // namespace agenda
