#pragma once

class QHBoxLayout;
class QLabel;
class QPushButton;
class QVBoxLayout;
class QWidget;

namespace users {

/// The frame of the small windows that ask for a password: a picture of a key, and beside it what is asked for, as
/// `pedido`. The fields follow in the layout that comes back.
[[nodiscard]] QVBoxLayout *dialogoDeClave(QWidget &ventana, QLabel *&pedido);

/// What ends them: "Aceptar" and "Cancelar", named `aceptar` and `cancelar`.
struct Botones {
    QPushButton *aceptar;
    QPushButton *cancelar;
    QHBoxLayout *fila;
};
[[nodiscard]] Botones botonesDeClave(QWidget &ventana);

} // namespace users
