#pragma once

#include "ui/Ventana.h"

class QComboBox;
class QLabel;
class QLineEdit;
class QListWidget;
class QPushButton;
class QSpinBox;

namespace agenda {

class CalendarioMes;

/// Moves the appointment "id" to another day and hour of the same professional.
class agendamodifturno : public ui::Ventana
{
    Q_OBJECT

public:
    agendamodifturno(db::Entorno &entorno, ui::Ventanas &ventanas);

    bool preparar(const ui::Pedido &pedido) override;

    QLabel *turno;
    QComboBox *mes;
    QSpinBox *anio;
    CalendarioMes *fechadia;
    QListWidget *listahoras;
    QLineEdit *hora;
    QPushButton *guardar;
    QPushButton *cancelar;

private:
    void construir();
    void mostrarFecha();
    void save();

    qint64 m_id = 0;
    int m_doctor = 0;
};

} // namespace agenda
