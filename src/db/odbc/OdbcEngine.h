#pragma once

#include "db/Engine.h"
#include "db/odbc/Target.h"
#include "db/odbc/Watched.h"

#include <QElapsedTimer>
#include <QHash>

namespace db {

namespace odbc {
struct Failed;
}

/// The server's engine, over the ODBC C interface. One connection; every result is read whole before the next
/// statement, so that any number of them can be open at once.
///
/// When the server goes away, or hangs, the statement that meets it throws Error::Kind::Lost, once; the next one
/// outside a transaction connects again by itself. A transaction that was cut is never continued on another connection:
/// all that follows in it throws until it is rolled back, and nothing of it was stored.
class OdbcEngine final : public Engine
{
public:
    /// Throws db::Error (CannotOpen).
    explicit OdbcEngine(odbc::Target target, odbc::Watch watch = {});
    /// From the connection string, with the best driver that is installed.
    static std::unique_ptr<Engine> open(const ConnectionString &text, odbc::Watch watch = {});
    /// Whether this computer has a driver for it.
    [[nodiscard]] static bool available();
    ~OdbcEngine() override;
    OdbcEngine(const OdbcEngine &) = delete;
    OdbcEngine &operator=(const OdbcEngine &) = delete;

    [[nodiscard]] Dialect::Kind dialect() const override { return Dialect::Kind::SqlServer; }
    [[nodiscard]] Rows query(const QString &sql, const Params &params) override;
    int execute(const QString &sql, const Params &params) override;
    int executeBatch(const QString &sql, const std::vector<Params> &rows) override;
    [[nodiscard]] qint64 insertedId() override;
    void begin() override;
    void commit() override;
    void rollback() override;
    [[nodiscard]] QString singleTable(const QString &sql) override;
    [[nodiscard]] QStringList tableNames() override;
    [[nodiscard]] QVector<Column> columns(const QString &table) override;
    void createTable(const Table &table) override;
    void addColumn(const QString &table, const Column &column) override;
    void setBusyWait(int milliseconds) override { m_wait = milliseconds; }

    /// Seconds after which a connection that was not used is asked whether it still stands before it gets something to
    /// do: a server that was restarted meanwhile is then nothing that anybody has to be told of.
    void setIdleCheck(int seconds) { m_idleSeconds = seconds; }

private:
    struct Link;
    struct Session;
    enum class Action { Reading, Changing, Committing };
    enum class InTransaction { No, Yes, Undone, Lost };

    void connect();
    [[nodiscard]] Session &ready();
    template <typename Work>
    auto guarded(Action action, const Work &work);
    [[noreturn]] void fail(const odbc::Failed &failed, Action action);
    void applyWait(Session &session);
    [[nodiscard]] int patience(int seconds) const;
    void checkStored(const QString &sql, qint64 changed, qint64 expected) const;

    odbc::Target m_target;
    odbc::Watch m_watch;
    std::unique_ptr<Session> m_session; ///< none after the server went away
    InTransaction m_transaction = InTransaction::No;
    QElapsedTimer m_used;
    QHash<QString, QVector<Column>> m_columns;
    qint64 m_insertedId = 0;
    int m_wait = 0; ///< as asked for; 0 for the usual time
    int m_idleSeconds = 20;
};

} // namespace db
