#pragma once

#include "db/Schema.h"

namespace patients {

/// The patient register and the lists that its coded columns point into.
[[nodiscard]] db::Schema esquema();

} // namespace patients
