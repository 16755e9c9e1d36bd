#pragma once

#include "texto/TextoRico.h"

class QPainter;

namespace printing {

/// HTML laid out to a width, in layout units, in black on white whatever the screen's colours are.
class TextoMedido
{
public:
    TextoMedido(const QString &html, double ancho, double altoMayor, double puntos = 10);

    [[nodiscard]] const QTextDocument &documento() const { return m_documento; }
    /// Everything is drawn this much smaller, so that what cannot be wrapped is not cut off at the right.
    [[nodiscard]] double escala() const { return m_escala; }
    /// Of the whole text, drawn.
    [[nodiscard]] double alto() const { return m_documento.size().height() * m_escala; }
    /// Draws what lies between two heights of documento(), from the painter's origin downwards.
    void pintar(QPainter &pintor, double desde, double hasta) const;
    void pintar(QPainter &pintor) const { pintar(pintor, 0, m_documento.size().height()); }

private:
    /// Draws the lines of a paragraph that began above `desde`; yields where the paragraph ends. The layout would also
    /// draw the line before them: out of sight, but found by whoever searches the PDF.
    double pintarResto(QPainter &pintor, double desde, double hasta) const;

    texto::DocumentoCerrado m_documento;
    double m_escala = 1;
};

} // namespace printing
