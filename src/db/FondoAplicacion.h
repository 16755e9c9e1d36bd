#pragma once

#include <QString>

namespace db {

class Entorno;

/// Path of the picture shown behind the windows; empty when the practice wants none or the file is not there. The first
/// row of `Config` says whether; the file is "fondoaplicacion" among the program's pictures.
[[nodiscard]] QString fondoAplicacion(Entorno &entorno);

} // namespace db
