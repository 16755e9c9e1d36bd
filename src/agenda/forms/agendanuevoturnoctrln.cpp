#include "agenda/forms/agendanuevoturnoctrln.h"

#include "agenda/ReservaNueva.h"
#include "agenda/forms/PanelReserva.h"
#include "agenda/forms/Registro.h"
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
    , panel(new PanelReserva(*this, ventanas, entorno))
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
    connect(panel, &PanelReserva::turnosCambiados, this, [this] { intentar([this] { panel->mostrarAviso(0); }); });
    alPulsar(panel->agregarescrito, [this] { aceptado(panel->agregarEscrito()); });
    alPulsar(guardar, [this] { save(); });
    connect(cancelar, &QPushButton::clicked, this, &QWidget::close);
    setEnter(panel->agregarescrito, {panel->nuevoturno});
}

bool agendanuevoturnoctrln::preparar(const ui::Pedido &pedido)
{
    if (!aceptado(controlarReservaNueva(entorno())))
        return false;
    panel->setAgenda(
        pedido.datos.value(QStringLiteral("doctor")).toInt(), pedido.datos.value(QStringLiteral("fecha")).toDate());
    refrescar();
    formulario->mostrar({.apellido = pedido.datos.value(QStringLiteral("apellido")).toString()});
    panel->setTurnos(pedido.datos.value(QStringLiteral("turnos")).toStringList());
    ui::elegirId(*panel->motivo, pedido.datos.value(QStringLiteral("motivo")).toInt());
    panel->observacionestur->setPlainText(pedido.datos.value(QStringLiteral("observacionestur")).toString());
    m_inicial = huella();
    m_pausa->start();
    formulario->apellidor->setFocus();
    return true;
}

void agendanuevoturnoctrln::refrescar()
{
    formulario->cargar(conexion());
    panel->cargar();
}

QStringList agendanuevoturnoctrln::huella() const
{
    const patients::DatosReducidos datos = formulario->leer();
    const Reserva reserva = panel->leer();
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
    + panel->lineas();
}

bool agendanuevoturnoctrln::hayCambios() const { return huella() != m_inicial; }

/// The patient exists already: the booking as typed so far goes on for that one.
void agendanuevoturnoctrln::seguirCon(int nrohc, const QString &nombre)
{
    const Reserva reserva = panel->leer();
    const QVariantMap datos{
        {QStringLiteral("nrohc"), nrohc},
        {QStringLiteral("nombre"), nombre},
        {QStringLiteral("doctor"), reserva.doctor},
        {QStringLiteral("turnos"), panel->lineas()},
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
    const Reserva reserva = panel->leer();
    const auto nueva = reservarPacienteNuevo(entorno(), formulario->leer(), reserva);
    if (!nueva) {
        aceptado(nueva.rechazo());
        return;
    }
    if (!aceptado(nueva->informe()))
        panel->elegir(nueva->noAsignados);
    if (!nueva->paciente)
        return;
    QVariantMap resultado = resultadoReserva(nueva->paciente->nrohc, reserva.turnos.first(), nueva->ids.first());
    resultado.insert(QStringLiteral("nombre"), nueva->paciente->nombre);
    resultado.insert(QStringLiteral("numehistoria"), nueva->paciente->numehistoria);
    ventanas().refrescar(ventanasDeTurnos());
    terminar(resultado);
}

void agendanuevoturnoctrln::construir()
{
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
    lados->addWidget(grupo(tr("Turno"), panel), 1);
    auto *todo = new QVBoxLayout(this);
    todo->setContentsMargins(ui::margen, ui::margen, ui::margen, ui::margen);
    todo->setSpacing(ui::espacio);
    todo->addLayout(lados, 1);
    todo->addWidget(parecidos);
    todo->addLayout(fin.fila);
    QWidget::setTabOrder(formulario->emailr, panel->listaturnos);
    setMinimumSize(860, 420);
}

} // namespace agenda
