#pragma once

#include "ui/Ventana.h"

class QPushButton;

namespace app {

/// The about box.
class acerca : public ui::Ventana
{
    Q_OBJECT

public:
    acerca(db::Entorno &entorno, ui::Ventanas &ventanas);

    QPushButton *copiar;
    QPushButton *cerrar;
};

} // namespace app
