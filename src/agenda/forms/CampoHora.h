#pragma once

#include <QLineEdit>
#include <QTime>

#include <optional>

namespace agenda {

/// An hour typed as "8", "8:30", "0830" or "08.30"; written out as "08:30" when the field is left. Empty means no hour.
class CampoHora : public QLineEdit
{
    Q_OBJECT

public:
    explicit CampoHora(QWidget *parent = nullptr);

    /// Empty optional when the field is empty or holds no hour.
    [[nodiscard]] std::optional<QTime> hora() const;
    void setHora(const std::optional<QTime> &hora);
    /// Empty or an hour.
    [[nodiscard]] bool esValida() const;
};

/// Reads an hour as CampoHora does.
[[nodiscard]] std::optional<QTime> leerHora(const QString &texto);

} // namespace agenda
