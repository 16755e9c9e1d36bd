#pragma once

#include <QWidget>

class QRadioButton;

namespace patients {

/// The choice of a patient's medical coverage as [Pacientes].cobertura holds it: 1 has one, 2 has none, 0 nobody asked.
class OpcionCobertura : public QWidget
{
    Q_OBJECT
    Q_PROPERTY(int cobertura READ cobertura WRITE setCobertura NOTIFY coberturaCambiada USER true)

public:
    explicit OpcionCobertura(QWidget *parent = nullptr);

    [[nodiscard]] int cobertura() const;
    /// Any other number counts as 0.
    void setCobertura(int cobertura);
    /// Whether "nobody asked" may still be chosen: once stored, a coverage is not taken back.
    void setPuedeFaltar(bool puede);

    QRadioButton *concobertura;
    QRadioButton *sincobertura;
    QRadioButton *coberturasinindicar;

signals:
    void coberturaCambiada(int cobertura);

private:
    void avisar();

    int m_avisada = 0;
};

} // namespace patients
