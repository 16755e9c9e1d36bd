#pragma once

#include "db/sql/Moment.h"

#include <QByteArray>

#include <optional>
#include <vector>

#include <sqlite3.h>

namespace db::sql {

/// Arguments and results of the SQL functions as C++ values.
[[nodiscard]] inline bool isNull(sqlite3_value *value) { return sqlite3_value_type(value) == SQLITE_NULL; }

/// The stored bytes; valid until the value is converted.
[[nodiscard]] QByteArrayView utf8(sqlite3_value *value);
/// As text: numbers as Access writes them ("1,5"). Null is the empty text.
[[nodiscard]] QByteArray textOf(sqlite3_value *value);
/// Numbers, texts that are numbers, dates by their serial number; no value for Null and the rest.
[[nodiscard]] std::optional<double> numberOf(sqlite3_value *value);
/// Stored dates, texts that are dates and serial numbers.
[[nodiscard]] std::optional<Moment> momentOf(sqlite3_value *value);

void giveText(sqlite3_context *context, QByteArrayView text);
/// As a whole number where it is one.
void giveNumber(sqlite3_context *context, double number);
void giveMoment(sqlite3_context *context, const std::optional<Moment> &moment);

/// One SQL function of ours; `arguments` -1 is any number.
struct Function {
    const char *name;
    int arguments;
    void (*run)(sqlite3_context *, int, sqlite3_value **);
};

[[nodiscard]] const std::vector<Function> &textFunctions();
[[nodiscard]] const std::vector<Function> &numberFunctions();
[[nodiscard]] const std::vector<Function> &dateFunctions();

} // namespace db::sql
