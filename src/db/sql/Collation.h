#pragma once

#include <QByteArrayView>

namespace db::sql {

/// The order of text, UTF-8: case does not count, an accent decides only between texts that are alike without it
/// (a < á < b, "arbol" < "árbol" < "arca"), ñ is a letter of its own between n and o, what is not Latin goes by code
/// point. Negative, 0 or positive; 0 exactly when both differ in case alone.
[[nodiscard]] int compareSpanish(QByteArrayView a, QByteArrayView b);

} // namespace db::sql
