#pragma once

#include "agenda/ProximoLibre.h"
#include "ui/Ventana.h"

class QCheckBox;
class QLabel;
class QPushButton;

namespace ui {
class Grilla;
}

namespace agenda {

/// The next days with openings of the professional "doctor", or of all. Finishes with {"doctor": id, "fecha": QDate,
/// "hora": "hh:mm"} of the day chosen.
class agendalibres : public ui::Ventana
{
    Q_OBJECT

public:
    agendalibres(db::Entorno &entorno, ui::Ventanas &ventanas);

    bool preparar(const ui::Pedido &pedido) override;
    void refrescar() override;

    QCheckBox *detodos;
    ui::Grilla *lista;
    QLabel *ninguno;
    QPushButton *aceptar;
    QPushButton *cancelar;

private:
    void elegir();

    int m_doctor = 0;
    std::vector<DiaConLugar> m_dias;
};

} // namespace agenda
