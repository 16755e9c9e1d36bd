#pragma once

struct sqlite3;

namespace db::sql {

/// Gives a connection what translated statements call: the Access functions (format, DateDiff, mid, instr...), LIKE
/// without regard to case and accents and with [classes], and the Spanish order of text under the name NOCASE.
void registerFunctions(sqlite3 *database);

} // namespace db::sql
