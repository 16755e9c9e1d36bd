#pragma once

#include "db/HuellaHistorial.h"

#include <optional>

namespace db {

class CadenaHistorial;
class Entorno;

/// The last link of the log's chain that this computer has seen, kept beside its other settings in `historial.dat` (a
/// line of text per database): links cut off at the end of a chain do not show in the chain itself.
struct CabezaHistorial {
    QByteArray sal; ///< of the chain; another one means that the chain was begun anew
    int orden = 0;
    Huella sello;
    QByteArray fecha; ///< of the link's row, as stored

    bool operator==(const CabezaHistorial &) const = default;
};

/// What this computer remembers of the database now open; none on a new computer or without a legible file.
[[nodiscard]] std::optional<CabezaHistorial> cabezaRecordada(Entorno &entorno);
/// Whether that link is still part of the chain, or was removed together with its rows by the program itself.
[[nodiscard]] bool sigueEnCadena(CadenaHistorial &cadena, const CabezaHistorial &cabeza);
/// A folder that cannot be written to is no reason to disturb anybody: then nothing is remembered.
void recordarCabeza(Entorno &entorno, const CabezaHistorial &cabeza);
/// Keeps the end of the chain as it now is, whatever was remembered.
void aceptarFinal(Entorno &entorno);

} // namespace db
