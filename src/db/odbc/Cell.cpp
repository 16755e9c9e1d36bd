#include "db/odbc/Cell.h"

#include <algorithm>

namespace db::odbc {

namespace {

constexpr qsizetype firstPiece = 1024; // bytes
constexpr qsizetype laterPiece = 65536;

/// Bytes of text in a piece that was filled with 0xFF before: up to the last terminator. What the driver says of its
/// length is the whole text's, or nothing.
qsizetype textIn(const QByteArray &piece, qsizetype unit)
{
    for (qsizetype at = piece.size() - unit; at >= 0; at -= unit)
        if (std::all_of(piece.begin() + at, piece.begin() + at + unit, [](char c) { return c == 0; }))
            return at;
    return 0;
}

[[noreturn]] void failIncomplete()
{
    throw Error(
        Error::Kind::General, 0, QStringLiteral("Un dato no llegó entero desde el servidor. Intente nuevamente."));
}

} // namespace

bool Cell::fixed(SQLUSMALLINT column, SQLSMALLINT type, void *value, SQLLEN size)
{
    SQLLEN length = 0;
    m_statement.check(SQLGetData(m_statement.get(), column, type, value, size, &length));
    return length != SQL_NULL_DATA;
}

// Nothing here believes the column's declared size, or a success that tells no length: a text is what its pieces hold.
bool Cell::pieces(SQLUSMALLINT column, SQLSMALLINT type)
{
    const qsizetype unit = type == SQL_C_WCHAR ? qsizetype(sizeof(SQLWCHAR)) : 1;
    const qsizetype terminator = type == SQL_C_BINARY ? 0 : unit;
    qint64 announced = 0;
    m_data.resize(0);
    for (bool first = true;; first = false) {
        m_piece.fill('\xFF', first ? firstPiece : laterPiece);
        SQLLEN length = 0;
        const SQLRETURN code = SQLGetData(m_statement.get(), column, type, m_piece.data(), m_piece.size(), &length);
        if (code == SQL_NO_DATA)
            break;
        m_statement.check(code);
        if (length == SQL_NULL_DATA) {
            if (first)
                return false;
            break;
        }
        if (first && length > 0)
            announced = length;
        const bool last = code == SQL_SUCCESS && length >= 0 && length <= m_piece.size() - terminator;
        if (last) {
            m_data.append(m_piece.constData(), length);
            break;
        }
        const qsizetype got = terminator > 0 ? textIn(m_piece, unit)
            : length >= 0                    ? std::min<qsizetype>(length, m_piece.size())
                                             : m_piece.size();
        if (got == 0)
            failIncomplete();
        m_data.append(m_piece.constData(), got);
    }
    if (m_data.size() < announced)
        failIncomplete();
    return true;
}

} // namespace db::odbc
