#include "db/access/Suma.h"

#include <cmath>
#include <cstring>

#include <sqlite3.h>

namespace db::access {

void Suma::bytes(qint64 fila, char clase, QByteArrayView valor)
{
    // FNV-1a over row, kind and value, and a last mixing so that sums of neighbours do not cancel out.
    quint64 huella = 0xCBF29CE484222325u;
    const auto byte = [&huella](quint8 b) { huella = (huella ^ b) * 0x100000001B3u; };
    for (int i = 0; i < 8; ++i)
        byte(quint8(quint64(fila) >> (8 * i)));
    byte(quint8(clase));
    for (const char c : valor)
        byte(quint8(c));
    huella = (huella ^ huella >> 33) * 0xFF51AFD7ED558CCDu;
    huella = (huella ^ huella >> 33) * 0xC4CEB9FE1A85EC53u;
    m_suma += huella ^ huella >> 33;
    ++m_valores;
}

void Suma::entero(qint64 fila, qint64 valor)
{
    char crudo[8];
    std::memcpy(crudo, &valor, sizeof crudo);
    bytes(fila, 'i', QByteArrayView(crudo, sizeof crudo));
}

void Suma::real(qint64 fila, double valor)
{
    // The engine keeps a whole number as one where the column allows it.
    if (std::trunc(valor) == valor && std::abs(valor) < 9007199254740992.0)
        return entero(fila, qint64(valor));
    char crudo[8];
    std::memcpy(crudo, &valor, sizeof crudo);
    bytes(fila, 'r', QByteArrayView(crudo, sizeof crudo));
}

void Suma::agregar(qint64 fila, const QVariant &valor)
{
    switch (valor.typeId()) {
    case QMetaType::UnknownType: return; // Null adds nothing: a Null that is lost or invented shows in the others
    case QMetaType::LongLong: return entero(fila, valor.toLongLong());
    case QMetaType::Double: return real(fila, valor.toDouble());
    case QMetaType::QByteArray: return bytes(fila, 'b', valor.toByteArray());
    default: return bytes(fila, 't', valor.toString().toUtf8());
    }
}

void Suma::agregar(qint64 fila, sqlite3_stmt *sentencia, int columna)
{
    const auto contenido = [&](const void *donde) {
        return QByteArrayView(static_cast<const char *>(donde), sqlite3_column_bytes(sentencia, columna));
    };
    switch (sqlite3_column_type(sentencia, columna)) {
    case SQLITE_NULL: return;
    case SQLITE_INTEGER: return entero(fila, sqlite3_column_int64(sentencia, columna));
    case SQLITE_FLOAT: return real(fila, sqlite3_column_double(sentencia, columna));
    case SQLITE_TEXT: return bytes(fila, 't', contenido(sqlite3_column_text(sentencia, columna)));
    default: return bytes(fila, 'b', contenido(sqlite3_column_blob(sentencia, columna)));
    }
}

} // namespace db::access
