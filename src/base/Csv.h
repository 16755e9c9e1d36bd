#pragma once

#include <QString>

namespace base {

/// A field of a line of CSV with semicolons, in quotes where it needs them; what a spreadsheet would take for a formula
/// begins with an apostrophe.
[[nodiscard]] QString campoCsv(QString texto);

/// A cell of tab-separated text that goes to a spreadsheet through the clipboard: in one line, formulas as above. One
/// that begins with a quote is quoted, or the spreadsheet would read up to the next quote, lines further down.
[[nodiscard]] QString campoTabulado(const QString &texto);

} // namespace base
