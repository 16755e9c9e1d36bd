#pragma once

#include <QtGlobal>

namespace db::sql {

/// The character at `at`, which moves behind it. A byte that begins no character stands alone, above all characters, so
/// that damaged text still has an order.
inline char32_t nextCharacter(const uchar *&at, const uchar *end)
{
    const uchar lead = *at++;
    if (lead < 0x80)
        return lead;
    const auto alone = char32_t(0x110000 + lead);
    const int more = lead >= 0xF0 && lead < 0xF5 ? 3 : lead >= 0xE0 ? 2 : 1;
    if (lead < 0xC2 || lead >= 0xF5 || end - at < more)
        return alone;
    char32_t character = lead & (0x3F >> more);
    for (int i = 0; i < more; ++i) {
        if ((at[i] & 0xC0) != 0x80)
            return alone;
        character = character << 6 | (at[i] & 0x3F);
    }
    static constexpr char32_t least[] = {0, 0x80, 0x800, 0x10000};
    if (character < least[more] || character > 0x10FFFF || (character >= 0xD800 && character < 0xE000))
        return alone;
    at += more;
    return character;
}

} // namespace db::sql
