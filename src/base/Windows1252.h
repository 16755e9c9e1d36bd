#pragma once

#include <QByteArray>
#include <QString>

#include <optional>

namespace base {

/// 8-bit text as the settings files hold it. The five codes that Windows-1252 leaves open read as U+FFFD.
[[nodiscard]] QString desdeWindows1252(QByteArrayView bytes);
/// Empty optional when a character has no 8-bit form.
[[nodiscard]] std::optional<QByteArray> aWindows1252(QStringView texto);

} // namespace base
