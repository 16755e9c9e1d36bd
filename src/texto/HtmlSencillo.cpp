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
    if (tinta.style() == Qt::SolidPattern && tinta.color() != QColor(Qt::black)) {
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

QString fragmento(const QTextFragment &trozo, Conservar conservar)
{
    const QTextCharFormat formato = trozo.charFormat();
    QString html = escapado(trozo.text());
    const auto envolver = [&html](bool si, const QString &etiqueta) {
        if (si && !html.isEmpty())
            html = QStringLiteral("<%1>%2</%1>").arg(etiqueta, html);
    };
    envolver(formato.fontStrikeOut(), QStringLiteral("s"));
    envolver(formato.fontUnderline() && !(conservar == Conservar::Sencillo && formato.isAnchor()), QStringLiteral("u"));
    envolver(formato.fontItalic(), QStringLiteral("i"));
    envolver(formato.fontWeight() >= QFont::DemiBold, QStringLiteral("b"));
    return html;
}

QString lineaDe(const QTextBlock &bloque, const QFont &propia, Conservar conservar)
{
    QString linea, abierto;
    for (auto it = bloque.begin(); !it.atEnd(); ++it) {
        const QString html = fragmento(it.fragment(), conservar);
        if (html.isEmpty())
            continue;
        const QString estilo = estiloDe(it.fragment().charFormat(), propia, conservar);
        if (estilo != abierto) {
            linea += abierto.isEmpty() ? QString() : QStringLiteral("</span>");
            linea += estilo.isEmpty() ? QString() : QStringLiteral("<span style=\"%1\">").arg(estilo);
            abierto = estilo;
        }
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
