#pragma once

#include <QString>

namespace base {

/// A field of a line of CSV with semicolons, in quotes where it needs them.
[[nodiscard]] QString campoCsv(QString texto);

} // namespace base
