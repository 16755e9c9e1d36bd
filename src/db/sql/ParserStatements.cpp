#include "db/sql/Parser.h"

namespace db::sql {

Translated Parser::select()
{
    const Query result = query(false);
    return {result.sql, true, result.singleTable};
}

void Parser::assigned(const QString &table, const QString &column, Expr &value, int position, bool)
{
    fit(value, columnKind(table, column).value_or(Kind::Unknown), position);
}

Translated Parser::insert()
{
    expect(u"insert");
    expect(u"into");
    const QString table = identifier();
    QByteArray sql = "INSERT INTO " + quoted(table);
    std::vector<Target> targets;
    bool named = false;
    if (acceptSymbol(u"(")) {
        named = true;
        QByteArray columns;
        do {
            const QString name = identifier();
            targets.push_back({table, name});
            columns += (columns.isEmpty() ? "" : ", ") + quoted(name);
        } while (acceptSymbol(u","));
        expectSymbol(u")");
        sql += " (" + columns + ')';
    }
    if (peek().isWord(u"select")) {
        m_targets = targets;
        const Query source = query(false);
        if (named && !source.everything && size_t(source.outputs.size()) != targets.size())
            fail(QStringLiteral("La cantidad de valores no es la de columnas"));
        return {sql + ' ' + source.sql, false, {}};
    }
    expect(u"values");
    expectSymbol(u"(");
    QByteArray values;
    size_t count = 0;
    do {
        const int at = position();
        Expr expr = value();
        if (count < targets.size())
            assigned(table, targets[count].column, expr, at, true);
        ++count;
        values += (values.isEmpty() ? "" : ", ") + expr.sql;
    } while (acceptSymbol(u","));
    expectSymbol(u")");
    if (named && count != targets.size())
        fail(QStringLiteral("La cantidad de valores no es la de columnas"));
    return {sql + " VALUES (" + values + ')', false, {}};
}

Translated Parser::update()
{
    expect(u"update");
    const QString table = identifier();
    m_scopes.push_back({Source{table, table, {}}});
    expect(u"set");
    QByteArray changes;
    do {
        QString name = identifier();
        if (acceptSymbol(u".")) {
            if (name.compare(table, Qt::CaseInsensitive) != 0)
                fail(QStringLiteral("Columna de otra tabla"));
            name = identifier();
        }
        expectSymbol(u"=");
        const int at = position();
        Expr expr = value();
        assigned(table, name, expr, at, false);
        changes += (changes.isEmpty() ? "" : ", ") + quoted(name) + " = " + expr.sql;
    } while (acceptSymbol(u","));
    QByteArray sql = "UPDATE " + quoted(table) + " SET " + changes;
    if (accept(u"where"))
        sql += " WHERE " + condition().sql;
    m_scopes.pop_back();
    return {sql, false, {}};
}

Translated Parser::deletion(bool starAllowed)
{
    expect(u"delete");
    if (starAllowed)
        acceptSymbol(u"*");
    expect(u"from");
    const QString table = identifier();
    m_scopes.push_back({Source{table, table, {}}});
    QByteArray sql = "DELETE FROM " + quoted(table);
    if (accept(u"where"))
        sql += " WHERE " + condition().sql;
    m_scopes.pop_back();
    return {sql, false, {}};
}

QByteArray Parser::indexName(const QString &table, const QString &index) const
{
    // Index names belong to their table in both dialects, and to the whole file in the engine.
    return quoted(table + u'.' + index);
}

Translated Parser::createIndex(bool unique)
{
    expect(u"index");
    const QString name = identifier();
    expect(u"on");
    const QString table = identifier();
    expectSymbol(u"(");
    QByteArray columns;
    do {
        columns += (columns.isEmpty() ? "" : ", ") + quoted(identifier());
        if (accept(u"desc"))
            columns += " DESC";
        else
            accept(u"asc");
    } while (acceptSymbol(u","));
    expectSymbol(u")");
    return {
        (unique ? "CREATE UNIQUE INDEX " : "CREATE INDEX ") + indexName(table, name) + " ON " + quoted(table) + " ("
            + columns + ')',
        false,
        {}};
}

Translated Parser::drop()
{
    expect(u"drop");
    if (accept(u"index")) {
        const QString name = identifier();
        expect(u"on");
        return {"DROP INDEX " + indexName(identifier(), name), false, {}};
    }
    expect(u"table");
    return {"DROP TABLE " + quoted(identifier()), false, {}};
}

} // namespace db::sql
