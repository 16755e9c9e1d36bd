#include "agenda/forms/CalendarioMes.h"

#include "agenda/forms/Arrastre.h"

#include <QHelpEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QToolTip>

namespace agenda {

namespace {

/// Title, weekday names, and six weeks: the most that a month touches.
constexpr int filas = 8;

} // namespace

CalendarioMes::CalendarioMes(QWidget *parent)
    : QWidget(parent)
    , m_fecha(2000, 1, 1)
{
    setFocusPolicy(Qt::StrongFocus);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    disponer();
}

void CalendarioMes::setFecha(QDate fecha)
{
    if (!fecha.isValid() || fecha == m_fecha)
        return;
    m_fecha = fecha;
    disponer();
    emit fechaElegida(fecha);
}

void CalendarioMes::setHoy(QDate hoy)
{
    m_hoy = hoy;
    update();
}

void CalendarioMes::setPrimerDia(int dia)
{
    m_primerDia = dia;
    disponer();
}

void CalendarioMes::setEncabezadosCortos(bool cortos)
{
    m_encabezadosCortos = cortos;
    update();
}

void CalendarioMes::setMarcas(std::set<QDate> conTurnos, std::set<QDate> noLaborables)
{
    m_conTurnos = std::move(conTurnos);
    m_noLaborables = std::move(noLaborables);
    update();
}

void CalendarioMes::disponer()
{
    m_mes = mesCalendario(m_fecha.year(), m_fecha.month(), m_primerDia);
    setAccessibleName(m_mes.titulo());
    update();
}

QSize CalendarioMes::sizeHint() const
{
    const QFontMetrics letra(font());
    return {7 * letra.horizontalAdvance(QStringLiteral("Mié.")), filas * (letra.height() + 6)};
}

QSize CalendarioMes::minimumSizeHint() const { return sizeHint(); }

QRectF CalendarioMes::celda(int fila, int columna) const
{
    const double ancho = width() / 7.0, alto = height() / double(filas);
    return {columna * ancho, fila * alto, ancho, alto};
}

QPoint CalendarioMes::lugarDe(QDate fecha) const
{
    for (size_t semana = 0; semana < m_mes.semanas.size(); ++semana)
        for (size_t i = 0; i < 7; ++i)
            if (m_mes.semanas[semana][i] == fecha)
                return celda(int(semana) + 2, int(i)).center().toPoint();
    return {};
}

QDate CalendarioMes::fechaEn(QPointF lugar) const
{
    for (const auto &semana : m_mes.semanas)
        for (const QDate &dia : semana)
            if (const QPoint centro = lugarDe(dia); dia.isValid()) {
                const QRectF c = celda(0, 0);
                if (QRectF(centro.x() - c.width() / 2, centro.y() - c.height() / 2, c.width(), c.height())
                        .contains(lugar))
                    return dia;
            }
    return {};
}

void CalendarioMes::pintarDia(QPainter &pintor, QRectF lugar, QDate dia) const
{
    const QPalette &p = palette();
    const bool elegido = dia == m_fecha;
    const bool libre = m_noLaborables.contains(dia);
    const QRectF dentro = lugar.adjusted(1, 1, -1, -1);
    if (elegido)
        pintor.fillRect(dentro, p.color(hasFocus() ? QPalette::Active : QPalette::Inactive, QPalette::Highlight));
    if (dia == m_hoy) {
        pintor.setPen(QPen(p.color(elegido ? QPalette::HighlightedText : QPalette::Highlight), 1));
        pintor.drawRect(dentro.adjusted(0.5, 0.5, -0.5, -0.5));
    }

    if (m_receptor && dia.toJulianDay() == m_receptor->destino()) {
        pintor.setPen(QPen(p.color(QPalette::Highlight), 2));
        pintor.drawRect(dentro.adjusted(1, 1, -1, -1));
    }

    QFont letra = font();
    letra.setBold(m_conTurnos.contains(dia));
    letra.setStrikeOut(libre);
    pintor.setFont(letra);
    const auto rol = elegido ? QPalette::HighlightedText : QPalette::Text;
    pintor.setPen(p.color(libre && !elegido ? QPalette::Disabled : QPalette::Active, rol));
    pintor.drawText(lugar, Qt::AlignCenter, QString::number(dia.day()));
    if (m_conTurnos.contains(dia)) {
        const double ancho = lugar.width() / 2;
        pintor.fillRect(
            QRectF(lugar.center().x() - ancho / 2, lugar.bottom() - 4, ancho, 2),
            p.color(elegido ? QPalette::HighlightedText : QPalette::Highlight));
    }
}

void CalendarioMes::paintEvent(QPaintEvent *)
{
    QPainter pintor(this);
    pintor.fillRect(rect(), palette().color(QPalette::Base));
    QFont negrita = font();
    negrita.setBold(true);
    pintor.setFont(negrita);
    pintor.setPen(palette().color(QPalette::Text));
    pintor.drawText(QRectF(0, 0, width(), celda(0, 0).height()), Qt::AlignCenter, m_mes.titulo());

    pintor.setFont(font());
    const QRectF franja(0, celda(1, 0).top(), width(), celda(1, 0).height());
    pintor.fillRect(franja, palette().color(QPalette::AlternateBase));
    const QStringList dias = m_mes.encabezados(m_encabezadosCortos);
    for (int i = 0; i < 7; ++i)
        pintor.drawText(celda(1, i), Qt::AlignCenter, dias.at(i));

    for (size_t semana = 0; semana < m_mes.semanas.size(); ++semana)
        for (size_t i = 0; i < 7; ++i)
            if (const QDate dia = m_mes.semanas[semana][i]; dia.isValid())
                pintarDia(pintor, celda(int(semana) + 2, int(i)), dia);
}

void CalendarioMes::mousePressEvent(QMouseEvent *event)
{
    if (event->button() == Qt::LeftButton)
        setFecha(fechaEn(event->position()));
}

void CalendarioMes::setAceptaTurnos()
{
    m_receptor = new ReceptorDeTurnos(*this, [this](QPoint lugar) -> qint64 {
        const QDate fecha = fechaEn(lugar);
        return fecha.isValid() ? fecha.toJulianDay() : 0;
    });
    connect(m_receptor, &ReceptorDeTurnos::soltado, this, [this](qint64 id, qint64 dia) {
        emit turnoSoltado(id, QDate::fromJulianDay(dia));
    });
}

void CalendarioMes::wheelEvent(QWheelEvent *event)
{
    // Scrolling what lies around it must not change the day.
    if (!hasFocus()) {
        event->ignore();
        return;
    }
    // Fine wheels send many small steps: a whole notch is a month.
    m_rueda += event->angleDelta().y();
    const int pasos = m_rueda / 120;
    m_rueda -= pasos * 120;
    setFecha(m_fecha.addMonths(-pasos));
    event->accept();
}

void CalendarioMes::keyPressEvent(QKeyEvent *event)
{
    const bool mayus = event->modifiers() == Qt::ShiftModifier;
    if (event->modifiers() & ~(Qt::ShiftModifier | Qt::KeypadModifier)) {
        QWidget::keyPressEvent(event);
        return;
    }
    switch (event->key()) {
    case Qt::Key_Left: setFecha(m_fecha.addDays(-1)); break;
    case Qt::Key_Right: setFecha(m_fecha.addDays(1)); break;
    case Qt::Key_Up: setFecha(m_fecha.addDays(-7)); break;
    case Qt::Key_Down: setFecha(m_fecha.addDays(7)); break;
    case Qt::Key_PageUp: setFecha(mayus ? m_fecha.addYears(-1) : m_fecha.addMonths(-1)); break;
    case Qt::Key_PageDown: setFecha(mayus ? m_fecha.addYears(1) : m_fecha.addMonths(1)); break;
    case Qt::Key_Home: setFecha(m_hoy); break;
    default: QWidget::keyPressEvent(event); return;
    }
    event->accept();
}

bool CalendarioMes::event(QEvent *event)
{
    if (event->type() == QEvent::ToolTip) {
        auto *ayuda = static_cast<QHelpEvent *>(event);
        const QDate dia = fechaEn(ayuda->pos());
        QStringList textos;
        if (m_noLaborables.contains(dia))
            textos << tr("No se atiende");
        if (m_conTurnos.contains(dia))
            textos << tr("Tiene turnos");
        if (textos.isEmpty())
            QToolTip::hideText();
        else
            QToolTip::showText(ayuda->globalPos(), textos.join(u'\n'), this);
        return true;
    }
    return QWidget::event(event);
}

} // namespace agenda
