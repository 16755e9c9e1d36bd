#include "db/Dialect.h"

#include "db/Error.h"

#include <QRegularExpression>

#include <algorithm>

namespace db {

namespace {

QString accessDate(QDate d)
{
    return QStringLiteral("%1/%2/%3")
        .arg(d.month(), 2, 10, QChar(u'0'))
        .arg(d.day(), 2, 10, QChar(u'0'))
        .arg(d.year(), 4, 10, QChar(u'0'));
}

// The server's datetime begins in 1753 and stops the whole statement at anything before: no row holds an older date, so
// its first day is as far as a question needs to go.
QString serverDate(QDate d) { return std::max(d, QDate(1753, 1, 1)).toString(QStringLiteral("yyyyMMdd")); }

// As a text it would be empty, which the server takes for the first of January of 1900.
void checkValid(bool valid)
{
    if (!valid)
        throw Error(Error::Kind::General, 0, QStringLiteral("La fecha no es válida."));
}

// Searches disregard case and accents ("perez" finds "Pérez"); the server's own comparisons keep accents apart.
const QString searchCollation = QStringLiteral("Modern_Spanish_CI_AI");

} // namespace

QString Dialect::text(QStringView value) const
{
    QString quoted = value.toString();
    // The engines end a text at a NUL; nothing that a person types holds one.
    quoted.remove(QChar(u'\0'));
    quoted.replace(u'\'', QStringLiteral("''"));
    // Server text outside the code page of its collation survives only as N'...'.
    return (m_kind == Kind::Access ? QStringLiteral("'") : QStringLiteral("N'")) + quoted + u'\'';
}

QString Dialect::identifier(QStringView name) const
{
    if (name.isEmpty() || name.contains(u']') || name.contains(u'['))
        throw Error(Error::Kind::Syntax, 0, QStringLiteral("Nombre de tabla o columna inválido."));
    return u'[' + name.toString() + u']';
}

QString Dialect::date(QDate value) const
{
    checkValid(value.isValid());
    return m_kind == Kind::Access ? u'#' + accessDate(value) + u'#' : u'\'' + serverDate(value) + u'\'';
}

QString Dialect::dateTime(const QDateTime &value) const
{
    checkValid(value.isValid());
    const QString time = value.toString(QStringLiteral(" HH:mm"));
    return m_kind == Kind::Access ? u'#' + accessDate(value.date()) + time + u'#'
                                  : u'\'' + serverDate(value.date()) + time + u'\'';
}

QString Dialect::dayStart(QDate value) const
{
    checkValid(value.isValid());
    return m_kind == Kind::Access ? u'#' + accessDate(value) + QStringLiteral(" 00:00:00#")
                                  : u'\'' + serverDate(value) + QStringLiteral(" 00:00:00'");
}

QString Dialect::dayEnd(QDate value) const
{
    checkValid(value.isValid());
    return m_kind == Kind::Access ? u'#' + accessDate(value) + QStringLiteral(" 23:59:59#")
                                  : u'\'' + serverDate(value) + QStringLiteral(" 23:59:59'");
}

QString Dialect::dayRange(const QString &column, QDate from, QDate to) const
{
    return u'(' + column + QStringLiteral(" >= ") + dayStart(from.isValid() ? from : QDate(1900, 1, 1))
        + QStringLiteral(" and ") + column + QStringLiteral(" <= ") + dayEnd(to.isValid() ? to : QDate(9999, 12, 31))
        + u')';
}

QString Dialect::concatOperator() const { return m_kind == Kind::Access ? QStringLiteral("&") : QStringLiteral("+"); }

QString Dialect::concat(const QStringList &expressions) const
{
    if (m_kind == Kind::Access)
        return expressions.join(QStringLiteral(" & "));
    QStringList parts;
    for (const QString &e : expressions)
        parts << (e.startsWith(u'\'') || e.startsWith(QStringLiteral("N'")) ? e : ifNull(e, QStringLiteral("''")));
    return parts.join(QStringLiteral(" + "));
}

QString Dialect::iif(const QString &condition, const QString &yes, const QString &no) const
{
    return m_kind == Kind::Access ? QStringLiteral("iif(%1,%2,%3)").arg(condition, yes, no)
                                  : QStringLiteral("CASE WHEN %1 THEN %2 ELSE %3 END").arg(condition, yes, no);
}

QString Dialect::upper(const QString &expression) const
{
    return (m_kind == Kind::Access ? QStringLiteral("ucase$(") : QStringLiteral("UPPER(")) + expression + u')';
}

QString Dialect::ifNull(const QString &expression, const QString &otherwise) const
{
    return m_kind == Kind::Access ? QStringLiteral("iif(isnull(%1),%2,%1)").arg(expression, otherwise)
                                  : QStringLiteral("isnull(%1,%2)").arg(expression, otherwise);
}

QString Dialect::memo(const QString &expression) const
{
    return m_kind == Kind::Access ? expression : QStringLiteral("CAST(%1 AS nvarchar(max))").arg(expression);
}

QString Dialect::yearDiff(const QString &from, const QString &to) const
{
    return (m_kind == Kind::Access ? QStringLiteral("DateDiff('yyyy',%1,%2)") : QStringLiteral("DateDiff(yyyy,%1,%2)"))
        .arg(from, to);
}

// The server's own format() came with the version of 2012, writes as the language of the login wants, and is slow.
QString Dialect::formatDate(const QString &expression) const
{
    return (m_kind == Kind::Access ? QStringLiteral("format(%1,'dd/mm/yyyy')")
                                   : QStringLiteral("CONVERT(nvarchar(10),%1,103)"))
        .arg(expression);
}

QString Dialect::formatDateTime(const QString &expression) const
{
    return (m_kind == Kind::Access
                ? QStringLiteral("format(%1,'dd/mm/yyyy hh:nn')")
                : QStringLiteral("(CONVERT(nvarchar(10),%1,103) + ' ' + CONVERT(nvarchar(5),%1,108))"))
        .arg(expression);
}

QString Dialect::formatMoney(const QString &expression) const
{
    if (m_kind == Kind::Access)
        return QStringLiteral("format(%1,'#,0.00')").arg(expression);
    // Style 1 of money is "1,234.50" in every language; the signs then change places. Eight decimals first: what lies
    // behind them is the shadow of a single-precision number ("0.145" is 0.14499999), which must not decide a half.
    // Money ends short of 10^15: what nobody owes is written without points rather than stopping the list.
    return QStringLiteral("CASE WHEN ABS(%1) < 900000000000000 THEN "
                          "REPLACE(REPLACE(REPLACE(CONVERT(nvarchar(40),CAST(ROUND(CAST(%1 AS decimal(28,8)),2) AS "
                          "money),1),',',';'),'.',','),';','.') ELSE CONVERT(nvarchar(40),%1,0) END")
        .arg(expression);
}

QString Dialect::contains(const QString &column, QStringView value) const
{
    QString pattern = containsPattern(value);
    if (m_kind == Kind::Access)
        return column + QStringLiteral(" like ") + text(pattern);
    // "n" finds "ñ" too, as in the embedded engine.
    static const QRegularExpression bare(QStringLiteral("n"), QRegularExpression::CaseInsensitiveOption);
    pattern.replace(bare, QStringLiteral("[nñ]"));
    // The server takes a backslash that ends a line out of a text, and the line's end with it.
    static const QRegularExpression joining(QStringLiteral("\\\\(?=[\r\n])"));
    pattern.replace(joining, QStringLiteral("[\\]"));
    return column + QStringLiteral(" COLLATE ") + searchCollation + QStringLiteral(" like ") + text(pattern);
}

QString Dialect::containsPattern(QStringView value)
{
    QString pattern(u'%');
    for (const QChar c : value) {
        if (c == u'%' || c == u'_' || c == u'[')
            pattern += u'[' + QString(c) + u']';
        else if (c != QChar(u'\0')) // which text() leaves out
            pattern += c;
    }
    return pattern + u'%';
}

} // namespace db
