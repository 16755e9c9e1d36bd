#pragma once

#include "printing/Documento.h"

#include <vector>

namespace printing {

/// How the columns of a list share the width of a page, and in which size of letter.
struct AnchosTabla {
    double puntos = 9;
    std::vector<double> columnas; ///< layout units, room around the text included; together no more than the page
};

/// Room at each side of a cell's text.
[[nodiscard]] double margenCelda();

/// A letter of 9 points, or 8, where nothing has to wrap but texts that would take a third of the page; else all texts
/// wrap in 8 points; where even their longest words do not fit the letter goes down to 5, and then words are broken.
/// Nothing is ever wider than `ancho`.
[[nodiscard]] AnchosTabla repartir(const Tabla &tabla, double ancho);

/// True when the list reads better on the sheet laid on its side: upright it would need a smaller letter or more lines.
[[nodiscard]] bool convieneApaisada(const Tabla &tabla, const Hoja &parada);

} // namespace printing
