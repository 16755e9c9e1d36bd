#include "agenda/forms/agendanuevoturnoctrln.h"

#include "agenda/MismoDia.h"
#include "agenda/ReservaNueva.h"
#include "agenda/forms/PanelReserva.h"
#include "patients/Parecidos.h"
#include "patients/forms/FormularioReducido.h"
#include "patients/forms/PanelParecidos.h"
#include "ui/Botones.h"
#include "ui/Estilo.h"
#include "ui/ListaCombo.h"

#include <QComboBox>
#include <QFormLayout>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTimer>

#include <chrono>

namespace agenda {

agendanuevoturnoctrln::agendanuevoturnoctrln(db::Entorno &entorno, ui::Ventanas &ventanas)
    : Ventana(entorno, ventanas, QStringLiteral("agendanuevoturnoctrln"), tr("Nuevo Turno para un Paciente Nuevo"))
    , formulario(new patients::FormularioReducido(*this, ventanas))
    , parecidos(new patients::PanelParecidos(this))
    , m_panel(new PanelReserva(*this, ventanas))
    , m_pausa(new QTimer(this))
{
    construir();
    m_pausa->setSingleShot(true);
    m_pausa->setInterval(std::chrono::milliseconds(400));
    connect(m_pausa, &QTimer::timeout, this, [this] {
        if (parecidos->buscar(conexion(), formulario->conocido()))
            reacomodar();
    });
    connect(formulario, &patients::FormularioReducido::cambiado, m_pausa, qOverload<>(&QTimer::start));
    connect(parecidos, &patients::PanelParecidos::elegido, this, [this](int nrohc, const QString &nombre) {
        intentar([&] { seguirCon(nrohc, nombre); });
    });
    alPulsar(agregarturno, [this] { elegirHora(); });
    alPulsar(agregarescrito, [this] { aceptado(m_panel->agregarEscrito(conexion(), m_doctor)); });
    alPulsar(guardar, [this] { save(); });
    connect(cancelar, &QPushButton::clicked, this, &QWidget::close);
    setEnter(agregarescrito, {nuevoturno});
}

bool agendanuevoturnoctrln::preparar(const ui::Pedido &pedido)
{
    if (!aceptado(controlarReservaNueva(entorno())))
        return false;
    m_doctor = pedido.datos.value(QStringLiteral("doctor")).toInt();
    profesional->setText(nombreProfesional(conexion(), m_doctor));
    refrescar();
    formulario->mostrar({.apellido = pedido.datos.value(QStringLiteral("apellido")).toString()});
    m_panel->setTurnos(pedido.datos.value(QStringLiteral("turnos")).toStringList());
    ui::elegirId(*motivo, pedido.datos.value(QStringLiteral("motivo")).toInt());
    observacionestur->setPlainText(pedido.datos.value(QStringLiteral("observacionestur")).toString());
    m_inicial = huella();
    m_pausa->start();
    formulario->apellidor->setFocus();
    return true;
}

void agendanuevoturnoctrln::refrescar()
{
    formulario->cargar(conexion());
    m_panel->cargar(conexion());
}

QStringList agendanuevoturnoctrln::huella() const
{
    const patients::DatosReducidos datos = formulario->leer();
    const Reserva reserva = m_panel->leer();
    return QStringList{
               datos.apellido,
               datos.nombres,
               datos.dni,
               datos.telefono,
               QString::number(datos.idcobertura),
               datos.domicilio,
               datos.email,
               QString::number(reserva.motivo),
               reserva.observacionestur}
    + m_panel->lineas();
}

bool agendanuevoturnoctrln::hayCambios() const { return huella() != m_inicial; }

void agendanuevoturnoctrln::elegirHora()
{
    ui::Pedido pedido;
    pedido.datos = {{QStringLiteral("doctor"), m_doctor}};
    if (const auto momentos = m_panel->turnos(); !momentos.isEmpty())
        pedido.datos.insert(QStringLiteral("momento"), momentos.last());
    const QPointer<agendanuevoturnoctrln> esta(this);
    pedido.alTerminar = [esta](const QVariantMap &resultado) {
        if (esta)
            esta->m_panel->agregar(resultado.value(QStringLiteral("turnos")).toStringList());
    };
    abrirVentana(QStringLiteral("agendanuevahora"), pedido);
}

/// The patient exists already: the booking as typed so far goes on for that one.
void agendanuevoturnoctrln::seguirCon(int nrohc, const QString &nombre)
{
    const Reserva reserva = m_panel->leer();
    const QVariantMap datos{
        {QStringLiteral("nrohc"), nrohc},
        {QStringLiteral("nombre"), nombre},
        {QStringLiteral("doctor"), m_doctor},
        {QStringLiteral("turnos"), m_panel->lineas()},
        {QStringLiteral("motivo"), reserva.motivo},
        {QStringLiteral("observacionestur"), reserva.observacionestur}};
    const QString comun = QStringLiteral("agendanuevoturno");
    if (ventanas().buscar(comun)) {
        terminar(datos);
        return;
    }
    const QPointer<agendanuevoturnoctrln> esta(this);
    abrirVentana(comun, {datos, [esta](const QVariantMap &resultado) {
                             if (esta)
                                 esta->terminar(resultado);
                         }});
}

void agendanuevoturnoctrln::save()
{
    Reserva reserva = m_panel->leer();
    reserva.doctor = m_doctor;
    const auto nueva = reservarPacienteNuevo(entorno(), formulario->leer(), reserva);
    if (!nueva) {
        aceptado(nueva.rechazo());
        return;
    }
    if (!aceptado(nueva->informe()))
        m_panel->elegir(nueva->noAsignados);
    if (!nueva->paciente)
        return;
    QVariantMap resultado = resultadoReserva(nueva->paciente->nrohc, reserva.turnos.first(), nueva->ids.first());
    resultado.insert(QStringLiteral("nombre"), nueva->paciente->nombre);
    resultado.insert(QStringLiteral("numehistoria"), nueva->paciente->numehistoria);
    ventanas().refrescar(ventanasDelDia());
    terminar(resultado);
}

void agendanuevoturnoctrln::construir()
{
    profesional = new QLabel(this);
    profesional->setObjectName(QStringLiteral("profesional"));
    profesional->setTextFormat(Qt::PlainText);
    QFont negrita = profesional->font();
    negrita.setBold(true);
    profesional->setFont(negrita);
    listaturnos = m_panel->listaturnos;
    agregarturno = m_panel->agregarturno;
    nuevoturno = m_panel->nuevoturno;
    agregarescrito = m_panel->agregarescrito;
    motivo = m_panel->motivo;
    observacionestur = m_panel->observacionestur;
    m_panel->campos->insertRow(0, tr("Profesional:"), profesional);
    const ui::FinDeFormulario fin = ui::finDeFormulario(this);
    guardar = fin.guardar;
    cancelar = fin.cancelar;

    const auto grupo = [this](const QString &titulo, QWidget *contenido) {
        auto *caja = new QGroupBox(titulo, this);
        auto *dentro = new QVBoxLayout(caja);
        dentro->addWidget(contenido);
        return caja;
    };
    auto *quien = grupo(tr("Paciente"), formulario);
    qobject_cast<QVBoxLayout *>(quien->layout())->addStretch(1);
    auto *lados = new QHBoxLayout;
    lados->addWidget(quien, 1);
    lados->addWidget(grupo(tr("Turno"), m_panel), 1);
    auto *todo = new QVBoxLayout(this);
    todo->setContentsMargins(ui::margen, ui::margen, ui::margen, ui::margen);
    todo->setSpacing(ui::espacio);
    todo->addLayout(lados, 1);
    todo->addWidget(parecidos);
    todo->addLayout(fin.fila);
    QWidget::setTabOrder(formulario->emailr, listaturnos);
    setMinimumSize(860, 420);
}

} // namespace agenda
