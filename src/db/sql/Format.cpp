#include "db/sql/Format.h"

#include "base/Fechas.h"

#include <charconv>
#include <cmath>
#include <cstring>

namespace db::sql {

namespace {

constexpr int mostDecimals = 10;

QByteArray named(QByteArrayView pattern)
{
    static constexpr std::pair<const char *, const char *> names[]
        = {{"short date", "dd/mm/yyyy"},
           {"short time", "hh:nn"},
           {"long time", "hh:nn:ss"},
           {"standard", "#,0.00"},
           {"fixed", "0.00"},
           {"percent", "0.00%"}};
    const QByteArray lower = pattern.toByteArray().toLower();
    for (const auto &[name, form] : names) {
        if (lower == name)
            return form;
    }
    return pattern.toByteArray();
}

QByteArray dayName(int weekday)
{
    static constexpr const char *names[] = {"domingo", "lunes", "martes", "miércoles", "jueves", "viernes", "sábado"};
    return names[weekday - 1];
}

/// Three letters, of which one may take two bytes.
QByteArray shortName(const QByteArray &name) { return QString::fromUtf8(name).left(3).toUtf8(); }

void appendPadded(QByteArray &text, int number, int width)
{
    const QByteArray shown = QByteArray::number(number);
    text += QByteArray(std::max<qsizetype>(0, width - shown.size()), '0') + shown;
}

} // namespace

FormatPattern::FormatPattern(QByteArrayView pattern)
{
    const QByteArray form = named(pattern);
    bool number = false, date = false, inside = false;
    for (qsizetype i = 0; i < form.size(); ++i) {
        const char c = form[i];
        if (c == '"')
            inside = !inside;
        else if (c == '\\')
            ++i;
        else if (!inside) {
            number = number || c == '0' || c == '#';
            date = date || (c != 0 && strchr("dDmMyYhHnNsSwWqQ", c));
        }
    }
    if (inside || number == date)
        return;
    if (number)
        readNumber(form);
    else
        readDate(form);
}

void FormatPattern::readDate(QByteArrayView pattern)
{
    bool afterHour = false;
    for (qsizetype i = 0; i < pattern.size();) {
        const char c = char(pattern[i] | 0x20);
        if (pattern[i] == '"' || pattern[i] == '\\') {
            const bool quote = pattern[i] == '"';
            const qsizetype end = quote ? pattern.indexOf('"', i + 1) : std::min(i + 2, pattern.size());
            m_pieces.push_back({Part::Literal, pattern.sliced(i + 1, end - i - 1).toByteArray()});
            i = end + (quote ? 1 : 0);
            continue;
        }
        const bool letter = (pattern[i] >= 'A' && pattern[i] <= 'Z') || (pattern[i] >= 'a' && pattern[i] <= 'z');
        if (!letter) {
            m_pieces.push_back({Part::Literal, QByteArray(1, pattern[i])});
            ++i;
            continue;
        }
        qsizetype run = 1;
        while (i + run < pattern.size() && char(pattern[i + run] | 0x20) == c)
            ++run;
        i += run;
        std::optional<Part> part;
        const auto choose = [&](std::initializer_list<std::optional<Part>> byLength) {
            if (size_t(run) <= byLength.size())
                part = byLength.begin()[run - 1];
        };
        switch (c) {
        case 'd': choose({Part::Day, Part::Day2, Part::DayName, Part::DayFull}); break;
        case 'm':
            if (afterHour)
                choose({Part::Minute, Part::Minute2});
            else
                choose({Part::Month, Part::Month2, Part::MonthName, Part::MonthFull});
            break;
        case 'y': choose({Part::DayOfYear, Part::Year2, std::nullopt, Part::Year4}); break;
        case 'h': choose({Part::Hour, Part::Hour2}); break;
        case 'n': choose({Part::Minute, Part::Minute2}); break;
        case 's': choose({Part::Second, Part::Second2}); break;
        case 'w': choose({Part::Weekday, Part::Week}); break;
        case 'q': choose({Part::Quarter}); break;
        default: break;
        }
        if (!part)
            return;
        afterHour = c == 'h';
        m_pieces.push_back({*part, {}});
    }
    m_kind = Kind::Date;
}

void FormatPattern::readNumber(QByteArrayView pattern)
{
    bool placeholders = false, ended = false;
    for (qsizetype i = 0; i < pattern.size(); ++i) {
        const char c = pattern[i];
        if (c == '0' || c == '#' || c == '.' || (c == ',' && placeholders)) {
            if (ended)
                return;
            if (c == '.') {
                if (m_comma)
                    return;
                m_comma = true;
            } else if (c == ',') {
                // A comma at the end would divide by a thousand.
                if (m_comma || i + 1 >= pattern.size() || (pattern[i + 1] != '0' && pattern[i + 1] != '#'))
                    return;
                m_thousands = true;
            } else if (m_comma) {
                ++m_decimalsAtMost;
                if (c == '0')
                    m_decimals = m_decimalsAtMost;
            } else if (c == '0' || m_integers > 0) {
                ++m_integers;
            }
            placeholders = true;
            continue;
        }
        QByteArray &text = placeholders ? m_suffix : m_prefix;
        ended = placeholders;
        if (c == '"') {
            const qsizetype end = pattern.indexOf('"', i + 1);
            text += pattern.sliced(i + 1, end - i - 1);
            i = end;
        } else if (c == '\\') {
            if (++i >= pattern.size())
                return;
            text += pattern[i];
        } else if (c == '%') {
            m_percent = true;
            text += c;
        } else if (uchar(c) >= 0x80 || (c != 0 && strchr("$-+() :/", c))) {
            text += c;
        } else {
            return;
        }
    }
    if (m_decimalsAtMost <= mostDecimals && m_integers < 30)
        m_kind = Kind::Number;
}

QByteArray FormatPattern::number(double value) const
{
    if (!std::isfinite(value))
        return {};
    // Twelve digits are what a value stands for; what follows is the shadow of its binary form.
    char buffer[400];
    char *end = std::to_chars(buffer, buffer + sizeof buffer, value, std::chars_format::general, 12).ptr;
    double clean = 0;
    std::from_chars(buffer, end, clean);
    const bool negative = clean < 0;
    const double scaled
        = std::floor(std::abs(clean) * (m_percent ? 100 : 1) * std::pow(10.0, m_decimalsAtMost) + 0.5 + 1e-6);
    end = std::to_chars(buffer, buffer + sizeof buffer, scaled, std::chars_format::fixed, 0).ptr;

    QByteArray digits(buffer, end - buffer);
    if (scaled == 0)
        digits.clear();
    digits = digits.rightJustified(std::max<qsizetype>(digits.size(), m_decimalsAtMost), '0');
    QByteArray whole = digits.chopped(m_decimalsAtMost), decimals = digits.right(m_decimalsAtMost);
    whole = whole.rightJustified(std::max<qsizetype>(whole.size(), m_integers), '0');
    if (m_thousands) {
        for (qsizetype i = whole.size() - 3; i > 0; i -= 3)
            whole.insert(i, '.');
    }
    while (decimals.size() > m_decimals && decimals.endsWith('0'))
        decimals.chop(1);
    // A decimal sign that the pattern asks for stays even where no decimal follows, as it always did.
    QByteArray text = negative && scaled > 0 ? QByteArray("-") : QByteArray();
    text += m_prefix + whole;
    if (m_comma)
        text += ',' + decimals;
    return text + m_suffix;
}

QByteArray FormatPattern::moment(const Moment &value) const
{
    QByteArray text;
    for (const Piece &piece : m_pieces) {
        switch (piece.part) {
        case Part::Literal: text += piece.literal; break;
        case Part::Day:
        case Part::Day2: appendPadded(text, value.day, piece.part == Part::Day2 ? 2 : 1); break;
        case Part::DayName: text += shortName(dayName(value.weekday())); break;
        case Part::DayFull: text += dayName(value.weekday()); break;
        case Part::Month:
        case Part::Month2: appendPadded(text, value.month, piece.part == Part::Month2 ? 2 : 1); break;
        case Part::MonthName: text += shortName(base::nombreMes(value.month).toLower().toUtf8()); break;
        case Part::MonthFull: text += base::nombreMes(value.month).toLower().toUtf8(); break;
        case Part::DayOfYear: appendPadded(text, datePart(Interval::DayOfYear, value), 1); break;
        case Part::Year2: appendPadded(text, value.year % 100, 2); break;
        case Part::Year4: appendPadded(text, value.year, 4); break;
        case Part::Hour:
        case Part::Hour2: appendPadded(text, value.hour, piece.part == Part::Hour2 ? 2 : 1); break;
        case Part::Minute:
        case Part::Minute2: appendPadded(text, value.minute, piece.part == Part::Minute2 ? 2 : 1); break;
        case Part::Second:
        case Part::Second2: appendPadded(text, value.second, piece.part == Part::Second2 ? 2 : 1); break;
        case Part::Weekday: appendPadded(text, value.weekday(), 1); break;
        case Part::Week: appendPadded(text, datePart(Interval::Week, value), 1); break;
        case Part::Quarter: appendPadded(text, datePart(Interval::Quarter, value), 1); break;
        }
    }
    return text;
}

QByteArray numberText(double value)
{
    char buffer[64];
    char *end = buffer;
    if (std::trunc(value) == value && std::abs(value) < 1e15)
        end = std::to_chars(buffer, buffer + sizeof buffer, qint64(value)).ptr;
    else if (double(float(value)) == value)
        end = std::to_chars(buffer, buffer + sizeof buffer, float(value)).ptr;
    else
        end = std::to_chars(buffer, buffer + sizeof buffer, value, std::chars_format::general, 15).ptr;
    QByteArray text(buffer, end - buffer);
    return text.replace('.', ',').replace('e', 'E');
}

QByteArray generalDate(const Moment &value)
{
    static const FormatPattern date("dd/mm/yyyy"), time("hh:nn:ss");
    const bool dateless = value.year == 1899 && value.month == 12 && value.day == 30;
    if (value.secondOfDay() == 0 && !dateless)
        return date.moment(value);
    return dateless ? time.moment(value) : date.moment(value) + ' ' + time.moment(value);
}

} // namespace db::sql
