#include "support/ServerTestEngine.h"

#include "db/Error.h"

namespace soporte {

ServerStatement ServerTestEngine::parse(const QString &sql) { return ServerParser(sql, *this).parse(); }

db::Rows ServerTestEngine::query(const QString &sql, const db::Params &params)
{
    const ServerStatement statement = parse(sql);
    if (!statement.native.isQuery || !statement.condition.isEmpty())
        throw db::Error(db::Error::Kind::Syntax, 0, QStringLiteral("La sentencia no es una consulta."));
    return queryNative(statement.native.text, params);
}

int ServerTestEngine::execute(const QString &sql, const db::Params &params) { return run(parse(sql), params); }

int ServerTestEngine::executeBatch(const QString &sql, const std::vector<db::Params> &rows)
{
    const ServerStatement statement = parse(sql);
    int changed = 0;
    checkIdentity(statement);
    for (const db::Params &row : rows)
        changed += executeNative(statement.native.text, row);
    return changed;
}

int ServerTestEngine::run(const ServerStatement &statement, const db::Params &params)
{
    if (!statement.condition.isEmpty() && queryNative("SELECT " + statement.condition, {})->integer(0, 0) == 0)
        return 0;
    if (statement.errand.kind != ServerErrand::Kind::None) {
        carryOut(statement.errand);
        return 0;
    }
    if (!statement.clustered.isEmpty())
        orderRows(statement.clustered);
    checkIdentity(statement);
    if (statement.newTable) {
        createTable(*statement.newTable);
        return 0;
    }
    if (!statement.newColumns.isEmpty()) {
        for (const db::Column &column : statement.newColumns) {
            addColumn(statement.addTo, column);
            // The server gives a default to new rows only.
            const QString identifier = db::Dialect(db::Dialect::Kind::Access).identifier(column.name);
            const QString table = db::Dialect(db::Dialect::Kind::Access).identifier(statement.addTo);
            EmbeddedEngine::execute(QStringLiteral("UPDATE %1 SET %2 = NULL").arg(table, identifier), {});
        }
        return 0;
    }
    return executeNative(statement.native.text, params);
}

QString ServerTestEngine::singleTable(const QString &sql) { return parse(sql).native.singleTable; }

} // namespace soporte
