#include "db/engine/SearchTables.h"

#include "db/engine/EmbeddedEngine.h"

#include <QRandomGenerator>

#include <sqlite3.h>

namespace db::searchtables {

namespace {

constexpr int valuesPerBlob = 4096;

QByteArray quoted(const QString &name) { return '"' + name.toUtf8().replace('"', "\"\"") + '"'; }
QByteArray literal(const QString &text) { return '\'' + text.toUtf8().replace('\'', "''") + '\''; }

QByteArray quoted(const QStringList &names, const char *before = "")
{
    QByteArray text;
    for (const QString &name : names)
        text += (text.isEmpty() ? "" : ", ") + (before + quoted(name));
    return text;
}

struct Object {
    const char *type;
    QString name;
    QByteArray sql;
};

QString triggerName(const QString &table, const char *event)
{
    return QStringLiteral("motor_busqueda %1 %2").arg(table, QLatin1String(event));
}

std::vector<Object> tables()
{
    return {
        {"table",
         QStringLiteral("motor_busqueda"),
         "CREATE TABLE motor_busqueda (tabla TEXT PRIMARY KEY, definicion TEXT, version INTEGER, hasta INTEGER, "
         "filas INTEGER)"},
        {"table",
         QStringLiteral("motor_busqueda_tramos"),
         "CREATE TABLE motor_busqueda_tramos (tabla TEXT, columna TEXT, tramo INTEGER, datos BLOB, PRIMARY KEY (tabla, "
         "columna, tramo))"},
        {"table",
         QStringLiteral("motor_busqueda_cambios"),
         "CREATE TABLE motor_busqueda_cambios (n INTEGER PRIMARY KEY AUTOINCREMENT, tabla TEXT, clave INTEGER)"}};
}

std::vector<Object> triggers(const QString &table, const SearchList &list)
{
    const auto trigger = [&](const char *event, const QByteArray &when, const QByteArray &rows) {
        const QString name = triggerName(table, event);
        return Object{
            "trigger",
            name,
            "CREATE TRIGGER " + quoted(name) + " AFTER " + when + " ON " + quoted(table)
                + " BEGIN INSERT INTO motor_busqueda_cambios (tabla, clave) " + rows + "; END"};
    };
    const auto key = [&](const char *row) { return "SELECT " + literal(table) + ", " + row + '.' + quoted(list.key); };
    return {
        trigger("alta", "INSERT", key("new")),
        trigger("baja", "DELETE", key("old")),
        trigger("cambio", "UPDATE OF " + quoted(columns(list)), key("old") + " UNION " + key("new"))};
}

bool exists(EmbeddedEngine &engine, const Object &object)
{
    const Rows rows
        = engine.queryNative("SELECT sql FROM sqlite_master WHERE type = ? AND name = ?", {object.type, object.name});
    return rows->rowCount() == 1 && rows->utf8(0, 0) == object.sql;
}

} // namespace

QString definition(const SearchList &list)
{
    return QStringList{list.key, list.order.join(u','), list.others.join(u',')}.join(u'|');
}

SearchList list(const QString &definition)
{
    const QStringList parts = definition.split(u'|');
    return {
        parts.value(0), parts.value(1).split(u',', Qt::SkipEmptyParts), parts.value(2).split(u',', Qt::SkipEmptyParts)};
}

QStringList columns(const SearchList &list) { return QStringList{list.key} + list.order + list.others; }

bool complete(EmbeddedEngine &engine, const QString &table, const SearchList &list)
{
    for (const std::vector<Object> &objects : {tables(), triggers(table, list)})
        for (const Object &object : objects)
            if (!exists(engine, object))
                return false;
    return true;
}

bool current(EmbeddedEngine &engine, const QString &table, const SearchList &list)
{
    if (!complete(engine, table, list))
        return false;
    // Counting the rows themselves would read much of a large file at every start.
    const Rows state = engine.queryNative(
        "SELECT definicion, filas, coalesce((SELECT max(n) FROM motor_busqueda_cambios), 0) - hasta FROM motor_busqueda"
        " WHERE tabla = ?",
        {table});
    return state->rowCount() == 1 && state->text(0, 0) == definition(list)
        && state->integer(0, 2) <= 500 + state->integer(0, 1) / 100;
}

void build(EmbeddedEngine &engine, const QString &table, const SearchList &list)
{
    for (const std::vector<Object> &objects : {tables(), triggers(table, list)})
        for (const Object &object : objects)
            if (!exists(engine, object)) {
                engine.executeNative(QByteArray("DROP ") + object.type + " IF EXISTS " + quoted(object.name), {});
                engine.executeNative(object.sql, {});
            }

    // One walk gives all columns; each is then written in one piece, so that reading it is a walk through the file too.
    const QStringList names = columns(list);
    std::vector<QList<QByteArray>> blobs(size_t(names.size()));
    qint64 rows = 0;
    engine.walkNative(
        "SELECT " + quoted(names) + " FROM " + quoted(table) + " WHERE " + quoted(list.key) + " IS NOT NULL ORDER BY "
            + quoted(list.order) + ", " + quoted(list.key),
        {},
        [&](sqlite3_stmt *row) {
            for (int c = 0; c < int(names.size()); ++c) {
                QList<QByteArray> &column = blobs[size_t(c)];
                if (rows % valuesPerBlob == 0)
                    column.append(QByteArray());
                if (sqlite3_column_type(row, c) == SQLITE_NULL)
                    column.back() += null;
                else
                    column.back() += reinterpret_cast<const char *>(sqlite3_column_text(row, c));
                column.back() += separator;
            }
            ++rows;
        });
    engine.executeNative("DELETE FROM motor_busqueda_tramos WHERE tabla = ?", {table});
    for (qsizetype c = 0; c < names.size(); ++c)
        for (qsizetype part = 0; part < blobs[size_t(c)].size(); ++part)
            engine.executeNative(
                "INSERT INTO motor_busqueda_tramos (tabla, columna, tramo, datos) VALUES (?, ?, ?, ?)",
                {table, names[c], part, blobs[size_t(c)][part]});

    // The number of the last change outlives its row.
    engine.executeNative("DELETE FROM motor_busqueda_cambios WHERE tabla = ?", {table});
    const auto version = qint64(QRandomGenerator::global()->generate64() >> 1);
    engine.executeNative(
        "INSERT OR REPLACE INTO motor_busqueda (tabla, definicion, version, filas, hasta) VALUES (?, ?, ?, ?, "
        "coalesce((SELECT seq FROM sqlite_sequence WHERE name = 'motor_busqueda_cambios'), 0))",
        {table, definition(list), version, rows});
}

} // namespace db::searchtables
