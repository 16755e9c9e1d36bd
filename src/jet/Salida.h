#pragma once

#include "jet/Bytes.h"
#include "jet/Protocolo.h"

#include <vector>

namespace jet {

/// A frame that a reading process is writing.
class TramoDeSalida
{
public:
    explicit TramoDeSalida(protocolo::Tramo clase);

    void u8(std::uint8_t numero) { m_bytes.push_back(numero); }
    void u16(std::uint16_t numero);
    void u32(std::uint32_t numero);
    void u64(std::uint64_t numero);
    void doble(double numero);
    void bytes(Bytes bytes);
    void texto(const std::string &utf8);
    void celda(protocolo::Celda clase) { u8(std::uint8_t(clase)); }

    [[nodiscard]] std::size_t size() const { return m_bytes.size(); }
    /// To the standard output; ends the process when nobody reads there any more.
    void enviar() const;

private:
    std::vector<std::uint8_t> m_bytes;
};

} // namespace jet
