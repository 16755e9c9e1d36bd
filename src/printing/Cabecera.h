#pragma once

#include "printing/Documento.h"

#include <memory>

class QPainter;

namespace printing {

class TextoMedido;

/// The headers at the top of every page, laid out. Internal to Paginas.
class Cabecera
{
public:
    /// Never higher than half of `altoPagina`: what is higher is drawn smaller.
    Cabecera(const Encabezado &encabezado, double ancho, double altoPagina);
    ~Cabecera();

    /// Layout units; 0 when there is nothing.
    [[nodiscard]] double alto() const { return m_alto * m_escala; }
    void pintar(QPainter &pintor) const;

private:
    QImage m_imagen;
    QRectF m_lugarImagen;
    std::unique_ptr<TextoMedido> m_general;
    QPointF m_lugarGeneral;
    std::unique_ptr<TextoMedido> m_paciente;
    double m_lugarPaciente = 0;
    double m_ancho;
    double m_alto = 0;
    double m_escala = 1;
};

} // namespace printing
