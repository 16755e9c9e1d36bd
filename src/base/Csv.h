#pragma once

#include <QString>

namespace base {

/// A field of a line of CSV with semicolons, in quotes where it needs them; what a spreadsheet would take for a formula
/// begins with an apostrophe.
[[nodiscard]] QString campoCsv(QString texto);

} // namespace base
