#pragma once

#include <QString>

namespace base {

/// The practice's own pictures: files of the folder "Imagenes" of the program folder, each known by a name, with the
/// ending of a picture format or without.

/// Path of that picture; empty when there is none.
[[nodiscard]] QString imagenDelPrograma(const QString &carpetaPrograma, const QString &nombre);
/// Puts a copy of `origen` in its place, whole or not at all; false when it cannot be read or written.
[[nodiscard]] bool guardarImagen(const QString &carpetaPrograma, const QString &nombre, const QString &origen);
/// False when a file of it is left.
[[nodiscard]] bool quitarImagen(const QString &carpetaPrograma, const QString &nombre);

} // namespace base
