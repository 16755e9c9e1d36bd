#include "db/Condition.h"

#include "db/ResultSet.h"
#include "db/sql/LikePattern.h"

namespace db {

namespace {

QString sign(Condition::Operator op)
{
    switch (op) {
    case Condition::Operator::Equal: return QStringLiteral(" = ");
    case Condition::Operator::Different: return QStringLiteral(" <> ");
    case Condition::Operator::AtLeast: return QStringLiteral(" >= ");
    case Condition::Operator::AtMost: return QStringLiteral(" <= ");
    }
    return {};
}

bool compare(qint64 one, Condition::Operator op, qint64 other)
{
    switch (op) {
    case Condition::Operator::Equal: return one == other;
    case Condition::Operator::Different: return one != other;
    case Condition::Operator::AtLeast: return one >= other;
    case Condition::Operator::AtMost: return one <= other;
    }
    return false;
}

} // namespace

Condition Condition::contains(const Dialect &dialect, const QString &column, const QString &value)
{
    return {
        column,
        dialect.contains(column, value),
        [pattern = sql::LikePattern(Dialect::containsPattern(value).toUtf8())](QByteArrayView stored) {
            return pattern.matches(stored);
        }};
}

Condition Condition::number(const QString &column, Operator op, qint64 value)
{
    return {column, column + sign(op) + QString::number(value), [op, value](QByteArrayView stored) {
                return compare(QByteArray::fromRawData(stored.data(), stored.size()).toLongLong(), op, value);
            }};
}

Condition Condition::date(const Dialect &dialect, const QString &column, QDate value)
{
    return {
        column,
        column + QStringLiteral(" = ") + dialect.date(value),
        [text = storedDateTime(QDateTime(value, QTime(0, 0))).toLatin1()](QByteArrayView stored) {
            return stored == text;
        }};
}

Condition Condition::years(const Dialect &dialect, const QString &column, QDate until, Operator op, int value)
{
    return {
        column,
        dialect.yearDiff(column, dialect.date(until)) + sign(op) + QString::number(value),
        [year = until.year(), op, value](QByteArrayView stored) {
            bool isYear = false; // "yyyy-mm-dd...": the rest does not matter, and reading it costs
            const int its = QByteArray::fromRawData(stored.data(), qMin<qsizetype>(4, stored.size())).toInt(&isYear);
            return isYear && compare(year - its, op, value);
        }};
}

Condition Condition::either(const Condition &one, const Condition &other)
{
    Q_ASSERT(one.column == other.column);
    return {
        one.column,
        u'(' + one.sql + QStringLiteral(" or ") + other.sql + u')',
        [first = one.holds, second = other.holds](QByteArrayView stored) { return first(stored) || second(stored); }};
}

QString clauses(const Conditions &conditions)
{
    QString sql;
    for (const Condition &condition : conditions)
        sql += QStringLiteral(" And ") + condition.sql;
    return sql;
}

} // namespace db
