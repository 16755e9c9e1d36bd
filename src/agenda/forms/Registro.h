#pragma once

#include <QStringList>

namespace db {
class Entorno;
}
namespace ui {
class Ventanas;
}

namespace agenda {

/// Makes the agenda's windows known under their names.
void registrarVentanas(db::Entorno &entorno, ui::Ventanas &ventanas);

/// The windows that show which days and hours are attended: to be loaded again when those change.
[[nodiscard]] QStringList ventanasDeDiasLibres();

} // namespace agenda
