#pragma once

#include "printing/Documento.h"

#include <memory>

class QPainter;

namespace printing {

/// How far into a part of the body: whole steps, and steps within one of them.
struct Lugar {
    int paso = 0;
    int resto = 0;
    bool operator==(const Lugar &) const = default;
};

/// What of a part goes on one page.
struct Corte {
    Lugar hasta; ///< equal to where it began when nothing fits
    double alto = 0; ///< layout units
    bool fin = false; ///< nothing is left
};

/// A part of a document's body that is laid out once, to a width, and then cut into pages. Internal to Paginas.
class Parte
{
public:
    virtual ~Parte() = default;
    /// What of it, beginning at `desde`, fits into `alto`. On an empty page something has to be taken, even if it does
    /// not fit.
    [[nodiscard]] virtual Corte cortar(Lugar desde, double alto, bool paginaVacia) const = 0;
    /// Paints what was cut, from the painter's origin downwards. One unit of the painter is a layout unit.
    virtual void pintar(QPainter &pintor, Lugar desde, const Corte &corte) const = 0;
};

/// `altoPagina` is the room of a page that holds nothing else.
[[nodiscard]] std::unique_ptr<Parte> hacerParte(const Bloque &bloque, double ancho, double altoPagina);

[[nodiscard]] std::unique_ptr<Parte> parteDeTexto(const QString &html, double ancho, double altoPagina);
[[nodiscard]] std::unique_ptr<Parte> parteDeTabla(const Tabla &tabla, double ancho, double altoPagina);
[[nodiscard]] std::unique_ptr<Parte> parteDeImagen(const Imagen &imagen, double ancho, double altoPagina);

} // namespace printing
