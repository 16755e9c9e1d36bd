#pragma once

#include <QString>

class QHBoxLayout;
class QPushButton;
class QWidget;

namespace ui {

/// A button under its given name, with its caption (mnemonic included) and one of the program's icons.
[[nodiscard]] QPushButton *
boton(QWidget *padre, const QString &nombre, const QString &texto, const QString &nombreIcono);

/// What ends every form: "Guardar" and "Cancelar", named `guardar` and `cancelar`, at the right of their row.
struct FinDeFormulario {
    QPushButton *guardar;
    QPushButton *cancelar;
    QHBoxLayout *fila;
};
[[nodiscard]] FinDeFormulario finDeFormulario(QWidget *padre);

} // namespace ui
