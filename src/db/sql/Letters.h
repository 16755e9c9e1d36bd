#pragma once

#include <QtGlobal>

namespace db::sql {

/// What comparing and searching need of a Latin letter.
struct Letter {
    char32_t folded; ///< in lower case
    char32_t base; ///< in lower case and without its accents; ñ stays ñ
};

/// Of any character; those that are not Latin are their own base.
[[nodiscard]] Letter letter(char32_t character);

/// The same for ASCII bytes: lower case.
extern const uchar asciiFold[128];

} // namespace db::sql
