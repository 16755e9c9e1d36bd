#include "agenda/forms/CampoHora.h"

#include "agenda/GrillaDia.h"

#include <QRegularExpression>

namespace agenda {

std::optional<QTime> leerHora(const QString &texto)
{
    static const QRegularExpression forma(QStringLiteral("^(\\d{1,2})(?:[:. ]?(\\d{2}))?$"));
    const auto partes = forma.match(texto.trimmed());
    if (!partes.hasMatch())
        return std::nullopt;
    const QTime hora(partes.captured(1).toInt(), partes.captured(2).toInt());
    return hora.isValid() ? std::optional(hora) : std::nullopt;
}

CampoHora::CampoHora(QWidget *parent)
    : QLineEdit(parent)
{
    setMaxLength(5);
    setAlignment(Qt::AlignHCenter);
    setFixedWidth(fontMetrics().horizontalAdvance(QStringLiteral("00:00")) + 24);
    connect(this, &QLineEdit::editingFinished, this, [this] {
        if (const auto escrita = hora())
            setHora(escrita);
    });
}

std::optional<QTime> CampoHora::hora() const { return leerHora(text()); }

void CampoHora::setHora(const std::optional<QTime> &hora) { setText(hora ? horaTexto(*hora) : QString()); }

bool CampoHora::esValida() const { return text().trimmed().isEmpty() || hora(); }

} // namespace agenda
