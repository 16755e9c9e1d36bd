#include "Camara.h"

#include <QAction>
#include <QApplication>
#include <QDeadlineTimer>
#include <QLineEdit>
#include <QPainter>
#include <QPainterPath>
#include <QTimer>
#include <QToolButton>

#include <algorithm>

namespace pantallas {

namespace {

constexpr int altoTitulo = 28;

/// The button that empties a field fades in and out with its text; its animation cannot be reached, only what it
/// changes.
bool seDesvanece(const QLineEdit &campo)
{
    const auto *vaciar = campo.findChild<QAction *>(QStringLiteral("_q_qlineeditclearaction"));
    for (const auto *boton : campo.findChildren<QToolButton *>())
        if (vaciar && boton->defaultAction() == vaciar && boton->isVisible()
            && boton->property("opacity").toReal() != (campo.text().isEmpty() ? 0 : 1))
            return true;
    return false;
}

/// Whether something is still fading in or out, or waits for a pause in the typing.
bool algoPorVenir()
{
    constexpr int pausaMayor = 1000;
    for (const QWidget *ventana : QApplication::topLevelWidgets()) {
        for (const auto *campo : ventana->findChildren<QLineEdit *>())
            if (seDesvanece(*campo))
                return true;
        for (const auto *reloj : ventana->findChildren<QTimer *>())
            if (reloj->isActive() && reloj->isSingleShot() && reloj->interval() <= pausaMayor)
                return true;
    }
    return false;
}

/// In real time, as animations and pauses go by: however slow the computer, the picture is of the end.
void reposar()
{
    asentar();
    for (const QDeadlineTimer limite(10'000); algoPorVenir() && !limite.hasExpired();)
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    asentar();
}

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
}

QImage retrato(QWidget &marco)
{
    reposar();
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
