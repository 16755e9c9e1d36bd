#include "printing/Letra.h"
#include "printing/Parte.h"
#include "printing/TextoMedido.h"

#include <QAbstractTextDocumentLayout>
#include <QTextBlock>
#include <QTextLayout>

#include <algorithm>
#include <cmath>

namespace printing {

namespace {

/// A formatted text, parted between its lines. Lugar::paso is a height within the text.
class ParteTexto final : public Parte
{
public:
    ParteTexto(const QString &html, double ancho, double altoPagina)
        : m_texto(html, ancho, altoPagina)
    {
        juntarRenglones();
    }

    Corte cortar(Lugar desde, double alto, bool paginaVacia) const override;
    void pintar(QPainter &pintor, Lugar desde, const Corte &corte) const override
    {
        m_texto.pintar(pintor, desde.paso, desde.paso + corte.alto / m_texto.escala());
    }

private:
    /// Lines that stand beside each other, as in the cells of a table, and cannot be parted.
    struct Tramo {
        double desde = 0;
        double hasta = 0;
        bool vacio = true;
        bool separa = true; ///< empty, or a line drawn with "_"
    };
    void juntarRenglones();

    TextoMedido m_texto;
    std::vector<Tramo> m_renglones; ///< single lines from top to bottom
    std::vector<Tramo> m_tramos; ///< without the empty ones at the end
};

void ParteTexto::juntarRenglones()
{
    const QTextDocument &documento = m_texto.documento();
    const QAbstractTextDocumentLayout *papel = documento.documentLayout();
    for (QTextBlock bloque = documento.begin(); bloque.isValid(); bloque = bloque.next()) {
        const QPointF origen = papel->blockBoundingRect(bloque).topLeft();
        const QTextLayout *letras = bloque.layout();
        for (int i = 0; i < letras->lineCount(); ++i) {
            const QTextLine linea = letras->lineAt(i);
            const double desde = origen.y() + linea.y();
            const QString suyo = bloque.text().mid(linea.textStart(), linea.textLength());
            const bool vacio = suyo.trimmed().isEmpty();
            const bool separa = vacio || suyo.count(u'_') == suyo.trimmed().size();
            m_renglones.push_back({desde, desde + linea.height(), vacio, separa});
        }
    }
    std::sort(m_renglones.begin(), m_renglones.end(), [](const Tramo &a, const Tramo &b) { return a.desde < b.desde; });
    for (const Tramo &renglon : m_renglones) {
        // Lines may lean on each other by the rounding of their heights.
        if (!m_tramos.empty() && renglon.desde < m_tramos.back().hasta - 2) {
            m_tramos.back().hasta = qMax(m_tramos.back().hasta, renglon.hasta);
            m_tramos.back().vacio = m_tramos.back().vacio && renglon.vacio;
            m_tramos.back().separa = m_tramos.back().separa && renglon.separa;
        } else {
            m_tramos.push_back(renglon);
        }
    }
    while (!m_tramos.empty() && m_tramos.back().vacio)
        m_tramos.pop_back();
}

Corte ParteTexto::cortar(Lugar desde, double alto, bool paginaVacia) const
{
    const double escala = m_texto.escala(), limite = desde.paso + alto / escala;
    const auto primero = std::find_if(
        m_tramos.cbegin(), m_tramos.cend(), [&](const Tramo &tramo) { return tramo.hasta > desde.paso + 2; });
    if (primero == m_tramos.cend())
        return {desde, 0, true};
    auto noCabe = std::find_if(primero, m_tramos.cend(), [&](const Tramo &tramo) { return tramo.hasta > limite + 1; });
    if (noCabe == m_tramos.cend())
        return {desde, (m_tramos.back().hasta - desde.paso) * escala, true};
    if (noCabe != primero) {
        // The first line of what follows a gap does not stay alone at the end of a page.
        const auto ultimo = std::prev(noCabe);
        if (ultimo != primero && !ultimo->separa && !noCabe->separa && std::prev(ultimo)->separa)
            noCabe = ultimo;
        const double hasta = std::prev(noCabe)->hasta;
        // Blank lines would only push down what begins the next page.
        const auto sigue = std::find_if(noCabe, m_tramos.cend(), [](const Tramo &tramo) { return !tramo.vacio; });
        return {{int(sigue->desde)}, (hasta - desde.paso) * escala, false};
    }
    if (!paginaVacia)
        return {desde, 0, false};
    // Higher than a page: the page is filled, and the lines that its end cuts stand whole on the next one.
    double sigue = limite;
    for (const Tramo &renglon : m_renglones)
        if (renglon.desde > desde.paso + 2 && renglon.desde < limite && renglon.hasta > limite)
            sigue = qMin(sigue, renglon.desde);
    return {{qMax(int(sigue), desde.paso + 1)}, alto, false};
}

} // namespace

std::unique_ptr<Parte> parteDeTexto(const QString &html, double ancho, double altoPagina)
{
    return std::make_unique<ParteTexto>(html, ancho, altoPagina);
}

} // namespace printing
