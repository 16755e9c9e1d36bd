#pragma once

#include <QMarginsF>
#include <QPageLayout>
#include <QRectF>
#include <QStringList>

namespace printing {

/// Papers, in the order of their list. Otro has a size of its own.
enum class Papel { A4, A5, Carta, Oficio, Otro };

/// The sheet that a document is printed on; all measures in millimetres.
struct Hoja {
    Papel papel = Papel::A4;
    bool apaisada = false;
    QMarginsF margenes{15, 12, 15, 12};
    QSizeF propia = {}; ///< width and height of Papel::Otro

    /// As it lies: wider than high when `apaisada` (of the given papers).
    [[nodiscard]] QSizeF tamano() const;
    /// What is within the margins, never less than 20 mm each way: margins that leave less are narrowed.
    [[nodiscard]] QRectF interior() const;
    /// For a printer or a PDF: the whole sheet, painted from its corner.
    [[nodiscard]] QPageLayout pagina() const;
    /// "A4 (210 × 297 mm)".
    [[nodiscard]] QString nombre() const;

    bool operator==(const Hoja &) const = default;
};

} // namespace printing
