#include "ui/Ventana.h"

#include "base/Mensajes.h"
#include "db/Connection.h"
#include "db/Entorno.h"
#include "db/Error.h"
#include "db/Historial.h"
#include "ui/Avance.h"
#include "ui/Grilla.h"
#include "ui/NombreArchivo.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QAbstractSpinBox>
#include <QApplication>
#include <QClipboard>
#include <QCloseEvent>
#include <QComboBox>
#include <QKeyEvent>
#include <QLayout>
#include <QLineEdit>
#include <QSaveFile>
#include <QScreen>
#include <QTabWidget>

namespace ui {

namespace {

/// Turns over every tab page that hides `campo`.
void descubrir(QWidget *campo)
{
    for (QWidget *hijo = campo; hijo; hijo = hijo->parentWidget())
        if (auto *solapas = qobject_cast<QTabWidget *>(hijo))
            for (int i = 0; i < solapas->count(); ++i)
                if (solapas->widget(i)->isAncestorOf(campo))
                    solapas->setCurrentIndex(i);
}

} // namespace

Ventana::Ventana(db::Entorno &entorno, Ventanas &ventanas, const QString &nombre, const QString &titulo)
    : m_entorno(entorno)
    , m_ventanas(ventanas)
{
    setObjectName(nombre);
    setWindowTitle(titulo);
}

bool Ventana::preparar(const Pedido &) { return true; }

bool Ventana::recibir(const Pedido &pedido)
{
    const Pedido anterior = std::exchange(m_pedido, pedido);
    bool dispuesta = false;
    intentar([&] { dispuesta = preparar(pedido); });
    if (!dispuesta)
        m_pedido = anterior;
    return dispuesta;
}

void Ventana::actualizar()
{
    intentar([this] { refrescar(); });
}

db::Connection &Ventana::conexion() const { return m_entorno.conexion(); }

Ventana *Ventana::abrirVentana(const QString &nombre, const Pedido &pedido)
{
    if (!m_ventanas.existe(nombre)) {
        base::avisarNoDisponible(m_entorno.mensajes());
        return nullptr;
    }
    return m_ventanas.abrir(nombre, pedido, this);
}

bool Ventana::intentar(const std::function<void()> &accion)
{
    QString descripcion;
    try {
        accion();
        return true;
    } catch (const db::Error &error) {
        descripcion = error.description();
    } catch (const std::exception &) {
        descripcion = tr("No se pudo completar la acción.");
    }
    m_entorno.mensajes().fallar(base::titulo::error, descripcion);
    return false;
}

void Ventana::alPulsar(QAbstractButton *boton, const std::function<void()> &accion)
{
    connect(boton, &QAbstractButton::clicked, this, [this, accion] { intentar(accion); });
}

void Ventana::setEnter(QAbstractButton *boton, const QList<QWidget *> &campos)
{
    m_botonEnter = boton;
    m_camposEnter = campos;
}

bool Ventana::aceptado(const base::Control &control)
{
    if (!control)
        return true;
    m_entorno.mensajes().mensaje(control->titulo, control->texto, control->icono);
    if (auto *campo = control->campo.isEmpty() ? nullptr : findChild<QWidget *>(control->campo)) {
        descubrir(campo);
        campo->setFocus(Qt::OtherFocusReason);
        if (auto *linea = qobject_cast<QLineEdit *>(campo))
            linea->selectAll();
    }
    return false;
}

void Ventana::reacomodar()
{
    if (!isWindow() || isMaximized())
        return;
    layout()->activate();
    const QSize tamano = sizeHint().expandedTo(minimumSizeHint());
    const QRect sitio = screen()->availableGeometry();
    QRect donde(pos(), tamano.boundedTo(sitio.size()));
    donde.moveCenter({geometry().center().x(), donde.center().y()});
    donde.moveRight(qMin(donde.right(), sitio.right()));
    donde.moveBottom(qMin(donde.bottom(), sitio.bottom()));
    donde.moveLeft(qMax(donde.left(), sitio.left()));
    donde.moveTop(qMax(donde.top(), sitio.top()));
    setGeometry(donde);
}

void Ventana::terminar(const QVariantMap &resultado)
{
    const auto alTerminar = std::exchange(m_pedido.alTerminar, {});
    m_terminando = true;
    close();
    emit terminada(resultado);
    if (alTerminar)
        intentar([&] { alTerminar(resultado); });
}

void Ventana::exportar(const Grilla &grilla)
{
    const auto destino = m_entorno.mensajes().elegirDestino(
        tr("Exportar"), nombreDeArchivo(windowTitle()) + QStringLiteral(".csv"), tr("Planilla (*.csv)"));
    if (!destino)
        return;
    intentar([&] {
        QSaveFile archivo(*destino);
        Avance avance(this, tr("Exportando la lista..."), grilla.modelo().rowCount());
        // The mark makes spreadsheets read the accents right.
        bool escrito = archivo.open(QIODevice::WriteOnly) && archivo.write("\xEF\xBB\xBF") > 0;
        if (escrito)
            grilla.recorrerCsv([&](const QString &linea) {
                escrito = archivo.write(linea.toUtf8() + "\r\n") > 0;
                return escrito && avance.paso();
            });
        if (avance.cancelado())
            return;
        // No file without its entry in the log, and no entry without its file.
        db::Transaction transaccion(conexion());
        if (escrito)
            db::registrarHistorial(
                m_entorno,
                windowTitle(),
                tr("Exportación de la lista a un archivo. (Renglones: %1)").arg(grilla.modelo().rowCount()));
        if (!escrito || !archivo.commit())
            m_entorno.mensajes().fallar(
                base::titulo::error, tr("No se pudo escribir el archivo: %1").arg(archivo.errorString()));
        else
            transaccion.commit();
    });
}

void Ventana::copiar(const Grilla &grilla, bool soloElegidas)
{
    intentar([&] {
        Avance avance(this, tr("Copiando la lista..."), grilla.modelo().rowCount());
        QStringList lineas;
        grilla.recorrerTexto(soloElegidas, [&](const QString &linea) {
            lineas << linea;
            return avance.paso();
        });
        if (!avance.cancelado())
            QApplication::clipboard()->setText(lineas.join(u'\n'));
    });
}

bool Ventana::puedeImprimirLista() const { return bool(m_ventanas.imprimirLista()); }

void Ventana::imprimirLista(const Grilla &grilla)
{
    if (puedeImprimirLista())
        intentar([&] { m_ventanas.imprimirLista()(*this, grilla); });
}

void Ventana::closeEvent(QCloseEvent *event)
{
    if (m_preguntando) {
        event->ignore();
        return;
    }
    bool perderia = false;
    if (!m_terminando)
        intentar([&] { perderia = hayCambios(); });
    if (perderia) {
        m_preguntando = true;
        const bool cerrar = m_entorno.mensajes().pregunta(
            base::titulo::atencion, tr("Hay datos sin guardar. ¿Desea cerrar la ventana de todos modos?"), false);
        m_preguntando = false;
        if (!cerrar) {
            event->ignore();
            return;
        }
    }
    event->accept();
    emit cerrada();
}

void Ventana::keyPressEvent(QKeyEvent *event)
{
    const bool ctrl = event->modifiers() == Qt::ControlModifier;
    const bool sola = (event->modifiers() & ~Qt::KeypadModifier) == Qt::NoModifier;
    bool hecho = true;
    switch (event->key()) {
    case Qt::Key_Escape: hecho = sola; break;
    case Qt::Key_S: hecho = ctrl && pulsar(QStringLiteral("guardar")); break;
    case Qt::Key_N: hecho = ctrl && pulsar(QStringLiteral("nuevo")); break;
    case Qt::Key_P: hecho = ctrl && alImprimir(); break;
    case Qt::Key_Delete:
        hecho = sola && qobject_cast<QAbstractItemView *>(focusWidget()) && pulsar(QStringLiteral("eliminar"));
        break;
    case Qt::Key_F5:
        hecho = sola;
        if (sola)
            actualizar();
        break;
    case Qt::Key_F1: hecho = sola && mostrarAyuda(); break;
    case Qt::Key_Return:
    case Qt::Key_Enter: hecho = sola && alEnter(); break;
    default: hecho = false;
    }
    if (!hecho) {
        QWidget::keyPressEvent(event);
        return;
    }
    event->accept();
    if (event->key() == Qt::Key_Escape)
        close();
}

bool Ventana::pulsar(const QString &nombre)
{
    auto *boton = findChild<QAbstractButton *>(nombre);
    if (!boton || !boton->isVisibleTo(this) || !boton->isEnabled())
        return false;
    // Fields commit what is being typed when they lose the focus; the person goes on typing where she was.
    const QPointer<QWidget> antes(focusWidget());
    boton->setFocus(Qt::ShortcutFocusReason);
    const QPointer<QWidget> propio(focusWidget());
    boton->click();
    if (antes && focusWidget() == propio && isVisible())
        antes->setFocus(Qt::OtherFocusReason);
    return true;
}

bool Ventana::alImprimir()
{
    if (findChild<QAbstractButton *>(QStringLiteral("imprimir")))
        return pulsar(QStringLiteral("imprimir"));
    const auto *lista = qobject_cast<Grilla *>(focusWidget());
    if (!lista) {
        const QList<Grilla *> listas = findChildren<Grilla *>();
        lista = listas.size() == 1 && listas.first()->isVisibleTo(this) ? listas.first() : nullptr;
    }
    if (!lista || !puedeImprimirLista())
        return false;
    imprimirLista(*lista);
    return true;
}

bool Ventana::mostrarAyuda()
{
    if (const QString texto = ayuda(); !texto.isEmpty()) {
        m_entorno.mensajes().informar(tr("Ayuda"), texto);
        return true;
    }
    const QString nombre = QStringLiteral("ayuda");
    if (objectName() == nombre || !m_ventanas.existe(nombre))
        return false;
    // One that is open behind a dialog cannot be reached: it comes over the dialog instead.
    if (Ventana *abierta = m_ventanas.buscar(nombre); abierta && window()->isModal())
        abierta->close();
    intentar([&] { m_ventanas.abrir(nombre, {{{QStringLiteral("ventana"), objectName()}}, {}}, this); });
    return true;
}

bool Ventana::alEnter()
{
    QWidget *campo = focusWidget();
    if (!campo)
        return false;
    if (auto *boton = qobject_cast<QAbstractButton *>(campo)) {
        boton->click();
        return true;
    }
    const bool deEnter = m_camposEnter.isEmpty()
        || std::any_of(m_camposEnter.cbegin(), m_camposEnter.cend(), [campo](const QWidget *suyo) {
                             return suyo == campo || suyo->isAncestorOf(campo);
                         });
    if (m_botonEnter && deEnter && m_botonEnter->isEnabled()) {
        m_botonEnter->click();
        return true;
    }
    const bool deLinea = qobject_cast<QLineEdit *>(campo) || qobject_cast<QComboBox *>(campo)
        || qobject_cast<QAbstractSpinBox *>(campo);
    return deLinea && focusNextChild();
}

} // namespace ui
