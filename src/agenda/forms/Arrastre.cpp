#include "agenda/forms/Arrastre.h"

#include <QCoreApplication>
#include <QDragEnterEvent>
#include <QMimeData>
#include <QWidget>

namespace agenda {

namespace {

const QString formato = QStringLiteral("application/x-vastelo-turno");

} // namespace

QMimeData *mimeDeTurno(qint64 id)
{
    auto *mime = new QMimeData;
    mime->setData(formato, QByteArray::number(QCoreApplication::applicationPid()) + ' ' + QByteArray::number(id));
    return mime;
}

qint64 turnoDe(const QMimeData *mime)
{
    const QList<QByteArray> partes = mime ? mime->data(formato).split(' ') : QList<QByteArray>();
    if (partes.size() != 2 || partes[0].toLongLong() != QCoreApplication::applicationPid())
        return 0;
    return partes[1].toLongLong();
}

ReceptorDeTurnos::ReceptorDeTurnos(QWidget &widget, DestinoEn destinoEn)
    : QObject(&widget)
    , m_widget(widget)
    , m_destinoEn(std::move(destinoEn))
{
    widget.setAcceptDrops(true);
    widget.installEventFilter(this);
}

void ReceptorDeTurnos::setDestino(qint64 destino)
{
    if (std::exchange(m_destino, destino) != destino)
        m_widget.update();
}

void ReceptorDeTurnos::alPasar(QDropEvent &event, bool suelta)
{
    const qint64 id = turnoDe(event.mimeData());
    const qint64 destino = id == 0 ? 0 : m_destinoEn(event.position().toPoint());
    setDestino(suelta ? 0 : destino);
    if (destino == 0) {
        event.ignore();
        return;
    }
    event.acceptProposedAction();
    if (suelta)
        QMetaObject::invokeMethod(
            this, [this, id, destino] { emit soltado(id, destino); }, Qt::QueuedConnection);
}

bool ReceptorDeTurnos::eventFilter(QObject *, QEvent *event)
{
    switch (event->type()) {
    case QEvent::DragEnter: {
        auto *entra = static_cast<QDragEnterEvent *>(event);
        entra->setAccepted(turnoDe(entra->mimeData()) != 0);
        return true;
    }
    case QEvent::DragMove: alPasar(*static_cast<QDropEvent *>(event), false); return true;
    case QEvent::Drop: alPasar(*static_cast<QDropEvent *>(event), true); return true;
    case QEvent::DragLeave: setDestino(0); return true;
    default: return false;
    }
}

} // namespace agenda
