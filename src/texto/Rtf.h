#pragma once

#include <QStringView>

class QTextDocument;

namespace texto {

/// Reads RTF, as the rich-text boxes of older databases wrote it, into a document: words, line breaks, bold, italic,
/// underline, strike-through, size, name and colour of the letter, alignment; bullets become the sign. Takes anything:
/// what it does not know is passed over, a text that is cut off gives what there is of it.
void leerRtf(QStringView rtf, QTextDocument &destino);

} // namespace texto
