#pragma once

class QApplication;

namespace ui {

/// Makes the application speak and look as the whole system does: Argentine Spanish for dates, numbers and Qt's own
/// dialogs, the system's style (see aplicarEstilo()) and icon. Called once, before the first window.
void prepararAplicacion(QApplication &aplicacion);

} // namespace ui
