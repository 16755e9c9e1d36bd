#include "texto/TextoRico.h"

#include "texto/Rtf.h"

#include <QBuffer>
#include <QImageReader>
#include <QRegularExpression>
#include <QTextCursor>
#include <QUrl>

#include <algorithm>

namespace texto {

Formato formatoDe(QStringView guardado)
{
    static const QRegularExpression html(
        QStringLiteral("^(<!doctype|<!--|</?(html|head|body|p|div|span|font|b|i|u|s|br|center|table|ul|ol|h[1-6])\\b)"),
        QRegularExpression::CaseInsensitiveOption);
    const QStringView principio = guardado.trimmed().left(32);
    if (principio.startsWith(u"{\\rtf"))
        return Formato::Rtf;
    return html.match(principio.toString()).hasMatch() ? Formato::Html : Formato::Plano;
}

QFont letra(double puntos)
{
    QFont font;
    font.setFamilies({QStringLiteral("Liberation Sans"), QStringLiteral("Arial"), QStringLiteral("DejaVu Sans")});
    font.setPointSizeF(puntos);
    // A hair between the letters, too little to be seen, keeps "fi" two letters: drawn as one sign, "ficha" could not
    // be found in a PDF.
    font.setLetterSpacing(QFont::AbsoluteSpacing, 0.02);
    return font;
}

DocumentoCerrado::DocumentoCerrado(QObject *parent)
    : QTextDocument(parent)
{
    setDefaultFont(letra());
}

void ponerHtml(QTextDocument &destino, QString html)
{
    // A cell "over all columns" is often said to take thousands, and each becomes a cell of the document.
    static const QRegularExpression tramo(
        QStringLiteral("\\b(?:col|row)span(?=\\s*=\\s*[\"']?\\s*\\d{3})"), QRegularExpression::CaseInsensitiveOption);
    static const QRegularExpression tabla(QStringLiteral("<(/?)table\\b"), QRegularExpression::CaseInsensitiveOption);
    static const QRegularExpression renglon(QStringLiteral("<tr\\b[^>]*>"), QRegularExpression::CaseInsensitiveOption);
    static const QRegularExpression deTabla(
        QStringLiteral("</?(?:table|tbody|thead|tfoot|tr|td|th)\\b[^>]*>"), QRegularExpression::CaseInsensitiveOption);
    // Half a character would keep every expression from matching.
    if (!html.isValidUtf16())
        html = QString::fromUtf8(html.toUtf8());
    html.replace(tramo, QStringLiteral("data-span"));
    int hondura = 0, mayor = 0;
    for (auto it = tabla.globalMatch(html); it.hasNext();) {
        hondura += it.next().capturedLength(1) == 0 ? 1 : -1;
        mayor = std::max(mayor, hondura);
    }
    // Laying them out takes twice as long with every level: twenty of them, minutes.
    constexpr int honduraMaxima = 8;
    if (mayor > honduraMaxima)
        html.replace(renglon, QStringLiteral("<br>")).replace(deTabla, QStringLiteral(" "));
    destino.setHtml(html);
}

QVariant DocumentoCerrado::loadResource(int tipo, const QUrl &nombre)
{
    if (tipo != ImageResource || nombre.scheme() != u"data")
        return {};
    const QByteArray todo = nombre.path(QUrl::FullyEncoded).toLatin1();
    const qsizetype coma = todo.indexOf(',');
    const QByteArray datos = QByteArray::fromPercentEncoding(todo.mid(coma + 1));
    QByteArray bytes = todo.left(coma).endsWith(";base64") ? QByteArray::fromBase64(datos) : datos;
    QBuffer lectura(&bytes);
    QImageReader lector(&lectura);
    // A drawing may itself name a file to be shown in it.
    const QImage imagen = lector.format().startsWith("svg") ? QImage() : lector.read();
    return imagen.isNull() ? QVariant() : QVariant(imagen);
}

void cargar(QTextDocument &destino, const QString &guardado)
{
    // What was loaded is not to be undone.
    const bool deshace = destino.isUndoRedoEnabled();
    destino.setUndoRedoEnabled(false);
    switch (formatoDe(guardado)) {
    case Formato::Html: ponerHtml(destino, guardado); break;
    case Formato::Rtf: leerRtf(guardado, destino); break;
    case Formato::Plano: destino.setPlainText(guardado); break;
    }
    destino.setUndoRedoEnabled(deshace);
}

QString comoHtml(const QString &guardado)
{
    DocumentoCerrado documento;
    cargar(documento, guardado);
    return htmlDe(documento);
}

QString comoPlano(const QString &guardado)
{
    DocumentoCerrado documento;
    cargar(documento, guardado);
    return documento.toPlainText().remove(QChar::ObjectReplacementCharacter).trimmed();
}

QString reemplazar(const QString &plantilla, const QHash<QString, QString> &valores)
{
    if (valores.isEmpty())
        return comoHtml(plantilla);
    QStringList claves;
    for (auto it = valores.cbegin(); it != valores.cend(); ++it)
        claves << QRegularExpression::escape(it.key());
    const QRegularExpression marcador(QStringLiteral("<(%1)>").arg(claves.join(u'|')));

    QString fuente = plantilla;
    // Written by hand into HTML they would be taken for tags.
    if (formatoDe(fuente) == Formato::Html)
        fuente.replace(marcador, QStringLiteral("&lt;\\1&gt;"));
    DocumentoCerrado documento;
    cargar(documento, fuente);
    // In the document, not in its HTML: there a change of colour half-way would hide a placeholder.
    for (QTextCursor lugar = documento.find(marcador); !lugar.isNull();) {
        const QString clave = lugar.selectedText();
        lugar.insertText(valores.value(clave.mid(1, clave.size() - 2)));
        lugar = documento.find(marcador, lugar.position());
    }
    return htmlDe(documento);
}

} // namespace texto
