#pragma once

#include "jet/Fila.h"

#include <vector>

namespace jet {

/// The pages of a file, whole and already decrypted.
class Libro
{
public:
    virtual ~Libro() = default;
    [[nodiscard]] virtual Version version() const = 0;
    /// Valid until the next call; throws Danio when it cannot be read.
    [[nodiscard]] virtual Bytes pagina(std::uint32_t numero) = 0;
    /// Bytes of the whole file.
    [[nodiscard]] virtual std::size_t tamano() const = 0;

    /// Told of every piece that a pointer led to. Each lies in the file once: when they are more than the file holds, a
    /// damaged one leads to the same places again and again, and reading it would never end. Throws Danio.
    void contar(std::size_t bytes);

private:
    std::size_t m_contados = 0;
};

/// No value of a row may be longer than this.
inline constexpr std::size_t valorMaximo = 128u << 20;

/// A memo or an OLE object behind the 12 bytes that the row holds of it: inside the row, in a row of another page, or
/// in a chain of them. The chain must end where its length says, and what it takes is counted, so it cannot run in a
/// circle.
[[nodiscard]] std::vector<std::uint8_t> leerLargo(Libro &libro, Bytes enFila);

} // namespace jet
