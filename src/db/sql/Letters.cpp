#include "db/sql/Letters.h"

#include <QChar>
#include <QString>

#include <array>
#include <memory>

namespace db::sql {

namespace {

// Latin-1 to Latin Extended-B, and the block of letters with two accents.
constexpr char32_t latinEnd = 0x250, additionalBegin = 0x1E00, additionalEnd = 0x1F00;

Letter compute(char32_t character)
{
    const char32_t folded = QChar::toLower(character);
    if (folded == U'ñ')
        return {folded, folded};
    char32_t bare = folded;
    // Letters with two accents come apart one accent at a time.
    for (QString parts = QChar::decomposition(bare);
         parts.size() >= 2 && QChar::decompositionTag(bare) == QChar::Canonical;
         parts = QChar::decomposition(bare))
        bare = parts.front().unicode();
    return {folded, char32_t(QChar::toLower(bare))};
}

using Table = std::array<Letter, latinEnd + (additionalEnd - additionalBegin)>;

const Table &table()
{
    static const auto letters = [] {
        auto made = std::make_unique<Table>();
        for (char32_t c = 0; c < latinEnd; ++c)
            (*made)[c] = compute(c);
        for (char32_t c = additionalBegin; c < additionalEnd; ++c)
            (*made)[latinEnd + c - additionalBegin] = compute(c);
        return made;
    }();
    return *letters;
}

} // namespace

Letter letter(char32_t character)
{
    if (character < latinEnd)
        return table()[character];
    if (character >= additionalBegin && character < additionalEnd)
        return table()[latinEnd + character - additionalBegin];
    return {character, character};
}

const uchar asciiFold[128]
    = {0,   1,   2,   3,   4,    5,   6,   7,   8,   9,   10,  11,  12,  13,  14,  15,  16,  17,   18,  19,  20,  21,
       22,  23,  24,  25,  26,   27,  28,  29,  30,  31,  ' ', '!', '"', '#', '$', '%', '&', '\'', '(', ')', '*', '+',
       ',', '-', '.', '/', '0',  '1', '2', '3', '4', '5', '6', '7', '8', '9', ':', ';', '<', '=',  '>', '?', '@', 'a',
       'b', 'c', 'd', 'e', 'f',  'g', 'h', 'i', 'j', 'k', 'l', 'm', 'n', 'o', 'p', 'q', 'r', 's',  't', 'u', 'v', 'w',
       'x', 'y', 'z', '[', '\\', ']', '^', '_', '`', 'a', 'b', 'c', 'd', 'e', 'f', 'g', 'h', 'i',  'j', 'k', 'l', 'm',
       'n', 'o', 'p', 'q', 'r',  's', 't', 'u', 'v', 'w', 'x', 'y', 'z', '{', '|', '}', '~', 127};

} // namespace db::sql
