#include "db/Connection.h"

#include "db/Error.h"

namespace db {

std::unique_ptr<Connection> Connection::open(const QString &connectionString, const Engines &engines)
{
    return std::make_unique<Connection>(engines.open(ConnectionString(connectionString)));
}

Connection::Connection(std::unique_ptr<Engine> engine)
    : m_engine(std::move(engine))
    , m_dialect(m_engine->dialect())
{
}

Connection::~Connection() = default;

Rows Connection::query(const QString &sql, const Params &params) { return m_engine->query(sql, params); }

int Connection::execute(const QString &sql, const Params &params) { return m_engine->execute(sql, params); }

int Connection::executeBatch(const QString &sql, const std::vector<Params> &rows)
{
    return m_engine->executeBatch(sql, rows);
}

qint64 Connection::insertedId() { return m_engine->insertedId(); }

QStringList Connection::tableNames() { return m_engine->tableNames(); }

bool Connection::tableExists(QStringView table)
{
    for (const QString &name : m_engine->tableNames())
        if (table.compare(name, Qt::CaseInsensitive) == 0)
            return true;
    return false;
}

QVector<Column> Connection::columns(const QString &table) { return m_engine->columns(table); }

void Connection::createTable(const Table &table) { m_engine->createTable(table); }

void Connection::addColumn(const QString &table, const Column &column) { m_engine->addColumn(table, column); }

Rows Connection::search(const QString &table, const Conditions &conditions, const QStringList &columns)
{
    return m_engine->search(table, conditions, columns);
}

void Connection::prepareSearch(const Table &table) { m_engine->prepareSearch(table); }

QString Connection::singleTable(const QString &sql) { return m_engine->singleTable(sql); }

bool Connection::moved() const { return m_engine->moved(); }

bool Connection::readOnly() const { return m_engine->readOnly(); }

Transaction::Transaction(Connection &connection)
    : m_connection(connection)
    , m_outermost(connection.m_depth == 0)
{
    if (m_outermost) {
        m_connection.m_engine->begin();
        m_connection.m_broken = false;
    }
    ++m_connection.m_depth;
}

Transaction::~Transaction()
{
    if (!m_open)
        return;
    --m_connection.m_depth;
    m_connection.m_broken = true;
    if (m_outermost) {
        try {
            m_connection.m_engine->rollback();
        } catch (const Error &) {
            // Nothing was written: an unfinished transaction is undone when the file is next opened.
        }
    }
}

void Transaction::commit()
{
    Q_ASSERT(m_open);
    if (m_outermost) {
        if (m_connection.m_broken)
            throw Error(Error::Kind::General, 0, QStringLiteral("La operación quedó incompleta y se deshizo."));
        m_connection.m_engine->commit();
    }
    m_open = false;
    --m_connection.m_depth;
}

ShortWait::ShortWait(Connection &connection, int milliseconds)
    : m_connection(connection)
{
    m_connection.engine().setBusyWait(milliseconds);
}

ShortWait::~ShortWait() { m_connection.engine().setBusyWait(0); }

} // namespace db
