#pragma once

#include "db/ResultSet.h"
#include "db/Schema.h"

namespace db::odbc {

/// The columns of a table from what Flavour::columns yields.
[[nodiscard]] QVector<Column> columnsOf(const ResultSet &rows);

} // namespace db::odbc
