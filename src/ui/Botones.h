#pragma once

#include <QString>

class QHBoxLayout;
class QPushButton;
class QToolButton;
class QWidget;

namespace ui {

/// A button under its given name, with its caption (mnemonic included), one of the program's icons and a tool tip.
[[nodiscard]] QPushButton *boton(
    QWidget *padre, const QString &nombre, const QString &texto, const QString &nombreIcono, const QString &ayuda = {});

/// A small flat button that shows a sign; `ayuda` is its tool tip and what is read aloud.
[[nodiscard]] QToolButton *flecha(QWidget *padre, const QString &nombre, const QString &signo, const QString &ayuda);

/// What ends every form: "Guardar" and "Cancelar", named `guardar` and `cancelar`, at the right of their row.
struct FinDeFormulario {
    QPushButton *guardar;
    QPushButton *cancelar;
    QHBoxLayout *fila;
};
[[nodiscard]] FinDeFormulario finDeFormulario(QWidget *padre);

} // namespace ui
