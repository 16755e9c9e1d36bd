#include "jet/Valor.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>

namespace jet {

std::optional<std::int64_t> segundosDeFecha(double guardada)
{
    constexpr double primerDia = -657434; // 01/01/0100
    constexpr double ultimoDia = 2958465; // 31/12/9999
    constexpr std::int64_t segundosDelDia = 86400;
    if (!(guardada > primerDia - 1 && guardada < ultimoDia + 1))
        return {};
    const double dia = std::trunc(guardada);
    const auto segundos = std::int64_t(std::llround(std::abs(guardada - dia) * segundosDelDia));
    // The last half second of the last day has no second to be rounded to.
    return std::min(std::int64_t(dia) * segundosDelDia + segundos, std::int64_t(ultimoDia + 1) * segundosDelDia - 1);
}

std::string textoDeGuid(Bytes crudo)
{
    std::array<char, 40> texto{};
    const Bytes b = parte(crudo, 0, 16);
    std::snprintf(
        texto.data(),
        texto.size(),
        "{%08X-%04X-%04X-%02X%02X-%02X%02X%02X%02X%02X%02X}",
        unsigned(u32(b, 0)),
        unsigned(u16(b, 4)),
        unsigned(u16(b, 6)),
        unsigned(b[8]),
        unsigned(b[9]),
        unsigned(b[10]),
        unsigned(b[11]),
        unsigned(b[12]),
        unsigned(b[13]),
        unsigned(b[14]),
        unsigned(b[15]));
    return texto.data();
}

std::string textoDeDecimal(Bytes crudo, int escala)
{
    // A sign and four words of 32 bits, the highest first, each with its own bytes the other way round.
    std::array<std::uint32_t, 4> palabras{};
    for (std::size_t i = 0; i < palabras.size(); ++i)
        palabras[i] = u32(crudo, 1 + i * 4);
    std::string cifras;
    while (std::any_of(palabras.begin(), palabras.end(), [](std::uint32_t p) { return p != 0; })) {
        std::uint64_t resto = 0;
        for (std::uint32_t &palabra : palabras) {
            const std::uint64_t junto = resto << 32 | palabra;
            palabra = std::uint32_t(junto / 10);
            resto = junto % 10;
        }
        cifras.insert(cifras.begin(), char('0' + resto));
    }
    const auto lugares = std::size_t(std::clamp(escala, 0, 28));
    if (cifras.size() <= lugares)
        cifras.insert(0, lugares + 1 - cifras.size(), '0');
    if (lugares > 0)
        cifras.insert(cifras.size() - lugares, 1, '.');
    return (u8(crudo, 0) & 0x80 ? "-" : "") + cifras;
}

} // namespace jet
