#include "jet/Salida.h"

#include <bit>
#include <cstdio>
#include <cstdlib>

namespace jet {

TramoDeSalida::TramoDeSalida(protocolo::Tramo clase)
{
    m_bytes.assign(4, 0);
    u8(std::uint8_t(clase));
}

void TramoDeSalida::u16(std::uint16_t numero)
{
    u8(std::uint8_t(numero));
    u8(std::uint8_t(numero >> 8));
}

void TramoDeSalida::u32(std::uint32_t numero)
{
    u16(std::uint16_t(numero));
    u16(std::uint16_t(numero >> 16));
}

void TramoDeSalida::u64(std::uint64_t numero)
{
    u32(std::uint32_t(numero));
    u32(std::uint32_t(numero >> 32));
}

void TramoDeSalida::doble(double numero) { u64(std::bit_cast<std::uint64_t>(numero)); }

void TramoDeSalida::bytes(Bytes bytes)
{
    u32(std::uint32_t(bytes.size()));
    m_bytes.insert(m_bytes.end(), bytes.begin(), bytes.end());
}

void TramoDeSalida::texto(const std::string &utf8)
{
    bytes({reinterpret_cast<const std::uint8_t *>(utf8.data()), utf8.size()});
}

void TramoDeSalida::enviar() const
{
    std::vector<std::uint8_t> entero = m_bytes;
    const auto largo = std::uint32_t(entero.size() - 4);
    for (std::size_t i = 0; i < 4; ++i)
        entero[i] = std::uint8_t(largo >> (8 * i));
    if (std::fwrite(entero.data(), 1, entero.size(), stdout) != entero.size() || std::fflush(stdout) != 0)
        std::_Exit(3);
}

} // namespace jet
