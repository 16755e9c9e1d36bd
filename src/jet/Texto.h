#pragma once

#include "jet/Bytes.h"

#include <array>

namespace jet {

struct Texto {
    std::string utf8;
    /// False when the file held half a surrogate pair, which UTF-8 cannot write: U+FFFD stands in its place.
    bool exacto = true;
};

/// Text of a Jet 4 file: UTF-16, little-endian; after the mark FF FE, stretches of one byte a character and of two, in
/// turns, each ended by a 00. Blanks, line breaks and U+0000 stay as they are.
[[nodiscard]] Texto textoUnicode(Bytes crudo);

/// The characters of a Jet 3 file's code page by their byte.
using TablaDePagina = std::array<char16_t, 256>;
[[nodiscard]] const TablaDePagina &windows1252();
[[nodiscard]] Texto textoDePagina(Bytes crudo, const TablaDePagina &tabla);

} // namespace jet
