#pragma once

#include "db/Dialect.h"

#include <QByteArrayView>

#include <functional>
#include <vector>

namespace db {

/// A condition on one column, in both ways in which it is judged: by a statement, and over a value as it is stored.
/// Both agree; a Null meets none.
struct Condition {
    QString column;
    QString sql; ///< in the dialect that it was made for
    std::function<bool(QByteArrayView stored)> holds; ///< numbers as they are written, dates in their stored form

    enum class Operator { Equal, Different, AtLeast, AtMost };

    /// Text anywhere in the column, see Dialect::contains().
    static Condition contains(const Dialect &dialect, const QString &column, const QString &value);
    static Condition number(const QString &column, Operator op, qint64 value);
    /// A date without time.
    static Condition date(const Dialect &dialect, const QString &column, QDate value);
    /// Calendar-year boundaries between the column and `until`.
    static Condition years(const Dialect &dialect, const QString &column, QDate until, Operator op, int value);
    /// One or the other, of the same column.
    static Condition either(const Condition &one, const Condition &other);
};

using Conditions = std::vector<Condition>;

/// " And " before each: what follows the first condition of a WHERE.
[[nodiscard]] QString clauses(const Conditions &conditions);

} // namespace db
