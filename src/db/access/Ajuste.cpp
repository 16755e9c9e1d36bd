#include "db/access/Ajuste.h"

#include "db/access/Fechas.h"

#include <cmath>
#include <limits>
#include <optional>

namespace db::access {

namespace {

using Clase = Valor::Clase;

/// The value as a whole number, when it is one that a double also holds.
std::optional<qint64> comoEntero(const Valor &valor)
{
    switch (valor.clase) {
    case Clase::Entero: return valor.entero;
    case Clase::Logico: return valor.entero ? -1 : 0;
    case Clase::Simple:
    case Clase::Doble: {
        constexpr double limite = 9007199254740992.0; // 2^53
        if (std::trunc(valor.real) == valor.real && std::abs(valor.real) < limite)
            return qint64(valor.real);
        return {};
    }
    case Clase::Moneda:
        if (valor.entero % 10000 == 0)
            return valor.entero / 10000;
        return {};
    case Clase::Decimal: {
        bool ok = false;
        const qint64 entero = valor.datos.toLongLong(&ok);
        return ok ? std::optional(entero) : std::nullopt;
    }
    default: return {};
    }
}

struct Real {
    double valor = 0;
    bool exacto = true;
};

/// The nearest double, and whether it says the same: an amount of money does when it can be told from its neighbours.
std::optional<Real> comoReal(const Valor &valor)
{
    switch (valor.clase) {
    case Clase::Entero: return Real{double(valor.entero), qint64(double(valor.entero)) == valor.entero};
    case Clase::Logico: return Real{valor.entero ? -1.0 : 0.0};
    case Clase::Simple:
    case Clase::Doble: return Real{valor.real, !std::isnan(valor.real)};
    case Clase::Moneda: {
        constexpr double limite = 9007199254740992.0;
        const double real = double(valor.entero) / 10000;
        return Real{real, std::abs(double(valor.entero)) < limite && std::llround(real * 10000) == valor.entero};
    }
    case Clase::Decimal: {
        const double real = valor.datos.toDouble();
        // Fifteen digits survive a double whatever they are.
        int cifras = 0;
        for (const char c : valor.datos)
            cifras += c >= '0' && c <= '9' && (cifras > 0 || c != '0');
        return Real{real, cifras <= 15};
    }
    default: return {};
    }
}

bool entraEntero(const Valor &valor, qint64 minimo, qint64 maximo)
{
    const auto entero = comoEntero(valor);
    return entero && *entero >= minimo && *entero <= maximo;
}

template <typename Entero>
bool entraEn(const Valor &valor)
{
    return entraEntero(valor, std::numeric_limits<Entero>::min(), std::numeric_limits<Entero>::max());
}

bool esTextoONumeroEntero(const Valor &valor) { return valor.esTexto() || valor.clase == Clase::Entero; }

QString comoTexto(const Valor &valor)
{
    return valor.esTexto() ? QString::fromUtf8(valor.datos) : QString::number(valor.entero);
}

} // namespace

bool entra(const Valor &valor, const Column &columna)
{
    if (valor.esNulo())
        return true;
    switch (columna.type) {
    case Type::Text: return esTextoONumeroEntero(valor) && comoTexto(valor).size() <= columna.size;
    case Type::Memo: return esTextoONumeroEntero(valor);
    case Type::Integer: return entraEn<qint16>(valor);
    case Type::Counter:
    case Type::Long: return entraEn<qint32>(valor);
    case Type::Flag: return entraEntero(valor, -1, 0);
    case Type::Single: {
        const auto real = comoReal(valor);
        return real && (valor.clase == Clase::Simple || (real->exacto && double(float(real->valor)) == real->valor));
    }
    case Type::Double: return comoReal(valor).has_value();
    case Type::DateTime: return valor.clase == Clase::Fecha || valor.clase == Clase::FechaRota;
    case Type::Binary: return valor.clase == Clase::Bytes;
    }
    return false;
}

Guardado guardar(const Valor &valor, const Column &columna)
{
    if (valor.esNulo())
        return {};
    switch (columna.type) {
    case Type::Text:
    case Type::Memo: return {comoTexto(valor), valor.clase != Clase::TextoRoto};
    case Type::Integer:
    case Type::Counter:
    case Type::Long:
    case Type::Flag:
        if (const auto entero = comoEntero(valor))
            return {qlonglong(*entero)};
        break;
    case Type::Single:
    case Type::Double:
        if (const auto real = comoReal(valor))
            return {std::isnan(real->valor) ? QVariant() : QVariant(real->valor), real->exacto};
        break;
    case Type::DateTime:
        if (valor.clase == Clase::Fecha)
            return {textoDeFecha(valor.entero)};
        break;
    case Type::Binary: return {valor.datos};
    }
    return {QVariant(), false};
}

Column columnaNatural(const ColumnaVieja &vieja, int ancho)
{
    using jet::Tipo;
    switch (vieja.tipo) {
    case Tipo::Logico: return columna::bandera(vieja.nombre);
    case Tipo::Byte:
    case Tipo::Entero: return columna::entero(vieja.nombre);
    case Tipo::Largo: return columna::largo(vieja.nombre);
    case Tipo::Simple: return columna::simple(vieja.nombre);
    case Tipo::Moneda:
    case Tipo::Doble:
    case Tipo::Decimal: return columna::doble(vieja.nombre);
    case Tipo::Fecha: return columna::fecha(vieja.nombre);
    case Tipo::Texto: return columna::texto(vieja.nombre, std::max({1, vieja.tamano, ancho}));
    case Tipo::Guid: return columna::texto(vieja.nombre, 38);
    case Tipo::Memo: return columna::memo(vieja.nombre);
    case Tipo::Ole:
    case Tipo::Binario: break;
    }
    return columna::binario(vieja.nombre);
}

QString nombreDeTipo(const Column &columna)
{
    switch (columna.type) {
    case Type::Counter: return QStringLiteral("autonumérico");
    case Type::Text: return QStringLiteral("texto (%1)").arg(columna.size);
    case Type::Memo: return QStringLiteral("memo");
    case Type::Integer: return QStringLiteral("entero");
    case Type::Long: return QStringLiteral("entero largo");
    case Type::Single: return QStringLiteral("simple");
    case Type::Double: return QStringLiteral("doble");
    case Type::Flag: return QStringLiteral("sí/no");
    case Type::DateTime: return QStringLiteral("fecha");
    case Type::Binary: return QStringLiteral("binario");
    }
    return {};
}

} // namespace db::access
