#include "ui/CampoFecha.h"

#include "base/Fechas.h"
#include "ui/Estilo.h"
#include "ui/Iconos.h"

#include <QAction>
#include <QCalendarWidget>
#include <QFocusEvent>
#include <QKeyEvent>
#include <QScreen>
#include <QTextCharFormat>
#include <QVBoxLayout>

namespace ui {

CampoFecha::CampoFecha(QWidget *parent)
    : QLineEdit(parent)
{
    setPlaceholderText(QStringLiteral("dd/mm/aaaa"));
    setMinimumWidth(fontMetrics().horizontalAdvance(QStringLiteral("00/00/0000")) + 48);
    QAction *calendario = addAction(icono(QStringLiteral("view-calendar")), TrailingPosition);
    calendario->setToolTip(tr("Elegir del calendario"));
    connect(calendario, &QAction::triggered, this, &CampoFecha::mostrarCalendario);
    connect(this, &QLineEdit::textChanged, this, &CampoFecha::avisar);
    connect(this, &QLineEdit::editingFinished, this, &CampoFecha::completar);
}

QDate CampoFecha::fecha() const { return base::leerFecha(text()).value_or(QDate()); }

void CampoFecha::setFecha(QDate fecha)
{
    setText(base::fechaTexto(fecha));
    marcar(false);
}

bool CampoFecha::isNull() const { return text().trimmed().isEmpty(); }

bool CampoFecha::esValida() const { return base::leerFecha(text()).has_value(); }

void CampoFecha::avisar()
{
    if (isNull() || esValida())
        marcar(false);
    const QDate ahora = fecha();
    if (ahora == m_avisada)
        return;
    m_avisada = ahora;
    emit fechaCambiada(ahora);
}

void CampoFecha::completar()
{
    if (isReadOnly())
        return;
    if (const QDate leida = fecha(); leida.isValid() && text() != base::fechaTexto(leida))
        setText(base::fechaTexto(leida));
    marcar(!isNull() && !esValida());
}

void CampoFecha::marcar(bool mala)
{
    if (property("invalido").toBool() == mala)
        return;
    setProperty("invalido", mala);
    setToolTip(mala ? tr("No es una fecha: escriba día/mes/año.") : QString());
    // the application's style sheet paints the field by that property
    style()->unpolish(this);
    style()->polish(this);
}

void CampoFecha::mostrarCalendario()
{
    if (isReadOnly() || !isEnabled())
        return;
    auto *marco = new QFrame(this, Qt::Popup);
    marco->setAttribute(Qt::WA_DeleteOnClose);
    marco->setFrameShape(QFrame::StyledPanel);
    auto *calendario = new QCalendarWidget(marco);
    calendario->setGridVisible(false);
    calendario->setVerticalHeaderFormat(QCalendarWidget::NoVerticalHeader);
    QTextCharFormat descanso; // the calendar's own red does not show on a dark ground
    descanso.setForeground(color::error());
    calendario->setWeekdayTextFormat(Qt::Saturday, descanso);
    calendario->setWeekdayTextFormat(Qt::Sunday, descanso);
    if (const QDate abre = esValida() ? fecha() : m_hoy; abre.isValid())
        calendario->setSelectedDate(abre);
    auto *caja = new QVBoxLayout(marco);
    caja->setContentsMargins(0, 0, 0, 0);
    caja->addWidget(calendario);
    const auto elegir = [this, marco](QDate dia) {
        setFecha(dia);
        marco->close();
        setFocus(Qt::PopupFocusReason);
    };
    connect(calendario, &QCalendarWidget::clicked, this, elegir);
    connect(calendario, &QCalendarWidget::activated, this, elegir);

    marco->adjustSize();
    const QRect pantalla = screen()->availableGeometry();
    QPoint esquina = mapToGlobal(QPoint(0, height()));
    if (esquina.y() + marco->height() > pantalla.bottom())
        esquina = mapToGlobal(QPoint(0, -marco->height()));
    esquina.setX(qMax(pantalla.left(), qMin(esquina.x(), pantalla.right() - marco->width())));
    marco->move(esquina);
    marco->show();
    calendario->setFocus();
}

void CampoFecha::keyPressEvent(QKeyEvent *event)
{
    const bool abre
        = event->key() == Qt::Key_F4 || (event->key() == Qt::Key_Down && (event->modifiers() & Qt::AltModifier));
    if (abre) {
        event->accept();
        mostrarCalendario();
        return;
    }
    QLineEdit::keyPressEvent(event);
}

void CampoFecha::focusOutEvent(QFocusEvent *event)
{
    QLineEdit::focusOutEvent(event);
    // editingFinished() stays away when nothing was typed since the last time
    if (event->reason() != Qt::PopupFocusReason)
        completar();
}

} // namespace ui
