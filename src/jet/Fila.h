#pragma once

#include "jet/Bytes.h"
#include "jet/Tabla.h"

#include <optional>

namespace jet {

/// Raw contents of a cell. A row written before its column was added has no value there.
struct Celda {
    std::optional<Bytes> crudo; ///< none: Null; also none for a Logico
    bool verdadero = false; ///< of a Logico, which is kept in the null mask
};

enum class Version { Jet3, Jet4 };

/// Takes a row apart, in the order of the columns.
[[nodiscard]] std::vector<Celda> partirFila(Bytes fila, const Tabla &tabla, Version version);

/// A place in a page where a row lies.
struct Ranura {
    Bytes fila;
    bool movida = false; ///< the row lies elsewhere: `fila` begins with a pointer to it
    bool oculta = false; ///< deleted, or reached only through such a pointer
};
[[nodiscard]] int cantidadRanuras(Bytes pagina, Version version);
[[nodiscard]] Ranura ranura(Bytes pagina, int cual, Version version);

/// Where the kind of a page and its owner stand.
[[nodiscard]] bool esPaginaDeDatos(Bytes pagina, std::uint32_t duenio);

/// The four bytes that lead to a row in another page.
struct Puntero {
    std::uint32_t pagina = 0;
    int ranura = 0;
};
[[nodiscard]] Puntero puntero(Bytes bytes, std::size_t lugar);

} // namespace jet
