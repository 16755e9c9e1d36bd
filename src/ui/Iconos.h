#pragma once

#include <QIcon>

namespace ui {

/// An icon of the set compiled into the program (its names are listed in iconos.txt), in the drawing that suits the
/// application's palette, light or dark. A null icon for a name that is not in the set.
[[nodiscard]] QIcon icono(const QString &nombre);

/// True when the application's palette has light text on a dark ground.
[[nodiscard]] bool paletaOscura();

} // namespace ui
