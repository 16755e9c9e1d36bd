#pragma once

#include "printing/Documento.h"

class QWidget;
namespace db {
class Entorno;
}
namespace ui {
class Grilla;
class Ventanas;
} // namespace ui

namespace printing {

/// Shows a document as it will be printed, in the window `vistaprevia`, from where it goes to a printer or into a PDF.
void ver(ui::Ventanas &ventanas, const Documento &documento, QWidget *sobre);

/// The shown columns and all rows of a grid, in the order shown.
[[nodiscard]] Tabla tablaDe(const ui::Grilla &grilla);
/// ver() of a grid's rows under the practice's general header, on a sheet laid on its side when they are wide. Throws
/// db::Error.
void imprimirGrilla(
    db::Entorno &entorno, ui::Ventanas &ventanas, const ui::Grilla &grilla, const QString &titulo, QWidget *sobre);

} // namespace printing
