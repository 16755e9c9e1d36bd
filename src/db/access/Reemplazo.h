#pragma once

#include <QByteArray>
#include <QString>

namespace db::access {

/// SHA-256 of a file; empty when it cannot be read.
[[nodiscard]] QByteArray huellaDeArchivo(const QString &archivo);

/// Puts `nuevo` in the place of `archivo`, which is kept beside it as "Datos (Access original).mdb" (or "... 2", when
/// there is another one of that name). At every moment the place holds one of the two, whole. Yields the path of the
/// original, whose contents must have the fingerprint given; throws db::Error, with the place as it was.
[[nodiscard]] QString reemplazar(const QString &archivo, const QString &nuevo, const QByteArray &huella);

} // namespace db::access
