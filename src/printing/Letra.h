#pragma once

#include <QFont>
#include <QFontMetricsF>
#include <QStringList>

#include <array>

class QPaintDevice;

namespace printing {

/// Pages are laid out in units of this many per inch, on whatever they are painted later: the same line breaks on the
/// screen, on every printer and in a PDF.
inline constexpr int unidadesPorPulgada = 600;
[[nodiscard]] constexpr double enUnidades(double milimetros) { return milimetros * unidadesPorPulgada / 25.4; }
[[nodiscard]] constexpr double enMilimetros(double unidades) { return unidades * 25.4 / unidadesPorPulgada; }

/// A device of that resolution, for measuring.
[[nodiscard]] QPaintDevice &dispositivoDeMedida();

/// One letter of lists and page lines, measured in layout units. Widths are sums of those of the signs, kept in a
/// table: a list of a hundred thousand cells is measured in an instant, and never too narrow.
class Letra
{
public:
    Letra(double puntos, bool negrita);

    [[nodiscard]] const QFont &font() const { return m_font; }
    [[nodiscard]] double alto() const { return m_alto; }
    [[nodiscard]] double ascenso() const { return m_ascenso; }
    [[nodiscard]] double ancho(QStringView texto) const;
    /// As it is drawn, for what ends at the right.
    [[nodiscard]] double anchoExacto(const QString &texto) const { return m_medida.horizontalAdvance(texto); }

    /// The text in lines no wider than `ancho`, parted at blanks, or within a word that is wider. At least one line.
    [[nodiscard]] QStringList renglones(const QString &texto, double ancho) const;
    [[nodiscard]] int cantidadRenglones(const QString &texto, double ancho) const;
    /// The text cut to that width, with an ellipsis.
    [[nodiscard]] QString recortado(const QString &texto, double ancho) const;
    /// Widest line and widest word.
    struct Anchos {
        double linea = 0;
        double palabra = 0;
    };
    [[nodiscard]] Anchos anchos(QStringView texto) const;

private:
    template <typename Linea>
    void partir(QStringView texto, double ancho, Linea linea) const;

    QFont m_font;
    QFontMetricsF m_medida;
    double m_alto;
    double m_ascenso;
    std::array<float, 0x250> m_signos; ///< the Latin ones
};

} // namespace printing
