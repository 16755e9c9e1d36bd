#include "agenda/forms/GrillaTurnos.h"

#include "agenda/forms/Arrastre.h"
#include "ui/Estilo.h"

#include <QApplication>
#include <QDrag>
#include <QMimeData>
#include <QMouseEvent>
#include <QPainter>
#include <QPointer>
#include <QScrollBar>

namespace agenda {

namespace {

/// Height of the strips at the top and bottom over which dragging scrolls.
constexpr int franja = 18;

/// What hangs on the pointer: the row's hour and patient.
QPixmap etiqueta(const QString &texto, const QWidget &de)
{
    const QFontMetrics letra = de.fontMetrics();
    QPixmap imagen(QSize(letra.horizontalAdvance(texto) + 16, letra.height() + 8) * de.devicePixelRatioF());
    imagen.setDevicePixelRatio(de.devicePixelRatioF());
    imagen.fill(de.palette().color(QPalette::Highlight));
    QPainter pintor(&imagen);
    pintor.setFont(de.font());
    pintor.setPen(de.palette().color(QPalette::HighlightedText));
    pintor.drawText(QRect(QPoint(0, 0), imagen.deviceIndependentSize().toSize()), Qt::AlignCenter, texto);
    return imagen;
}

} // namespace

GrillaTurnos::GrillaTurnos(const QString &nombre, const QString &encabezado, QWidget *parent)
    : Grilla(nombre, encabezado, parent)
    , m_receptor(new ReceptorDeTurnos(*viewport(), [this](QPoint lugar) { return destinoEn(lugar); }))
{
    connect(m_receptor, &ReceptorDeTurnos::soltado, this, &GrillaTurnos::soltado);
}

qint64 GrillaTurnos::destinoEn(QPoint lugar)
{
    // Held at its edge, the grid scrolls.
    if (lugar.y() < franja)
        verticalScrollBar()->setValue(verticalScrollBar()->value() - 1);
    else if (lugar.y() > viewport()->height() - franja)
        verticalScrollBar()->setValue(verticalScrollBar()->value() + 1);
    const qint64 clave = claveEn(lugar);
    return clave != 0 && (!m_esDestino || m_esDestino(clave)) ? clave : 0;
}

qint64 GrillaTurnos::claveEn(QPoint lugar) const
{
    const QModelIndex index = indexAt(lugar);
    return index.isValid() ? modelo().clave(index.row()) : 0;
}

void GrillaTurnos::mousePressEvent(QMouseEvent *event)
{
    m_prensado = 0;
    if (event->button() == Qt::LeftButton && event->modifiers() == Qt::NoModifier) {
        const qint64 clave = claveEn(event->position().toPoint());
        if (clave != 0 && m_arrastrable && m_arrastrable(clave))
            m_prensado = clave;
        m_desde = event->position().toPoint();
    }
    Grilla::mousePressEvent(event);
}

void GrillaTurnos::mouseMoveEvent(QMouseEvent *event)
{
    if (m_prensado == 0 || !(event->buttons() & Qt::LeftButton)) {
        Grilla::mouseMoveEvent(event);
        return;
    }
    if ((event->position().toPoint() - m_desde).manhattanLength() >= QApplication::startDragDistance())
        arrastrar(std::exchange(m_prensado, 0));
}

void GrillaTurnos::mouseReleaseEvent(QMouseEvent *event)
{
    m_prensado = 0;
    Grilla::mouseReleaseEvent(event);
}

void GrillaTurnos::arrastrar(qint64 id)
{
    const int fila = modelo().filaDe(id);
    if (fila < 0)
        return;
    const QPointer<GrillaTurnos> sigue(this);
    auto *arrastre = new QDrag(this);
    arrastre->setMimeData(mimeDeTurno(id));
    arrastre->setPixmap(
        etiqueta(modelo().textoCelda(fila, 0) + QStringLiteral("  ") + modelo().textoCelda(fila, 1), *this));
    arrastre->setHotSpot(QPoint(-12, 8));
    m_arrastrando = true;
    arrastre->exec(Qt::MoveAction);
    if (!sigue)
        return;
    m_arrastrando = false;
    setState(NoState);
}

void GrillaTurnos::setAviso(const QString &aviso)
{
    if (std::exchange(m_aviso, aviso) != aviso)
        viewport()->update();
}

void GrillaTurnos::paintEvent(QPaintEvent *event)
{
    Grilla::paintEvent(event);
    if (modelo().rowCount() == 0) {
        QPainter pintor(viewport());
        pintor.setPen(ui::color::tenue());
        pintor.drawText(viewport()->rect().adjusted(20, 0, -20, 0), Qt::AlignCenter | Qt::TextWordWrap, m_aviso);
        return;
    }
    const int fila = m_receptor->destino() == 0 ? -1 : modelo().filaDe(m_receptor->destino());
    if (fila < 0)
        return;
    QPainter pintor(viewport());
    pintor.setPen(QPen(palette().color(QPalette::Highlight), 2));
    pintor.drawRect(QRect(1, rowViewportPosition(fila) + 1, viewport()->width() - 3, rowHeight(fila) - 2));
}

} // namespace agenda
