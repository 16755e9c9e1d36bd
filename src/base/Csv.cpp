#include "base/Csv.h"

#include "base/Numeros.h"

#include <QRegularExpression>

#include <algorithm>

namespace base {

namespace {

/// What a spreadsheet would compute instead of show. A number is what it says, and a telephone is no formula as long as
/// there is a blank in it, or nothing but digits.
bool esFormula(const QString &texto)
{
    if (texto.size() < 2 || !QStringView(u"=+-@\t\r").contains(texto.front()))
        return false;
    static const QRegularExpression telefono(QStringLiteral("^\\+\\d+( [\\d ()./-]*)?$"));
    return !leerNumero(texto) && !telefono.match(texto).hasMatch();
}

} // namespace

QString campoCsv(QString texto)
{
    if (esFormula(texto))
        texto.prepend(u'\'');
    const bool comillas = std::any_of(
        texto.cbegin(), texto.cend(), [](QChar c) { return c == u';' || c == u'"' || c == u'\n' || c == u'\r'; });
    return comillas ? u'"' + texto.replace(u'"', QStringLiteral("\"\"")) + u'"' : texto;
}

QString campoTabulado(const QString &texto)
{
    QString celda = texto.simplified();
    if (esFormula(celda))
        celda.prepend(u'\'');
    return celda.startsWith(u'"') ? u'"' + celda.replace(u'"', QStringLiteral("\"\"")) + u'"' : celda;
}

} // namespace base
