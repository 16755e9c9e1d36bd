#include "agenda/TelefonoMovil.h"

#include <QStringList>

namespace agenda {

namespace {

constexpr qsizetype nacional = 10; ///< digits of area code and number

/// What is left of a telephone without its prefixes, and whether one of them said that it is a mobile.
struct Numero {
    QString digitos; ///< area code and number, ten digits
    bool comoMovil = false;
};

bool esAreaDeTres(QStringView n)
{
    static const QStringList areas
        = QStringLiteral("220 221 223 230 236 237 249 260 261 263 264 266 280 291 294 297 298 299 336 341 342 343 345"
                         " 348 351 353 358 362 364 370 376 379 380 381 383 385 387 388")
              .split(u' ');
    // Some codes of four digits begin like one of three (294 is Bariloche, 2945 Esquel), which matters only where the
    // fourth could not begin a number.
    return areas.contains(n.left(3)) && !n.startsWith(u"2940");
}

/// Length of the area code that is followed by the local mark 15; 0 for none. No number begins with 1, so that one is
/// taken for the mark even where a digit is missing further on.
int areaConQuince(QStringView n)
{
    const auto quince = [n](qsizetype area) { return n.mid(area, 2) == u"15"; };
    if (n.startsWith(u"11"))
        return quince(2) ? 2 : 0;
    if (esAreaDeTres(n) && quince(3))
        return 3;
    return n.size() > nacional && quince(4) ? 4 : 0;
}

std::optional<Numero> leer(const QString &telefono)
{
    const QString escrito = telefono.trimmed();
    QString n;
    for (const QChar c : escrito)
        if (c >= u'0' && c <= u'9')
            n += c;

    bool internacional = escrito.startsWith(u'+') || escrito.startsWith(QLatin1String("(+"));
    if (!internacional && n.startsWith(u"00")) {
        internacional = true;
        n.remove(0, 2);
    }
    // No area code begins with 5.
    const bool conPais = n.startsWith(u"54") && n.size() >= nacional + 2;
    if (internacional && !conPais)
        return std::nullopt;
    if (conPais)
        n.remove(0, 2);

    Numero numero;
    const auto quitar = [&n](QChar digito) {
        const bool estaba = n.startsWith(digito);
        if (estaba)
            n.remove(0, 1);
        return estaba;
    };
    quitar(u'0');
    numero.comoMovil = quitar(u'9');
    if (numero.comoMovil)
        quitar(u'0');
    if (!n.startsWith(u"11") && !n.startsWith(u'2') && !n.startsWith(u'3'))
        return std::nullopt;
    if (const int area = areaConQuince(n)) {
        numero.comoMovil = true;
        n.remove(area, 2);
    }
    if (n.size() != nacional)
        return std::nullopt;
    // A number begins with neither 0 nor 1.
    if (n.at(n.startsWith(u"11") ? 2 : esAreaDeTres(n) ? 3 : 4) < u'2')
        return std::nullopt;
    numero.digitos = n;
    return numero;
}

} // namespace

std::optional<QString> movilInternacional(const QString &telefono)
{
    const auto numero = leer(telefono);
    if (!numero)
        return std::nullopt;
    return QStringLiteral("549") + numero->digitos;
}

bool escritoComoMovil(const QString &telefono)
{
    const auto numero = leer(telefono);
    return numero && numero->comoMovil;
}

std::optional<QString> movilDe(const QString &celular, const QString &fijo)
{
    if (const auto movil = movilInternacional(celular))
        return movil;
    return escritoComoMovil(fijo) ? movilInternacional(fijo) : std::nullopt;
}

} // namespace agenda
