#pragma once

#include "db/Engine.h"

#include <functional>

namespace db::odbc {

struct Flavour;

/// What a statement says of itself, as far as the engine has to know it.
struct Outline {
    QString verb; ///< its first word, in capitals
    bool values = false; ///< INSERT ... VALUES
    int parameters = 0; ///< the "?" in it
};

/// Looks through a statement; texts, names in brackets or double quotes and comments are skipped.
[[nodiscard]] Outline outlineOf(QStringView sql);

/// The statement with each "?" outside texts, names and comments replaced by what `write` gives for its parameter.
[[nodiscard]] QString replaceParameters(QStringView sql, const std::function<QString(int)> &write);

/// A value as it stands in a statement, the same value when the server has read it.
[[nodiscard]] QString literal(const QVariant &value, const Flavour &flavour);

/// The text that can travel: without NUL, which ends a text on the way, and with halves of a pair replaced.
[[nodiscard]] QString transferable(const QString &text);

} // namespace db::odbc
