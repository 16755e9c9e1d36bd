#include "printing/TextoMedido.h"

#include "printing/Letra.h"

#include <QAbstractTextDocumentLayout>
#include <QPainter>
#include <QPalette>
#include <QTextBlock>
#include <QTextCursor>
#include <QTextLayout>

namespace printing {

namespace {

/// Pictures in the text as they are stored, in the pixels of a screen.
constexpr double pixelesPorPulgada = 96;

/// Pictures no larger than the page, and lines that may always be broken.
void domar(QTextDocument &documento, double ancho, double alto)
{
    struct Cambio {
        int desde, hasta;
        QTextImageFormat formato;
    };
    std::vector<Cambio> cambios;
    QTextCursor cursor(&documento);
    for (QTextBlock bloque = documento.begin(); bloque.isValid(); bloque = bloque.next()) {
        if (bloque.blockFormat().nonBreakableLines()) {
            QTextBlockFormat partible;
            partible.setNonBreakableLines(false);
            cursor.setPosition(bloque.position());
            cursor.mergeBlockFormat(partible);
        }
        for (auto it = bloque.begin(); !it.atEnd(); ++it) {
            QTextImageFormat imagen = it.fragment().charFormat().toImageFormat();
            if (!imagen.isValid())
                continue;
            const auto dibujo = documento.resource(QTextDocument::ImageResource, QUrl(imagen.name())).value<QImage>();
            QSizeF lados(
                imagen.width() > 0 ? imagen.width() : dibujo.width(),
                imagen.height() > 0 ? imagen.height() : dibujo.height());
            const QSizeF caben(
                ancho * pixelesPorPulgada / unidadesPorPulgada, alto * pixelesPorPulgada / unidadesPorPulgada);
            if (lados.width() <= caben.width() && lados.height() <= caben.height())
                continue;
            lados.scale(caben, Qt::KeepAspectRatio);
            imagen.setWidth(lados.width());
            imagen.setHeight(lados.height());
            cambios.push_back({it.fragment().position(), it.fragment().position() + it.fragment().length(), imagen});
        }
    }
    for (const Cambio &cambio : cambios) {
        cursor.setPosition(cambio.desde);
        cursor.setPosition(cambio.hasta, QTextCursor::KeepAnchor);
        cursor.setCharFormat(cambio.formato);
    }
}

} // namespace

TextoMedido::TextoMedido(const QString &html, double ancho, double altoMayor, double puntos)
{
    m_documento.setUndoRedoEnabled(false);
    m_documento.setDocumentMargin(0);
    m_documento.setDefaultFont(texto::letra(puntos));
    m_documento.setDefaultStyleSheet(QStringLiteral("a { color: black; text-decoration: none; }"));
    m_documento.documentLayout()->setPaintDevice(&dispositivoDeMedida());
    QTextOption opcion;
    opcion.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    m_documento.setDefaultTextOption(opcion);
    texto::ponerHtml(m_documento, html);
    domar(m_documento, ancho, altoMayor * 0.95);
    m_documento.setTextWidth(ancho);
    if (const double salido = m_documento.size().width(); salido > ancho + 1)
        m_escala = ancho / salido;
}

double TextoMedido::pintarResto(QPainter &pintor, double desde, double hasta) const
{
    const QAbstractTextDocumentLayout *papel = m_documento.documentLayout();
    const QTextBlock bloque = m_documento.findBlock(papel->hitTest({0, desde + 2}, Qt::FuzzyHit));
    const QRectF lugar = papel->blockBoundingRect(bloque);
    const bool partido = lugar.top() < desde - 1 && lugar.bottom() > desde + 1;
    if (!partido || QTextCursor(bloque).currentTable())
        return desde;
    for (int i = 0; i < bloque.layout()->lineCount(); ++i) {
        const QTextLine linea = bloque.layout()->lineAt(i);
        const double arriba = lugar.top() + linea.y();
        if (arriba > desde - 2 && arriba + linea.height() < hasta + 2)
            linea.draw(&pintor, lugar.topLeft());
    }
    return lugar.bottom();
}

void TextoMedido::pintar(QPainter &pintor, double desde, double hasta) const
{
    pintor.save();
    pintor.scale(m_escala, m_escala);
    pintor.translate(0, -desde);
    QAbstractTextDocumentLayout::PaintContext contexto;
    const QBrush negro(Qt::black), blanco(Qt::white), gris(Qt::darkGray);
    contexto.palette = QPalette(negro, blanco, blanco, gris, gris, negro, negro, blanco, blanco);
    const double ancho = m_documento.size().width();
    pintor.setClipRect(QRectF(-ancho, desde, 3 * ancho, hasta - desde), Qt::IntersectClip);
    pintor.setPen(Qt::black);
    const double bloques = desde > 0 ? pintarResto(pintor, desde, hasta) : 0;
    // A hair less than asked: a line that only touches the edge belongs to the neighbouring page.
    contexto.clip = QRectF(0, bloques + 1, ancho, hasta - bloques - 2);
    if (bloques < hasta - 2)
        m_documento.documentLayout()->draw(&pintor, contexto);
    pintor.restore();
}

} // namespace printing
