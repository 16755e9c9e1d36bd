#pragma once

#include <QColor>

class QApplication;
class QLayout;

namespace ui {

/// Calm colours after the system's own choice of light or dark, letters of 10 points, and one measure of room between
/// things. Also keeps the mouse wheel from changing a list, number or date that does not have the focus: scrolling a
/// form must not alter it.
void aplicarEstilo(QApplication &aplicacion);

/// Colours with a meaning, readable on both palettes.
namespace color {
[[nodiscard]] QColor error();
[[nodiscard]] QColor tenue(); ///< secondary text
} // namespace color

/// Distance between fields and from a window's edge, in pixels.
inline constexpr int margen = 8;
inline constexpr int espacio = 6;

} // namespace ui
