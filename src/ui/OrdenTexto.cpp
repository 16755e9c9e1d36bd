#include "ui/OrdenTexto.h"

#include "base/Fechas.h"
#include "base/Numeros.h"
#include "db/sql/Collation.h"

#include <algorithm>
#include <limits>
#include <numeric>

namespace ui {

namespace {

template <typename Menor>
std::vector<int> permutar(int filas, bool descendente, Menor menor)
{
    std::vector<int> orden(static_cast<size_t>(filas));
    std::iota(orden.begin(), orden.end(), 0);
    if (descendente)
        std::stable_sort(orden.begin(), orden.end(), [&](int a, int b) { return menor(b, a); });
    else
        std::stable_sort(orden.begin(), orden.end(), menor);
    return orden;
}

template <typename Valor>
std::vector<int> permutarValores(const std::vector<Valor> &valores, bool descendente)
{
    return permutar(
        int(valores.size()), descendente, [&](int a, int b) { return valores[size_t(a)] < valores[size_t(b)]; });
}

/// Reads every text with `leer`; nothing when a filled one cannot be read, or when none is filled.
template <typename Leer>
std::optional<std::vector<double>> leerTodos(const std::vector<QString> &textos, Leer leer)
{
    std::vector<double> valores;
    valores.reserve(textos.size());
    bool alguno = false;
    for (const QString &texto : textos) {
        if (texto.isEmpty()) {
            valores.push_back(-std::numeric_limits<double>::infinity());
            continue;
        }
        const std::optional<double> valor = leer(texto);
        if (!valor)
            return std::nullopt;
        alguno = true;
        valores.push_back(*valor);
    }
    return alguno ? std::optional(valores) : std::nullopt;
}

std::optional<double> comoFecha(const QString &texto)
{
    // Eight digits in a row may be a date to whoever types it, but in a column they are a document number.
    const qsizetype blanco = texto.indexOf(u' ');
    const QStringView dia = QStringView(texto).left(blanco < 0 ? texto.size() : blanco);
    if (!dia.contains(u'/') && !dia.contains(u'-'))
        return std::nullopt;
    if (blanco < 0) {
        const auto fecha = base::leerFecha(dia);
        return fecha ? std::optional(double(fecha->toJulianDay())) : std::nullopt;
    }
    const auto momento = base::leerFechaHora(texto);
    return momento
        ? std::optional(double(momento->date().toJulianDay()) + momento->time().msecsSinceStartOfDay() / 86'400'000.0)
        : std::nullopt;
}

std::optional<double> comoNumero(const QString &texto) { return base::leerNumero(texto); }

} // namespace

std::vector<int> ordenarTextos(const std::vector<QString> &textos, bool descendente)
{
    if (const auto fechas = leerTodos(textos, comoFecha))
        return permutarValores(*fechas, descendente);
    if (const auto numeros = leerTodos(textos, comoNumero))
        return permutarValores(*numeros, descendente);
    std::vector<QByteArray> utf8;
    utf8.reserve(textos.size());
    for (const QString &texto : textos)
        utf8.push_back(texto.toUtf8());
    return permutar(int(utf8.size()), descendente, [&](int a, int b) {
        return db::sql::compareSpanish(utf8[size_t(a)], utf8[size_t(b)]) < 0;
    });
}

std::vector<int> ordenarColumna(const db::ResultSet &rows, int column, bool descendente)
{
    const int filas = rows.rowCount();
    switch (rows.fields()[size_t(column)].type) {
    case db::Type::Counter:
    case db::Type::Integer:
    case db::Type::Long:
    case db::Type::Single:
    case db::Type::Double:
    case db::Type::Flag: {
        std::vector<double> valores(static_cast<size_t>(filas));
        for (int i = 0; i < filas; ++i)
            valores[size_t(i)]
                = rows.isNull(i, column) ? -std::numeric_limits<double>::infinity() : rows.real(i, column);
        return permutarValores(valores, descendente);
    }
    case db::Type::DateTime: // the stored form sorts as it is written
    case db::Type::Binary:
        return permutar(filas, descendente, [&](int a, int b) {
            const QByteArrayView una = rows.utf8(a, column), otra = rows.utf8(b, column);
            return std::lexicographical_compare(una.begin(), una.end(), otra.begin(), otra.end());
        });
    case db::Type::Text:
    case db::Type::Memo: break;
    }
    std::vector<QString> textos;
    textos.reserve(size_t(filas));
    for (int i = 0; i < filas; ++i)
        textos.push_back(rows.text(i, column).trimmed());
    return ordenarTextos(textos, descendente);
}

} // namespace ui
