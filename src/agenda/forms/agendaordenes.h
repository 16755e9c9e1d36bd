#pragma once

#include "ui/Ventana.h"

class QLabel;
class QListWidget;
class QPushButton;

namespace agenda {

/// Chooses the order to which the session of the attended appointment "id" belongs, among those of its patient with
/// sessions left; declines when there are none. Finishes with {"id": appointment, "idorden": order}.
class agendaordenes : public ui::Ventana
{
    Q_OBJECT

public:
    agendaordenes(db::Entorno &entorno, ui::Ventanas &ventanas);

    bool preparar(const ui::Pedido &pedido) override;

    QLabel *turno;
    QListWidget *listaordenes;
    QPushButton *aceptar;
    QPushButton *cancelar;

private:
    void elegir();

    qint64 m_id = 0;
};

} // namespace agenda
