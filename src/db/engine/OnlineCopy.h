#pragma once

#include "db/engine/EmbeddedEngine.h"

#include <QVector>

#include <atomic>

struct sqlite3_backup;

namespace db {

/// Rows of one table.
struct RowCount {
    QString table;
    qint64 rows = 0;
    bool operator==(const RowCount &) const = default;
};

/// Every table of a file with its number of rows.
[[nodiscard]] QVector<RowCount> rowCounts(EmbeddedEngine &engine);

/// The engine's online copy of a file in use into a new one of the same format and password, as one moment of it, with
/// the number of rows that each table had at that moment. Works through connections of its own, so it may run in a
/// thread beside the program's. Between two steps it holds no lock: a commit of anybody, which the engine allows in
/// that gap, makes the copy start over. What it leaves behind unless Done is for the caller to remove.
class OnlineCopy
{
public:
    enum class State {
        Working,
        Waiting, ///< somebody is writing: try again in a moment
        Restarted, ///< somebody has written: from the beginning
        Done ///< whole, and handed to the disk
    };

    /// Opens the source and makes the destination; throws db::Error.
    OnlineCopy(const EmbeddedFile &source, const QString &destination);
    ~OnlineCopy();
    OnlineCopy(const OnlineCopy &) = delete;
    OnlineCopy &operator=(const OnlineCopy &) = delete;

    /// A few milliseconds of work (a big table takes longer to count); throws db::Error.
    State step();
    /// 0 to 100.
    [[nodiscard]] int percent() const;
    /// Of the moment that was copied; valid once Done.
    [[nodiscard]] const QVector<RowCount> &counts() const { return m_counts; }
    /// The source was removed or replaced since it was opened.
    [[nodiscard]] bool sourceMoved() const { return m_source.moved(); }
    /// The file being made, for what has to be set on it.
    [[nodiscard]] EmbeddedEngine &destination() { return m_destination; }

private:
    /// Each commit of another connection gives another number.
    [[nodiscard]] qint64 version();
    State startOver();
    void countNext();
    State copyNext();
    void finish();

    EmbeddedEngine m_source;
    EmbeddedEngine m_destination;
    sqlite3_backup *m_backup = nullptr;
    bool m_begun = false;
    qint64 m_version = 0; ///< when it began
    QStringList m_tables; ///< not counted yet
    QVector<RowCount> m_counts;
    int m_percent = 0;
};

/// Proves a file made by OnlineCopy: opens it with its password, lets the engine examine every page, and compares the
/// rows of every table. Yields why it is not good, empty when it is; stops with a db::Error when `cancel` is set.
[[nodiscard]] QString
proveCopy(const EmbeddedFile &copy, const QVector<RowCount> &expected, const std::atomic<bool> &cancel);

} // namespace db
