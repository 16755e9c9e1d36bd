#pragma once

#include "ui/Ventana.h"

class QCheckBox;
class QLabel;
class QPushButton;

namespace ui {
class CampoFecha;
}

namespace agenda {

/// Writes the appointments of the professional "doctor" (`id`) into a calendar file.
class agendaexportar : public ui::Ventana
{
    Q_OBJECT

public:
    agendaexportar(db::Entorno &entorno, ui::Ventanas &ventanas);

    bool preparar(const ui::Pedido &pedido) override;

    QLabel *profesional;
    ui::CampoFecha *desde;
    ui::CampoFecha *hasta;
    QCheckBox *connombres;
    QCheckBox *conbloqueados;
    QPushButton *guardar;
    QPushButton *cancelar;

private:
    void save();

    int m_doctor = 0;
};

} // namespace agenda
