#pragma once

#include "patients/RegistrosPaciente.h"

#include <QWidget>

namespace patients {

/// The column of buttons that open the records of a patient.
class ColumnaRegistros : public QWidget
{
    Q_OBJECT

public:
    explicit ColumnaRegistros(QWidget *parent = nullptr);

    /// Off while there is nobody whose records could be opened; `porQue` then is the tool tip of each.
    void setActiva(bool activa, const QString &porQue);

signals:
    void pulsado(const patients::BotonRegistro &boton);

private:
    std::vector<class QPushButton *> m_botones;
};

} // namespace patients
