#include "agenda/forms/agendanuevoturno.h"

#include "agenda/Textos.h"
#include "agenda/forms/LineaAviso.h"
#include "agenda/forms/PanelReserva.h"
#include "agenda/forms/Registro.h"
#include "db/Entorno.h"
#include "db/ListaDoctores.h"
#include "patients/BusquedaPacientes.h"
#include "patients/forms/CampoPaciente.h"
#include "ui/Botones.h"
#include "ui/Estilo.h"
#include "ui/ListaCombo.h"

#include <QComboBox>
#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QShortcut>
#include <QToolButton>

namespace agenda {

agendanuevoturno::agendanuevoturno(db::Entorno &entorno, ui::Ventanas &ventanas)
    : Ventana(entorno, ventanas, QStringLiteral("agendanuevoturno"), tr("Nuevo Turno"))
    , panel(new PanelReserva(*this, ventanas, entorno))
{
    construir();
    connect(paciente, &patients::CampoPaciente::elegido, this, [this](int nrohc) {
        intentar([this] { mostrarAviso(); });
        if (nrohc != 0)
            panel->motivo->setFocus();
    });
    connect(
        paciente, &patients::CampoPaciente::listaPedida, this, [this](const QString &apellido, const QString &nombres) {
            intentar([&] { elegirPaciente(apellido, nombres); });
        });
    connect(panel, &PanelReserva::turnosCambiados, this, [this] { intentar([this] { mostrarAviso(); }); });
    alPulsar(elegirpaciente, [this] { elegirPaciente({}, {}); });
    alPulsar(nuevopaciente, [this] { crearPaciente(); });
    alPulsar(panel->agregarescrito, [this] { aceptado(panel->agregarEscrito()); });
    alPulsar(guardar, [this] { save(); });
    connect(cancelar, &QPushButton::clicked, this, &QWidget::close);
    setEnter(panel->agregarescrito, {panel->nuevoturno});
    auto *nuevo = new QShortcut(QKeySequence::New, this);
    connect(nuevo, &QShortcut::activated, nuevopaciente, [this] { nuevopaciente->click(); });
}

bool agendanuevoturno::preparar(const ui::Pedido &pedido)
{
    if (!aceptado(db::controlarDerecho(entorno(), derechoReserva)))
        return false;
    panel->setAgenda(
        pedido.datos.value(QStringLiteral("doctor")).toInt(), pedido.datos.value(QStringLiteral("fecha")).toDate());
    panel->cargar();
    elegirpaciente->setVisible(ventanas().existe(QStringLiteral("elecpaci")));
    recibirDatos(pedido.datos);
    m_iniciales = panel->lineas();
    mostrarAviso();
    if (paciente->nrohc() == 0)
        paciente->setFocus();
    return true;
}

/// The times, and what else is known of the booking.
void agendanuevoturno::recibirDatos(const QVariantMap &datos)
{
    if (const auto dato = datos.constFind(QStringLiteral("turnos")); dato != datos.cend())
        panel->setTurnos(dato->toStringList());
    if (const auto dato = datos.constFind(QStringLiteral("motivo")); dato != datos.cend())
        ui::elegirId(*panel->motivo, dato->toInt());
    if (const auto dato = datos.constFind(QStringLiteral("observacionestur")); dato != datos.cend())
        panel->observacionestur->setPlainText(dato->toString());
    if (const int nrohc = datos.value(QStringLiteral("nrohc")).toInt(); nrohc != 0) {
        if (const auto nombre = patients::nombrePaciente(conexion(), nrohc))
            paciente->setPaciente(nrohc, *nombre);
        else
            aceptado(pacienteInexistente());
    }
}

void agendanuevoturno::refrescar()
{
    panel->cargar();
    mostrarAviso();
}

bool agendanuevoturno::hayCambios() const
{
    return !paciente->text().trimmed().isEmpty() || !panel->observacionestur->toPlainText().trimmed().isEmpty()
        || panel->lineas() != m_iniciales;
}

void agendanuevoturno::elegirPaciente(const QString &apellido, const QString &nombres)
{
    ui::Pedido pedido;
    pedido.datos
        = {{QStringLiteral("modo"), 2}, {QStringLiteral("apellido"), apellido}, {QStringLiteral("nombres"), nombres}};
    const QPointer<agendanuevoturno> esta(this);
    pedido.alTerminar = [esta](const QVariantMap &resultado) {
        if (esta)
            esta->recibirDatos({{QStringLiteral("nrohc"), resultado.value(QStringLiteral("nrohc"))}});
    };
    abrirVentana(QStringLiteral("elecpaci"), pedido);
}

void agendanuevoturno::crearPaciente()
{
    const Reserva reserva = panel->leer();
    ui::Pedido pedido;
    pedido.datos
        = {{QStringLiteral("doctor"), reserva.doctor},
           {QStringLiteral("fecha"), panel->fecha()},
           {QStringLiteral("turnos"), panel->lineas()},
           {QStringLiteral("motivo"), reserva.motivo},
           {QStringLiteral("observacionestur"), reserva.observacionestur}};
    if (paciente->nrohc() == 0)
        pedido.datos.insert(QStringLiteral("apellido"), paciente->text());
    const QPointer<agendanuevoturno> esta(this);
    pedido.alTerminar = [esta](const QVariantMap &resultado) {
        if (!esta)
            return;
        // Booked there, or the person found that the patient exists already: then the booking goes on here.
        if (resultado.contains(QStringLiteral("id")))
            esta->terminar(resultado);
        else
            esta->recibirDatos(resultado);
    };
    abrirVentana(QStringLiteral("agendanuevoturnoctrln"), pedido);
}

void agendanuevoturno::mostrarAviso() { m_avisados = panel->mostrarAviso(paciente->nrohc()); }

/// Another station may have given the patient an appointment since the notice was made: only then is there a question.
bool agendanuevoturno::aceptaNovedades()
{
    const QSet<qint64> antes = m_avisados;
    mostrarAviso();
    if (antes.contains(m_avisados))
        return true;
    return entorno().mensajes().pregunta(
        base::titulo::atencion, panel->aviso->text() + tr("\n¿Desea asignar igualmente el/los turno/s?"));
}

void agendanuevoturno::save()
{
    Reserva reserva = panel->leer();
    reserva.nrohc = paciente->nrohc();
    if (!aceptaNovedades())
        return;
    const auto hecha = reservar(entorno(), reserva);
    if (!hecha) {
        aceptado(hecha.rechazo());
        return;
    }
    if (!aceptado(hecha->informe()))
        panel->elegir(hecha->noAsignados);
    if (hecha->ids.isEmpty())
        return;
    ventanas().refrescar(ventanasDeTurnos());
    terminar(resultadoReserva(reserva.nrohc, hecha->asignados.first(), hecha->ids.first()));
}

void agendanuevoturno::construir()
{
    paciente = new patients::CampoPaciente(entorno(), this);
    paciente->setObjectName(QStringLiteral("paciente"));
    elegirpaciente = ui::boton(this, QStringLiteral("elegirpaciente"), tr("&Elegir..."), QStringLiteral("edit-find"));
    nuevopaciente = ui::boton(
        this,
        QStringLiteral("nuevopaciente"),
        tr("Pac&iente nuevo..."),
        QStringLiteral("contact-new"),
        tr("Dar de alta al paciente y asignarle el turno (Ctrl+N)"));
    const ui::FinDeFormulario fin = ui::finDeFormulario(this);
    guardar = fin.guardar;
    cancelar = fin.cancelar;

    auto *quien = new QHBoxLayout;
    quien->addWidget(paciente, 1);
    quien->addWidget(elegirpaciente);
    quien->addWidget(nuevopaciente);
    QFormLayout *campos = panel->campos;
    campos->insertRow(1, tr("&Paciente:"), quien);
    qobject_cast<QLabel *>(campos->labelForField(quien))->setBuddy(paciente);

    auto *todo = new QVBoxLayout(this);
    todo->setContentsMargins(ui::margen, ui::margen, ui::margen, ui::margen);
    todo->addWidget(panel, 1);
    todo->addLayout(fin.fila);
    // The patient comes first, then when and why.
    QWidget *antes = paciente;
    for (QWidget *campo : std::initializer_list<QWidget *>{
             elegirpaciente,
             nuevopaciente,
             panel->listaturnos,
             panel->agregarturno,
             panel->quitarturno,
             panel->nuevoturno,
             panel->agregarescrito,
             panel->motivo,
             panel->listamotivo,
             panel->observacionestur,
             guardar,
             cancelar}) {
        setTabOrder(antes, campo);
        antes = campo;
    }
    setMinimumSize(600, 460);
}

} // namespace agenda
