#include "base/Csv.h"

#include <algorithm>

namespace base {

QString campoCsv(QString texto)
{
    const bool comillas = std::any_of(
        texto.cbegin(), texto.cend(), [](QChar c) { return c == u';' || c == u'"' || c == u'\n' || c == u'\r'; });
    return comillas ? u'"' + texto.replace(u'"', QStringLiteral("\"\"")) + u'"' : texto;
}

} // namespace base
