#pragma once

#include "db/Dialect.h"
#include "db/Engine.h"

#include <QStringList>

#include <memory>

namespace db {

/// The one door to the database. Opened from a connection string; every call throws db::Error on failure.
class Connection
{
public:
    /// Picks the engine by the string's provider and opens it.
    static std::unique_ptr<Connection> open(const QString &connectionString, const Engines &engines);

    explicit Connection(std::unique_ptr<Engine> engine);
    ~Connection();
    Connection(const Connection &) = delete;
    Connection &operator=(const Connection &) = delete;

    [[nodiscard]] const Dialect &dialect() const { return m_dialect; }

    /// The whole result of a SELECT in this connection's dialect.
    [[nodiscard]] Rows query(const QString &sql, const Params &params = {});
    /// Runs a statement; yields the number of rows changed.
    int execute(const QString &sql, const Params &params = {});
    /// See Engine.
    int executeBatch(const QString &sql, const std::vector<Params> &rows);
    [[nodiscard]] qint64 insertedId();

    [[nodiscard]] QStringList tableNames();
    [[nodiscard]] bool tableExists(QStringView table);
    /// As the catalog declares them; empty when there is no such table.
    [[nodiscard]] QVector<Column> columns(const QString &table);
    void createTable(const Table &table);
    void addColumn(const QString &table, const Column &column);

    /// See Engine.
    [[nodiscard]] Rows search(const QString &table, const Conditions &conditions, const QStringList &columns = {});
    void prepareSearch(const Table &table);

    /// The table of a SELECT over one table, empty for any other.
    [[nodiscard]] QString singleTable(const QString &sql);

    /// True when the file behind it was removed or replaced since it was opened.
    [[nodiscard]] bool moved() const;
    [[nodiscard]] bool readOnly() const;
    /// True while what is written may still be undone.
    [[nodiscard]] bool inTransaction() const { return m_depth > 0; }
    [[nodiscard]] Engine &engine() { return *m_engine; }

private:
    friend class Transaction;

    std::unique_ptr<Engine> m_engine;
    Dialect m_dialect;
    int m_depth = 0;
    bool m_broken = false; ///< an inner transaction was not committed
};

/// Several rows, one transaction: rolls back unless committed. May be nested: the outermost one counts, and when an
/// inner one is not committed the outermost commit throws.
class Transaction
{
public:
    explicit Transaction(Connection &connection);
    ~Transaction();
    Transaction(const Transaction &) = delete;
    Transaction &operator=(const Transaction &) = delete;

    void commit();

private:
    Connection &m_connection;
    bool m_open = true;
    bool m_outermost;
};

/// While it lives, a statement waits only briefly for another station's write: for work that nobody asked for and that
/// can be tried again later.
class ShortWait
{
public:
    explicit ShortWait(Connection &connection, int milliseconds = 100);
    ~ShortWait();
    ShortWait(const ShortWait &) = delete;
    ShortWait &operator=(const ShortWait &) = delete;

private:
    Connection &m_connection;
};

} // namespace db
