#include "db/Dialect.h"

#include "db/Error.h"

namespace db {

namespace {

QString accessDate(QDate d)
{
    return QStringLiteral("%1/%2/%3")
        .arg(d.month(), 2, 10, QChar(u'0'))
        .arg(d.day(), 2, 10, QChar(u'0'))
        .arg(d.year(), 4, 10, QChar(u'0'));
}

QString serverDate(QDate d) { return d.toString(QStringLiteral("yyyyMMdd")); }

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
    return m_kind == Kind::Access ? u'#' + accessDate(value) + u'#' : u'\'' + serverDate(value) + u'\'';
}

QString Dialect::dateTime(const QDateTime &value) const
{
    const QString time = value.toString(QStringLiteral(" HH:mm"));
    return m_kind == Kind::Access ? u'#' + accessDate(value.date()) + time + u'#'
                                  : u'\'' + serverDate(value.date()) + time + u'\'';
}

QString Dialect::dayStart(QDate value) const
{
    return m_kind == Kind::Access ? u'#' + accessDate(value) + QStringLiteral(" 00:00:00#")
                                  : u'\'' + serverDate(value) + QStringLiteral(" 00:00:00'");
}

QString Dialect::dayEnd(QDate value) const
{
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

QString Dialect::yearDiff(const QString &from, const QString &to) const
{
    return (m_kind == Kind::Access ? QStringLiteral("DateDiff('yyyy',%1,%2)") : QStringLiteral("DateDiff(yyyy,%1,%2)"))
        .arg(from, to);
}

QString Dialect::formatDate(const QString &expression) const
{
    return (m_kind == Kind::Access ? QStringLiteral("format(%1,'dd/mm/yyyy')")
                                   : QStringLiteral("format(%1,'dd/MM/yyyy')"))
        .arg(expression);
}

QString Dialect::formatDateTime(const QString &expression) const
{
    return (m_kind == Kind::Access ? QStringLiteral("format(%1,'dd/mm/yyyy hh:nn')")
                                   : QStringLiteral("format(%1,'dd/MM/yyyy HH:mm')"))
        .arg(expression);
}

QString Dialect::formatMoney(const QString &expression) const
{
    // The server writes numbers in the culture that it is told, whatever its own language.
    return (m_kind == Kind::Access ? QStringLiteral("format(%1,'#,0.00')")
                                   : QStringLiteral("format(%1,'#,0.00','es-AR')"))
        .arg(expression);
}

QString Dialect::contains(const QString &column, QStringView value) const
{
    return column + QStringLiteral(" like ") + text(containsPattern(value));
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
