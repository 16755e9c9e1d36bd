#pragma once

#include "jet/Bytes.h"
#include "jet/Tabla.h"

#include <optional>

namespace jet {

/// Seconds since 30/12/1899 of a date as Access stores it: whole days, of either sign, and a part of a day that always
/// counts forward; rounded to the second. None outside the years 100 to 9999.
[[nodiscard]] std::optional<std::int64_t> segundosDeFecha(double guardada);

/// "{00112233-4455-6677-8899-AABBCCDDEEFF}".
[[nodiscard]] std::string textoDeGuid(Bytes crudo);

/// Digits of a Decimal, with a point where its scale says: "-12.50".
[[nodiscard]] std::string textoDeDecimal(Bytes crudo, int escala);

} // namespace jet
