#pragma once

#include <QString>
#include <QStringList>

namespace db::odbc {

/// The few texts in which the servers differ that this engine talks to. SQL Server is the one; the other serves to try
/// the plumbing against a real server where there is no SQL Server.
struct Flavour {
    QStringList options; ///< set on opening; a server that does not know one does without
    QString waits; ///< %1 milliseconds that a statement waits for another's lock
    QString begin; ///< begins a transaction that alone may write; %1 milliseconds that it waits for its turn
    QString rollback; ///< harmless where none is open
    QString insertedSuffix; ///< after an INSERT, in its own batch: its new counter value
    QString insertedQuery; ///< the same as a statement of its own
    QString openQuery; ///< how many transactions are open; empty where any failure ends the transaction
    QString batchBegin, batchEnd; ///< before and after many statements: the first failure ends them all
    QString tables;
    QString columns; ///< of the table "?": name, type, characters, default, whether it counts
    QString textPrefix; ///< N'...'
    QString dateType;
    QString bytesPrefix, bytesSuffix;
    bool backslashJoinsLines; ///< a backslash at the end of a line of a text takes the line break away
};

[[nodiscard]] const Flavour &sqlServer();
[[nodiscard]] const Flavour &postgres();

} // namespace db::odbc
