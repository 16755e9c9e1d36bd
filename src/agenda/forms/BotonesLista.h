#pragma once

class QHBoxLayout;

namespace ui {
class Grilla;
class Ventana;
} // namespace ui

namespace agenda {

/// Puts what takes a list out of its window at the end of `fila`: `copiarlista`, `exportarlista` and `imprimir`, which
/// work while the list has rows.
void ponerBotonesLista(ui::Ventana &ventana, ui::Grilla &lista, QHBoxLayout &fila);

} // namespace agenda
