#include "db/migracion/Valores.h"

#include "db/Error.h"

#include <cstring>

namespace db::migracion {

namespace {

int cifras(const char *desde, int cuantas)
{
    int numero = 0;
    for (int i = 0; i < cuantas; ++i) {
        if (desde[i] < '0' || desde[i] > '9')
            return -1;
        numero = numero * 10 + (desde[i] - '0');
    }
    return numero;
}

/// In universal time: a midnight that the local clocks skipped is a date like any other here.
QDateTime momento(QByteArrayView texto)
{
    if (texto.size() != 10 && texto.size() != 19)
        return {};
    const char *p = texto.data();
    const QDate dia(cifras(p, 4), cifras(p + 5, 2), cifras(p + 8, 2));
    const QTime hora
        = texto.size() == 10 ? QTime(0, 0) : QTime(cifras(p + 11, 2), cifras(p + 14, 2), cifras(p + 17, 2));
    return dia.isValid() && hora.isValid() ? QDateTime(dia, hora, Qt::UTC) : QDateTime();
}

void ponerLargo(QByteArray &texto, qsizetype largo)
{
    texto += QByteArray::number(largo);
    texto += ':';
}

void ponerReal(QByteArray &texto, double real)
{
    const double sinSigno = real == 0 ? 0 : real; // -0 is 0
    char bytes[sizeof(double)];
    std::memcpy(bytes, &sinSigno, sizeof bytes);
    texto.append(bytes, sizeof bytes);
}

} // namespace

QVariant valor(const ResultSet &filas, int fila, int columna, const Column &destino, bool limitar)
{
    if (filas.isNull(fila, columna))
        return {};
    switch (destino.type) {
    case Type::Counter:
    case Type::Integer:
    case Type::Long: return qlonglong(filas.integer(fila, columna));
    case Type::Flag: return filas.flag(fila, columna);
    case Type::Single: return double(float(filas.real(fila, columna)));
    case Type::Double: return filas.real(fila, columna);
    case Type::Binary: {
        const QByteArrayView bytes = filas.utf8(fila, columna);
        return bytes.isEmpty() ? QByteArray("") : bytes.toByteArray();
    }
    case Type::DateTime: {
        const QDateTime leido = momento(filas.utf8(fila, columna));
        if (!leido.isValid())
            throw Error(
                Error::Kind::General,
                0,
                QStringLiteral("La columna '%1' tiene un valor que no es una fecha.").arg(destino.name));
        return limitar && leido.date() < primerDia ? QDateTime(sinFecha, QTime(0, 0), Qt::UTC) : leido;
    }
    case Type::Text:
    case Type::Memo: break;
    }
    QString texto = filas.text(fila, columna);
    if (limitar) // it ends a text on the way; older programs have left it behind names that the system gave them
        texto.remove(QChar(u'\0'));
    return texto;
}

void Suma::agregar(const QVector<Column> &columnas, const Params &fila)
{
    m_texto.resize(0);
    for (qsizetype c = 0; c < columnas.size(); ++c) {
        const QVariant &celda = fila[c];
        if (!celda.isValid()) {
            m_texto += 'n';
            continue;
        }
        switch (columnas[c].type) {
        case Type::Flag: m_texto += celda.toBool() ? '1' : '0'; break;
        case Type::Counter:
        case Type::Integer:
        case Type::Long:
            m_texto += 'e';
            m_texto += QByteArray::number(celda.toLongLong());
            m_texto += ';';
            break;
        case Type::Single:
        case Type::Double:
            m_texto += 'r';
            ponerReal(m_texto, celda.toDouble());
            break;
        case Type::DateTime: {
            const QDateTime cuando = celda.toDateTime();
            m_texto += 'f';
            m_texto += QByteArray::number(cuando.date().toJulianDay());
            m_texto += ' ';
            m_texto += QByteArray::number(cuando.time().msecsSinceStartOfDay() / 1000);
            m_texto += ';';
            break;
        }
        case Type::Binary: {
            const QByteArray bytes = celda.toByteArray();
            m_texto += 'b';
            ponerLargo(m_texto, bytes.size());
            m_texto += bytes;
            break;
        }
        case Type::Text:
        case Type::Memo: {
            const QByteArray utf8 = celda.toString().toUtf8();
            m_texto += 't';
            ponerLargo(m_texto, utf8.size());
            m_texto += utf8;
        }
        }
    }
    m_huella += Huella::de(QCryptographicHash::hash(m_texto, QCryptographicHash::Sha256).first(16));
    ++m_filas;
}

} // namespace db::migracion
