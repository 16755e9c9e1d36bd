#include "app/forms/AreaFondo.h"

#include <QFileInfo>
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
    const QDateTime cuando = QFileInfo(archivo).lastModified();
    if (archivo == m_archivo && cuando == m_cuando)
        return;
    m_archivo = archivo;
    m_cuando = cuando;
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
    // What is seen of it alone is made larger: a long thin picture as wide as the window would be gigabytes high.
    const QRect lugar = viewport()->rect();
    if (m_ajustado.size() != lugar.size()) {
        QRect vista(QPoint(0, 0), lugar.size().scaled(m_fondo.size(), Qt::KeepAspectRatio).expandedTo({1, 1}));
        vista.moveCenter(m_fondo.rect().center());
        m_ajustado = m_fondo.copy(vista).scaled(lugar.size(), Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    }
    QPainter(viewport()).drawPixmap(lugar.topLeft(), m_ajustado);
}

void AreaFondo::resizeEvent(QResizeEvent *event)
{
    QMdiArea::resizeEvent(event);
    for (QMdiSubWindow *marco : subWindowList())
        if (!marco->isMaximized() && !marco->isMinimized() && marco->size() == event->oldSize())
            marco->resize(event->size());
}

} // namespace app
