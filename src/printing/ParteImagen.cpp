#include "printing/Letra.h"
#include "printing/Parte.h"

#include <QPainter>

namespace printing {

namespace {

class ParteImagen final : public Parte
{
public:
    ParteImagen(const Imagen &imagen, double ancho, double altoPagina)
        : m_imagen(imagen.imagen)
        , m_anchoPagina(ancho)
    {
        if (m_imagen.isNull())
            return;
        m_lados = m_imagen.size();
        const double pedido = imagen.ancho > 0 ? qMin(enUnidades(imagen.ancho), ancho) : ancho;
        m_lados.scale(QSizeF(pedido, altoPagina), Qt::KeepAspectRatio);
    }

    Corte cortar(Lugar desde, double alto, bool paginaVacia) const override
    {
        if (m_imagen.isNull())
            return {desde, 0, true};
        if (m_lados.height() <= alto)
            return {desde, m_lados.height(), true};
        // What almost fits is made a little smaller rather than sent to a page of its own.
        return paginaVacia || alto > 0.7 * m_lados.height() ? Corte{desde, alto, true} : Corte{desde, 0, false};
    }

    void pintar(QPainter &pintor, Lugar, const Corte &corte) const override
    {
        if (m_imagen.isNull())
            return;
        const QSizeF lados = m_lados.scaled(m_anchoPagina, corte.alto, Qt::KeepAspectRatio);
        const QSizeF suyos = lados.width() > m_lados.width() ? m_lados : lados;
        pintor.setRenderHint(QPainter::SmoothPixmapTransform);
        pintor.drawImage(QRectF(QPointF((m_anchoPagina - suyos.width()) / 2, 0), suyos), m_imagen);
    }

private:
    QImage m_imagen;
    QSizeF m_lados;
    double m_anchoPagina;
};

} // namespace

std::unique_ptr<Parte> parteDeImagen(const Imagen &imagen, double ancho, double altoPagina)
{
    return std::make_unique<ParteImagen>(imagen, ancho, altoPagina);
}

std::unique_ptr<Parte> hacerParte(const Bloque &bloque, double ancho, double altoPagina)
{
    struct Hacer {
        double ancho, alto;
        std::unique_ptr<Parte> operator()(const Texto &t) const { return parteDeTexto(t.html, ancho, alto); }
        std::unique_ptr<Parte> operator()(const Tabla &t) const { return parteDeTabla(t, ancho, alto); }
        std::unique_ptr<Parte> operator()(const Imagen &i) const { return parteDeImagen(i, ancho, alto); }
    };
    return std::visit(Hacer{ancho, altoPagina}, bloque);
}

} // namespace printing
