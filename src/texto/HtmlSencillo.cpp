// How a document becomes the small HTML that is stored.

#include "texto/TextoRico.h"

#include <QTextBlock>
#include <QTextDocumentFragment>
#include <QTextList>

namespace texto {

namespace {

QString escapado(QString texto)
{
    texto.remove(QChar::ObjectReplacementCharacter);
    texto = texto.toHtmlEscaped();
    texto.replace(QChar::LineSeparator, QStringLiteral("<br>"));
    texto.replace(QChar::Nbsp, QStringLiteral("&nbsp;"));
    return texto;
}

bool tieneTamano(const QTextCharFormat &formato)
{
    return formato.hasProperty(QTextFormat::FontPointSize) || formato.hasProperty(QTextFormat::FontPixelSize)
        || formato.intProperty(QTextFormat::FontSizeAdjustment) != 0;
}

/// In points; 0 for the document's own.
double tamanoDe(const QTextCharFormat &formato, const QFont &propia)
{
    if (!tieneTamano(formato))
        return 0;
    const QFont letraDelTexto = formato.font();
    double puntos = letraDelTexto.pointSizeF() > 0 ? letraDelTexto.pointSizeF() : letraDelTexto.pixelSize() * 0.75;
    if (!formato.hasProperty(QTextFormat::FontPointSize) && !formato.hasProperty(QTextFormat::FontPixelSize)) {
        // HTML's relative sizes 1 to 7, around 3.
        constexpr double pasos[] = {0.7, 0.8, 1.0, 1.2, 1.5, 2.0, 2.4};
        const int paso = qBound(0, formato.intProperty(QTextFormat::FontSizeAdjustment) + 2, 6);
        puntos = propia.pointSizeF() * pasos[paso];
    }
    puntos = qBound(4.0, qRound(puntos * 2) / 2.0, 96.0);
    return qFuzzyCompare(puntos, propia.pointSizeF()) ? 0 : puntos;
}

QString estiloDe(const QTextCharFormat &formato, const QFont &propia, Conservar conservar)
{
    QString estilo;
    const QBrush tinta = formato.foreground();
    if (tinta.style() == Qt::SolidPattern && tinta.color().rgb() != QColor(Qt::black).rgb()) {
        const bool palida = qGray(tinta.color().rgb()) > 200;
        if (conservar == Conservar::Todo || (!palida && !formato.isAnchor()))
            estilo += QStringLiteral("color:%1;").arg(tinta.color().name());
    }
    if (conservar == Conservar::Todo) {
        if (const double puntos = tamanoDe(formato, propia); puntos > 0)
            estilo += QStringLiteral("font-size:%1pt;").arg(puntos);
        const QStringList familias = formato.fontFamilies().toStringList();
        if (!familias.isEmpty() && familias != propia.families())
            estilo += QStringLiteral("font-family:'%1';").arg(QString(familias.first()).remove(u'\'').toHtmlEscaped());
    }
    return estilo;
}

/// A stretch of a line in one format.
struct Tramo {
    QString etiquetas; ///< the letters of b, i, u and s, from the outside inwards
    QString estilo;
    QString html;
};

Tramo tramoDe(const QTextFragment &trozo, const QFont &propia, Conservar conservar)
{
    const QTextCharFormat formato = trozo.charFormat();
    QString etiquetas;
    if (formato.fontWeight() >= QFont::DemiBold)
        etiquetas += u'b';
    if (formato.fontItalic())
        etiquetas += u'i';
    if (formato.fontUnderline() && !(conservar == Conservar::Sencillo && formato.isAnchor()))
        etiquetas += u'u';
    if (formato.fontStrikeOut())
        etiquetas += u's';
    return {etiquetas, estiloDe(formato, propia, conservar), escapado(trozo.text())};
}

QString lineaDe(const QTextBlock &bloque, const QFont &propia, Conservar conservar)
{
    std::vector<Tramo> tramos;
    for (auto it = bloque.begin(); !it.atEnd(); ++it) {
        Tramo tramo = tramoDe(it.fragment(), propia, conservar);
        if (!tramos.empty() && tramos.back().etiquetas == tramo.etiquetas && tramos.back().estilo == tramo.estilo)
            tramos.back().html += tramo.html;
        else if (!tramo.html.isEmpty())
            tramos.push_back(std::move(tramo));
    }
    QString linea, abierto;
    for (const Tramo &tramo : tramos) {
        if (tramo.estilo != abierto) {
            linea += abierto.isEmpty() ? QString() : QStringLiteral("</span>");
            linea += tramo.estilo.isEmpty() ? QString() : QStringLiteral("<span style=\"%1\">").arg(tramo.estilo);
            abierto = tramo.estilo;
        }
        QString html = tramo.html;
        for (auto letra = tramo.etiquetas.crbegin(); letra != tramo.etiquetas.crend(); ++letra)
            html = QStringLiteral("<%1>%2</%1>").arg(QString(*letra), html);
        linea += html;
    }
    return abierto.isEmpty() ? linea : linea + QStringLiteral("</span>");
}

QString alineacionDe(const QTextBlock &bloque)
{
    const Qt::Alignment horizontal = bloque.blockFormat().alignment() & Qt::AlignHorizontal_Mask;
    const QString nombre = horizontal.testFlag(Qt::AlignHCenter) ? QStringLiteral("center")
        : horizontal.testFlag(Qt::AlignRight)                    ? QStringLiteral("right")
        : horizontal.testFlag(Qt::AlignJustify)                  ? QStringLiteral("justify")
                                                                 : QString();
    return nombre.isEmpty() ? QString() : QStringLiteral(" align=\"%1\"").arg(nombre);
}

QString etiquetaDe(const QTextList *lista)
{
    if (!lista)
        return {};
    return lista->format().style() <= QTextListFormat::ListDecimal ? QStringLiteral("ol") : QStringLiteral("ul");
}

} // namespace

QString htmlDe(const QTextDocument &documento, Conservar conservar)
{
    QString cuerpo;
    bool algo = false;
    const QTextList *abierta = nullptr;
    const auto cambiarLista = [&](const QTextList *lista) {
        if (lista == abierta)
            return;
        if (abierta)
            cuerpo += QStringLiteral("</%1>").arg(etiquetaDe(abierta));
        if (lista)
            cuerpo += QStringLiteral("<%1>").arg(etiquetaDe(lista));
        abierta = lista;
    };
    for (QTextBlock bloque = documento.begin(); bloque.isValid(); bloque = bloque.next()) {
        const QString linea = lineaDe(bloque, documento.defaultFont(), conservar);
        algo = algo || !bloque.text().remove(QChar::ObjectReplacementCharacter).trimmed().isEmpty();
        cambiarLista(bloque.textList());
        const QString etiqueta = bloque.textList() ? QStringLiteral("li") : QStringLiteral("p");
        if (linea.isEmpty())
            cuerpo += QStringLiteral("<%1 style=\"-qt-paragraph-type:empty\"><br></%1>").arg(etiqueta);
        else
            cuerpo += QStringLiteral("<%1%2>%3</%1>").arg(etiqueta, alineacionDe(bloque), linea);
    }
    cambiarLista(nullptr);
    if (!algo)
        return {};
    return QStringLiteral("<html><head><style>p,ul,ol,li{margin:0;white-space:pre-wrap}</style></head><body>") + cuerpo
        + QStringLiteral("</body></html>");
}

} // namespace texto
