#pragma once

#include "ui/Ventana.h"

class QComboBox;
class QLabel;
class QPushButton;
class QToolButton;

namespace agenda {

/// Chooses the reason for consultation of the appointment "id".
class agendamotivo : public ui::Ventana
{
    Q_OBJECT

public:
    agendamotivo(db::Entorno &entorno, ui::Ventanas &ventanas);

    bool preparar(const ui::Pedido &pedido) override;
    void refrescar() override;

    QLabel *turno;
    QComboBox *motivo;
    QToolButton *listamotivo;
    QPushButton *guardar;
    QPushButton *cancelar;

private:
    void save();

    qint64 m_id = 0;
};

} // namespace agenda
