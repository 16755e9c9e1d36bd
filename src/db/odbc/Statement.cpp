#include "db/odbc/Statement.h"

#include "db/odbc/Flavour.h"
#include "db/odbc/Literals.h"

namespace db::odbc {

namespace {

constexpr SQLULEN longestText = 4000; // characters of a text that is not of the server's long type
constexpr SQLULEN longestBytes = 8000;

/// Texts, bytes and numbers are bound; what has no value to bind, or is clearer written, is written.
bool isBound(const QVariant &value)
{
    switch (value.typeId()) {
    case QMetaType::QString:
    case QMetaType::QByteArray: return true;
    case QMetaType::UnknownType:
    case QMetaType::Bool:
    case QMetaType::QDate:
    case QMetaType::QTime:
    case QMetaType::QDateTime: return false;
    default: return !value.isNull();
    }
}

} // namespace

Statement::Statement(const Handle &connection, const Flavour &flavour, Manner manner, int seconds)
    : m_flavour(flavour)
    , m_manner(manner)
    , m_handle(SQL_HANDLE_STMT, SQL_HANDLE_DBC, connection.get())
    , m_cell(m_handle)
{
    // A driver that knows no limit does without. Cursors stay as they are by default, forward only: with others some
    // drivers lose the rows of a batch.
    SQLSetStmtAttr(m_handle.get(), SQL_ATTR_QUERY_TIMEOUT, SQLPOINTER(quintptr(seconds)), 0);
}

Outcome Statement::run(const QString &sql, const Params &params)
{
    const QString text = prepare(sql, params);
    Outcome outcome;
    SQLRETURN code = SQLExecDirectW(m_handle.get(), wide(text), SQLINTEGER(text.size()));
    // SQL_NO_DATA: a change that met no row.
    while (true) {
        if (code != SQL_NO_DATA)
            m_handle.check(code);
        SQLSMALLINT columns = 0;
        if (code != SQL_NO_DATA)
            m_handle.check(SQLNumResultCols(m_handle.get(), &columns));
        SQLLEN changed = 0;
        if (columns > 0)
            outcome.results.push_back(fetch(columns));
        else if (code != SQL_NO_DATA && SQL_SUCCEEDED(SQLRowCount(m_handle.get(), &changed)) && changed > 0)
            outcome.changed += changed;
        code = SQLMoreResults(m_handle.get());
        if (code == SQL_NO_DATA)
            return outcome;
    }
}

QString Statement::prepare(const QString &sql, const Params &params)
{
    if (outlineOf(sql).parameters != params.size())
        throw Error(Error::Kind::Syntax, 0, QStringLiteral("La sentencia no recibió todos sus valores."));
    if (params.isEmpty())
        return sql;
    m_values.reserve(size_t(params.size())); // so that what is bound does not move
    return replaceParameters(sql, [&](int i) {
        if (m_manner.passing == Passing::Written || !isBound(params[i]))
            return literal(params[i], m_flavour);
        bind(int(m_values.size()) + 1, params[i]);
        return QStringLiteral("?");
    });
}

void Statement::bind(int position, const QVariant &value)
{
    Value &own = m_values.emplace_back();
    const auto bound = [&](SQLSMALLINT cType, SQLSMALLINT sqlType, SQLULEN size, const void *data, SQLLEN bytes) {
        own.length = bytes;
        m_handle.check(SQLBindParameter(
            m_handle.get(),
            SQLUSMALLINT(position),
            SQL_PARAM_INPUT,
            cType,
            sqlType,
            size,
            0,
            const_cast<void *>(data),
            bytes,
            &own.length));
    };
    switch (value.typeId()) {
    case QMetaType::Float:
    case QMetaType::Double:
        own.real = value.toDouble();
        bound(SQL_C_DOUBLE, SQL_DOUBLE, 53, &own.real, 0);
        return;
    case QMetaType::QByteArray: {
        own.bytes = value.toByteArray();
        const auto size = SQLULEN(own.bytes.size());
        const bool isLong = size > longestBytes;
        bound(
            SQL_C_BINARY,
            isLong ? SQL_LONGVARBINARY : SQL_VARBINARY,
            isLong ? size : longestBytes,
            own.bytes.constData(),
            SQLLEN(size));
        return;
    }
    case QMetaType::Int:
    case QMetaType::UInt:
    case QMetaType::Short:
    case QMetaType::Long:
    case QMetaType::LongLong:
    case QMetaType::ULongLong:
        own.integer = value.toLongLong();
        bound(SQL_C_SBIGINT, SQL_BIGINT, 19, &own.integer, 0);
        return;
    default: {
        own.text = transferable(value.toString());
        const auto size = SQLULEN(own.text.size());
        const bool isLong = size > longestText;
        bound(
            SQL_C_WCHAR,
            isLong ? SQL_WLONGVARCHAR : SQL_WVARCHAR,
            isLong ? size : longestText,
            own.text.utf16(),
            SQLLEN(size * sizeof(SQLWCHAR)));
    }
    }
}

Rows Statement::fetch(int columns)
{
    std::vector<ResultSet::Field> fields;
    std::vector<Reading> readings;
    for (int c = 1; c <= columns; ++c) {
        SQLWCHAR name[256] = {};
        SQLSMALLINT length = 0;
        SQLSMALLINT type = 0;
        SQLULEN size = 0;
        SQLSMALLINT digits = 0;
        SQLSMALLINT nullable = 0;
        m_handle.check(
            SQLDescribeColW(m_handle.get(), SQLUSMALLINT(c), name, 256, &length, &type, &size, &digits, &nullable));
        const auto [fieldType, reading] = [&]() -> std::pair<Type, Reading> {
            switch (type) {
            case SQL_BIT: return {Type::Flag, Reading::Bit};
            case SQL_TINYINT:
            case SQL_SMALLINT: return {Type::Integer, Reading::Integer};
            case SQL_INTEGER: return {Type::Long, Reading::Integer};
            case SQL_BIGINT: return {Type::Long, Reading::BigInteger};
            case SQL_REAL: return {Type::Single, Reading::Single};
            case SQL_FLOAT:
            case SQL_DOUBLE: return {Type::Double, Reading::Double};
            case SQL_DECIMAL:
            case SQL_NUMERIC:
                return digits == 0 ? std::pair(Type::Long, Reading::Whole) : std::pair(Type::Double, Reading::Decimal);
            case SQL_DATETIME:
            case SQL_TYPE_DATE:
            case SQL_TYPE_TIMESTAMP: return {Type::DateTime, Reading::Moment};
            case SQL_BINARY:
            case SQL_VARBINARY:
            case SQL_LONGVARBINARY: return {Type::Binary, Reading::Bytes};
            case SQL_LONGVARCHAR:
            case SQL_WLONGVARCHAR: return {Type::Memo, Reading::Text};
            default: return {size == 0 || size > longestText ? Type::Memo : Type::Text, Reading::Text};
            }
        }();
        fields.push_back({QString::fromUtf16(reinterpret_cast<const char16_t *>(name)), fieldType});
        readings.push_back(reading);
    }

    ResultSet::Builder builder(std::move(fields));
    while (true) {
        const SQLRETURN code = SQLFetch(m_handle.get());
        if (code == SQL_NO_DATA)
            return builder.finish();
        m_handle.check(code);
        for (int c = 0; c < columns; ++c)
            readCell(SQLUSMALLINT(c + 1), readings[size_t(c)], builder);
        builder.endRow();
    }
}

void Statement::readCell(SQLUSMALLINT column, Reading reading, ResultSet::Builder &builder)
{
    const auto fixed = [&](SQLSMALLINT type, auto value, auto add) {
        if (m_cell.fixed(column, type, &value, sizeof value))
            add(value);
        else
            builder.addNull();
    };
    switch (reading) {
    case Reading::Integer: fixed(SQL_C_SLONG, SQLINTEGER(0), [&](auto v) { builder.addInteger(v); }); return;
    case Reading::BigInteger: fixed(SQL_C_SBIGINT, qint64(0), [&](auto v) { builder.addInteger(v); }); return;
    // The program's flags are -1 and 0 everywhere.
    case Reading::Bit: fixed(SQL_C_BIT, SQLCHAR(0), [&](auto v) { builder.addInteger(v ? -1 : 0); }); return;
    case Reading::Single: fixed(SQL_C_FLOAT, SQLREAL(0), [&](auto v) { builder.addReal(v); }); return;
    case Reading::Double: fixed(SQL_C_DOUBLE, SQLDOUBLE(0), [&](auto v) { builder.addReal(v); }); return;
    case Reading::Moment:
        fixed(SQL_C_TYPE_TIMESTAMP, SQL_TIMESTAMP_STRUCT{}, [&](const SQL_TIMESTAMP_STRUCT &v) {
            const QDateTime moment(QDate(v.year, v.month, v.day), QTime(v.hour, v.minute, v.second));
            builder.addText(storedDateTime(moment).toLatin1());
        });
        return;
    case Reading::Whole:
    case Reading::Decimal:
        if (!m_cell.pieces(column, SQL_C_CHAR))
            builder.addNull();
        else if (reading == Reading::Whole)
            builder.addInteger(m_cell.data().toLongLong());
        else
            builder.addReal(m_cell.data().toDouble());
        return;
    case Reading::Bytes:
        if (m_cell.pieces(column, SQL_C_BINARY))
            builder.addBytes(m_cell.data());
        else
            builder.addNull();
        return;
    case Reading::Text: break;
    }
    if (!m_cell.pieces(column, m_manner.textAs == TextAs::Wide ? SQL_C_WCHAR : SQL_C_CHAR))
        builder.addNull();
    else if (m_manner.textAs == TextAs::Utf8)
        builder.addText(m_cell.data());
    else
        builder.addText(
            QStringView(reinterpret_cast<const QChar *>(m_cell.data().constData()), m_cell.data().size() / 2).toUtf8());
}

} // namespace db::odbc
