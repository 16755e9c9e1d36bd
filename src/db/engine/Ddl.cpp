#include "db/engine/Ddl.h"

#include "db/ResultSet.h"

namespace db::ddl {

namespace {

struct Declared {
    Type type;
    const char *name;
};

// The engine gives a column its affinity by these names: those with TEXT keep "00123" as it is.
constexpr Declared declarations[] = {
    {Type::Text, "TEXT"},
    {Type::Memo, "LONGTEXT"},
    {Type::Integer, "SHORT"},
    {Type::Long, "LONG"},
    {Type::Single, "REAL"},
    {Type::Double, "DOUBLE"},
    {Type::Flag, "YESNO"},
    {Type::DateTime, "DATETIME"},
    {Type::Binary, "BLOB"},
    {Type::Counter, "INTEGER"},
};

QByteArray quoted(const QString &name) { return '"' + name.toUtf8().replace('"', "\"\"") + '"'; }

QByteArray literal(const QVariant &value)
{
    if (value.isNull())
        return "NULL";
    switch (value.typeId()) {
    case QMetaType::Bool: return value.toBool() ? "-1" : "0";
    case QMetaType::Int:
    case QMetaType::LongLong: return QByteArray::number(value.toLongLong());
    case QMetaType::Double: return QByteArray::number(value.toDouble(), 'g', 17);
    case QMetaType::QDate: return '\'' + storedDateTime(QDateTime(value.toDate(), QTime(0, 0))).toUtf8() + '\'';
    case QMetaType::QDateTime: return '\'' + storedDateTime(value.toDateTime()).toUtf8() + '\'';
    default: return '\'' + value.toString().toUtf8().replace('\'', "''") + '\'';
    }
}

QByteArray columnText(const Column &column)
{
    QByteArray text = quoted(column.name) + ' ';
    if (column.type == Type::Counter)
        return text + "INTEGER PRIMARY KEY AUTOINCREMENT";
    for (const Declared &d : declarations)
        if (d.type == column.type)
            text += d.name;
    if (column.type == Type::Text)
        text += '(' + QByteArray::number(column.size) + ')';
    if (column.type == Type::Text || column.type == Type::Memo)
        text += " COLLATE NOCASE";
    if (column.initial)
        text += " DEFAULT " + literal(*column.initial);
    return text;
}

} // namespace

QList<QByteArray> createTable(const Table &table)
{
    QByteArray body;
    for (const Column &column : table.columns)
        body += (body.isEmpty() ? "" : ", ") + columnText(column);
    if (!table.key.isEmpty()) {
        QByteArray names;
        for (const QString &name : table.key)
            names += (names.isEmpty() ? "" : ", ") + quoted(name);
        body += ", PRIMARY KEY (" + names + ')';
    }
    QList<QByteArray> statements{"CREATE TABLE " + quoted(table.name) + " (" + body + ')'};
    if (table.counterStart > 0)
        statements << "INSERT INTO sqlite_sequence (name, seq) VALUES (" + literal(table.name) + ", "
                + QByteArray::number(table.counterStart) + ')';
    return statements + createIndexes(table);
}

QList<QByteArray> createIndexes(const Table &table)
{
    QList<QByteArray> statements;
    for (const Index &index : table.indexes)
        statements << createIndex(table.name, index);
    return statements;
}

QByteArray createIndex(const QString &table, const Index &index)
{
    QByteArray names;
    for (const QString &name : index.columns)
        names += (names.isEmpty() ? "" : ", ") + quoted(name) + (index.ofList ? " COLLATE BINARY" : "");
    return QByteArray(index.unique ? "CREATE UNIQUE INDEX " : "CREATE INDEX ")
        + quoted(table + u' ' + index.columns.join(u' ')) + " ON " + quoted(table) + " (" + names + ')';
}

QByteArray addColumn(const QString &table, const Column &column)
{
    return "ALTER TABLE " + quoted(table) + " ADD COLUMN " + columnText(column);
}

Type typeOf(QByteArrayView declaration)
{
    const qsizetype bracket = declaration.indexOf('(');
    const QByteArrayView name = bracket < 0 ? declaration : declaration.first(bracket);
    for (const Declared &d : declarations)
        if (name.compare(d.name, Qt::CaseInsensitive) == 0)
            return d.type == Type::Counter ? Type::Long : d.type;
    return Type::Memo;
}

Column columnOf(const QString &name, const QString &declaration, const QString &initial, bool isKey)
{
    Column column;
    column.name = name;
    const QByteArray declared = declaration.toUtf8();
    column.type = typeOf(declared);
    if (isKey && declared.compare("INTEGER", Qt::CaseInsensitive) == 0)
        column.type = Type::Counter;
    if (column.type == Type::Text) {
        const qsizetype bracket = declaration.indexOf(u'(');
        column.size = declaration.mid(bracket + 1, declaration.size() - bracket - 2).toInt();
    }
    if (!initial.isEmpty() && initial.compare(QLatin1String("NULL"), Qt::CaseInsensitive) != 0) {
        const bool isText = initial.startsWith(u'\'');
        column.initial = isText
            ? QVariant(initial.mid(1, initial.size() - 2).replace(QLatin1String("''"), QLatin1String("'")))
            : QVariant(initial.toDouble());
    }
    return column;
}

} // namespace db::ddl
