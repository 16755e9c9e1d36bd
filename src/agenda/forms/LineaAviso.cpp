#include "agenda/forms/LineaAviso.h"

namespace agenda {

LineaAviso::LineaAviso(QWidget *parent)
    : QLabel(parent)
{
    setObjectName(QStringLiteral("aviso"));
    setTextFormat(Qt::PlainText);
    setWordWrap(true);
    setAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    setMinimumHeight(2 * fontMetrics().lineSpacing() + 8);
}

void LineaAviso::mostrar(const QString &texto)
{
    setText(texto);
    setStyleSheet(
        texto.isEmpty()
            ? QString()
            : QStringLiteral("QLabel { background:#fff3c4; color:#4d3c00; border-radius:3px; padding:2px 6px; }"));
}

} // namespace agenda
