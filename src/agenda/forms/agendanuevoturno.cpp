#include "agenda/forms/agendanuevoturno.h"

#include "agenda/MismoDia.h"
#include "agenda/Reserva.h"
#include "agenda/Textos.h"
#include "agenda/forms/LineaAviso.h"
#include "agenda/forms/PanelReserva.h"
#include "base/Clock.h"
#include "db/Entorno.h"
#include "db/ListaDoctores.h"
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
    , m_panel(new PanelReserva(*this, ventanas))
{
    construir();
    connect(paciente, &patients::CampoPaciente::elegido, this, [this](int nrohc) {
        intentar([this] { mostrarAviso(); });
        if (nrohc != 0)
            motivo->setFocus();
    });
    connect(
        paciente, &patients::CampoPaciente::listaPedida, this, [this](const QString &apellido, const QString &nombres) {
            intentar([&] { elegirPaciente(apellido, nombres); });
        });
    connect(m_panel, &PanelReserva::turnosCambiados, this, [this] { intentar([this] { mostrarAviso(); }); });
    alPulsar(elegirpaciente, [this] { elegirPaciente({}, {}); });
    alPulsar(nuevopaciente, [this] { crearPaciente(); });
    alPulsar(agregarturno, [this] { elegirHora(); });
    alPulsar(agregarescrito, [this] { aceptado(m_panel->agregarEscrito(conexion(), m_doctor)); });
    alPulsar(guardar, [this] { save(); });
    connect(cancelar, &QPushButton::clicked, this, &QWidget::close);
    setEnter(agregarescrito, {nuevoturno});
    auto *nuevo = new QShortcut(QKeySequence::New, this);
    connect(nuevo, &QShortcut::activated, nuevopaciente, [this] { nuevopaciente->click(); });
}

bool agendanuevoturno::preparar(const ui::Pedido &pedido)
{
    if (!aceptado(db::controlarDerecho(entorno(), derechoReserva)))
        return false;
    m_doctor = pedido.datos.value(QStringLiteral("doctor")).toInt();
    profesional->setText(nombreProfesional(conexion(), m_doctor));
    refrescar();
    elegirpaciente->setVisible(ventanas().existe(QStringLiteral("elecpaci")));
    recibirDatos(pedido.datos);
    m_iniciales = m_panel->lineas();
    mostrarAviso();
    if (paciente->nrohc() == 0)
        paciente->setFocus();
    return true;
}

/// The times, and what else is known of the booking.
void agendanuevoturno::recibirDatos(const QVariantMap &datos)
{
    if (const auto dato = datos.constFind(QStringLiteral("turnos")); dato != datos.cend())
        m_panel->setTurnos(dato->toStringList());
    if (const auto dato = datos.constFind(QStringLiteral("motivo")); dato != datos.cend())
        ui::elegirId(*motivo, dato->toInt());
    if (const auto dato = datos.constFind(QStringLiteral("observacionestur")); dato != datos.cend())
        observacionestur->setPlainText(dato->toString());
    if (const int nrohc = datos.value(QStringLiteral("nrohc")).toInt(); nrohc != 0) {
        if (const auto nombre = nombrePaciente(conexion(), nrohc))
            paciente->setPaciente(nrohc, *nombre);
        else
            aceptado(pacienteInexistente());
    }
}

void agendanuevoturno::refrescar() { m_panel->cargar(conexion()); }

bool agendanuevoturno::hayCambios() const
{
    return !paciente->text().trimmed().isEmpty() || !observacionestur->toPlainText().trimmed().isEmpty()
        || m_panel->lineas() != m_iniciales;
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
    const Reserva reserva = m_panel->leer();
    ui::Pedido pedido;
    pedido.datos
        = {{QStringLiteral("doctor"), m_doctor},
           {QStringLiteral("turnos"), m_panel->lineas()},
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

void agendanuevoturno::elegirHora()
{
    ui::Pedido pedido;
    pedido.datos = {{QStringLiteral("doctor"), m_doctor}};
    if (const auto momentos = m_panel->turnos(); !momentos.isEmpty())
        pedido.datos.insert(QStringLiteral("momento"), momentos.last());
    const QPointer<agendanuevoturno> esta(this);
    pedido.alTerminar = [esta](const QVariantMap &resultado) {
        if (esta)
            esta->m_panel->agregar(resultado.value(QStringLiteral("turnos")).toStringList());
    };
    abrirVentana(QStringLiteral("agendanuevahora"), pedido);
}

void agendanuevoturno::mostrarAviso()
{
    const auto momentos = m_panel->turnos();
    const auto suyos = turnosDeEsosDias(conexion(), paciente->nrohc(), momentos);
    aviso->mostrar(avisoDeReserva(suyos, momentos, entorno().clock().today()));
    m_avisados.clear();
    for (const TurnoDelPaciente &turno : suyos)
        m_avisados.insert(turno.id);
}

/// Another station may have given the patient an appointment since the notice was made: only then is there a question.
bool agendanuevoturno::aceptaNovedades()
{
    const QSet<qint64> antes = m_avisados;
    mostrarAviso();
    if (antes.contains(m_avisados))
        return true;
    return entorno().mensajes().pregunta(
        base::titulo::atencion, aviso->text() + tr("\n¿Desea asignar igualmente el/los turno/s?"));
}

void agendanuevoturno::save()
{
    Reserva reserva = m_panel->leer();
    reserva.nrohc = paciente->nrohc();
    reserva.doctor = m_doctor;
    if (!aceptaNovedades())
        return;
    const auto hecha = reservar(entorno(), reserva);
    if (!hecha) {
        aceptado(hecha.rechazo());
        return;
    }
    if (!aceptado(hecha->informe()))
        m_panel->elegir(hecha->noAsignados);
    if (hecha->ids.isEmpty())
        return;
    ventanas().refrescar(ventanasDelDia());
    terminar(resultadoReserva(reserva.nrohc, hecha->asignados.first(), hecha->ids.first()));
}

void agendanuevoturno::construir()
{
    profesional = new QLabel(this);
    profesional->setObjectName(QStringLiteral("profesional"));
    profesional->setTextFormat(Qt::PlainText);
    QFont negrita = profesional->font();
    negrita.setBold(true);
    profesional->setFont(negrita);
    paciente = new patients::CampoPaciente(entorno(), this);
    paciente->setObjectName(QStringLiteral("paciente"));
    elegirpaciente = ui::boton(this, QStringLiteral("elegirpaciente"), tr("&Elegir..."), QStringLiteral("edit-find"));
    nuevopaciente
        = ui::boton(this, QStringLiteral("nuevopaciente"), tr("Pac&iente nuevo..."), QStringLiteral("contact-new"));
    nuevopaciente->setToolTip(tr("Ctrl+N"));
    listaturnos = m_panel->listaturnos;
    agregarturno = m_panel->agregarturno;
    quitarturno = m_panel->quitarturno;
    nuevoturno = m_panel->nuevoturno;
    agregarescrito = m_panel->agregarescrito;
    motivo = m_panel->motivo;
    observacionestur = m_panel->observacionestur;
    aviso = new LineaAviso(this);
    const ui::FinDeFormulario fin = ui::finDeFormulario(this);
    guardar = fin.guardar;
    cancelar = fin.cancelar;

    auto *quien = new QHBoxLayout;
    quien->addWidget(paciente, 1);
    quien->addWidget(elegirpaciente);
    quien->addWidget(nuevopaciente);
    QFormLayout *campos = m_panel->campos;
    campos->insertRow(0, tr("Profesional:"), profesional);
    campos->insertRow(1, tr("&Paciente:"), quien);
    qobject_cast<QLabel *>(campos->labelForField(quien))->setBuddy(paciente);

    auto *todo = new QVBoxLayout(this);
    todo->setContentsMargins(ui::margen, ui::margen, ui::margen, ui::margen);
    todo->addWidget(m_panel, 1);
    todo->addWidget(aviso);
    todo->addLayout(fin.fila);
    // The patient comes first, then when and why.
    QWidget *antes = paciente;
    for (QWidget *campo : std::initializer_list<QWidget *>{
             elegirpaciente,
             nuevopaciente,
             listaturnos,
             agregarturno,
             quitarturno,
             nuevoturno,
             agregarescrito,
             motivo,
             m_panel->listamotivo,
             observacionestur,
             guardar,
             cancelar}) {
        setTabOrder(antes, campo);
        antes = campo;
    }
    setMinimumSize(600, 460);
}

} // namespace agenda
