#pragma once

#include "base/Rechazo.h"
#include "patients/PacienteAbierto.h"

#include <QImage>
#include <QStringList>

namespace db {
class Entorno;
}

namespace patients {

/// The longest side of a stored photograph, in pixels: enough for a screen and a printed card.
inline constexpr int ladoDeFoto = 1200;
/// A larger file is refused unread.
inline constexpr qint64 tamanoMaximoDeFoto = 25 * 1024 * 1024;

/// The files under which the photograph of a patient lies, the one that counts first: "Foto" and his number, with any
/// ending of a picture ("Foto123", "Foto123.jpg"), whatever the case.
[[nodiscard]] QStringList archivosDeFoto(const QString &carpetaDatos, int nrohc);

/// Reads a picture, turned as the camera held it and no larger than ladoDeFoto; what the ending says of the format does
/// not count. Null image when the file is no picture, or one too large to be a photograph. Touches nothing else, so
/// that it may run beside the window's thread.
[[nodiscard]] QImage leerFoto(const QString &archivo);

/// leerFoto() of a file that somebody chose, with the refusal told: too large, or no picture.
[[nodiscard]] base::Resultado<QImage> elegirFoto(const QString &archivo);

/// Stores a patient's photograph in place of the one before, whole or not at all; makes the folders. Checks the right
/// to change patients.
[[nodiscard]] base::Control guardarFoto(db::Entorno &entorno, const PacienteAbierto &paciente, const QImage &foto);

/// Removes the photograph, after the right and the question. False: the person answered No, or there was none.
[[nodiscard]] base::Resultado<bool> eliminarFoto(db::Entorno &entorno, const PacienteAbierto &paciente);

} // namespace patients
