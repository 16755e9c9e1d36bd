#pragma once

#include <QStringList>

namespace pantallas {

/// What became of a round of pictures.
struct Resultado {
    QStringList archivos; ///< names of the files written, in their order
    QStringList ventanas; ///< registered windows that were seen open in some picture, sorted
    QStringList faltan; ///< registered windows that no picture shows
    QStringList problemas; ///< scenes that could not be set up, messages nobody asked for, files not written
};

/// Opens every window over the made-up practice and writes a PNG of each to `carpeta`, which is made when missing.
/// Needs a QApplication that ui::prepararAplicacion() has dressed, on a screen of at least 1280x800. Throws db::Error.
[[nodiscard]] Resultado retratar(const QString &carpeta);

} // namespace pantallas
