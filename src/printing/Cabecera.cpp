#include "printing/Cabecera.h"

#include "printing/Letra.h"
#include "printing/TextoMedido.h"

#include <QPainter>

namespace printing {

namespace {

constexpr double altoLogo = 26, anchoLogo = 55, altoBanda = 34, espacio = 3; // millimetres

bool esBanda(const QImage &imagen) { return imagen.width() >= 3 * imagen.height(); }

/// No finer than paper shows: a photograph of a camera would make every PDF huge.
QImage reducida(const QImage &imagen, QSizeF lugar)
{
    const QSize bastan = (lugar * 300 / unidadesPorPulgada).toSize();
    return imagen.width() > bastan.width() ? imagen.scaled(bastan, Qt::KeepAspectRatio, Qt::SmoothTransformation)
                                           : imagen;
}

} // namespace

Cabecera::Cabecera(const Encabezado &encabezado, double ancho, double altoPagina)
    : m_ancho(ancho)
{
    const bool hayImagen = !encabezado.imagen.isNull();
    double izquierda = 0;
    if (hayImagen) {
        const bool banda = esBanda(encabezado.imagen);
        QSizeF lados = encabezado.imagen.size();
        lados.scale(
            banda ? QSizeF(ancho, enUnidades(altoBanda))
                  : QSizeF(qMin(enUnidades(anchoLogo), ancho / 3), enUnidades(altoLogo)),
            Qt::KeepAspectRatio);
        m_lugarImagen = QRectF(QPointF(banda ? (ancho - lados.width()) / 2 : 0, 0), lados);
        m_imagen = reducida(encabezado.imagen, lados);
        if (banda)
            m_alto = lados.height() + enUnidades(espacio);
        else
            izquierda = lados.width() + enUnidades(espacio);
    }
    if (!encabezado.general.isEmpty()) {
        m_general = std::make_unique<TextoMedido>(encabezado.general, ancho - izquierda, altoPagina);
        // Beside a picture, at half its height.
        const double sobra = izquierda > 0 ? m_lugarImagen.height() - m_general->alto() : 0;
        m_alto += qMax(0.0, sobra / 2);
        m_lugarGeneral = QPointF(izquierda, m_alto);
        m_alto += m_general->alto();
    }
    m_alto = qMax(m_alto, m_lugarImagen.bottom());
    if (!encabezado.paciente.isEmpty()) {
        if (m_alto > 0)
            m_alto += enUnidades(espacio);
        m_lugarPaciente = m_alto;
        m_paciente = std::make_unique<TextoMedido>(encabezado.paciente, ancho, altoPagina);
        m_alto += m_paciente->alto();
    }
    if (m_alto > altoPagina / 2)
        m_escala = altoPagina / 2 / m_alto;
}

Cabecera::~Cabecera() = default;

void Cabecera::pintar(QPainter &pintor) const
{
    pintor.save();
    pintor.scale(m_escala, m_escala);
    if (!m_imagen.isNull()) {
        pintor.setRenderHint(QPainter::SmoothPixmapTransform);
        pintor.drawImage(m_lugarImagen, m_imagen);
    }
    const auto texto = [&pintor](const TextoMedido *suyo, QPointF lugar) {
        if (!suyo)
            return;
        pintor.save();
        pintor.translate(lugar);
        suyo->pintar(pintor);
        pintor.restore();
    };
    texto(m_general.get(), m_lugarGeneral);
    texto(m_paciente.get(), {0, m_lugarPaciente});
    if (m_alto > 0) {
        const double raya = m_alto + enUnidades(1.2);
        pintor.setPen(QPen(QColor(0x80, 0x88, 0x90), enUnidades(0.2)));
        pintor.drawLine(QPointF(0, raya), QPointF(m_ancho / m_escala, raya));
    }
    pintor.restore();
}

} // namespace printing
