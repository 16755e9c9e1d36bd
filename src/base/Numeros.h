#pragma once

#include <QString>

#include <optional>

namespace base {

/// "#,0.00" as Argentina writes it: 1234.5 is "1.234,50". Halves round away from zero, on the decimal digits that the
/// value shows (a single-precision 0.145 is "0,15").
[[nodiscard]] QString dinero(double importe);

/// Reads a number as typed: "12,5" and "12.5" are twelve and a half, "1.234,50" and "1,234.50" one thousand two hundred
/// and thirty-four and a half, "1.234.567" over a million. A single separator is the decimal one, whichever it is.
/// Empty optional for blanks and anything that is not a number.
[[nodiscard]] std::optional<double> leerNumero(QStringView texto);

} // namespace base
