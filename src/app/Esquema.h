#pragma once

#include "db/Schema.h"

namespace app {

/// Every table of the system.
[[nodiscard]] db::Schema esquemaCompleto();

/// The same tables in the four parts that the start-up upgrade goes through, in this order: core and printing, patients
/// and clinical records, billing, agenda. The agenda comes last because the weekly hours move into it.
[[nodiscard]] QVector<db::Schema> esquemaPorRutinas();

} // namespace app
