#include "support/ServerParser.h"

namespace soporte {

using namespace db::sql;

Translated ServerParser::create()
{
    expect(u"create");
    if (accept(u"table")) {
        db::Table table;
        table.name = identifier();
        expectSymbol(u"(");
        tableBody(table);
        expectSymbol(u")");
        m_result.newTable = table;
        return {};
    }
    const bool unique = accept(u"unique");
    if (!accept(u"clustered"))
        accept(u"nonclustered");
    return createIndex(unique);
}

void ServerParser::tableBody(db::Table &table)
{
    do {
        if (accept(u"constraint"))
            (void)identifier();
        if (peek().isWord(u"primary") && peek(1).isWord(u"key")) {
            primaryKey();
            expectSymbol(u"(");
            do {
                table.key << identifier();
                if (!accept(u"asc"))
                    accept(u"desc");
            } while (acceptSymbol(u","));
            expectSymbol(u")");
            continue;
        }
        table.columns << columnDefinition(table);
    } while (acceptSymbol(u","));
    // The counter is the engine's key by itself.
    for (const db::Column &column : std::as_const(table.columns)) {
        if (column.type == db::Type::Counter && table.key.size() == 1
            && table.key.first().compare(column.name, Qt::CaseInsensitive) == 0)
            table.key.clear();
    }
}

void ServerParser::primaryKey()
{
    expect(u"primary");
    expect(u"key");
    if (!accept(u"clustered"))
        accept(u"nonclustered");
}

db::Type ServerParser::columnType(int &size)
{
    using db::Type;
    const Token token = take();
    const QString name = token.kind == Token::Kind::End ? QString() : token.text.toLower();
    static const QHash<QString, Type> plain{
        {QStringLiteral("int"), Type::Long},
        {QStringLiteral("smallint"), Type::Integer},
        {QStringLiteral("tinyint"), Type::Integer},
        {QStringLiteral("bit"), Type::Flag},
        {QStringLiteral("real"), Type::Single},
        {QStringLiteral("float"), Type::Double},
        {QStringLiteral("datetime"), Type::DateTime},
        {QStringLiteral("datetime2"), Type::DateTime},
        {QStringLiteral("smalldatetime"), Type::DateTime},
        {QStringLiteral("ntext"), Type::Memo},
        {QStringLiteral("image"), Type::Binary},
    };
    if (const auto known = plain.constFind(name); known != plain.cend())
        return *known;
    if (name != u"nvarchar" && name != u"varchar" && name != u"varbinary")
        failSyntax(QStringLiteral("Tipo de columna desconocido"), token.position);
    expectSymbol(u"(");
    const bool unbounded = accept(u"max");
    size = unbounded ? 0 : number();
    expectSymbol(u")");
    return name == u"varbinary" ? Type::Binary : unbounded ? Type::Memo : Type::Text;
}

db::Column ServerParser::columnDefinition(db::Table &table)
{
    db::Column column;
    column.name = identifier();
    column.type = columnType(column.size);
    while (true) {
        if (accept(u"identity")) {
            column.type = db::Type::Counter;
            if (acceptSymbol(u"(")) {
                table.counterStart = number() - 1;
                expectSymbol(u",");
                (void)number();
                expectSymbol(u")");
            }
        } else if (peek().isWord(u"primary")) {
            primaryKey();
            table.key << column.name;
        } else if (accept(u"not")) {
            expect(u"null");
        } else if (accept(u"unique")) {
            table.indexes << db::Index{{column.name}, true};
        } else if (accept(u"default")) {
            const int at = position();
            const bool brackets = acceptSymbol(u"(");
            const bool negative = acceptSymbol(u"-");
            const Token token = take();
            if (token.kind == Token::Kind::Text && !negative)
                column.initial = token.text;
            else if (token.kind == Token::Kind::Integer)
                column.initial = (negative ? -1 : 1) * token.text.toInt();
            else
                failSyntax(QStringLiteral("Valor inicial inválido"), at);
            if (brackets)
                expectSymbol(u")");
        } else if (!accept(u"null")) {
            return column;
        }
    }
}

Translated ServerParser::alter()
{
    expect(u"alter");
    expect(u"table");
    const QString name = identifier();
    if (accept(u"drop")) {
        m_result.dropFrom = name;
        if (accept(u"constraint")) {
            m_result.droppedConstraint = identifier();
            return {};
        }
        expect(u"column");
        m_result.droppedColumn = identifier();
        return {"ALTER TABLE " + quoted(name) + " DROP COLUMN " + quoted(m_result.droppedColumn), false, {}};
    }
    expect(u"add");
    db::Table added;
    do
        added.columns << columnDefinition(added);
    while (acceptSymbol(u","));
    m_result.addTo = name;
    m_result.newColumns = added.columns;
    return {};
}

} // namespace soporte
