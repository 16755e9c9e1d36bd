#pragma once

#include "db/Schema.h"

namespace printing {

/// The tables that printed documents are assembled in.
[[nodiscard]] db::Schema esquema();

} // namespace printing
