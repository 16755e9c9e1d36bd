#include "jet/Bytes.h"

#include <bit>

namespace jet {

Bytes parte(Bytes bytes, std::size_t desde, std::size_t largo)
{
    if (desde > bytes.size() || largo > bytes.size() - desde)
        throw Danio("un dato se sale de su lugar");
    return bytes.subspan(desde, largo);
}

namespace {

template <typename Numero>
Numero leer(Bytes bytes, std::size_t lugar)
{
    Numero numero = 0;
    unsigned corrimiento = 0;
    for (const std::uint8_t byte : parte(bytes, lugar, sizeof(Numero))) {
        numero = Numero(numero | Numero(Numero(byte) << corrimiento));
        corrimiento += 8;
    }
    return numero;
}

} // namespace

std::uint8_t u8(Bytes bytes, std::size_t lugar) { return leer<std::uint8_t>(bytes, lugar); }
std::uint16_t u16(Bytes bytes, std::size_t lugar) { return leer<std::uint16_t>(bytes, lugar); }
std::uint32_t u32(Bytes bytes, std::size_t lugar) { return leer<std::uint32_t>(bytes, lugar); }
std::uint64_t u64(Bytes bytes, std::size_t lugar) { return leer<std::uint64_t>(bytes, lugar); }
float simple(Bytes bytes, std::size_t lugar) { return std::bit_cast<float>(u32(bytes, lugar)); }
double doble(Bytes bytes, std::size_t lugar) { return std::bit_cast<double>(u64(bytes, lugar)); }

} // namespace jet
