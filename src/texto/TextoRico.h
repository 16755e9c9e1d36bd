#pragma once

#include <QFont>
#include <QHash>
#include <QString>
#include <QTextDocument>

/// Formatted texts as the database holds them: the small HTML that this program writes, and what older databases have,
/// RTF or plain text.
namespace texto {

enum class Formato { Plano, Html, Rtf };
/// By how the text begins: a plain text may hold "<" anywhere.
[[nodiscard]] Formato formatoDe(QStringView guardado);

/// The letters of documents: on the screen's editors and on paper alike.
[[nodiscard]] QFont letra(double puntos = 10);

/// A document that shows nothing from outside of its own text: pictures come from "data:" addresses only, never from a
/// file or the network.
class DocumentoCerrado : public QTextDocument
{
    Q_OBJECT

public:
    /// Empty, in letra().
    explicit DocumentoCerrado(QObject *parent = nullptr);

protected:
    QVariant loadResource(int tipo, const QUrl &nombre) override;
};

/// QTextDocument::setHtml() for HTML from anywhere, in reasonable time: tables nested deeper than any page needs become
/// lines, cells over hundreds of columns or rows are of one.
void ponerHtml(QTextDocument &destino, QString html);

/// Puts a stored text of any format into a document. Plain text keeps its line breaks.
void cargar(QTextDocument &destino, const QString &guardado);

/// How much of the formatting htmlDe() keeps.
enum class Conservar {
    Todo, ///< bold, italic, underline, strike-through, colour, alignment, bullets, size and name of the letter
    Sencillo ///< without size and name, and without colours that white paper would swallow: for what is pasted
};
/// The document as a small HTML text that QTextDocument reads back equal; the empty text when nothing is written in it.
/// Nothing else is kept: no pictures, tables (their cells become lines), links or colours of the background.
[[nodiscard]] QString htmlDe(const QTextDocument &documento, Conservar conservar = Conservar::Todo);

/// A stored text of any format as that small HTML.
[[nodiscard]] QString comoHtml(const QString &guardado);
/// Its words and line breaks alone, without blanks at the ends.
[[nodiscard]] QString comoPlano(const QString &guardado);

/// A stored text with every "<key>" replaced by its value, as HTML. A value is put in as it is read, letter for letter,
/// in the format of the placeholder; it is not searched for placeholders itself.
[[nodiscard]] QString reemplazar(const QString &plantilla, const QHash<QString, QString> &valores);

} // namespace texto
