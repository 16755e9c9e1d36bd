#pragma once

#include "db/sql/Moment.h"

#include <vector>

namespace db::sql {

/// Access' Format() patterns as Argentina writes numbers: thousands point, decimal comma. Read once, used for many
/// rows.
class FormatPattern
{
public:
    explicit FormatPattern(QByteArrayView pattern);

    /// False when the pattern holds something unknown: named formats of other countries, sections, exponents.
    [[nodiscard]] bool isValid() const { return m_kind != Kind::Invalid; }
    [[nodiscard]] bool isDate() const { return m_kind == Kind::Date; }

    /// By a number pattern. Halves are rounded away from zero on the digits that the value shows, as base::dinero().
    [[nodiscard]] QByteArray number(double value) const;
    /// By a date pattern. "m" behind an hour is the minute.
    [[nodiscard]] QByteArray moment(const Moment &value) const;

private:
    enum class Kind { Invalid, Date, Number };
    enum class Part {
        Literal,
        Day,
        Day2,
        DayName,
        DayFull,
        Month,
        Month2,
        MonthName,
        MonthFull,
        DayOfYear,
        Year2,
        Year4,
        Hour,
        Hour2,
        Minute,
        Minute2,
        Second,
        Second2,
        Weekday,
        Week,
        Quarter
    };
    struct Piece {
        Part part;
        QByteArray literal;
    };
    void readDate(QByteArrayView pattern);
    void readNumber(QByteArrayView pattern);

    Kind m_kind = Kind::Invalid;
    std::vector<Piece> m_pieces;
    QByteArray m_prefix, m_suffix;
    int m_integers = 0; ///< digits shown at least before the comma
    int m_decimals = 0; ///< digits shown at least behind it
    int m_decimalsAtMost = 0;
    bool m_thousands = false;
    bool m_percent = false;
    bool m_comma = false;
};

/// A number as Access turns it into text: "1,5", "7", at most fifteen digits, and of a single-precision value only
/// those it stands for.
[[nodiscard]] QByteArray numberText(double value);
/// A date as Access turns it into text: "31/01/2026", "31/01/2026 10:20:00" or "10:20:00".
[[nodiscard]] QByteArray generalDate(const Moment &value);

} // namespace db::sql
