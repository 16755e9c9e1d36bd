#include "support/ServerParser.h"

#include <QDateTime>

namespace soporte {

using namespace db::sql;

namespace {

LexerRules serverRules()
{
    LexerRules rules;
    rules.hashDates = false;
    rules.doubleQuotedText = false;
    rules.nationalText = true;
    rules.dollarNames = false;
    rules.dashComments = true;
    rules.symbols = u"%";
    return rules;
}

/// A backslash that ends a line inside a text goes, and the line's end with it.
QString withLinesJoined(QStringView statement)
{
    QString out;
    out.reserve(statement.size());
    bool inText = false;
    for (qsizetype i = 0; i < statement.size(); ++i) {
        inText ^= statement[i] == u'\'';
        const qsizetype ending = !inText || statement[i] != u'\\'   ? 0
            : statement.mid(i + 1, 2) == u"\r\n"                    ? 2
            : i + 1 < statement.size() && statement[i + 1] == u'\n' ? 1
            : i + 1 < statement.size() && statement[i + 1] == u'\r' ? 1
                                                                    : 0;
        if (ending > 0)
            i += ending;
        else
            out += statement[i];
    }
    return out;
}

Kind kindOf(db::Type type)
{
    switch (type) {
    case db::Type::Text:
    case db::Type::Memo: return Kind::Text;
    case db::Type::DateTime: return Kind::Date;
    case db::Type::Binary: return Kind::Unknown;
    default: return Kind::Number;
    }
}

const QStringList &catalogColumns()
{
    static const QStringList columns{
        QStringLiteral("table_name"),
        QStringLiteral("column_name"),
        QStringLiteral("data_type"),
        QStringLiteral("table_type"),
        QStringLiteral("object_id"),
        QStringLiteral("parent_object_id"),
        QStringLiteral("name")};
    return columns;
}

} // namespace

ServerParser::ServerParser(QStringView statement, ServerCatalog &catalog)
    : Parser(withLinesJoined(statement), serverRules())
    , m_catalog(catalog)
{
}

ServerStatement ServerParser::parse()
{
    m_result.native = translate();
    return std::move(m_result);
}

Translated ServerParser::statement()
{
    if (peek().isWord(u"select"))
        return select();
    if (peek().isWord(u"insert")) {
        noteInsert();
        return insert();
    }
    if (peek().isWord(u"update"))
        return update();
    if (peek().isWord(u"delete"))
        return deletion(false);
    if (peek().isWord(u"alter"))
        return alter();
    if (peek().isWord(u"drop") && peek(1).isWord(u"database")) {
        base(ServerErrand::Kind::DropBase);
        return {};
    }
    if (peek().isWord(u"drop"))
        return drop();
    if (peek().isWord(u"set")) {
        session();
        return {};
    }
    if (peek().isWord(u"dbcc")) {
        reseed();
        return {};
    }
    if (peek().isWord(u"create"))
        return create();
    if (peek().isWord(u"if"))
        return guarded();
    unexpected();
}

Translated ServerParser::guarded()
{
    expect(u"if");
    if (!m_result.condition.isEmpty())
        unexpected();
    const bool negated = accept(u"not");
    expect(u"exists");
    expectSymbol(u"(");
    m_result.condition = (negated ? "NOT EXISTS (" : "EXISTS (") + query(true).sql + ')';
    expectSymbol(u")");
    expect(u"begin");
    Translated inner = statement();
    acceptSymbol(u";");
    expect(u"end");
    return inner;
}

Parser::Operator ServerParser::operatorAt(const Token &token) const
{
    if (token.isSymbol(u"+") || token.isSymbol(u"-"))
        return {token.text.front().toLatin1(), additive};
    if (token.isSymbol(u"*") || token.isSymbol(u"/") || token.isSymbol(u"%"))
        return {token.text.front().toLatin1(), multiplicative};
    return {};
}

Expr ServerParser::combine(Operator op, Expr left, Expr right, int position)
{
    const bool leftText = left.kind == Kind::Text, rightText = right.kind == Kind::Text;
    if (op.id == '+' && (leftText || rightText)) {
        if (left.kind == Kind::Number || right.kind == Kind::Number || left.kind == Kind::Date
            || right.kind == Kind::Date)
            failSyntax(QStringLiteral("\"+\" de un texto y otra cosa: falta convertirla"), position);
        if ((left.traits | right.traits) & Long)
            failSyntax(QStringLiteral("\"+\" de un texto largo: falta convertirlo"), position);
        Expr result;
        result.sql = operand(left) + " || " + operand(right);
        result.kind = Kind::Text;
        result.atomic = false;
        return result;
    }
    if (leftText || rightText)
        failSyntax(QStringLiteral("Operación con un texto"), position);
    if (left.kind == Kind::Date || right.kind == Kind::Date) {
        if (op.id != '+' && op.id != '-')
            failSyntax(QStringLiteral("Operación con una fecha"), position);
        Expr result;
        result.sql = call(op.id == '+' ? "v_dateplus" : "v_dateminus", {left, right});
        result.kind = left.kind == right.kind ? Kind::Number : Kind::Date;
        return result;
    }
    return Parser::combine(op, std::move(left), std::move(right), position);
}

std::optional<Expr> ServerParser::special(const Token &token)
{
    if (!token.isWord(u"case"))
        return std::nullopt;
    take();
    return caseExpression();
}

Expr ServerParser::caseExpression()
{
    const Depth depth(*this);
    const int at = position();
    QByteArray subject;
    Kind kind = Kind::Unknown;
    bool aggregates = false;
    if (!peek().isWord(u"when")) {
        const Expr expr = value();
        subject = withCollation(expr) + ' ';
        kind = expr.kind;
        aggregates = expr.aggregate;
    }
    std::vector<QByteArray> tests;
    std::vector<Expr> branches;
    while (accept(u"when")) {
        const int next = position();
        Expr test = subject.isEmpty() ? condition() : value();
        if (!subject.isEmpty()) {
            fit(test, kind, next);
            Expr chosen;
            chosen.kind = kind;
            pair(chosen, test, next);
        }
        tests.push_back(test.sql);
        expect(u"then");
        branches.push_back(value());
        aggregates = aggregates || test.aggregate || branches.back().aggregate;
    }
    if (tests.empty())
        unexpected();
    const bool otherwise = accept(u"else");
    if (otherwise)
        branches.push_back(value());
    expect(u"end");

    Expr result;
    std::vector<Expr *> pointers;
    for (Expr &branch : branches) {
        aggregates = aggregates || branch.aggregate;
        pointers.push_back(&branch);
    }
    result.kind = unify(pointers, at);
    result.aggregate = aggregates;
    result.sql = "CASE " + subject;
    for (size_t i = 0; i < tests.size(); ++i)
        result.sql += "WHEN " + tests[i] + " THEN " + branches[i].sql + ' ';
    if (otherwise)
        result.sql += "ELSE " + branches.back().sql + ' ';
    result.sql += "END";
    return result;
}

Kind ServerParser::unify(std::vector<Expr *> branches, int position)
{
    Kind whole = Kind::Null;
    for (const Expr *branch : branches) {
        if (branch->kind == Kind::Date || (branch->kind == Kind::Number && whole != Kind::Date))
            whole = branch->kind;
        else if (branch->kind == Kind::Unknown && whole != Kind::Date && whole != Kind::Number)
            whole = Kind::Unknown;
        else if (whole == Kind::Null)
            whole = branch->kind;
    }
    for (Expr *branch : branches) {
        // The server converts the text, and fails on the first one that does not look like the rest.
        if (branch->kind == Kind::Text && !branch->literal && (whole == Kind::Date || whole == Kind::Number))
            failSyntax(QStringLiteral("Valores de distinto tipo"), position);
        fit(*branch, whole, position);
    }
    return whole;
}

int ServerParser::topCount()
{
    const bool brackets = acceptSymbol(u"(");
    const int count = Parser::topCount();
    if (brackets)
        expectSymbol(u")");
    return count;
}

std::optional<Kind> ServerParser::columnKind(const QString &table, const QString &column) const
{
    if (table.contains(u'.'))
        return catalogColumns().contains(column.toLower()) ? std::optional(Kind::Text) : std::nullopt;
    const db::Column *found = columnOf(table, column);
    return found ? std::optional(kindOf(found->type)) : std::nullopt;
}

const QVector<db::Column> &ServerParser::columnsOf(const QString &table) const
{
    auto known = m_tables.find(table.toLower());
    if (known == m_tables.end())
        known = m_tables.insert(table.toLower(), m_catalog.columnsOf(table));
    return *known;
}

const db::Column *ServerParser::columnOf(const QString &table, const QString &column) const
{
    for (const db::Column &candidate : columnsOf(table)) {
        if (candidate.name.compare(column, Qt::CaseInsensitive) == 0)
            return &candidate;
    }
    return nullptr;
}

void ServerParser::fit(Expr &expr, Kind kind, int position)
{
    if (!expr.literal)
        return;
    if (kind == Kind::Date) {
        QDateTime moment;
        for (const char *form : {"yyyyMMdd", "yyyyMMdd HH:mm", "yyyyMMdd HH:mm:ss", "yyyy-MM-ddTHH:mm:ss"}) {
            if (!moment.isValid())
                moment = QDateTime::fromString(*expr.literal, QString::fromLatin1(form));
        }
        if (!moment.isValid() || moment.date().year() < 1753)
            failSyntax(QStringLiteral("El texto no es una fecha \"yyyymmdd hh:nn\""), position);
        expr.sql = textLiteral(moment.toString(QStringLiteral("yyyy-MM-dd HH:mm:ss")));
        expr.kind = Kind::Date;
        expr.literal.reset();
    } else if (kind == Kind::Number) {
        bool fits = expr.literal->isEmpty();
        const double number = fits ? 0 : expr.literal->toDouble(&fits);
        if (!fits)
            failSyntax(QStringLiteral("El texto no es un número"), position);
        expr.sql = QByteArray::number(number, 'g', 17);
        expr.kind = Kind::Number;
        expr.literal.reset();
    }
}

Expr ServerParser::conditionAsValue(Expr, int position)
{
    failSyntax(QStringLiteral("Una condición no es un valor"), position);
}

void ServerParser::checkCondition(const Expr &expr, int position)
{
    if (expr.kind != Kind::Boolean)
        failSyntax(QStringLiteral("Un valor no es una condición"), position);
}

void ServerParser::checkNestedOrder(int position)
{
    failSyntax(QStringLiteral("ORDER BY en una subconsulta sin TOP"), position);
}

QByteArray ServerParser::tableReference(QString &name)
{
    name = identifier();
    if (!acceptSymbol(u".")) {
        hints();
        return quoted(name);
    }
    const QString schema = name.toLower();
    const QString view = identifier();
    if (schema == u"dbo") {
        name = view;
        return quoted(name);
    }
    const QString full = schema + u'.' + view.toLower();
    name = view;
    QByteArray sql;
    if (full == u"information_schema.columns")
        sql = "(SELECT m.name COLLATE NOCASE AS TABLE_NAME, c.name COLLATE NOCASE AS COLUMN_NAME, c.type AS DATA_TYPE "
              "FROM sqlite_master AS m, pragma_table_info(m.name) AS c WHERE m.type = 'table' AND m.name NOT LIKE "
              "'sqlite[_]%')";
    else if (full == u"information_schema.tables")
        sql = "(SELECT name COLLATE NOCASE AS TABLE_NAME, 'BASE TABLE' AS TABLE_TYPE FROM sqlite_master WHERE type = "
              "'table' AND name NOT LIKE 'sqlite[_]%' AND name NOT LIKE 'motor[_]%')";
    else if (full == u"sys.databases") {
        for (const QString &base : m_catalog.bases())
            sql += (sql.isEmpty() ? "(SELECT " : " UNION ALL SELECT ") + textLiteral(base) + " COLLATE NOCASE AS name";
        sql = (sql.isEmpty() ? QByteArray("(SELECT NULL AS name WHERE 0") : sql) + ')';
    } else if (full == u"sys.tables")
        sql = "(SELECT name COLLATE NOCASE AS name, name COLLATE NOCASE AS object_id FROM sqlite_master WHERE type = "
              "'table' AND name NOT LIKE 'sqlite[_]%' AND name NOT LIKE 'motor[_]%')";
    else if (full == u"sys.columns")
        sql = "(SELECT m.name COLLATE NOCASE AS object_id, c.name COLLATE NOCASE AS name, c.cid AS column_id FROM "
              "sqlite_master AS m, pragma_table_info(m.name) AS c WHERE m.type = 'table')";
    else if (full == u"sys.index_columns")
        sql = "(SELECT m.name COLLATE NOCASE AS object_id, l.name AS index_id, c.cid AS column_id, c.seqno + 1 AS "
              "key_ordinal FROM sqlite_master AS m, pragma_index_list(m.name) AS l, pragma_index_info(l.name) AS c "
              "WHERE m.type = 'table')";
    else if (full == u"sys.indexes")
        // The engine's index names begin with their table's.
        sql = "(SELECT m.name COLLATE NOCASE AS object_id, l.name AS index_id, replace(substr(l.name, length(m.name) + "
              "2), ' ', '_') COLLATE NOCASE AS name, l.\"unique\" AS is_unique, (l.origin = 'pk' OR "
            + QByteArray(
                  m_catalog.columnsOf(QStringLiteral("motor_restricciones")).isEmpty()
                      ? "0"
                      : "substr(l.name, length(m.name) + 2) IN (SELECT nombre FROM motor_restricciones)")
            + ") AS is_primary_key FROM sqlite_master AS m, pragma_index_list(m.name) AS l WHERE m.type = 'table')";
    else if (full == u"sys.default_constraints")
        sql = "(SELECT 'DF_' || m.name || '_' || c.name COLLATE NOCASE AS name, m.name COLLATE NOCASE AS "
              "parent_object_id, c.cid AS parent_column_id FROM sqlite_master AS m, "
              "pragma_table_info(m.name) AS c WHERE m.type = 'table' AND c.dflt_value IS NOT NULL)";
    else
        fail(QStringLiteral("Tabla desconocida \"%1\"").arg(full));
    // An alias of the statement's own takes this one's place.
    if (!peek().isWord(u"as") && !atIdentifier())
        sql += " AS " + quoted(view);
    return sql;
}

} // namespace soporte
