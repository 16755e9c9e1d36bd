#include "db/SentenciasServidor.h"

#include "db/Dialect.h"

#include <QDateTime>
#include <QRegularExpression>

namespace db {

namespace {

const Dialect &serverDialect()
{
    static const Dialect dialect(Dialect::Kind::SqlServer);
    return dialect;
}

// Brackets only where the name needs them ("revi-ong").
QString columnName(const QString &name)
{
    static const QRegularExpression plain(QStringLiteral("^[A-Za-z_][A-Za-z0-9_]*$"));
    return plain.match(name).hasMatch() ? name : serverDialect().identifier(name);
}

// The names are plain letters: no need for the server's national prefix.
QString quoted(const QString &text) { return u'\'' + QString(text).replace(u'\'', QLatin1String("''")) + u'\''; }

QString literal(const QVariant &value)
{
    switch (value.typeId()) {
    case QMetaType::Bool: return value.toBool() ? QStringLiteral("-1") : QStringLiteral("0");
    case QMetaType::QString: return quoted(value.toString());
    default: return value.toString();
    }
}

QString bareType(const Column &column)
{
    switch (column.type) {
    case Type::Counter: return QStringLiteral("int IDENTITY(1,1)");
    case Type::Text: return QStringLiteral("nvarchar(%1)").arg(column.size);
    case Type::Memo: return QStringLiteral("nvarchar(max)");
    case Type::Integer: return QStringLiteral("SMALLINT");
    case Type::Long: return QStringLiteral("int");
    case Type::Single: return QStringLiteral("real");
    case Type::Double: return QStringLiteral("float");
    case Type::Flag: return QStringLiteral("BIT");
    case Type::DateTime: return QStringLiteral("datetime");
    case Type::Binary: return QStringLiteral("varbinary(max)");
    }
    return {};
}

QString names(const QStringList &columns)
{
    QStringList list;
    for (const QString &column : columns)
        list << columnName(column);
    return list.join(u',');
}

} // namespace

QString sentenciaValorInicial(const QString &table, const Column &column)
{
    const std::optional<QVariant> &value = column.existing ? column.existing : column.initial;
    if (!value)
        return {};
    return QStringLiteral("UPDATE %1 SET %2 = %3")
        .arg(serverDialect().identifier(table), columnName(column.name), literal(*value));
}

namespace servidor {

QString tipo(const Column &column)
{
    const QString type = bareType(column);
    return column.initial ? type + QStringLiteral(" DEFAULT ") + literal(*column.initial) : type;
}

QString buscarColumna(const QString &table, const QString &column)
{
    return QStringLiteral("SELECT * FROM INFORMATION_SCHEMA.COLUMNS WHERE COLUMN_NAME = %1 and TABLE_NAME = %2")
        .arg(quoted(column), quoted(table));
}

QString agregarColumna(const QString &table, const Column &column)
{
    return QStringLiteral("IF NOT EXISTS (%1) BEGIN ALTER TABLE %2 ADD %3 %4 END")
        .arg(
            buscarColumna(table, column.name),
            serverDialect().identifier(table),
            columnName(column.name),
            tipo(column));
}

QString quitarColumna(const QString &table, const QString &column)
{
    return QStringLiteral("IF EXISTS (%1) BEGIN ALTER TABLE %2 DROP COLUMN %3 END")
        .arg(buscarColumna(table, column), serverDialect().identifier(table), columnName(column));
}

QString buscarRestriccion(const QString &table, const QString &column)
{
    return QStringLiteral("SELECT d.name FROM sys.default_constraints d INNER JOIN sys.columns c ON c.object_id = "
                          "d.parent_object_id AND c.column_id = d.parent_column_id WHERE d.parent_object_id = "
                          "OBJECT_ID(%1) and c.name = %2")
        .arg(quoted(serverDialect().identifier(table)), quoted(column));
}

QString quitarRestriccion(const QString &table, const QString &name)
{
    return QStringLiteral("ALTER TABLE %1 DROP CONSTRAINT %2")
        .arg(serverDialect().identifier(table), serverDialect().identifier(name));
}

QStringList crearTabla(const Table &table)
{
    const QString name = serverDialect().identifier(table.name);
    QStringList columns;
    for (const Column &column : table.columns) {
        QString text = columnName(column.name) + u' ' + tipo(column);
        if (column.type == Type::Counter)
            text = QStringLiteral("%1 int IDENTITY(%2,1) PRIMARY KEY CLUSTERED")
                       .arg(columnName(column.name))
                       .arg(table.counterStart + 1);
        else if (table.key.contains(column.name))
            text += QStringLiteral(" NOT NULL");
        columns << text;
    }
    if (!table.key.isEmpty())
        columns << QStringLiteral("PRIMARY KEY CLUSTERED (%1)").arg(names(table.key));

    QStringList statements{
        QStringLiteral("IF NOT EXISTS (SELECT * FROM INFORMATION_SCHEMA.TABLES WHERE TABLE_NAME = %1) "
                       "BEGIN CREATE TABLE %2 (%3) END")
            .arg(quoted(table.name), name, columns.join(QLatin1String(", ")))};
    for (const Index &index : table.indexes) {
        if (index.ofList)
            continue;
        const QString indexName = index.columns.join(u'_');
        statements << QStringLiteral("IF NOT EXISTS (SELECT * FROM sys.indexes WHERE object_id = OBJECT_ID(%1) "
                                     "and name = %2) BEGIN CREATE %3INDEX %4 ON %5(%6) END")
                          .arg(
                              quoted(name),
                              quoted(indexName),
                              index.unique ? QStringLiteral("UNIQUE ") : QString(),
                              serverDialect().identifier(indexName),
                              name,
                              names(index.columns));
    }
    return statements;
}

} // namespace servidor

} // namespace db
