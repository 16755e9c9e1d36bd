#pragma once

#include <QString>

#include <optional>

namespace base {

/// Prefix and number as the practice shows them: the trimmed prefix followed by the number padded with zeros to six
/// digits. A longer number stays whole, one that is not made of digits stays as it is, an empty one leaves the prefix.
[[nodiscard]] QString componerNumeroHistoria(const QString &prefijo, const QString &numero);

/// The number that follows, as plain digits; nothing when it is empty or not made of digits.
[[nodiscard]] std::optional<QString> numeroHistoriaSiguiente(const QString &numero);

} // namespace base
