#pragma once

#include "db/Condition.h"
#include "db/Dialect.h"
#include "db/ResultSet.h"
#include "db/Schema.h"

#include <QStringList>
#include <QVariantList>

#include <functional>
#include <memory>
#include <optional>
#include <vector>

namespace db {

using Params = QVariantList;
using Rows = std::shared_ptr<const ResultSet>;

/// Where an embedded database lies, and the word that opens it.
struct EmbeddedFile {
    QString path;
    QString password;
    bool operator==(const EmbeddedFile &) const = default;
};

/// A back end behind Connection. Every call throws db::Error on failure. Parameters are bound to the "?" of the
/// statement in their order: QString, numbers, bool (stored -1/0), QDate, QTime, QDateTime, QByteArray; a null QVariant
/// is Null.
class Engine
{
public:
    virtual ~Engine() = default;

    [[nodiscard]] virtual Dialect::Kind dialect() const = 0;

    [[nodiscard]] virtual Rows query(const QString &sql, const Params &params) = 0;
    /// Rows changed; 0 for statements that change none.
    virtual int execute(const QString &sql, const Params &params) = 0;
    /// The same statement once per row of parameters, with one preparation; yields the rows changed in all. Stops at
    /// the first failure: for all or none, run it inside a transaction.
    virtual int executeBatch(const QString &sql, const std::vector<Params> &rows);
    /// The counter value that the last INSERT of this connection gave.
    [[nodiscard]] virtual qint64 insertedId() = 0;

    virtual void begin() = 0;
    virtual void commit() = 0;
    virtual void rollback() = 0;

    /// For "SELECT ... FROM [table] ..." over that one table, without grouping: its name. Empty for anything else.
    [[nodiscard]] virtual QString singleTable(const QString &sql) = 0;

    /// Table names in the catalog, without the engine's own.
    [[nodiscard]] virtual QStringList tableNames() = 0;
    /// The columns of a table as the catalog declares them; empty when there is no such table.
    [[nodiscard]] virtual QVector<Column> columns(const QString &table) = 0;
    virtual void createTable(const Table &table) = 0;
    virtual void addColumn(const QString &table, const Column &column) = 0;

    /// The keys of the rows of a searched table (Table::search) that meet every condition, and as further columns the
    /// values of those named, as text; in the order of its list and without reading the rows. Null when this engine
    /// keeps no such list of it, or cannot vouch for it now: the plain statement then answers. Equal to what that one
    /// would answer, whoever wrote the rows.
    [[nodiscard]] virtual Rows search(const QString &table, const Conditions &conditions, const QStringList &columns)
    {
        Q_UNUSED(table)
        Q_UNUSED(conditions)
        Q_UNUSED(columns)
        return {};
    }
    /// Brings up to date what search() reads, all in one transaction; nothing when little has changed since.
    virtual void prepareSearch(const Table &table) { Q_UNUSED(table) }

    /// True when the file behind the connection is no longer the one that was opened (removed or replaced).
    [[nodiscard]] virtual bool moved() const { return false; }
    [[nodiscard]] virtual bool readOnly() const { return false; }
    /// The file behind the connection; none for a server.
    [[nodiscard]] virtual std::optional<EmbeddedFile> embeddedFile() const { return {}; }

    /// How long a statement waits for another station's write, in milliseconds; 0 for the engine's usual time.
    virtual void setBusyWait(int) { }
};

/// Which engine opens a connection string, by its "Provider=". The program fills it once, tests put theirs in.
class Engines
{
public:
    using Factory = std::function<std::unique_ptr<Engine>(const class ConnectionString &)>;

    /// The embedded engine under "Microsoft.Jet.OLEDB.4.0", the server's under "SQLOLEDB".
    static Engines standard();

    void add(const QString &provider, Factory factory);
    /// Whether an engine of this version opens such strings.
    [[nodiscard]] bool has(const QString &provider) const;
    [[nodiscard]] std::unique_ptr<Engine> open(const ConnectionString &text) const;

private:
    std::vector<std::pair<QString, Factory>> m_factories;
};

/// "Key=value; Key=value" as the connection is described; keys without regard to case. "Password" or "PWD" comes last
/// and runs to the end, so that it may hold any character.
class ConnectionString
{
public:
    explicit ConnectionString(const QString &text);
    [[nodiscard]] QString value(QStringView key) const;

private:
    std::vector<std::pair<QString, QString>> m_parts;
};

} // namespace db
