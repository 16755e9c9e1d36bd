#include "app/forms/AreaFondo.h"

#include <QImageReader>
#include <QMdiSubWindow>
#include <QPainter>
#include <QResizeEvent>

namespace app {

AreaFondo::AreaFondo(QWidget *parent)
    : QMdiArea(parent)
{
    setBackground(palette().color(QPalette::Window).darker(104));
    setHorizontalScrollBarPolicy(Qt::ScrollBarAsNeeded);
    setVerticalScrollBarPolicy(Qt::ScrollBarAsNeeded);
    setOption(DontMaximizeSubWindowOnActivation);
}

void AreaFondo::setFondo(const QString &archivo)
{
    QImageReader lector(archivo);
    lector.setDecideFormatFromContent(true); // the file may have no ending, or a wrong one
    lector.setAutoTransform(true);
    m_fondo = archivo.isEmpty() ? QPixmap() : QPixmap::fromImage(lector.read());
    m_ajustado = {};
    viewport()->update();
}

void AreaFondo::paintEvent(QPaintEvent *event)
{
    QMdiArea::paintEvent(event);
    if (m_fondo.isNull())
        return;
    const QRect lugar = viewport()->rect();
    const QSize tamano = m_fondo.size().scaled(lugar.size(), Qt::KeepAspectRatioByExpanding);
    if (m_ajustado.size() != tamano)
        m_ajustado = m_fondo.scaled(tamano, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    QRect centrada(QPoint(0, 0), tamano);
    centrada.moveCenter(lugar.center());
    QPainter(viewport()).drawPixmap(centrada.topLeft(), m_ajustado);
}

void AreaFondo::resizeEvent(QResizeEvent *event)
{
    QMdiArea::resizeEvent(event);
    for (QMdiSubWindow *marco : subWindowList())
        if (!marco->isMaximized() && !marco->isMinimized() && marco->size() == event->oldSize())
            marco->resize(event->size());
}

} // namespace app
