#pragma once

#include <QString>

namespace db::access {

/// Whether so many seconds since 30/12/1899 fall within the years 100 to 9999.
[[nodiscard]] bool esFechaPosible(qint64 segundos);

/// A date counted in seconds since 30/12/1899, in the form in which dates are stored.
[[nodiscard]] QString textoDeFecha(qint64 segundos);

} // namespace db::access
