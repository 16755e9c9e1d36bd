#pragma once

#include "ui/Ventana.h"

class QPushButton;

namespace ui {
class CampoClave;
}

namespace users {

/// The gate in front of the configuration: hands the name of the administrator whose password was typed, as
/// "administrador", to whoever asked.
class usuariosadmin : public ui::Ventana
{
    Q_OBJECT

public:
    usuariosadmin(db::Entorno &entorno, ui::Ventanas &ventanas);

    bool preparar(const ui::Pedido &pedido) override;

    ui::CampoClave *claveactual;
    QPushButton *aceptar;
    QPushButton *cancelar;

private:
    void pasar();
};

} // namespace users
