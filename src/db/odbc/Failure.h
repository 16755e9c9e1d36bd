#pragma once

#include "db/Error.h"

#include <QString>
#include <QVector>

namespace db::odbc {

/// One record of what a driver reports. Its text may hold values of rows or the connection's secrets: it is looked at,
/// never passed on.
struct Diagnostic {
    QString state; ///< SQLSTATE
    int number = 0; ///< the server's own
    QString text;
};
using Diagnostics = QVector<Diagnostic>;

/// What was under way when it failed.
enum class During { Opening, Statement };

/// The failure as an error of ours: the person's words, the server's number.
[[nodiscard]] Error errorOf(const Diagnostics &diagnostics, During during);

/// Whether the records say by themselves that the server is gone.
[[nodiscard]] bool tellsLost(const Diagnostics &diagnostics);
/// Whether the server itself has answered with them, be it a refusal.
[[nodiscard]] bool tellsAnswer(const Diagnostics &diagnostics);
/// Whether they explain nothing: the server may be gone, which only a question to it tells.
[[nodiscard]] bool tellsNothing(const Diagnostics &diagnostics);

} // namespace db::odbc
