#pragma once

#include <QByteArray>

#include <vector>

namespace db::sql {

/// A LIKE pattern made ready for many texts, UTF-8: without regard to case and accents ("perez" finds "Pérez"); n finds
/// ñ too, while ñ finds itself only. "%" any run, "_" any one character, "[abc]", "[a-z]", "[!a]", "[^a]" classes;
/// "[%]" is the sign itself, "*" and "?" are ordinary. A "[" without its "]" is ordinary too.
class LikePattern
{
public:
    explicit LikePattern(QByteArrayView pattern, char32_t escape = 0);

    [[nodiscard]] bool matches(QByteArrayView text) const;

private:
    struct Span {
        char32_t first, last;
    };
    struct Element {
        enum class Kind { Letter, One, Run, Class } kind = Kind::Letter;
        char32_t letter = 0;
        bool negated = false;
        std::vector<Span> spans = {};
    };
    [[nodiscard]] bool accepts(const Element &element, char32_t base) const;
    [[nodiscard]] bool matchesPlain(const uchar *at, const uchar *end) const;
    [[nodiscard]] qsizetype readClass(QByteArrayView pattern, qsizetype at);

    std::vector<Element> m_elements;
    QByteArray m_plain; ///< of "%plain%" in ASCII, the pattern of nearly every search: folded; else empty
};

} // namespace db::sql
