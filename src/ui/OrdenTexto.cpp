#include "ui/OrdenTexto.h"

#include "base/Fechas.h"
#include "base/Numeros.h"
#include "db/sql/Letters.h"
#include "db/sql/Utf8.h"

#include <QtEndian>

#include <algorithm>
#include <array>
#include <cstring>
#include <limits>
#include <numeric>

namespace ui {

namespace {

constexpr double primero = -std::numeric_limits<double>::infinity();

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

std::vector<int> permutarValores(const std::vector<double> &valores, bool descendente)
{
    return permutar(
        int(valores.size()), descendente, [&](int a, int b) { return valores[size_t(a)] < valores[size_t(b)]; });
}

/// Reads every text with `leer`; nothing when a filled one cannot be read, or when none is filled.
template <typename Leer>
std::optional<std::vector<double>> leerTodos(const std::vector<QByteArrayView> &textos, Leer leer)
{
    std::vector<double> valores;
    bool alguno = false;
    for (const QByteArrayView texto : textos) {
        if (texto.isEmpty()) {
            valores.push_back(primero);
            continue;
        }
        const std::optional<double> valor = leer(texto);
        if (!valor)
            return std::nullopt;
        alguno = true;
        valores.push_back(*valor);
    }
    return alguno ? std::optional(std::move(valores)) : std::nullopt;
}

std::optional<double> comoFecha(QByteArrayView utf8)
{
    // Eight digits in a row may be a date to whoever types it, but in a column they are a document number.
    const QString texto = QString::fromUtf8(utf8);
    const qsizetype blanco = texto.indexOf(u' ');
    const QStringView dia = QStringView(texto).left(blanco < 0 ? texto.size() : blanco);
    if (!dia.contains(u'/') && !dia.contains(u'-'))
        return std::nullopt;
    if (blanco < 0) {
        const auto fecha = base::leerFecha(dia);
        return fecha ? std::optional(double(fecha->toJulianDay())) : std::nullopt;
    }
    const auto momento = base::leerFechaHora(texto);
    if (!momento)
        return std::nullopt;
    return double(momento->date().toJulianDay()) + momento->time().msecsSinceStartOfDay() / 86'400'000.0;
}

std::optional<double> comoNumero(QByteArrayView utf8)
{
    // Document and record numbers by the hundred thousand: plain digits need no reading in all the ways of writing.
    constexpr qsizetype exactas = 15;
    qint64 numero = 0;
    for (const char c : utf8) {
        if (c < '0' || c > '9' || utf8.size() > exactas)
            return base::leerNumero(QString::fromUtf8(utf8));
        numero = numero * 10 + (c - '0');
    }
    return double(numero);
}

std::vector<int> ordenarUtf8(const std::vector<QByteArrayView> &textos, bool descendente)
{
    if (const auto fechas = leerTodos(textos, comoFecha))
        return permutarValores(*fechas, descendente);
    if (const auto numeros = leerTodos(textos, comoNumero))
        return permutarValores(*numeros, descendente);

    struct Clave {
        std::array<quint64, 2> cabeza; ///< first sixteen bytes, which nearly always decide without a look elsewhere
        qsizetype desde;
        qsizetype largo;
        int fila;
    };
    QByteArray bloque;
    std::vector<Clave> claves;
    claves.reserve(textos.size());
    bloque.reserve(qsizetype(textos.size()) * 32);
    for (const QByteArrayView texto : textos) {
        const qsizetype desde = bloque.size();
        agregarClaveEspanola(texto, bloque);
        const qsizetype largo = bloque.size() - desde;
        uchar bytes[16] = {};
        std::memcpy(bytes, bloque.constData() + desde, size_t(qMin(qsizetype(16), largo)));
        claves.push_back(
            {{qFromBigEndian<quint64>(bytes), qFromBigEndian<quint64>(bytes + 8)}, desde, largo, int(claves.size())});
    }
    const auto comparar = [&bloque](const Clave &a, const Clave &b) {
        if (a.cabeza != b.cabeza)
            return a.cabeza < b.cabeza ? -1 : 1;
        const int bytes
            = std::memcmp(bloque.constData() + a.desde, bloque.constData() + b.desde, size_t(qMin(a.largo, b.largo)));
        return bytes != 0 ? bytes : a.largo < b.largo ? -1 : a.largo > b.largo;
    };
    std::sort(claves.begin(), claves.end(), [&](const Clave &a, const Clave &b) {
        const int orden = descendente ? comparar(b, a) : comparar(a, b);
        return orden != 0 ? orden < 0 : a.fila < b.fila;
    });
    std::vector<int> orden;
    orden.reserve(claves.size());
    for (const Clave &clave : claves)
        orden.push_back(clave.fila);
    return orden;
}

using Bytes = QVarLengthArray<char, 256>;

void agregarGrande(quint32 valor, Bytes &bytes)
{
    for (const int lugar : {24, 16, 8, 0})
        bytes.append(char(valor >> lugar & 0xFF));
}

} // namespace

void agregarClaveEspanola(QByteArrayView texto, QByteArray &claves)
{
    const auto *p = reinterpret_cast<const uchar *>(texto.data());
    const uchar *fin = p + texto.size();
    QVarLengthArray<char32_t, 64> letras;
    Bytes clave; // gathered here: growing the long array letter by letter costs more than the rest
    qsizetype hastaAcento = 0; // letters up to the last accent
    while (p < fin) {
        const db::sql::Letter letra = db::sql::letter(db::sql::nextCharacter(p, fin));
        letras.append(letra.folded);
        if (letra.folded != letra.base)
            hastaAcento = letras.size();
        // One byte per bare letter, ñ in the gap behind n; what lies beyond them stands above, in full. Zero is kept
        // for the end of the text.
        if (letra.base < 0x7F)
            clave.append(char(letra.base == 0 ? 1 : letra.base * 2));
        else if (letra.base == U'ñ')
            clave.append(char('n' * 2 + 1));
        else {
            clave.append(char(0xFF));
            agregarGrande(letra.base, clave);
        }
    }
    // Accents count only between texts alike without them; an unaccented letter is the lowest of its family, so that
    // the shorter of two tails stands first, as it should.
    clave.append('\0');
    for (qsizetype i = 0; i < hastaAcento; ++i)
        agregarGrande(letras[i], clave);
    claves.append(clave.constData(), clave.size());
}

std::vector<int> ordenarTextos(const std::vector<QString> &textos, bool descendente)
{
    std::vector<QByteArray> utf8;
    utf8.reserve(textos.size());
    for (const QString &texto : textos)
        utf8.push_back(texto.toUtf8().trimmed());
    return ordenarUtf8({utf8.cbegin(), utf8.cend()}, descendente);
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
            valores[size_t(i)] = rows.isNull(i, column) ? primero : rows.real(i, column);
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
    // An expression's column may hold numbers under the type of its first row.
    std::vector<QByteArray> escritos;
    std::vector<QByteArrayView> textos(static_cast<size_t>(filas));
    for (int i = 0; i < filas; ++i) {
        textos[size_t(i)] = rows.utf8(i, column).trimmed();
        if (textos[size_t(i)].isNull() && !rows.isNull(i, column)) {
            escritos.reserve(size_t(filas));
            escritos.push_back(rows.text(i, column).toUtf8());
            textos[size_t(i)] = escritos.back();
        }
    }
    return ordenarUtf8(textos, descendente);
}

} // namespace ui
