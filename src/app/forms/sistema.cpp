#include "app/forms/sistema.h"

#include "app/Comprobador.h"
#include "app/Sesion.h"
#include "app/forms/AreaFondo.h"
#include "app/forms/AvisoBorradores.h"
#include "app/forms/ColumnaMenu.h"
#include "base/Clock.h"
#include "base/Mensajes.h"
#include "base/Rechazo.h"
#include "db/Connection.h"
#include "db/Entorno.h"
#include "db/Error.h"
#include "db/FondoAplicacion.h"
#include "db/ListaDoctores.h"
#include "maintenance/RespaldoAutomatico.h"
#include "ui/Estilo.h"
#include "ui/Ventana.h"
#include "ui/Ventanas.h"

#include <QApplication>
#include <QCloseEvent>
#include <QDialog>
#include <QDir>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLocale>
#include <QMdiSubWindow>
#include <QScopedValueRollback>
#include <QShortcut>
#include <QStatusBar>

#include <chrono>

namespace app {

using namespace std::chrono_literals;

sistema::sistema(db::Entorno &entorno, Comprobador &comprobador, ui::Ventanas &ventanas)
    : barra(new QStatusBar(this))
    , tiempo(new QTimer(this))
    , timerbackup(new QTimer(this))
    , m_entorno(entorno)
    , m_comprobador(comprobador)
    , m_ventanas(ventanas)
    , m_menu(new ColumnaMenu)
    , m_area(new AreaFondo)
    , m_sinRespaldo(new QLabel)
    , m_mensajeNuevo(new QLabel)
    , m_borradores(new AvisoBorradores(entorno, ventanas, this))
    , m_usuario(new QLabel)
    , m_base(new QLabel)
    , m_fecha(new QLabel)
{
    setObjectName(QStringLiteral("sistema"));
    setWindowTitle(QStringLiteral("Vastelo"));
    resize(1280, 800);

    auto *centro = new QWidget(this);
    auto *caja = new QHBoxLayout(centro);
    caja->setContentsMargins(0, 0, 0, 0);
    caja->setSpacing(0);
    caja->addWidget(m_menu);
    caja->addWidget(m_area, 1);
    setCentralWidget(centro);
    m_ventanas.setArea(m_area);

    barra->setObjectName(QStringLiteral("barra"));
    setStatusBar(barra);
    barra->addPermanentWidget(m_borradores);
    m_usuario->setObjectName(QStringLiteral("usuario"));
    m_base->setObjectName(QStringLiteral("base"));
    m_fecha->setObjectName(QStringLiteral("fecha"));
    m_sinRespaldo->setObjectName(QStringLiteral("sinrespaldo"));
    m_mensajeNuevo->setObjectName(QStringLiteral("mensajenuevo"));
    // Permanent: a passing message hides only what stands at the left of them.
    for (QLabel *panel : {m_sinRespaldo, m_mensajeNuevo, m_usuario, m_base, m_fecha}) {
        panel->setTextFormat(Qt::PlainText);
        panel->setContentsMargins(8, 0, 8, 0);
        barra->addPermanentWidget(panel);
    }
    m_sinRespaldo->setText(tr("Sin backup automático"));
    m_mensajeNuevo->setText(tr("Tiene un mensaje nuevo en el Chat."));
    for (QLabel *aviso : {m_sinRespaldo, m_mensajeNuevo}) {
        QFont negrita = aviso->font();
        negrita.setBold(true);
        aviso->setFont(negrita);
        aviso->hide();
    }
    QPalette alerta = m_sinRespaldo->palette();
    alerta.setColor(QPalette::WindowText, ui::color::error());
    m_sinRespaldo->setPalette(alerta);

    connect(m_menu, &ColumnaMenu::pulsado, this, &sistema::pulsar);
    connect(m_area, &QMdiArea::subWindowActivated, this, [this](const QMdiSubWindow *activa) {
        // A window is activated before it shows, and none is while a dialog has the keyboard.
        const bool ninguna = !activa && !hayVentanas();
        m_menu->setTeclas(ninguna);
        // Once the last is gone for good the keyboard is the menu's again.
        if (ninguna)
            QMetaObject::invokeMethod(this, &sistema::volverAlMenu, Qt::QueuedConnection);
    });
    m_menu->setTeclas(true);
    connect(&m_ventanas, &ui::Ventanas::refrescoPedido, this, [this](const QStringList &nombres) {
        if (!nombres.isEmpty() && !nombres.contains(objectName()))
            return;
        actualizarUsuario();
        if (m_comprobador.baseLista())
            aplicarConfiguracion();
    });
    auto *irAlMenu = new QShortcut(QKeySequence(Qt::Key_F10), this);
    connect(irAlMenu, &QShortcut::activated, m_menu, &ColumnaMenu::enfocar);

    tiempo->setObjectName(QStringLiteral("tiempo"));
    tiempo->setInterval(intervaloMensajes());
    connect(tiempo, &QTimer::timeout, this, &sistema::revisarAnuncios);
    timerbackup->setObjectName(QStringLiteral("timerbackup"));
    timerbackup->setInterval(60s);
    connect(timerbackup, &QTimer::timeout, this, &sistema::cuidarBase);

    actualizarUsuario();
}

sistema::~sistema()
{
    // The windows inside go after this object's own part: their going must not reach it any more.
    m_area->disconnect(this);
}

bool sistema::hayVentanas() const
{
    const QList<QMdiSubWindow *> marcos = m_area->subWindowList();
    return std::any_of(marcos.cbegin(), marcos.cend(), [](const QMdiSubWindow *marco) { return marco->isVisible(); });
}

void sistema::volverAlMenu()
{
    if (isActiveWindow() && !hayVentanas() && !m_menu->isAncestorOf(QApplication::focusWidget()))
        m_menu->enfocar();
}

void sistema::actualizarUsuario()
{
    QString nombre;
    if (m_comprobador.baseLista())
        intentar([&] { nombre = db::nombreUsuarioActual(m_entorno); });
    m_usuario->setText(QStringLiteral("Usuario Activo: ") + nombre);
    if (m_comprobador.baseLista())
        callado([this] { m_borradores->buscar(); });
    actualizarBarra();
}

void sistema::actualizarBarra()
{
    QString base = tr("Sin base de datos");
    if (m_comprobador.baseLista())
        callado([&] {
            base = m_entorno.conexion().dialect().kind() == db::Dialect::Kind::SqlServer
                ? tr("Base de datos en el servidor")
                : tr("Base de datos: %1").arg(QDir::toNativeSeparators(m_entorno.carpetaDatos()));
        });
    if (!m_comprobador.baseLista())
        m_mensajeNuevo->hide();
    m_base->setToolTip(base);
    m_base->setText(m_base->fontMetrics().elidedText(base, Qt::ElideMiddle, 360));
    m_fecha->setText(QLocale().toString(m_entorno.clock().today(), QStringLiteral("dddd dd/MM/yyyy")));
}

bool sistema::intentar(const std::function<void()> &accion)
{
    QString descripcion;
    try {
        accion();
        return true;
    } catch (const db::Error &error) {
        descripcion = error.description();
    }
    m_entorno.mensajes().fallar(base::titulo::error, descripcion);
    return false;
}

void sistema::callado(const std::function<void()> &accion)
{
    try {
        accion();
    } catch (const db::Error &error) {
        barra->showMessage(error.description(), 15'000);
    }
}

void sistema::pulsar(const BotonMenu &boton)
{
    if (boton.hace == BotonMenu::Accion::Salir) {
        close();
        return;
    }
    if (boton.hace == BotonMenu::Accion::Ayuda) {
        abrirAyuda();
        return;
    }
    const VentanasDelMenu ventanas = ventanasDelMenu();
    const bool listaAntes = m_comprobador.baseLista();
    const QScopedValueRollback ocupada(m_ocupada, true);
    intentar([&] { abrirDesdeMenu(m_entorno, m_comprobador, ventanas, boton); });
    m_fallaDicha = !m_comprobador.baseLista();
    if (m_comprobador.baseLista() != listaAntes)
        iniciarSesion();
}

void sistema::abrirAyuda()
{
    const QString nombre = QStringLiteral("ayuda");
    if (!m_ventanas.existe(nombre))
        avisarNoDisponible(m_entorno);
    else
        intentar([&] { m_ventanas.activar(nombre) || m_ventanas.abrir(nombre); });
}

void sistema::keyPressEvent(QKeyEvent *event)
{
    if (event->key() != Qt::Key_F1 || event->modifiers() != Qt::NoModifier)
        QMainWindow::keyPressEvent(event);
    else
        abrirAyuda();
}

bool sistema::seEspera() const
{
    return m_ocupada || m_cerrando || qobject_cast<QDialog *>(QApplication::activeModalWidget());
}

void sistema::revisarAnuncios()
{
    // After a failed check only a button tries again: a check every half minute would be a message every half minute.
    if (seEspera() || m_fallaDicha || !m_comprobador.baseLista())
        return;
    const QScopedValueRollback ocupada(m_ocupada, true);
    if (!m_comprobador.verificarBase()) {
        m_fallaDicha = true;
        actualizarUsuario();
        return;
    }
    callado([this] { mostrarAnuncio(anuncio(m_entorno)); });
}

void sistema::mostrarAnuncio(const QString &texto)
{
    m_mensajeNuevo->setVisible(!texto.isEmpty());
    const QString deQuien = texto.isEmpty() ? QString() : QString::number(m_entorno.usuarioActual()) + u' ' + texto;
    if (std::exchange(m_anuncio, deQuien) == deQuien || texto.isEmpty())
        return;
    if (m_sonido)
        m_sonido(m_entorno.carpetaPrograma() + QStringLiteral("/chat.wav"));
    else
        QApplication::beep();
}

void sistema::setRespaldo(maintenance::RespaldoAutomatico *respaldo)
{
    m_respaldo = respaldo;
    connect(respaldo, &maintenance::RespaldoAutomatico::avanzado, this, [this](const QString &texto) {
        texto.isEmpty() ? barra->clearMessage() : barra->showMessage(texto);
    });
    connect(respaldo, &maintenance::RespaldoAutomatico::terminado, this, &sistema::mostrarRespaldo);
}

void sistema::cuidarBase()
{
    actualizarBarra();
    if (m_ocupada || m_fallaDicha || !m_comprobador.baseLista())
        return;
    callado([this] {
        borrarImpresionesTemporales(m_entorno);
        if (m_respaldo)
            m_respaldo->tic();
    });
    if (m_respaldo)
        mostrarRespaldo();
}

void sistema::mostrarRespaldo()
{
    m_sinRespaldo->setVisible(!m_respaldo->falla().isEmpty());
    m_sinRespaldo->setToolTip(m_respaldo->falla());
    if (seEspera())
        return; // the next tick tells
    const QScopedValueRollback ocupada(m_ocupada, true);
    if (const QString aviso = m_respaldo->tomarAviso(); !aviso.isEmpty())
        m_entorno.mensajes().advertir(base::titulo::atencion, aviso);
}

void sistema::cambioDeBase()
{
    m_fallaDicha = !m_comprobador.baseLista();
    m_iniciada = false;
    m_faltaIngreso = true; // the other practice may ask who works here: at the next button
    m_mensajeNuevo->hide();
    if (m_respaldo)
        m_respaldo->detener(); // it was copying the former one
    iniciarSesion();
}

void sistema::showEvent(QShowEvent *event)
{
    QMainWindow::showEvent(event);
    if (std::exchange(m_abierta, true))
        return;
    m_faltaIngreso = !m_comprobador.baseLista();
    iniciarSesion();
    tiempo->start();
    timerbackup->start();
}

void sistema::iniciarSesion()
{
    actualizarUsuario();
    if (m_iniciada || !m_comprobador.baseLista())
        return;
    m_iniciada = true;
    aplicarConfiguracion();
    intentar([this] { registrarIngreso(m_entorno); });
}

std::chrono::seconds sistema::intervaloMensajes() const
{
    return std::chrono::seconds(qBound(1, m_entorno.segundosMensajes(), 86'400));
}

void sistema::aplicarConfiguracion()
{
    // Setting the same interval would begin it anew, and a frame refreshed often would never look for notices.
    if (tiempo->intervalAsDuration() != intervaloMensajes())
        tiempo->setInterval(intervaloMensajes());
    callado([this] { m_area->setFondo(db::fondoAplicacion(m_entorno)); });
}

void sistema::closeEvent(QCloseEvent *event)
{
    if (m_cerrando || m_ocupada) {
        event->ignore();
        return;
    }
    m_cerrando = true;
    if (m_ventanas.cerrarTodas()) {
        tiempo->stop();
        timerbackup->stop();
        if (m_respaldo)
            m_respaldo->detener();
        cerrarSesion();
        event->accept();
    } else {
        event->ignore();
    }
    m_cerrando = false;
}

void sistema::cerrarSesion()
{
    if (!m_entorno.esClienteDeRed())
        m_entorno.mensajes().advertir(
            QStringLiteral("Importante!!"),
            QStringLiteral("IMPORTANTE: Recuerde que el programa de esta PC (servidor) debe cerrarse después que el "
                           "programa de todas las terminales."));
    if (m_comprobador.baseLista())
        intentar([this] { registrarCierre(m_entorno); });
}

} // namespace app
