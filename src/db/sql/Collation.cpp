#include "db/sql/Collation.h"

#include "db/sql/Letters.h"
#include "db/sql/Utf8.h"

namespace db::sql {

namespace {

/// Place of a letter's base in the alphabet, with room for ñ behind n.
quint32 place(char32_t base) { return base == U'ñ' ? quint32('n') * 2 + 1 : quint32(base) * 2; }

} // namespace

int compareSpanish(QByteArrayView a, QByteArrayView b)
{
    const auto *p = reinterpret_cast<const uchar *>(a.data()), *endP = p + a.size();
    const auto *q = reinterpret_cast<const uchar *>(b.data()), *endQ = q + b.size();
    int accent = 0;
    while (p < endP && q < endQ) {
        if ((*p | *q) < 0x80) {
            const int difference = int(asciiFold[*p++]) - int(asciiFold[*q++]);
            if (difference != 0)
                return difference;
            continue;
        }
        const Letter left = letter(nextCharacter(p, endP)), right = letter(nextCharacter(q, endQ));
        const quint32 first = place(left.base), second = place(right.base);
        if (first != second)
            return first < second ? -1 : 1;
        // The bare letter is the lowest of its family: its accented forms lie beyond ASCII.
        if (accent == 0 && left.folded != right.folded)
            accent = left.folded < right.folded ? -1 : 1;
    }
    if (p < endP || q < endQ)
        return p < endP ? 1 : -1;
    return accent;
}

} // namespace db::sql
