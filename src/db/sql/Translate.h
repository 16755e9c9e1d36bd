#pragma once

#include <QByteArray>
#include <QString>

namespace db::sql {

/// A statement in the embedded engine's own SQL.
struct Translated {
    QByteArray text; ///< UTF-8
    bool isQuery = false;
    /// For "SELECT ... FROM [table] ..." of one table without DISTINCT, GROUP BY or UNION: that table. Else empty.
    QString singleTable;
};

/// Rewrites a statement of the Access dialect. Throws db::Error (Kind::Syntax) naming what it does not know; never lets
/// text through that it did not understand.
[[nodiscard]] Translated fromAccess(QStringView statement);

} // namespace db::sql
