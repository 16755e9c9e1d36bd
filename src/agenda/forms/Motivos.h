#pragma once

class QComboBox;
class QHBoxLayout;
class QToolButton;

namespace db {
class Connection;
}

namespace ui {
class Ventana;
class Ventanas;
} // namespace ui

namespace agenda {

/// The list `motivo` of the reasons of consultation with the button that maintains it, side by side in a row that the
/// caller lays out.
struct EleccionMotivo {
    QComboBox *motivo;
    QToolButton *listamotivo;
    QHBoxLayout *fila;
};
[[nodiscard]] EleccionMotivo eleccionMotivo(ui::Ventana &ventana, ui::Ventanas &ventanas);

/// Loads the reasons, "<Sin motivo>" (0) first. The one chosen stays. Throws db::Error.
void cargarMotivos(QComboBox &motivo, db::Connection &conexion);

} // namespace agenda
