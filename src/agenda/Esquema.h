#pragma once

#include "db/Schema.h"

namespace agenda {

/// The appointment book, the weekly hours and the days off.
[[nodiscard]] db::Schema esquema();

} // namespace agenda
