#pragma once

#include <QString>

namespace ui {

/// A title as the name of a file, without its ending: the signs that a file system refuses are blanks, and there is
/// always something.
[[nodiscard]] QString nombreDeArchivo(QString titulo);

} // namespace ui
