#pragma once

class QAbstractButton;
class QKeySequence;
class QWidget;

namespace agenda {

/// A key of the whole window that presses a button, once for each time it is pressed unless `repite`.
void atajoDeBoton(QWidget &ventana, const QKeySequence &tecla, QAbstractButton &boton, bool repite = false);

} // namespace agenda
