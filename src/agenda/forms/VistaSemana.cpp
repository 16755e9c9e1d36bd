#include "agenda/forms/VistaSemana.h"

#include "ui/Estilo.h"
#include "ui/Iconos.h"

#include <QHelpEvent>
#include <QPainter>
#include <QToolTip>

#include <algorithm>

namespace agenda {

namespace {

/// Slots thinner than this are not told apart.
constexpr double minimoTurno = 3;

QColor colorFranja(bool tarde)
{
    if (ui::paletaOscura())
        return tarde ? QColor(0xC9, 0x8A, 0x3A) : QColor(0x3F, 0x8F, 0xC4);
    return tarde ? QColor(0xF0, 0xB4, 0x5E) : QColor(0x6F, 0xB2, 0xE0);
}

QColor conTransparencia(QColor color, int alfa)
{
    color.setAlpha(alfa);
    return color;
}

QString horaDe(int minutos)
{
    return QStringLiteral("%1:%2").arg(minutos / 60, 2, 10, QChar(u'0')).arg(minutos % 60, 2, 10, QChar(u'0'));
}

QString ayudaDe(const Franja &franja)
{
    QString texto = QObject::tr("%1 de %2 a %3: %4 de %5 minutos")
                        .arg(
                            nombreDia(franja.dia),
                            horaDe(franja.desde),
                            horaDe(franja.hasta),
                            turnosTexto(franja.turnos),
                            QString::number(franja.duracion));
    if (franja.fin > franja.hasta)
        texto += QObject::tr("\nEl último turno termina a las %1.").arg(horaDe(franja.fin % (24 * 60)));
    return texto;
}

} // namespace

VistaSemana::VistaSemana(QWidget *parent)
    : QWidget(parent)
{
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
}

void VistaSemana::setSemana(const SemanaPlantilla &semana)
{
    m_semana = semana;
    QStringList partes;
    for (const int dia : m_orden)
        if (m_semana.turnos[size_t(dia)] > 0)
            partes << nombreDia(dia) + u' ' + turnosTexto(m_semana.turnos[size_t(dia)]);
    setAccessibleName(tr("Semana de la plantilla: %1").arg(turnosTexto(m_semana.total)));
    setAccessibleDescription(partes.join(QStringLiteral(", ")));
    update();
}

void VistaSemana::setPrimerDia(int dia)
{
    m_orden = ordenSemana(dia);
    update();
}

QSize VistaSemana::minimumSizeHint() const
{
    const QFontMetrics letra(font());
    return {
        anchoHoras() + 7 * letra.horizontalAdvance(QStringLiteral("Mié 00")), altoEncabezado() + 8 * letra.height()};
}

QSize VistaSemana::sizeHint() const { return minimumSizeHint() + QSize(60, 120); }

int VistaSemana::altoEncabezado() const { return 2 * fontMetrics().height() + 8; }

int VistaSemana::anchoHoras() const { return fontMetrics().horizontalAdvance(QStringLiteral("00:00")) + 8; }

double VistaSemana::altoDe(int minutos) const
{
    const int primero = m_semana.primeraHora * 60, ultimo = m_semana.ultimaHora * 60;
    const double alto = height() - altoEncabezado() - fontMetrics().height() / 2.0 - 1;
    return altoEncabezado() + alto * (minutos - primero) / std::max(1, ultimo - primero);
}

QRectF VistaSemana::tramo(int dia, int desde, int hasta) const
{
    const auto columna = std::find(m_orden.begin(), m_orden.end(), dia) - m_orden.begin();
    const double ancho = (width() - anchoHoras()) / 7.0;
    const double arriba = altoDe(desde);
    return {anchoHoras() + double(columna) * ancho, arriba, ancho, altoDe(hasta) - arriba};
}

QRectF VistaSemana::lugarDe(const Franja &franja) const
{
    return tramo(franja.dia, franja.desde, std::max(franja.fin, franja.hasta)).adjusted(4, 0, -4, 0);
}

void VistaSemana::pintarRenglones(QPainter &pintor) const
{
    const int letra = fontMetrics().height();
    // As many hours are named as there is room for.
    int paso = 1;
    while (altoDe(paso * 60) - altoDe(0) < letra && paso < 6)
        ++paso;
    for (int hora = m_semana.primeraHora; hora <= m_semana.ultimaHora; ++hora) {
        const double y = altoDe(hora * 60);
        pintor.setPen(conTransparencia(palette().color(QPalette::Mid), 120));
        pintor.drawLine(QPointF(anchoHoras(), y), QPointF(width(), y));
        if ((hora - m_semana.primeraHora) % paso != 0)
            continue;
        pintor.setPen(ui::color::tenue());
        pintor.drawText(
            QRectF(0, y - letra / 2.0, anchoHoras() - 5, letra),
            Qt::AlignRight | Qt::AlignVCenter,
            horaDe((hora % 24) * 60));
    }
}

void VistaSemana::pintarColumnas(QPainter &pintor) const
{
    const int letra = fontMetrics().height();
    QFont negrita = font();
    negrita.setBold(true);
    for (const int dia : m_orden) {
        const QRectF columna = tramo(dia, m_semana.primeraHora * 60, m_semana.ultimaHora * 60);
        const int turnos = m_semana.turnos[size_t(dia)];
        pintor.setFont(negrita);
        pintor.setPen(turnos > 0 ? palette().color(QPalette::Text) : ui::color::tenue());
        pintor.drawText(QRectF(columna.x(), 2, columna.width(), letra), Qt::AlignCenter, nombreDia(dia).left(3));
        pintor.setFont(font());
        pintor.drawText(
            QRectF(columna.x(), 2 + letra, columna.width(), letra),
            Qt::AlignCenter,
            turnos > 0 ? QString::number(turnos) : QStringLiteral("–"));
        pintor.setPen(conTransparencia(palette().color(QPalette::Mid), 120));
        pintor.drawLine(QPointF(columna.left(), columna.top()), QPointF(columna.left(), columna.bottom()));
    }
}

void VistaSemana::pintarFranja(QPainter &pintor, const Franja &franja) const
{
    const QColor color = colorFranja(franja.tarde);
    const QRectF todo = lugarDe(franja);
    QRectF escrito = todo;
    escrito.setBottom(std::min(todo.bottom(), altoDe(franja.hasta)));
    pintor.fillRect(todo, conTransparencia(color, 90));
    pintor.fillRect(escrito, color);
    if (altoDe(franja.duracion) - altoDe(0) >= minimoTurno) {
        pintor.setPen(conTransparencia(palette().color(QPalette::Base), 150));
        for (int t = franja.desde + franja.duracion; t < franja.fin; t += franja.duracion)
            pintor.drawLine(QPointF(todo.left(), altoDe(t)), QPointF(todo.right(), altoDe(t)));
    }
    pintor.setPen(color.darker(140));
    pintor.drawRect(todo);
}

void VistaSemana::paintEvent(QPaintEvent *)
{
    QPainter pintor(this);
    pintor.fillRect(rect(), palette().color(QPalette::Base));
    pintarRenglones(pintor);
    pintarColumnas(pintor);
    for (const Franja &franja : m_semana.franjas)
        pintarFranja(pintor, franja);
    for (const Encimada &encimada : m_semana.encimadas) {
        const QRectF lugar = tramo(encimada.dia, encimada.desde, encimada.hasta).adjusted(2, 0, -2, 0);
        pintor.fillRect(lugar, QBrush(ui::color::error(), Qt::BDiagPattern));
        pintor.setPen(QPen(ui::color::error(), 2));
        pintor.drawRect(lugar);
    }
    if (m_semana.franjas.empty()) {
        pintor.setPen(ui::color::tenue());
        const QRectF lugar(
            anchoHoras(), altoEncabezado(), width() - anchoHoras(), std::max(0, height() - altoEncabezado()));
        pintor.drawText(lugar, Qt::AlignCenter, tr("La plantilla no da turnos"));
    }
}

bool VistaSemana::event(QEvent *event)
{
    if (event->type() != QEvent::ToolTip)
        return QWidget::event(event);
    auto *ayuda = static_cast<QHelpEvent *>(event);
    for (const Franja &franja : m_semana.franjas)
        if (lugarDe(franja).contains(ayuda->pos())) {
            QToolTip::showText(ayuda->globalPos(), ayudaDe(franja), this);
            return true;
        }
    QToolTip::hideText();
    return true;
}

} // namespace agenda
