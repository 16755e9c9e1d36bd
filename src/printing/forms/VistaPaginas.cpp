#include "printing/forms/VistaPaginas.h"

#include "printing/Paginas.h"

#include <QKeyEvent>
#include <QPainter>
#include <QScrollBar>
#include <QWheelEvent>

#include <algorithm>

namespace printing {

namespace {

constexpr int borde = 14; ///< pixels around the pages
constexpr double menor = 0.2, mayor = 4;
constexpr double pasos[] = {0.25, 0.5, 0.75, 1, 1.25, 1.5, 2, 3, 4};
constexpr size_t pintadasMaximas = 6;

} // namespace

VistaPaginas::VistaPaginas(QWidget *parent)
    : QAbstractScrollArea(parent)
{
    setFocusPolicy(Qt::StrongFocus);
    setFrameShape(QFrame::StyledPanel);
    // With room for it kept free, fitting the width does not depend on itself.
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
}

VistaPaginas::~VistaPaginas() = default;

void VistaPaginas::mostrar(std::shared_ptr<const Paginas> paginas)
{
    const int antes = m_paginas ? pagina() : 0;
    m_paginas = std::move(paginas);
    m_pintadas.clear();
    acomodar();
    irA(qMin(antes, m_paginas->cantidad() - 1));
    viewport()->update();
}

double VistaPaginas::pixelesPorMm() const { return m_zoom * logicalDpiX() / 25.4; }

QSize VistaPaginas::ladosHoja() const
{
    return m_paginas ? (m_paginas->documento().hoja.tamano() * pixelesPorMm()).toSize() : QSize();
}

int VistaPaginas::arriba(int pagina) const { return borde + pagina * (ladosHoja().height() + borde); }

int VistaPaginas::pagina() const
{
    if (!m_paginas)
        return 0;
    const int paso = ladosHoja().height() + borde;
    const QScrollBar *barra = verticalScrollBar();
    // The last page may be too short to reach the top.
    if (barra->value() == barra->maximum() && barra->maximum() > 0)
        return m_paginas->cantidad() - 1;
    return qBound(0, (barra->value() + viewport()->height() / 3) / paso, m_paginas->cantidad() - 1);
}

void VistaPaginas::irA(int pagina)
{
    if (!m_paginas)
        return;
    pagina = qBound(0, pagina, m_paginas->cantidad() - 1);
    verticalScrollBar()->setValue(
        pagina == m_paginas->cantidad() - 1 && pagina > 0 && ladosHoja().height() + 2 * borde <= viewport()->height()
            ? verticalScrollBar()->maximum()
            : arriba(pagina) - borde);
}

void VistaPaginas::setAjuste(Ajuste ajuste)
{
    m_ajuste = ajuste;
    acomodar();
}

void VistaPaginas::setZoom(double zoom)
{
    m_ajuste = Ajuste::Fijo;
    cambiarZoom(zoom);
    acomodar();
}

void VistaPaginas::acercar(bool mas)
{
    double nuevo = m_zoom;
    if (mas) {
        const auto *siguiente = std::upper_bound(std::begin(pasos), std::end(pasos), m_zoom + 0.01);
        nuevo = siguiente == std::end(pasos) ? mayor : *siguiente;
    } else {
        const auto *siguiente = std::lower_bound(std::begin(pasos), std::end(pasos), m_zoom - 0.01);
        nuevo = siguiente == std::begin(pasos) ? menor : *std::prev(siguiente);
    }
    setZoom(nuevo);
}

void VistaPaginas::cambiarZoom(double zoom)
{
    zoom = qBound(menor, zoom, mayor);
    if (qFuzzyCompare(zoom, m_zoom))
        return;
    const QScrollBar *barra = verticalScrollBar();
    const double lugar = barra->maximum() > 0 ? double(barra->value()) / barra->maximum() : 0;
    m_zoom = zoom;
    m_pintadas.clear();
    acomodar();
    verticalScrollBar()->setValue(qRound(lugar * verticalScrollBar()->maximum()));
    viewport()->update();
    emit zoomCambiado();
}

void VistaPaginas::acomodar()
{
    if (!m_paginas)
        return;
    const QSizeF hoja = m_paginas->documento().hoja.tamano();
    const double porMm = logicalDpiX() / 25.4;
    const double ancho = (viewport()->width() - 2 * borde) / (hoja.width() * porMm);
    const double alto = (viewport()->height() - 2 * borde) / (hoja.height() * porMm);
    if (m_ajuste == Ajuste::Ancho)
        cambiarZoom(ancho);
    else if (m_ajuste == Ajuste::Entera)
        cambiarZoom(qMin(ancho, alto));

    const QSize lados = ladosHoja();
    const int todo = arriba(m_paginas->cantidad());
    verticalScrollBar()->setPageStep(viewport()->height());
    verticalScrollBar()->setSingleStep(40);
    verticalScrollBar()->setRange(0, qMax(0, todo - viewport()->height()));
    horizontalScrollBar()->setPageStep(viewport()->width());
    horizontalScrollBar()->setSingleStep(40);
    horizontalScrollBar()->setRange(0, qMax(0, lados.width() + 2 * borde - viewport()->width()));
    viewport()->update();
}

QPixmap VistaPaginas::dibujo(int pagina)
{
    const auto ya = std::find_if(
        m_pintadas.begin(), m_pintadas.end(), [pagina](const Pintada &pintada) { return pintada.pagina == pagina; });
    if (ya != m_pintadas.end())
        return ya->dibujo;
    const double razon = devicePixelRatioF();
    QPixmap hoja(ladosHoja() * razon);
    hoja.setDevicePixelRatio(razon);
    hoja.fill(Qt::white);
    QPainter pintor(&hoja);
    pintor.scale(pixelesPorMm(), pixelesPorMm());
    m_paginas->pintar(pintor, pagina);
    pintor.end();
    m_pintadas.push_front({pagina, hoja});
    if (m_pintadas.size() > pintadasMaximas)
        m_pintadas.pop_back();
    return hoja;
}

void VistaPaginas::paintEvent(QPaintEvent *)
{
    QPainter pintor(viewport());
    pintor.fillRect(viewport()->rect(), palette().color(QPalette::Mid));
    if (!m_paginas)
        return;
    const QSize lados = ladosHoja();
    const int desplazado = verticalScrollBar()->value();
    const int x = lados.width() + 2 * borde > viewport()->width() ? borde - horizontalScrollBar()->value()
                                                                  : (viewport()->width() - lados.width()) / 2;
    for (int n = qMax(0, desplazado / (lados.height() + borde) - 1); n < m_paginas->cantidad(); ++n) {
        const QRect lugar(QPoint(x, arriba(n) - desplazado), lados);
        if (lugar.top() > viewport()->height())
            break;
        if (lugar.bottom() < 0)
            continue;
        pintor.fillRect(lugar.translated(3, 3), QColor(0, 0, 0, 60));
        pintor.drawPixmap(lugar.topLeft(), dibujo(n));
    }
}

void VistaPaginas::resizeEvent(QResizeEvent *event)
{
    QAbstractScrollArea::resizeEvent(event);
    acomodar();
}

void VistaPaginas::scrollContentsBy(int, int)
{
    viewport()->update();
    if (const int actual = pagina(); std::exchange(m_avisada, actual) != actual)
        emit paginaCambiada(actual);
}

void VistaPaginas::keyPressEvent(QKeyEvent *event)
{
    switch (event->key()) {
    case Qt::Key_PageUp: irA(pagina() - 1); break;
    case Qt::Key_PageDown: irA(pagina() + 1); break;
    case Qt::Key_Home: irA(0); break;
    case Qt::Key_End: irA(m_paginas ? m_paginas->cantidad() - 1 : 0); break;
    case Qt::Key_Plus: acercar(true); break;
    case Qt::Key_Minus: acercar(false); break;
    default: QAbstractScrollArea::keyPressEvent(event); return;
    }
    event->accept();
}

void VistaPaginas::wheelEvent(QWheelEvent *event)
{
    if (event->modifiers() & Qt::ControlModifier) {
        if (event->angleDelta().y() != 0)
            acercar(event->angleDelta().y() > 0);
        event->accept();
    } else {
        QAbstractScrollArea::wheelEvent(event);
    }
}

} // namespace printing
