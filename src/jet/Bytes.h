#pragma once

#include <cstdint>
#include <span>
#include <stdexcept>
#include <string>

/// Reading of old Access files (Jet 3 and 4) in plain C++: everything here takes bytes that may have been damaged in
/// any way, checks every size before it touches them, and throws Danio for what cannot be.
namespace jet {

using Bytes = std::span<const std::uint8_t>;

/// The bytes cannot be what they should be. The text is for the person, in Spanish.
class Danio : public std::runtime_error
{
public:
    using std::runtime_error::runtime_error;
};

/// Part of the bytes; throws Danio when it does not lie inside them.
[[nodiscard]] Bytes parte(Bytes bytes, std::size_t desde, std::size_t largo);

// Little-endian numbers; throw Danio beyond the end.
[[nodiscard]] std::uint8_t u8(Bytes bytes, std::size_t lugar);
[[nodiscard]] std::uint16_t u16(Bytes bytes, std::size_t lugar);
[[nodiscard]] std::uint32_t u32(Bytes bytes, std::size_t lugar);
[[nodiscard]] std::uint64_t u64(Bytes bytes, std::size_t lugar);
[[nodiscard]] float simple(Bytes bytes, std::size_t lugar);
[[nodiscard]] double doble(Bytes bytes, std::size_t lugar);

} // namespace jet
