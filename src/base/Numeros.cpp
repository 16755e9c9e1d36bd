#include "base/Numeros.h"

#include <QRegularExpression>

#include <cmath>

namespace base {

QString dinero(double importe)
{
    if (!std::isfinite(importe))
        return {};
    // Single-precision amounts carry about seven digits: rounding them first keeps 0.145 from becoming 0.14499999.
    const double limpio = QString::number(importe, 'g', 12).toDouble();
    const bool negativo = limpio < 0;
    const double centavos = std::floor(std::abs(limpio) * 100.0 + 0.5 + 1e-6);
    QString cifras = QString::number(centavos, 'f', 0);
    if (cifras.size() < 3)
        cifras = cifras.rightJustified(3, u'0');
    QString entero = cifras.left(cifras.size() - 2);
    for (qsizetype i = entero.size() - 3; i > 0; i -= 3)
        entero.insert(i, u'.');
    const QString texto = entero + u',' + cifras.right(2);
    return negativo && centavos > 0 ? u'-' + texto : texto;
}

std::optional<double> leerNumero(QStringView texto)
{
    static const QRegularExpression forma(QStringLiteral("^[+-]?([0-9]+([.,][0-9]+)*[.,]?|[.,][0-9]+)$"));
    QString limpio = texto.trimmed().toString();
    if (!forma.match(limpio).hasMatch())
        return std::nullopt;

    const qsizetype comas = limpio.count(u','), puntos = limpio.count(u'.');
    if (comas > 0 && puntos > 0) {
        const QChar decimal = limpio.lastIndexOf(u',') > limpio.lastIndexOf(u'.') ? u',' : u'.';
        if (limpio.count(decimal) > 1)
            return std::nullopt;
        limpio.remove(decimal == u',' ? u'.' : u',');
        limpio.replace(decimal, u'.');
    } else if (comas > 1 || puntos > 1) {
        limpio.remove(comas > 1 ? u',' : u'.');
    } else {
        limpio.replace(u',', u'.');
    }
    bool bien = false;
    const double valor = limpio.toDouble(&bien);
    return bien ? std::optional(valor) : std::nullopt;
}

} // namespace base
