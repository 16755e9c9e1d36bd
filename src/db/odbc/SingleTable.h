#pragma once

#include <QString>

namespace db::odbc {

/// For "SELECT ... FROM [table] ..." over that one table, without grouping: its name. Empty for anything else.
[[nodiscard]] QString singleTable(const QString &sql);

} // namespace db::odbc
