#pragma once

#include <QDate>
#include <QDateTime>
#include <QString>
#include <QStringList>

namespace db {

/// The pieces of SQL in which the two back ends differ. No other place of the program knows a dialect, and a value
/// enters SQL text through here only (or as a bound parameter).
///
/// The server's pieces are understood by every version from 2008 on and by any language of its login: no FORMAT, IIF,
/// CONCAT, TRY_CONVERT or OFFSET. Its comparisons are taken to disregard case and to keep accents apart.
///
/// An expression given to these functions may come back more than once in the result: it holds no "?".
class Dialect
{
public:
    enum class Kind { Access, SqlServer };

    explicit Dialect(Kind kind)
        : m_kind(kind)
    {
    }

    [[nodiscard]] Kind kind() const { return m_kind; }

    /// Quoted text, quotes doubled: 'O''Higgins', on the server N'O''Higgins'.
    [[nodiscard]] QString text(QStringView value) const;
    /// [name]; a "]" in it is refused with db::Error.
    [[nodiscard]] QString identifier(QStringView name) const;

    /// #mm/dd/yyyy# or 'yyyymmdd'. Here and below an invalid date is refused with db::Error, and one before the
    /// server's first (01/01/1753) becomes that first one there.
    [[nodiscard]] QString date(QDate value) const;
    /// #mm/dd/yyyy hh:nn# or 'yyyymmdd hh:nn': to the minute.
    [[nodiscard]] QString dateTime(const QDateTime &value) const;
    /// The day's first and last second.
    [[nodiscard]] QString dayStart(QDate value) const;
    [[nodiscard]] QString dayEnd(QDate value) const;
    /// "(column >= start and column <= end)" over whole days; an invalid bound means 1900-01-01 or 9999-12-31.
    [[nodiscard]] QString dayRange(const QString &column, QDate from, QDate to) const;

    /// "&" or "+".
    [[nodiscard]] QString concatOperator() const;
    /// The expressions, all of them texts, joined; a Null part counts as empty text in both dialects.
    [[nodiscard]] QString concat(const QStringList &expressions) const;
    /// iif(c,a,b) or CASE WHEN c THEN a ELSE b END.
    [[nodiscard]] QString iif(const QString &condition, const QString &yes, const QString &no) const;
    /// ucase$(e) or UPPER(e).
    [[nodiscard]] QString upper(const QString &expression) const;
    /// The expression, or `otherwise` (an expression too) when it is Null. On the server the result has the type of the
    /// expression: an `otherwise` longer than its column would be cut.
    [[nodiscard]] QString ifNull(const QString &expression, const QString &otherwise) const;
    /// A memo as a text that may be compared, ordered and searched: CAST(e AS nvarchar(max)), as the tables that an
    /// older program has made there hold it in a type that allows none of that. Unchanged for the file.
    [[nodiscard]] QString memo(const QString &expression) const;
    /// Calendar-year boundaries between two expressions: DateDiff('yyyy',a,b) or DateDiff(yyyy,a,b).
    [[nodiscard]] QString yearDiff(const QString &from, const QString &to) const;
    /// The date as "dd/mm/yyyy".
    [[nodiscard]] QString formatDate(const QString &expression) const;
    /// The date as "dd/mm/yyyy hh:nn".
    [[nodiscard]] QString formatDateTime(const QString &expression) const;
    /// The amount as "#,0.00" ("1.234,50"), halves rounded away from zero; Null stays Null.
    [[nodiscard]] QString formatMoney(const QString &expression) const;

    /// " like '%value%'" with the wildcards in `value` taken literally, without regard to case and accents; "n" finds
    /// "ñ" too, "ñ" only itself. For columns of text; a memo goes through memo().
    [[nodiscard]] QString contains(const QString &column, QStringView value) const;
    /// The pattern of contains() as the embedded engine takes it.
    [[nodiscard]] static QString containsPattern(QStringView value);

private:
    Kind m_kind;
};

} // namespace db
