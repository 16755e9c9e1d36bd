#pragma once

#include <QString>

class QComboBox;
class QToolButton;

namespace ui {

class Ventana;
class Ventanas;

/// The "..." button beside a list of a lookup table (F2 within the list): opens the maintenance of that table alone
/// over `ventana`, under `titulo`, with the entry chosen, or what was typed and is no entry as a proposal. The entry
/// chosen or added there becomes the list's. The list itself is loaded again by the window's refrescar(), as any change
/// of the table asks of every open window. The caller lays the button out.
[[nodiscard]] QToolButton *
botonLista(Ventana &ventana, Ventanas &ventanas, QComboBox &lista, const QString &tabla, const QString &titulo);

} // namespace ui
