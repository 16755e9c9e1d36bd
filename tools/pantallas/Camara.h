#pragma once

#include <QImage>

class QWidget;

namespace pantallas {

/// Lets every event that is waiting happen.
void asentar();

/// The frame with every dialog that stands over it, each under a title bar as a desktop would draw, once nothing fades
/// nor waits any more: as they will stay.
[[nodiscard]] QImage retrato(QWidget &marco);

/// Writes the picture as a PNG, as small as it gets.
[[nodiscard]] bool guardar(const QImage &imagen, const QString &archivo);

} // namespace pantallas
