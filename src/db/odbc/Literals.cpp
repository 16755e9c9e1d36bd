#include "db/odbc/Literals.h"

#include "db/Error.h"
#include "db/odbc/Flavour.h"

#include <QTime>

#include <algorithm>
#include <cmath>

namespace db::odbc {

namespace {

/// Where what opens at `i` ends: a text, a name in brackets or double quotes, a comment; `i` itself for anything else.
qsizetype afterClosed(QStringView sql, qsizetype i)
{
    const QChar c = sql[i];
    const auto after = [&](QStringView end, qsizetype from) {
        const qsizetype at = sql.indexOf(end, from);
        return at < 0 ? sql.size() : at + end.size();
    };
    if (c == u'\'' || c == u'"' || c == u'[') {
        const QChar end = c == u'[' ? QChar(u']') : c;
        qsizetype at = i;
        // Doubled, the closing sign stands for itself.
        do
            at = after(QStringView(&end, 1), at + 1);
        while (at < sql.size() && sql[at] == end);
        return at;
    }
    if (sql.mid(i, 2) == u"--")
        return after(u"\n", i);
    if (sql.mid(i, 2) == u"/*")
        return after(u"*/", i + 2);
    return i;
}

bool isWordCharacter(QChar c) { return c.isLetterOrNumber() || c == u'_' || c == u'@' || c == u'#'; }

QString quoted(const QString &text, const Flavour &flavour)
{
    return flavour.textPrefix + u'\'' + QString(text).replace(u'\'', QLatin1String("''")) + u'\'';
}

/// The server takes a backslash that ends a line out of a text, together with the line's end: something has to stand
/// between the two on the way, and go again on the other side. A sign more of it than the text has in a row is found
/// nowhere else; compared by its code, as every other comparison takes some signs for others, or for none. One REPLACE
/// whatever the text: joined pieces would be an expression as deep as they are many, which the server refuses.
QString textLiteral(const QString &text, const Flavour &flavour)
{
    const auto joins = [&text](qsizetype at) {
        return text[at] == u'\\' && at + 1 < text.size() && (text[at + 1] == u'\n' || text[at + 1] == u'\r');
    };
    bool any = false;
    qsizetype run = 0, longest = 0;
    for (qsizetype i = 0; flavour.backslashJoinsLines && i < text.size(); ++i) {
        any |= joins(i);
        run = text[i] == u'|' ? run + 1 : 0;
        longest = std::max(longest, run);
    }
    if (!any)
        return quoted(text, flavour);
    const QString mark(longest + 1, u'|');
    QString apart;
    apart.reserve(text.size() + text.size() / 2);
    for (qsizetype i = 0; i < text.size(); ++i) {
        apart += text[i];
        if (joins(i))
            apart += mark;
    }
    return QStringLiteral("REPLACE(%1 COLLATE Latin1_General_BIN2,%2,%3)")
        .arg(quoted(apart, flavour), quoted(mark, flavour), quoted({}, flavour));
}

QString momentLiteral(const QDateTime &moment, const Flavour &flavour)
{
    if (!moment.isValid())
        return QStringLiteral("NULL");
    return QStringLiteral("CAST('%1' AS %2)")
        .arg(moment.toString(QStringLiteral("yyyyMMdd HH:mm:ss")), flavour.dateType);
}

} // namespace

Outline outlineOf(QStringView sql)
{
    Outline outline;
    for (qsizetype i = 0; i < sql.size();) {
        if (const qsizetype end = afterClosed(sql, i); end > i) {
            i = end;
            continue;
        }
        if (isWordCharacter(sql[i])) {
            const qsizetype from = i;
            while (i < sql.size() && isWordCharacter(sql[i]))
                ++i;
            const QStringView word = sql.mid(from, i - from);
            if (outline.verb.isEmpty())
                outline.verb = word.toString().toUpper();
            else if (word.compare(u"values", Qt::CaseInsensitive) == 0)
                outline.values = outline.verb == u"INSERT";
            continue;
        }
        outline.parameters += sql[i] == u'?';
        ++i;
    }
    return outline;
}

QString replaceParameters(QStringView sql, const std::function<QString(int)> &write)
{
    QString out;
    out.reserve(sql.size() + 100);
    int parameter = 0;
    qsizetype from = 0;
    for (qsizetype i = 0; i < sql.size();) {
        if (const qsizetype end = afterClosed(sql, i); end > i) {
            i = end;
            continue;
        }
        if (sql[i] == u'?') {
            out += sql.mid(from, i - from);
            out += write(parameter++);
            from = i + 1;
        }
        ++i;
    }
    out += sql.mid(from);
    return out;
}

QString transferable(const QString &text)
{
    QString out = text;
    out.remove(QChar(u'\0'));
    for (qsizetype i = 0; i < out.size(); ++i) {
        if (!out[i].isSurrogate())
            continue;
        if (out[i].isHighSurrogate() && i + 1 < out.size() && out[i + 1].isLowSurrogate())
            ++i;
        else
            out[i] = QChar::ReplacementCharacter;
    }
    return out;
}

QString literal(const QVariant &value, const Flavour &flavour)
{
    if (value.isNull() && value.typeId() != QMetaType::QString && value.typeId() != QMetaType::QByteArray)
        return QStringLiteral("NULL");
    switch (value.typeId()) {
    case QMetaType::Bool: return value.toBool() ? QStringLiteral("1") : QStringLiteral("0");
    case QMetaType::Int:
    case QMetaType::UInt:
    case QMetaType::Short:
    case QMetaType::Long:
    case QMetaType::LongLong:
    case QMetaType::ULongLong: {
        const qint64 number = value.toLongLong();
        // A sign between operators must not become a comment ("- -1").
        return number < 0 ? u'(' + QString::number(number) + u')' : QString::number(number);
    }
    case QMetaType::Float:
    case QMetaType::Double: {
        const double number = value.toDouble();
        if (!std::isfinite(number))
            throw Error(Error::Kind::General, 0, QStringLiteral("El número no es válido."));
        // With an exponent it is a floating number for the server, and 17 digits bring back the same one.
        return u'(' + QString::number(number, 'e', 16) + u')';
    }
    case QMetaType::QDate: return momentLiteral(QDateTime(value.toDate(), QTime(0, 0)), flavour);
    case QMetaType::QTime: return momentLiteral(QDateTime(QDate(1899, 12, 30), value.toTime()), flavour);
    case QMetaType::QDateTime: return momentLiteral(value.toDateTime(), flavour);
    case QMetaType::QByteArray:
        return flavour.bytesPrefix + QString::fromLatin1(value.toByteArray().toHex()) + flavour.bytesSuffix;
    default: return textLiteral(transferable(value.toString()), flavour);
    }
}

} // namespace db::odbc
