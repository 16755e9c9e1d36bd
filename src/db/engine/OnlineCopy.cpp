#include "db/engine/OnlineCopy.h"

#include "db/Error.h"

#include <sqlite3.h>

namespace db {

namespace {

/// A quarter of a megabyte: long enough to be worth its lock, short enough that nobody notices it.
constexpr int pagesPerStep = 64;
constexpr int busyMilliseconds = 200;

EmbeddedFile madeFor(const EmbeddedFile &source, const QString &path)
{
    createDatabaseFile(path, source.password);
    return {path, source.password};
}

qint64 rowsOf(EmbeddedEngine &engine, QString table)
{
    table.replace(u'"', QStringLiteral("\"\""));
    return engine.queryNative("SELECT count(*) FROM \"" + table.toUtf8() + '"', {})->integer(0, 0);
}

int isSet(void *flag) { return static_cast<const std::atomic<bool> *>(flag)->load() ? 1 : 0; }

} // namespace

QVector<RowCount> rowCounts(EmbeddedEngine &engine)
{
    QVector<RowCount> counts;
    for (const QString &table : engine.tableNames())
        counts.push_back({table, rowsOf(engine, table)});
    return counts;
}

OnlineCopy::OnlineCopy(const EmbeddedFile &source, const QString &destination)
    : m_source(source.path, source.password)
    , m_destination(madeFor(source, destination).path, source.password)
{
    sqlite3_busy_timeout(m_source.handle(), busyMilliseconds);
    m_source.executeNative("PRAGMA query_only=ON", {});
    // A copy that is cut off is thrown away: nothing of it needs to be safe before the end. The small cache spreads its
    // writing over the steps.
    m_destination.executeNative("PRAGMA synchronous=OFF", {});
    (void)m_destination.queryNative("PRAGMA journal_mode=MEMORY", {});
    m_destination.executeNative("PRAGMA cache_size=-2048", {});
}

OnlineCopy::~OnlineCopy() { finish(); }

void OnlineCopy::finish()
{
    sqlite3_backup_finish(m_backup);
    m_backup = nullptr;
}

qint64 OnlineCopy::version() { return m_source.queryNative("PRAGMA data_version", {})->integer(0, 0); }

OnlineCopy::State OnlineCopy::startOver()
{
    finish();
    m_percent = 0;
    m_counts.clear();
    m_begun = false;
    return State::Restarted;
}

OnlineCopy::State OnlineCopy::step()
{
    try {
        if (!m_begun) {
            m_version = version();
            m_tables = m_source.tableNames();
            m_begun = true;
            return State::Working;
        }
        if (!m_tables.isEmpty()) {
            countNext();
            return version() == m_version ? State::Working : startOver();
        }
        return copyNext();
    } catch (const Error &error) {
        if (error.kind() != Error::Kind::Busy)
            throw;
        return State::Waiting;
    }
}

void OnlineCopy::countNext()
{
    m_counts.push_back({m_tables.constFirst(), rowsOf(m_source, m_tables.constFirst())});
    m_tables.removeFirst();
}

OnlineCopy::State OnlineCopy::copyNext()
{
    if (!m_backup) {
        m_backup = sqlite3_backup_init(m_destination.handle(), "main", m_source.handle(), "main");
        if (!m_backup)
            m_destination.fail(sqlite3_errcode(m_destination.handle()));
    }
    const int code = sqlite3_backup_step(m_backup, pagesPerStep);
    if (code == SQLITE_BUSY || code == SQLITE_LOCKED)
        return State::Waiting;
    if (code != SQLITE_OK && code != SQLITE_DONE) {
        finish(); // leaves the failure on the destination's handle
        m_destination.fail(code);
    }
    if (version() != m_version)
        return startOver();
    const int total = sqlite3_backup_pagecount(m_backup);
    m_percent = total > 0 ? int(100LL * (total - sqlite3_backup_remaining(m_backup)) / total) : 0;
    if (code == SQLITE_OK)
        return State::Working;

    finish();
    sqlite3_file *file = nullptr;
    int synced = sqlite3_file_control(m_destination.handle(), "main", SQLITE_FCNTL_FILE_POINTER, &file);
    if (synced == SQLITE_OK)
        synced = file->pMethods->xSync(file, SQLITE_SYNC_FULL);
    if (synced != SQLITE_OK)
        m_destination.fail(synced);
    return State::Done;
}

int OnlineCopy::percent() const { return m_percent; }

QString proveCopy(const EmbeddedFile &copy, const QVector<RowCount> &expected, const std::atomic<bool> &cancel)
{
    EmbeddedEngine engine(copy.path, copy.password, EmbeddedEngine::Opening::ReadOnly);
    sqlite3_progress_handler(engine.handle(), 1000, isSet, const_cast<std::atomic<bool> *>(&cancel));
    const Rows found = engine.queryNative("PRAGMA integrity_check(1)", {});
    if (found->rowCount() != 1 || found->text(0, 0) != QLatin1String("ok"))
        return QStringLiteral("no pasó el control de integridad");
    const QVector<RowCount> counts = rowCounts(engine);
    for (const RowCount &table : expected)
        if (!counts.contains(table))
            return QStringLiteral("le faltan o sobran registros en '%1'").arg(table.table);
    return counts.size() == expected.size() ? QString() : QStringLiteral("no tiene las mismas tablas");
}

} // namespace db
