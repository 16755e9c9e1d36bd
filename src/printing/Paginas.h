#pragma once

#include "base/Rechazo.h"
#include "printing/Documento.h"

#include <functional>
#include <memory>

class QPagedPaintDevice;
class QPainter;

namespace printing {

class Cabecera;
class Letra;
class Parte;

/// A document laid out: the one way in which anything is painted, for the screen, a printer or a PDF. Always dark on
/// white, with the same line and page breaks everywhere. There is at least one page.
class Paginas
{
public:
    explicit Paginas(Documento documento);
    ~Paginas();
    Paginas(const Paginas &) = delete;
    Paginas &operator=(const Paginas &) = delete;

    [[nodiscard]] const Documento &documento() const { return m_documento; }
    [[nodiscard]] int cantidad() const { return int(m_paginas.size()); }
    /// Paints a page (the first is 0) on a painter whose unit is one millimetre and whose origin is the corner of the
    /// sheet. The sheet itself is not painted.
    void pintar(QPainter &pintor, int pagina) const;

private:
    struct Pieza;
    void componer();
    void pintarPie(QPainter &pintor, int pagina) const;

    Documento m_documento;
    QRectF m_interior; ///< layout units
    double m_altoCabecera = 0; ///< with the room below it
    double m_altoPie = 0;
    std::unique_ptr<Cabecera> m_cabecera;
    std::unique_ptr<Letra> m_letraPie;
    std::vector<std::unique_ptr<Parte>> m_partes;
    std::vector<std::vector<Pieza>> m_paginas;
};

/// Paints the pages from `desde` to `hasta` (the first is 0) onto a device, which must not be in use. Refused when the
/// device does not take them: the printer is gone, the file cannot be written.
[[nodiscard]] bool pintarEn(const Paginas &paginas, QPagedPaintDevice &destino, int desde, int hasta);

/// Writes the document as a PDF in which words can be searched. Whole or not at all: on failure a file that stood there
/// stays as it was, and the refusal says why.
[[nodiscard]] base::Control escribirPdf(const Paginas &paginas, const QString &archivo);

} // namespace printing
