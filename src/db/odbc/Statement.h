#pragma once

#include "db/ResultSet.h"
#include "db/odbc/Cell.h"
#include "db/odbc/Target.h"

namespace db::odbc {

struct Flavour;

/// How texts are asked for.
enum class TextAs { Wide, Utf8 };

/// How this connection's driver is best talked to.
struct Manner {
    Passing passing = Passing::Bound;
    TextAs textAs = TextAs::Wide;
};

struct Outcome {
    qint64 changed = 0; ///< rows, over all the statements of a batch
    std::vector<Rows> results; ///< one per statement that yields rows, read to their end
};

/// One run of a statement, or of several in one text: everything it yields is read and the handle freed before
/// anything else is asked of the connection. Drivers of the server know one open result per connection, and tell some
/// failures only with the last result.
class Statement
{
public:
    /// `seconds` until the driver gives up.
    Statement(const Handle &connection, const Flavour &flavour, Manner manner, int seconds);
    Statement(const Statement &) = delete;
    Statement &operator=(const Statement &) = delete;

    /// Throws Failed, or db::Error when the values do not fit the statement.
    [[nodiscard]] Outcome run(const QString &sql, const Params &params);

private:
    struct Value {
        QString text;
        QByteArray bytes;
        qint64 integer = 0;
        double real = 0;
        SQLLEN length = 0;
    };
    enum class Reading { Integer, BigInteger, Bit, Single, Double, Whole, Decimal, Moment, Text, Bytes };

    [[nodiscard]] QString prepare(const QString &sql, const Params &params);
    void bind(int position, const QVariant &value);
    [[nodiscard]] Rows fetch(int columns);
    void readCell(SQLUSMALLINT column, Reading reading, ResultSet::Builder &builder);

    const Flavour &m_flavour;
    Manner m_manner;
    Handle m_handle;
    std::vector<Value> m_values; ///< what is bound has to stay until it has been sent
    Cell m_cell;
};

} // namespace db::odbc
