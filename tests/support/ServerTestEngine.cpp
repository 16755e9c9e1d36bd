#include "support/ServerTestEngine.h"

#include "db/Error.h"
#include "support/ServerParser.h"

#include <QDate>
#include <QMetaType>

namespace soporte {

namespace {

/// The server turns a value into the kind of the column that it meets, or fails. Which it does depends on the rows:
/// here it fails at once.
void checkParameters(const std::vector<ServerStatement::Parameter> &wanted, const db::Params &params)
{
    using db::sql::Kind;
    const auto refuse = [](const QString &what) { throw db::Error(db::Error::Kind::Syntax, 0, what); };
    if (params.size() > 2100)
        refuse(QStringLiteral("Demasiados valores: el servidor toma hasta 2100."));
    for (const QVariant &value : params) {
        const bool isDate = value.typeId() == QMetaType::QDate || value.typeId() == QMetaType::QDateTime;
        if (isDate && !value.isNull() && value.toDate().year() < 1753)
            refuse(QStringLiteral("El servidor no tiene fechas anteriores a 1753."));
    }
    for (const ServerStatement::Parameter &parameter : wanted) {
        const QVariant value = params.value(parameter.number - 1);
        if (!value.isValid() || (value.isNull() && value.typeId() != QMetaType::QString))
            continue;
        const int type = value.typeId();
        const bool isText = type == QMetaType::QString, isBytes = type == QMetaType::QByteArray;
        const bool isMoment = type == QMetaType::QDate || type == QMetaType::QTime || type == QMetaType::QDateTime;
        const bool inexact = type == QMetaType::Double || type == QMetaType::Float;
        bool numeric = !isText && !isBytes && !isMoment;
        if (parameter.kind == Kind::Number && isText)
            (void)value.toString().toDouble(&numeric);
        if (parameter.kind == Kind::Number && !numeric)
            refuse(QStringLiteral("Un valor que no es un número, donde se espera uno."));
        if (parameter.kind == Kind::Date && !isMoment)
            refuse(QStringLiteral("Un valor que no es una fecha, donde se espera una."));
        if (parameter.kind == Kind::Text && !isText
            && (parameter.compared || isMoment || inexact || type == QMetaType::Bool))
            refuse(QStringLiteral("Un valor que no es un texto, donde se espera uno."));
        if (parameter.bit && (type == QMetaType::Bool || (value.toInt() != 0 && value.toInt() != 1)))
            refuse(QStringLiteral("Una bandera vale 1 o 0: se compara con \"<> 0\"."));
    }
}

/// A flag begins as 1 or 0, whatever its default says.
db::Column withFlag(db::Column column)
{
    if (column.type == db::Type::Flag && column.initial)
        column.initial = column.initial->toInt() != 0 ? 1 : 0;
    return column;
}

} // namespace

ServerTestEngine::ServerTestEngine(const QString &path, const QString &password, Opening opening)
    : EmbeddedEngine(path, password, opening)
{
    if (readOnly())
        return;
    // The server's flags are 1 and 0.
    executeNative("PRAGMA writable_schema=ON", {});
    executeNative(
        "UPDATE sqlite_master SET sql = replace(sql, ' YESNO DEFAULT -1', ' YESNO DEFAULT 1') "
        "WHERE sql LIKE '%YESNO DEFAULT -1%'",
        {});
    executeNative("PRAGMA writable_schema=RESET", {});
    for (const QString &table : tableNames()) {
        for (const db::Column &column : columns(table)) {
            if (column.type == db::Type::Flag)
                executeNative(
                    "UPDATE \"" + table.toUtf8() + "\" SET \"" + column.name.toUtf8() + "\" = 1 WHERE \""
                        + column.name.toUtf8() + "\" = -1",
                    {});
        }
    }
}

ServerStatement ServerTestEngine::parse(const QString &sql)
{
    return ServerParser(sql, [this](const QString &table) { return columns(table); }).parse();
}

void ServerTestEngine::createTable(const db::Table &table)
{
    db::Table own = table;
    for (db::Column &column : own.columns)
        column = withFlag(column);
    EmbeddedEngine::createTable(own);
}

void ServerTestEngine::addColumn(const QString &table, const db::Column &column)
{
    EmbeddedEngine::addColumn(table, withFlag(column));
}

void ServerTestEngine::checkDrop(const QString &table, const QString &name)
{
    for (const db::Column &column : columns(table)) {
        if (column.name.compare(name, Qt::CaseInsensitive) == 0 && column.initial
            && !m_freed.contains(QStringLiteral("df_%1_%2").arg(table, name).toLower()))
            throw db::Error(
                db::Error::Kind::General, 4922, QStringLiteral("La columna tiene un valor inicial: no se quita."));
    }
}

db::Rows ServerTestEngine::query(const QString &sql, const db::Params &params)
{
    const ServerStatement statement = parse(sql);
    if (!statement.native.isQuery || !statement.condition.isEmpty())
        throw db::Error(db::Error::Kind::Syntax, 0, QStringLiteral("La sentencia no es una consulta."));
    checkParameters(statement.parameters, params);
    return queryNative(statement.native.text, params);
}

int ServerTestEngine::execute(const QString &sql, const db::Params &params)
{
    const ServerStatement statement = parse(sql);
    if (!statement.condition.isEmpty() && queryNative("SELECT " + statement.condition, {})->integer(0, 0) == 0)
        return 0;
    checkParameters(statement.parameters, params);
    if (!statement.droppedConstraint.isEmpty()) {
        m_freed << statement.droppedConstraint.toLower();
        return 0;
    }
    if (!statement.droppedColumn.isEmpty())
        checkDrop(statement.dropFrom, statement.droppedColumn);
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
