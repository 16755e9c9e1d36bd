#include "base/NumeroHistoria.h"

#include <algorithm>

namespace base {

namespace {

constexpr int cifras = 6;

bool soloCifras(QStringView texto)
{
    return !texto.isEmpty() && std::all_of(texto.begin(), texto.end(), [](QChar c) { return c >= u'0' && c <= u'9'; });
}

QString sinCerosDelante(const QString &numero)
{
    qsizetype i = 0;
    while (i < numero.size() - 1 && numero.at(i) == u'0')
        ++i;
    return numero.mid(i);
}

// On the digits themselves, so that no length of number overflows.
QString masUno(QString numero)
{
    for (qsizetype i = numero.size() - 1; i >= 0; --i) {
        if (numero.at(i) != u'9') {
            numero[i] = QChar(numero.at(i).unicode() + 1);
            return numero;
        }
        numero[i] = u'0';
    }
    return u'1' + numero;
}

} // namespace

QString componerNumeroHistoria(const QString &prefijo, const QString &numero)
{
    const QString n = numero.trimmed();
    return prefijo.trimmed() + (soloCifras(n) ? sinCerosDelante(n).rightJustified(cifras, u'0') : n);
}

std::optional<QString> numeroHistoriaSiguiente(const QString &numero)
{
    const QString n = numero.trimmed();
    if (!soloCifras(n))
        return std::nullopt;
    return masUno(sinCerosDelante(n));
}

} // namespace base
