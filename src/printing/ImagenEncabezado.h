#pragma once

#include "printing/Encabezados.h"

#include <QByteArray>
#include <QImage>

namespace printing {

/// The header picture: the file "encabezado" in the folder "Imagenes" of this computer's program folder.
[[nodiscard]] QString archivoImagen(const db::Entorno &entorno);
/// Its bytes; empty when there is none, or one larger than a header picture may be.
[[nodiscard]] QByteArray leerImagen(const db::Entorno &entorno);
/// A picture from its bytes, whatever its format; null for anything else and for what no header could need.
[[nodiscard]] QImage imagenDe(const QByteArray &bytes);

/// Copies a file there in the place of the former one, whole or not at all. Refused when it is no picture, larger than
/// 4 MB or 8000 pixels a side, or cannot be copied; the former one then stays.
[[nodiscard]] base::Control ponerImagen(db::Entorno &entorno, const QString &archivo, int administrador = 0);
/// Deletes it, after asking; false: the person said no. No file to delete is no failure.
[[nodiscard]] base::Resultado<bool> quitarImagen(db::Entorno &entorno, int administrador = 0);

} // namespace printing
