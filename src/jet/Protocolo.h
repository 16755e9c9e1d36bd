#pragma once

#include <cstdint>

/// What a reading process writes to its output and the program reads: frames of a 32-bit length, a letter and that
/// many bytes less one. All numbers little-endian; texts are a 32-bit length and UTF-8. The program takes nothing of it
/// on trust: a damaged file may have taken over the reader.
namespace jet::protocolo {

inline constexpr std::uint32_t numero = 2;
inline constexpr std::uint32_t tramoMaximo = 256u << 20;
inline constexpr std::uint32_t tramoUsual = 256u << 10; ///< of rows: a frame is sent when it has grown so long
inline constexpr std::uint32_t columnasMaximas = 1024;
inline constexpr std::uint32_t tablasMaximas = 32768;

enum class Tramo : std::uint8_t {
    Saludo = 'S', ///< u32 numero
    Ajena = 'A', ///< text: name of a table that this file only links to
    Tabla = 'T', ///< text name, u32 rows, u32 last autonumber, columns, indexes
    Filas = 'R', ///< rows one after another, cell by cell
    FinTabla = 'F', ///< u32 rows sent
    Falla = 'E', ///< text: why it ends here
    Dicho = 'D', ///< u8 whether the file is damaged, text for the person: why it ends here, in whole sentences
    Fin = 'Z'
};

enum class Celda : std::uint8_t {
    Nulo = 0,
    Entero = 1, ///< i64
    Simple = 2, ///< f64
    Doble = 3, ///< f64
    Texto = 4,
    Bytes = 5, ///< u32 length, bytes
    Logico = 6, ///< u8
    Fecha = 7, ///< i64: seconds since 30/12/1899
    Moneda = 8, ///< i64: ten-thousandths
    Decimal = 9, ///< text
    TextoRoto = 10, ///< text as far as it can be written, then its raw bytes
    FechaRota = 11 ///< f64 outside the calendar
};

} // namespace jet::protocolo
