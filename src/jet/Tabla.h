#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace jet {

enum class Tipo : std::uint8_t {
    Logico = 1,
    Byte = 2,
    Entero = 3,
    Largo = 4,
    Moneda = 5,
    Simple = 6,
    Doble = 7,
    Fecha = 8,
    Binario = 9,
    Texto = 10,
    Ole = 11,
    Memo = 12,
    Guid = 15,
    Decimal = 16
};

/// A column as the table's definition describes it. Rows keep the place of deleted columns, so `numero` counts those
/// too: it is the column's bit in the null mask.
struct Columna {
    std::string nombre = {}; ///< UTF-8
    Tipo tipo = Tipo::Texto;
    int tamano = 0; ///< bytes
    bool fija = false;
    int lugarFijo = 0; ///< of a fixed column, in the fixed part of the row
    int variable = 0; ///< number of a variable column among them
    int numero = 0;
    int escala = 0; ///< of a Decimal
    bool autonumerica = false;
};

struct Indice {
    std::vector<std::uint16_t> columnas; ///< positions in Tabla::columnas
    bool unico = false;
    bool primario = false;
};

struct Tabla {
    std::string nombre = {};
    std::vector<Columna> columnas = {};
    std::vector<Indice> indices = {};
    bool hayVariables = false; ///< rows carry the places of variable columns
    std::uint32_t filas = 0; ///< as the definition says
    std::uint32_t ultimoNumero = 0; ///< last value of its autonumber
};

} // namespace jet
