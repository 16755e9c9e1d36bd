#pragma once

#include "db/ResultSet.h"

#include <vector>

namespace ui {

/// Appends a key of a text to `claves`, such that keys compared byte by byte stand as db::sql::compareSpanish() puts
/// their texts. Comparing keys is many times faster than comparing texts.
void agregarClaveEspanola(QByteArrayView texto, QByteArray &claves);

/// Origin rows 0...n-1 in the order of a result's column by its raw values; Null and empty stand first, texts in
/// the database's Spanish order. Stable in both directions. Text columns in which every filled cell is a date with
/// separators, or a number, sort as such.
[[nodiscard]] std::vector<int> ordenarColumna(const db::ResultSet &rows, int column, bool descendente);

/// The same for texts.
[[nodiscard]] std::vector<int> ordenarTextos(const std::vector<QString> &textos, bool descendente);

} // namespace ui
