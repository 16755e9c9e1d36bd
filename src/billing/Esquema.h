#pragma once

#include "db/Schema.h"

namespace billing {

/// Orders, sessions, payments, prices, cash, budgets and stock.
[[nodiscard]] db::Schema esquema();

} // namespace billing
