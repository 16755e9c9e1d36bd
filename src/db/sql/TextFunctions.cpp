#include "db/sql/Values.h"

#include "db/sql/Collation.h"
#include "db/sql/Format.h"

#include <QString>
#include <QVarLengthArray>

namespace db::sql {

namespace {

constexpr qint64 longestResult = 1'000'000;

bool anyNull(sqlite3_context *context, int count, sqlite3_value **values)
{
    for (int i = 0; i < count; ++i) {
        if (isNull(values[i])) {
            sqlite3_result_null(context);
            return true;
        }
    }
    return false;
}

/// Bytes of the first `characters` characters.
qsizetype bytesOf(QByteArrayView text, qint64 characters)
{
    qsizetype at = 0;
    while (at < text.size() && characters > 0) {
        ++at;
        while (at < text.size() && (uchar(text[at]) & 0xC0) == 0x80)
            ++at;
        --characters;
    }
    return at;
}

qint64 lengthOf(QByteArrayView text)
{
    qint64 length = 0;
    for (const char c : text)
        length += (uchar(c) & 0xC0) != 0x80;
    return length;
}

template <bool upper>
void changeCase(sqlite3_context *context, int count, sqlite3_value **values)
{
    if (anyNull(context, count, values))
        return;
    QByteArray text = textOf(values[0]);
    bool ascii = true;
    for (const char c : std::as_const(text))
        ascii = ascii && uchar(c) < 0x80;
    if (ascii)
        giveText(context, upper ? text.toUpper() : text.toLower());
    else {
        // Character by character: a text keeps its length.
        QString wide = QString::fromUtf8(text);
        for (QChar &c : wide)
            c = upper ? c.toUpper() : c.toLower();
        giveText(context, wide.toUtf8());
    }
}

template <bool left, bool right>
void trim(sqlite3_context *context, int count, sqlite3_value **values)
{
    if (anyNull(context, count, values))
        return;
    const QByteArray text = textOf(values[0]);
    qsizetype from = 0, to = text.size();
    while (left && from < to && text[from] == ' ')
        ++from;
    while (right && to > from && text[to - 1] == ' ')
        --to;
    giveText(context, QByteArrayView(text).sliced(from, to - from));
}

void mid(sqlite3_context *context, int count, sqlite3_value **values)
{
    if (anyNull(context, count, values))
        return;
    const QByteArray text = textOf(values[0]);
    const qint64 start = std::max<qint64>(1, sqlite3_value_int64(values[1]));
    const QByteArrayView rest = QByteArrayView(text).sliced(bytesOf(text, start - 1));
    giveText(context, count < 3 ? rest : rest.first(bytesOf(rest, sqlite3_value_int64(values[2]))));
}

void left(sqlite3_context *context, int count, sqlite3_value **values)
{
    if (anyNull(context, count, values))
        return;
    const QByteArray text = textOf(values[0]);
    giveText(context, QByteArrayView(text).first(bytesOf(text, sqlite3_value_int64(values[1]))));
}

void right(sqlite3_context *context, int count, sqlite3_value **values)
{
    if (anyNull(context, count, values))
        return;
    const QByteArray text = textOf(values[0]);
    const qint64 skipped = lengthOf(text) - std::max<qint64>(0, sqlite3_value_int64(values[1]));
    giveText(context, QByteArrayView(text).sliced(bytesOf(text, skipped)));
}

void length(sqlite3_context *context, int count, sqlite3_value **values)
{
    if (!anyNull(context, count, values))
        sqlite3_result_int64(context, lengthOf(textOf(values[0])));
}

/// instr([start,] text, sought): position from 1, 0 when there is none; case does not count.
void instr(sqlite3_context *context, int count, sqlite3_value **values)
{
    if (anyNull(context, count, values))
        return;
    const qint64 start = count == 3 ? std::max<qint64>(1, sqlite3_value_int64(values[0])) : 1;
    const QString text = QString::fromUtf8(textOf(values[count - 2])),
                  sought = QString::fromUtf8(textOf(values[count - 1]));
    sqlite3_result_int64(
        context, start > text.size() ? 0 : text.indexOf(sought, qsizetype(start) - 1, Qt::CaseInsensitive) + 1);
}

void replace(sqlite3_context *context, int count, sqlite3_value **values)
{
    if (anyNull(context, count, values))
        return;
    const QByteArray text = textOf(values[0]), before = textOf(values[1]), after = textOf(values[2]);
    if (before.isEmpty())
        giveText(context, text);
    else if (text.count(before) * qint64(after.size()) > longestResult)
        sqlite3_result_error_toobig(context);
    else
        giveText(context, QByteArray(text).replace(before, after));
}

/// string(count, character), and space(count).
void repeat(sqlite3_context *context, int count, sqlite3_value **values)
{
    if (anyNull(context, count, values))
        return;
    const qint64 times = std::max<qint64>(0, sqlite3_value_int64(values[0]));
    if (times > longestResult) {
        sqlite3_result_error_toobig(context);
        return;
    }
    const QString text = count == 1 ? QStringLiteral(" ") : QString::fromUtf8(textOf(values[1]));
    giveText(context, text.left(1).repeated(qsizetype(times)).toUtf8());
}

void chr(sqlite3_context *context, int count, sqlite3_value **values)
{
    if (anyNull(context, count, values))
        return;
    const qint64 code = sqlite3_value_int64(values[0]);
    if (code < 1 || code > 255)
        sqlite3_result_error(context, "Chr fuera de 1 a 255", -1);
    else
        giveText(context, QString(QChar(char16_t(code))).toUtf8());
}

void asc(sqlite3_context *context, int count, sqlite3_value **values)
{
    if (anyNull(context, count, values))
        return;
    const QString text = QString::fromUtf8(textOf(values[0]));
    if (text.isEmpty())
        sqlite3_result_null(context);
    else
        sqlite3_result_int(context, text.front().unicode());
}

/// strcomp(a, b [, 0]): -1, 0 or 1; a third argument of 0 compares the bytes.
void strcomp(sqlite3_context *context, int count, sqlite3_value **values)
{
    if (anyNull(context, count, values))
        return;
    const QByteArray a = textOf(values[0]), b = textOf(values[1]);
    const bool exact = count == 3 && sqlite3_value_int(values[2]) == 0;
    const int order = exact ? a.compare(b) : compareSpanish(a, b);
    sqlite3_result_int(context, (order > 0) - (order < 0));
}

/// All operands in one text; Null counts as empty.
void concat(sqlite3_context *context, int count, sqlite3_value **values)
{
    // Names and the like fit; a list of a hundred thousand rows calls this for each.
    QVarLengthArray<char, 256> text;
    for (int i = 0; i < count; ++i) {
        if (sqlite3_value_type(values[i]) == SQLITE_FLOAT) {
            const QByteArray number = numberText(sqlite3_value_double(values[i]));
            text.append(number.constData(), number.size());
        } else if (!isNull(values[i])) {
            const QByteArrayView part = utf8(values[i]);
            text.append(part.data(), part.size());
        }
    }
    giveText(context, QByteArrayView(text.constData(), text.size()));
}

/// Text of any value; dates in the short form.
void cstr(sqlite3_context *context, int count, sqlite3_value **values)
{
    if (anyNull(context, count, values))
        return;
    if (sqlite3_value_type(values[0]) == SQLITE_TEXT) {
        const QByteArrayView text = utf8(values[0]);
        if (text.size() == 19) {
            if (const auto moment = Moment::fromStored(text)) {
                giveText(context, generalDate(*moment));
                return;
            }
        }
    }
    giveText(context, textOf(values[0]));
}

} // namespace

const std::vector<Function> &textFunctions()
{
    static const std::vector<Function> functions{
        {"v_ucase", 1, changeCase<true>},
        {"v_lcase", 1, changeCase<false>},
        {"v_trim", 1, trim<true, true>},
        {"v_ltrim", 1, trim<true, false>},
        {"v_rtrim", 1, trim<false, true>},
        {"v_mid", 2, mid},
        {"v_mid", 3, mid},
        {"v_left", 2, left},
        {"v_right", 2, right},
        {"v_len", 1, length},
        {"v_instr", 2, instr},
        {"v_instr", 3, instr},
        {"v_replace", 3, replace},
        {"v_space", 1, repeat},
        {"v_string", 2, repeat},
        {"v_chr", 1, chr},
        {"v_asc", 1, asc},
        {"v_strcomp", 2, strcomp},
        {"v_strcomp", 3, strcomp},
        {"v_concat", -1, concat},
        {"v_cstr", 1, cstr},
    };
    return functions;
}

} // namespace db::sql
