#include "db/sql/LikePattern.h"

#include "db/sql/Letters.h"
#include "db/sql/Utf8.h"

#include <QByteArray>
#include <QString>

namespace db::sql {

namespace {

bool isCombining(char32_t c) { return c >= 0x300 && c < 0x370; }

/// The next character as searches see it; accents written as characters of their own are passed over.
char32_t nextBase(const uchar *&at, const uchar *end)
{
    if (*at < 0x80 && (at + 1 == end || at[1] < 0xCC || at[1] > 0xCD))
        return asciiFold[*at++];
    const char32_t base = letter(nextCharacter(at, end)).base;
    while (at < end && (*at == 0xCC || *at == 0xCD)) {
        const uchar *ahead = at;
        if (!isCombining(nextCharacter(ahead, end)))
            break;
        at = ahead;
    }
    return base;
}

const uchar *begin(QByteArrayView text) { return reinterpret_cast<const uchar *>(text.data()); }

} // namespace

LikePattern::LikePattern(QByteArrayView raw, char32_t escape)
{
    // An ñ typed as n and tilde is the letter too.
    const QByteArray pattern = QString::fromUtf8(raw).normalized(QString::NormalizationForm_C).toUtf8();
    const uchar *const start = begin(pattern), *const end = start + pattern.size();
    for (const uchar *at = start; at < end;) {
        const uchar *ahead = at;
        const char32_t c = nextCharacter(ahead, end);
        Element element;
        if (escape != 0 && c == escape && ahead < end) {
            at = ahead;
            element.letter = nextBase(at, end);
        } else if (c == U'%') {
            element.kind = Element::Kind::Run;
            at = ahead;
            if (!m_elements.empty() && m_elements.back().kind == Element::Kind::Run)
                continue;
        } else if (c == U'_') {
            element.kind = Element::Kind::One;
            at = ahead;
        } else if (c == U'[') {
            if (const qsizetype length = readClass(pattern, at - start); length > 0) {
                at += length;
                continue;
            }
            at = ahead;
            element.letter = c;
        } else {
            element.letter = nextBase(at, end);
        }
        m_elements.push_back(std::move(element));
    }

    const size_t count = m_elements.size();
    if (count >= 3 && m_elements.front().kind == Element::Kind::Run && m_elements.back().kind == Element::Kind::Run) {
        for (size_t i = 1; i + 1 < count; ++i) {
            if (m_elements[i].kind != Element::Kind::Letter || m_elements[i].letter >= 0x80) {
                m_plain.clear();
                break;
            }
            m_plain += char(m_elements[i].letter);
        }
    }
}

qsizetype LikePattern::readClass(QByteArrayView pattern, qsizetype at)
{
    // "]" closes the class unless it is its first character.
    qsizetype inside = at + 1;
    const bool negated = inside < pattern.size() && (pattern[inside] == '!' || pattern[inside] == '^')
        && inside + 1 < pattern.size() && pattern[inside + 1] != ']';
    if (negated)
        ++inside;
    const qsizetype close = pattern.indexOf(']', inside + 1);
    if (close < 0)
        return 0;
    Element element;
    element.kind = Element::Kind::Class;
    element.negated = negated;
    const uchar *p = begin(pattern) + inside, *const end = begin(pattern) + close;
    while (p < end) {
        const char32_t first = nextBase(p, end);
        char32_t last = first;
        if (p + 1 < end && *p == '-') {
            ++p;
            last = nextBase(p, end);
        }
        element.spans.push_back({first, last});
    }
    // A class of one sign, the usual way to write it, is that sign.
    if (!negated && element.spans.size() == 1 && element.spans[0].first == element.spans[0].last) {
        element.kind = Element::Kind::Letter;
        element.letter = element.spans[0].first;
    }
    m_elements.push_back(std::move(element));
    return close + 1 - at;
}

bool LikePattern::accepts(const Element &element, char32_t base) const
{
    switch (element.kind) {
    case Element::Kind::Letter: return base == element.letter || (base == U'ñ' && element.letter == U'n');
    case Element::Kind::Class:
        for (const Span &span : element.spans) {
            if ((base >= span.first && base <= span.last) || (base == U'ñ' && U'n' >= span.first && U'n' <= span.last))
                return !element.negated;
        }
        return element.negated;
    default: return true;
    }
}

bool LikePattern::matchesPlain(const uchar *at, const uchar *end) const
{
    const auto *const plain = begin(m_plain);
    const qsizetype length = m_plain.size();
    const uchar first = plain[0];
    for (; at < end; ++at) {
        // Where a text has more bytes, the general comparison decides from here on.
        if (*at < 0x80 ? asciiFold[*at] != first : *at < 0xC3)
            continue;
        const uchar *p = at;
        qsizetype i = 0;
        while (i < length && p < end) {
            const char32_t base = nextBase(p, end);
            if (base != plain[i] && !(base == U'ñ' && plain[i] == 'n'))
                break;
            ++i;
        }
        if (i == length)
            return true;
    }
    return false;
}

bool LikePattern::matches(QByteArrayView text) const
{
    const uchar *at = begin(text), *const end = at + text.size();
    if (!m_plain.isEmpty())
        return matchesPlain(at, end);

    size_t element = 0;
    // Where the last run began, to be made one character longer when what follows does not match.
    const uchar *runText = nullptr;
    size_t runElement = 0;
    while (at < end) {
        if (element < m_elements.size() && m_elements[element].kind == Element::Kind::Run) {
            runElement = ++element;
            runText = at;
            if (element == m_elements.size())
                return true;
            continue;
        }
        const uchar *ahead = at;
        if (element < m_elements.size() && accepts(m_elements[element], nextBase(ahead, end))) {
            ++element;
            at = ahead;
            continue;
        }
        if (!runText)
            return false;
        (void)nextBase(runText, end);
        at = runText;
        element = runElement;
    }
    while (element < m_elements.size() && m_elements[element].kind == Element::Kind::Run)
        ++element;
    return element == m_elements.size();
}

} // namespace db::sql
