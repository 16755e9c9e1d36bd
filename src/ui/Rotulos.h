#pragma once

#include <QString>

class QLabel;
class QWidget;

namespace ui {

/// A label in bold letters, `escala` times as large, that shows its text as it stands: what a window is about.
[[nodiscard]] QLabel *rotuloFuerte(QWidget *padre, const QString &nombre, double escala = 1);

} // namespace ui
