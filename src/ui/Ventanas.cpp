#include "ui/Ventanas.h"

#include "ui/Ventana.h"

#include <QApplication>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QScreen>

namespace ui {

namespace {

/// Centres `ventana` over `sobre`, inside the screen; in the middle of the screen without one.
void centrar(QWidget *ventana, const QWidget *sobre)
{
    const QRect pantalla = (sobre ? sobre : ventana)->screen()->availableGeometry();
    const QSize tamano = ventana->sizeHint()
                             .expandedTo(ventana->minimumSizeHint())
                             .expandedTo(ventana->minimumSize())
                             .boundedTo(pantalla.size())
                             .boundedTo(ventana->maximumSize());
    QRect lugar(QPoint(0, 0), tamano);
    lugar.moveCenter(sobre ? sobre->mapToGlobal(sobre->rect().center()) : pantalla.center());
    lugar.moveLeft(qBound(pantalla.left(), lugar.left(), qMax(pantalla.left(), pantalla.right() - lugar.width())));
    lugar.moveTop(qBound(pantalla.top(), lugar.top(), qMax(pantalla.top(), pantalla.bottom() - lugar.height())));
    ventana->setGeometry(lugar);
}

} // namespace

Ventanas::Ventanas(QObject *parent)
    : QObject(parent)
{
}

Ventanas::~Ventanas()
{
    for (auto &[nombre, entrada] : m_entradas)
        delete entrada.abierta.data();
}

void Ventanas::registrar(const QString &nombre, Modo modo, Fabrica fabrica)
{
    Q_ASSERT_X(!existe(nombre), "Ventanas::registrar", "two windows of one name");
    m_entradas.insert_or_assign(nombre, Entrada{modo, std::move(fabrica), {}});
}

bool Ventanas::existe(const QString &nombre) const { return m_entradas.contains(nombre); }

QStringList Ventanas::nombres() const
{
    QStringList todos;
    for (const auto &[nombre, entrada] : m_entradas)
        todos << nombre;
    return todos;
}

void Ventanas::setArea(QMdiArea *area) { m_area = area; }

Ventana *Ventanas::abrir(const QString &nombre, const Pedido &pedido, QWidget *sobre)
{
    const auto it = m_entradas.find(nombre);
    if (it == m_entradas.end())
        return nullptr;
    Entrada &entrada = it->second;

    if (Ventana *abierta = entrada.abierta) {
        const QPointer<Ventana> sigue(abierta);
        if (!abierta->recibir(pedido) || !sigue)
            return nullptr;
        traerAlFrente(abierta);
        return abierta;
    }

    Ventana *ventana = entrada.fabrica();
    Q_ASSERT(ventana && ventana->objectName() == nombre);
    ventana->setAttribute(Qt::WA_DeleteOnClose);
    entrada.abierta = ventana;
    // The object lives until the event loop returns; the name is free from the moment the window agrees to close.
    connect(ventana, &Ventana::cerrada, this, [this, nombre, ventana] {
        Entrada &suya = m_entradas.at(nombre);
        if (suya.abierta == ventana)
            suya.abierta = nullptr;
    });

    const QPointer<Ventana> sigue(ventana);
    if (!ventana->recibir(pedido)) {
        if (sigue) {
            entrada.abierta = nullptr;
            ventana->deleteLater();
        }
        return nullptr;
    }
    if (entrada.abierta != ventana)
        return nullptr; // it closed itself while preparing
    // What a dialog opens comes over it: whatever is behind it waits.
    if (entrada.modo == Modo::Dialogo || (sobre && sobre->window()->isModal()))
        mostrarComoDialogo(ventana, sobre);
    else
        mostrarEnMarco(ventana);
    return ventana;
}

Ventana *Ventanas::buscar(const QString &nombre) const
{
    const auto it = m_entradas.find(nombre);
    return it == m_entradas.end() ? nullptr : it->second.abierta.data();
}

bool Ventanas::activar(const QString &nombre)
{
    Ventana *ventana = buscar(nombre);
    if (ventana)
        traerAlFrente(ventana);
    return ventana != nullptr;
}

void Ventanas::refrescar(const QStringList &nombres)
{
    for (auto &[nombre, entrada] : m_entradas) {
        Ventana *ventana = entrada.abierta;
        if (ventana && (nombres.isEmpty() || nombres.contains(nombre)))
            ventana->actualizar();
    }
    emit refrescoPedido(nombres);
}

bool Ventanas::cerrarTodas(const QString &menos)
{
    for (const Modo modo : {Modo::Dialogo, Modo::Marco})
        for (auto &[nombre, entrada] : m_entradas)
            if (entrada.modo == modo && nombre != menos && entrada.abierta && !entrada.abierta->close())
                return false;
    return true;
}

void Ventanas::mostrarEnMarco(Ventana *ventana)
{
    if (!m_area) {
        ventana->show();
        return;
    }
    QMdiSubWindow *marco = m_area->addSubWindow(ventana);
    marco->setAttribute(Qt::WA_DeleteOnClose);
    marco->setWindowIcon(ventana->windowIcon());
    // Closing the window itself leaves its frame behind, hidden and empty.
    connect(ventana, &Ventana::cerrada, marco, &QObject::deleteLater);

    const QSize sitio = m_area->viewport()->size();
    QSize tamano = marco->sizeHint().expandedTo(marco->minimumSizeHint()).boundedTo(sitio);
    if (tamano.width() * 20 > sitio.width() * 17)
        tamano = sitio; // hardly anything would show beside it: its lists get the room
    // In the middle, each a little beside the one below it, so that both titles can be seen.
    const int paso = 24 * int((m_area->subWindowList().size() - 1) % 6);
    const QPoint esquina(
        qMin(qMax(0, (sitio.width() - tamano.width()) / 2) + paso, qMax(0, sitio.width() - tamano.width())),
        qMin(qMax(0, (sitio.height() - tamano.height()) / 3) + paso, qMax(0, sitio.height() - tamano.height())));
    marco->setGeometry(QRect(esquina, tamano));
    marco->show();
    ventana->show();
    m_area->setActiveSubWindow(marco);
}

void Ventanas::mostrarComoDialogo(Ventana *ventana, QWidget *sobre)
{
    if (!sobre)
        sobre = QApplication::activeWindow();
    if (!sobre && m_area && m_area->window()->isVisible())
        sobre = m_area->window();
    if (sobre == ventana)
        sobre = nullptr;
    const QPointer<QWidget> foco(QApplication::focusWidget());
    const QPointer<QWidget> abridor(sobre);
    if (sobre) {
        ventana->setParent(sobre->window(), Qt::Dialog | Qt::WindowCloseButtonHint);
        ventana->setWindowModality(Qt::WindowModal);
    } else {
        ventana->setWindowFlags(Qt::Dialog | Qt::WindowCloseButtonHint);
    }
    centrar(ventana, sobre);
    connect(ventana, &Ventana::cerrada, this, [foco, abridor] {
        if (abridor)
            abridor->window()->activateWindow();
        if (foco)
            foco->setFocus(Qt::PopupFocusReason);
    });
    ventana->show();
    ventana->raise();
    ventana->activateWindow();
}

void Ventanas::traerAlFrente(Ventana *ventana)
{
    QWidget *marco = qobject_cast<QMdiSubWindow *>(ventana->parentWidget());
    QWidget *deArriba = marco ? marco : ventana;
    if (deArriba->isMinimized())
        deArriba->showNormal();
    deArriba->show();
    if (marco) {
        auto *sub = static_cast<QMdiSubWindow *>(marco);
        sub->mdiArea()->setActiveSubWindow(sub);
    }
    ventana->window()->raise();
    ventana->window()->activateWindow();
    // A frame that was the active one already does not take the focus back by itself: keys would reach the menu.
    QWidget *conFoco = QApplication::focusWidget();
    if (conFoco != ventana && !ventana->isAncestorOf(conFoco)) {
        QWidget *suyo = ventana->focusWidget();
        (suyo ? suyo : ventana)->setFocus(Qt::ActiveWindowFocusReason);
    }
}

} // namespace ui
