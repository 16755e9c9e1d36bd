#pragma once

#include <QImage>

class QWidget;

namespace pantallas {

/// Lets everything that is waiting happen, so that a window looks as it will stay.
void asentar();

/// The frame with every dialog that stands over it, each under a title bar as a desktop would draw.
[[nodiscard]] QImage retrato(QWidget &marco);

/// Writes the picture as a PNG, as small as it gets.
[[nodiscard]] bool guardar(const QImage &imagen, const QString &archivo);

} // namespace pantallas
