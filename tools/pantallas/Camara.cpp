#include "Camara.h"

#include <QApplication>
#include <QPainter>
#include <QPainterPath>
#include <QPropertyAnimation>

#include <algorithm>

namespace pantallas {

namespace {

constexpr int altoTitulo = 28;

int profundidad(const QWidget *ventana)
{
    int n = 0;
    while ((ventana = ventana->parentWidget()))
        ++n;
    return n;
}

void pintarDialogo(QPainter &pintor, QWidget &dialogo, QPoint origen)
{
    QRect cuerpo(dialogo.mapToGlobal(QPoint(0, 0)) - origen, dialogo.size());
    if (cuerpo.top() < altoTitulo)
        cuerpo.moveTop(altoTitulo);
    const QRect todo = cuerpo.adjusted(-1, -altoTitulo, 1, 1);

    pintor.fillRect(todo.translated(3, 4), QColor(0, 0, 0, 50));
    pintor.fillRect(todo, dialogo.palette().color(QPalette::Mid));
    const QRect titulo(cuerpo.left(), cuerpo.top() - altoTitulo + 1, cuerpo.width(), altoTitulo - 1);
    pintor.fillRect(titulo, dialogo.palette().color(QPalette::Button));
    QFont negrita = dialogo.font();
    negrita.setBold(true);
    pintor.setFont(negrita);
    pintor.setPen(dialogo.palette().color(QPalette::WindowText));
    pintor.drawText(titulo.adjusted(10, 0, -30, 0), Qt::AlignVCenter | Qt::AlignLeft, dialogo.windowTitle());
    pintor.drawText(titulo.adjusted(0, 0, -10, 0), Qt::AlignVCenter | Qt::AlignRight, QStringLiteral("×"));
    pintor.drawPixmap(cuerpo.topLeft(), dialogo.grab());
}

} // namespace

void asentar()
{
    for (int i = 0; i < 5; ++i) {
        QCoreApplication::sendPostedEvents();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QCoreApplication::processEvents();
    }
    // The button that empties a field fades in and out: the picture shows it there or gone.
    for (const QWidget *ventana : QApplication::topLevelWidgets())
        for (QPropertyAnimation *animacion : ventana->findChildren<QPropertyAnimation *>())
            animacion->setCurrentTime(animacion->duration());
}

QImage retrato(QWidget &marco)
{
    asentar();
    QImage imagen = marco.grab().toImage().convertToFormat(QImage::Format_RGB32);
    std::vector<QWidget *> dialogos;
    for (QWidget *ventana : QApplication::topLevelWidgets())
        if (ventana != &marco && ventana->isVisible() && (ventana->windowType() == Qt::Dialog))
            dialogos.push_back(ventana);
    std::stable_sort(dialogos.begin(), dialogos.end(), [](const QWidget *a, const QWidget *b) {
        return profundidad(a) < profundidad(b);
    });
    QPainter pintor(&imagen);
    for (QWidget *dialogo : dialogos) {
        pintor.fillRect(imagen.rect(), QColor(0, 0, 0, 40)); // what is below waits
        pintarDialogo(pintor, *dialogo, marco.mapToGlobal(QPoint(0, 0)));
    }
    return imagen;
}

bool guardar(const QImage &imagen, const QString &archivo) { return imagen.save(archivo, "PNG", 0); }

} // namespace pantallas
