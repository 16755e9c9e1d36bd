#pragma once

#include "maintenance/Ajustes.h"

#include <QWidget>

class QRadioButton;

namespace maintenance {

/// A choice whose few options stand open beside each other, each under its own name.
class OpcionesAbiertas : public QWidget
{
    Q_OBJECT
    Q_PROPERTY(QVariant valor READ valor WRITE setValor NOTIFY cambiado USER true)

public:
    explicit OpcionesAbiertas(const std::vector<Ajuste::Opcion> &opciones, QWidget *parent = nullptr);

    /// Null when none is chosen.
    [[nodiscard]] QVariant valor() const;
    /// A value that no option has leaves none chosen.
    void setValor(const QVariant &valor);

signals:
    void cambiado();

private:
    std::vector<std::pair<QRadioButton *, int>> m_botones;
};

} // namespace maintenance
