#include "agenda/forms/Arrastre.h"

#include <QCoreApplication>
#include <QMimeData>

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

} // namespace agenda
