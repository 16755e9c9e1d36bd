#include "db/sql/Parser.h"

#include <algorithm>
#include <utility>

namespace db::sql {

namespace {

bool mayBeText(Kind kind) { return kind == Kind::Text || kind == Kind::Unknown || kind == Kind::Null; }

/// Whether a plain column is among the terms of GROUP BY, whatever table it is said to be of.
bool isGrouped(const QList<QByteArray> &groups, const QString &column)
{
    const QByteArray bare = '"' + column.toUtf8().toLower() + '"';
    return std::any_of(groups.cbegin(), groups.cend(), [&bare](const QByteArray &group) {
        const QByteArray lower = group.toLower();
        return lower == bare || (lower.endsWith('.' + bare) && lower.count('"') == 4);
    });
}

} // namespace

Parser::Query Parser::query(bool nested)
{
    const Depth depth(*this);
    // What surrounds a subselect does not see its columns and aggregates.
    QStringList *const columns = std::exchange(m_columns, nullptr);
    const int aggregates = std::exchange(m_aggregates, 0);
    const bool grouping = std::exchange(m_grouping, false);
    const Query *const ordered = std::exchange(m_ordered, nullptr);
    const size_t outer = m_scopes.size();
    const std::vector<Target> targets = std::exchange(m_targets, {});
    const int at = position();
    if (aggregates > 0 || grouping)
        use(Use::GroupedSubquery, {}, at);

    std::optional<int> top;
    const bool compound = findAhead(u"union") > 0;
    m_targets = targets;
    Query result = core(compound, top);
    while (accept(u"union")) {
        const bool all = accept(u"all");
        m_scopes.resize(outer);
        m_targets = targets;
        std::optional<int> ownTop;
        const Query next = core(true, ownTop);
        if (!result.everything && !next.everything && result.outputs.size() != next.outputs.size())
            failSyntax(QStringLiteral("UNION de consultas con distinta cantidad de columnas"), at);
        result.sql += (all ? " UNION ALL " : " UNION ") + next.sql;
        result.singleTable.clear();
        for (int i = 0; i < std::min(result.outputs.size(), next.outputs.size()); ++i) {
            if (result.outputs[i].kind != next.outputs[i].kind) {
                Expr other;
                other.kind = result.outputs[i].kind;
                other.name = result.outputs[i].name;
                if (other.kind != Kind::Null && next.outputs[i].kind != Kind::Null && other.kind != Kind::Unknown
                    && next.outputs[i].kind != Kind::Unknown)
                    use(Use::UnionOfKinds, other, at);
                result.outputs[i].kind = Kind::Unknown;
            }
        }
        result.distinct = result.distinct || !all;
        result.oneRow = false;
        result.groups.reset();
    }
    if (accept(u"order")) {
        if (nested && !top)
            checkNestedOrder(at);
        result.sql += orderBy(result);
    }
    if (top && !compound)
        result.sql += " LIMIT " + QByteArray::number(*top);

    m_scopes.resize(outer);
    m_columns = columns;
    m_aggregates = aggregates;
    m_grouping = grouping;
    m_ordered = ordered;
    return result;
}

size_t Parser::findAhead(QStringView word) const
{
    int level = 0;
    for (size_t i = m_at; i < m_tokens.size(); ++i) {
        const Token &token = m_tokens[i];
        if (token.isSymbol(u"("))
            ++level;
        else if (token.isSymbol(u")") && --level < 0)
            return 0;
        else if (level == 0 && token.isWord(word))
            return i;
        else if (level == 0 && i > m_at && token.isWord(u"union"))
            return 0;
    }
    return 0;
}

Parser::Query Parser::core(bool compound, std::optional<int> &top)
{
    expect(u"select");
    bool distinct = accept(u"distinct") || (allowsDistinctRow() && accept(u"distinctrow"));
    if (!distinct)
        accept(u"all");
    if (accept(u"top"))
        top = topCount();

    // The tables are read first: what a column is decides how the list is written.
    Query result;
    m_scopes.emplace_back();
    QByteArray from;
    const size_t list = m_at, fromAt = findAhead(u"from");
    size_t afterFrom = 0;
    if (fromAt > 0) {
        const std::vector<Target> targets = std::exchange(m_targets, {});
        m_at = fromAt + 1;
        from = fromClause(result.singleTable);
        afterFrom = m_at;
        m_at = list;
        m_targets = targets;
    }

    std::vector<Item> items;
    bool aggregates = false;
    QByteArray sql = distinct ? "SELECT DISTINCT " : "SELECT ";
    result.distinct = distinct;
    sql += outputs(result, items, distinct || compound || m_depth > 1, aggregates);
    if (fromAt > 0) {
        if (m_at != fromAt)
            unexpected();
        m_at = afterFrom;
    }
    sql += from;
    if (fromAt > 0 && accept(u"where"))
        sql += " WHERE " + condition().sql;
    const bool grouped = fromAt > 0 && accept(u"group");
    if (grouped || aggregates)
        result.groups.emplace();
    if (grouped)
        sql += groupBy(items, *result.groups);
    else if (aggregates) {
        if (result.everything)
            fail(QStringLiteral("\"*\" junto a funciones de grupo"));
        checkGrouping(items, {}, {});
    }
    if (accept(u"having")) {
        if (!grouped && !aggregates)
            fail(QStringLiteral("HAVING sin GROUP BY"));
        QStringList columns;
        QStringList *const around = std::exchange(m_columns, &columns);
        const int at = position();
        sql += " HAVING " + condition().sql;
        m_columns = around;
        for (const QString &column : std::as_const(columns)) {
            Expr expr;
            expr.name = column;
            if (!isGrouped(*result.groups, column))
                use(Use::HavingNotGrouped, expr, at);
        }
    }
    result.oneRow = (aggregates && !grouped) || fromAt == 0 || top == 1;
    if (distinct || grouped || aggregates)
        result.singleTable.clear();
    // A member of a union takes no limit of its own.
    if (compound && top)
        sql = "SELECT * FROM (" + sql + " LIMIT " + QByteArray::number(*top) + ')';
    result.sql = sql;
    return result;
}

QByteArray Parser::outputs(Query &result, std::vector<Item> &items, bool collate, bool &aggregates)
{
    const std::vector<Target> targets = std::exchange(m_targets, {});
    QByteArray sql;
    int unnamed = 1000;
    do {
        if (!sql.isEmpty())
            sql += ", ";
        if (acceptSymbol(u"*")) {
            sql += '*';
            result.everything = true;
            continue;
        }
        if (atIdentifier() && peek(1).isSymbol(u".") && peek(2).isSymbol(u"*")) {
            sql += quoted(identifier()) + ".*";
            take();
            take();
            result.everything = true;
            continue;
        }
        Item item;
        item.position = position();
        QStringList *const outer = std::exchange(m_columns, &item.columns);
        Expr expr = value();
        m_columns = outer;
        if (targets.size() > size_t(result.outputs.size()))
            assigned(
                targets[size_t(result.outputs.size())].table,
                targets[size_t(result.outputs.size())].column,
                expr,
                item.position,
                true);
        aggregates = aggregates || expr.aggregate;
        if (result.distinct)
            use(Use::Distinct, expr, item.position);

        Output output{expr.name, expr.kind, expr.column, true, expr.sql, expr.traits};
        QString alias;
        if (accept(u"as") || atIdentifier())
            alias = identifier();
        // The name that the original engine gave to a column without one.
        else if (!expr.column) {
            alias = QStringLiteral("Expr%1").arg(unnamed);
            output.named = false;
        }
        ++unnamed;
        if (!alias.isEmpty())
            output.name = alias;
        item.sql = expr.sql;
        sql += (collate ? withCollation(expr) : expr.sql);
        if (!alias.isEmpty())
            sql += " AS " + quoted(alias);
        result.outputs.push_back(output);
        items.push_back(std::move(item));
    } while (acceptSymbol(u","));
    return sql;
}

QByteArray Parser::groupBy(const std::vector<Item> &items, QList<QByteArray> &groups)
{
    expect(u"by");
    QStringList columns;
    QByteArray sql;
    m_grouping = true;
    do {
        const int at = position();
        QStringList its;
        QStringList *const around = std::exchange(m_columns, &its);
        const Expr expr = value();
        m_columns = around;
        if (its.isEmpty())
            use(Use::GroupConstant, expr, at);
        use(Use::Group, expr, at);
        if (expr.aggregate)
            fail(QStringLiteral("Función de grupo en GROUP BY"));
        sql += (sql.isEmpty() ? " GROUP BY " : ", ") + withCollation(expr);
        groups << expr.sql;
        if (expr.column)
            columns << expr.name.toLower();
    } while (acceptSymbol(u","));
    m_grouping = false;
    checkGrouping(items, columns, groups);
    return sql;
}

void Parser::checkGrouping(const std::vector<Item> &items, const QStringList &columns, const QList<QByteArray> &groups)
{
    for (const Item &item : items) {
        if (groups.contains(item.sql))
            continue;
        for (const QString &column : item.columns) {
            if (!columns.contains(column))
                failSyntax(QStringLiteral("La columna \"%1\" no está agrupada").arg(column), item.position);
        }
    }
}

QByteArray Parser::fromClause(QString &singleTable)
{
    QByteArray sql = " FROM " + joinedSources(true, singleTable);
    while (acceptSymbol(u",")) {
        QString ignored;
        QByteArray next = joinedSources(false, ignored);
        singleTable.clear();
        // Joins bind before commas here, and after them in the engine; only a right join shows the difference.
        if (next.contains(" RIGHT JOIN "))
            next = '(' + next + ')';
        sql += ", " + next;
    }
    return sql;
}

QByteArray Parser::joinedSources(bool leftmost, QString &singleTable)
{
    QByteArray sql = source(leftmost, singleTable);
    while (true) {
        const char *kind = nullptr;
        if (accept(u"inner"))
            kind = " JOIN ";
        else if (accept(u"left"))
            kind = " LEFT JOIN ";
        else if (accept(u"right"))
            kind = " RIGHT JOIN ";
        else if (allowsPlainJoin() && peek().isWord(u"join"))
            kind = " JOIN ";
        else
            return sql;
        if (kind[1] != 'J')
            accept(u"outer");
        expect(u"join");
        QString ignored;
        sql += kind + source(false, ignored);
        expect(u"on");
        sql += " ON " + condition().sql;
        singleTable.clear();
    }
}

QByteArray Parser::source(bool leftmost, QString &singleTable)
{
    const Depth depth(*this);
    if (!acceptSymbol(u"(")) {
        Source table;
        QByteArray sql = tableReference(table.table);
        table.alias = table.table;
        if (accept(u"as") || atIdentifier()) {
            table.alias = identifier();
            sql += " AS " + quoted(table.alias);
        }
        singleTable = table.table;
        m_scopes.back().push_back(std::move(table));
        return sql;
    }
    if (peek().isWord(u"select")) {
        const int at = position();
        const Query inner = query(true);
        expectSymbol(u")");
        checkSources(inner, at);
        Source table;
        table.derived.emplace();
        for (const Output &output : inner.outputs)
            table.derived->insert(output.name.toLower(), output.kind == Kind::Boolean ? Kind::Number : output.kind);
        accept(u"as");
        table.alias = identifier();
        m_scopes.back().push_back(table);
        return '(' + inner.sql + ") AS " + quoted(table.alias);
    }
    // The nested parentheses around left-hand joins say what the engine does anyway; without them it need not take the
    // group for a table of its own.
    const QByteArray inner = joinedSources(leftmost, singleTable);
    expectSymbol(u")");
    return leftmost ? inner : '(' + inner + ')';
}

QByteArray Parser::tableReference(QString &name)
{
    name = identifier();
    return quoted(name);
}

void Parser::checkSources(const Query &inner, int position)
{
    QStringList names;
    for (const Output &output : inner.outputs) {
        Expr expr;
        expr.name = output.name;
        if (!output.named)
            use(Use::Unnamed, expr, position);
        if (names.contains(output.name, Qt::CaseInsensitive))
            use(Use::RepeatedName, expr, position);
        names << output.name;
    }
}

void Parser::checkOrder(const Query &result, const Expr &expr, bool selected, int position)
{
    use(Use::Order, expr, position);
    if (m_aliasUsed && !expr.column)
        use(Use::OrderByInnerAlias, expr, position);
    const auto same = [&expr](const Output &output) { return output.sql == expr.sql; };
    const bool shown = selected || std::any_of(result.outputs.cbegin(), result.outputs.cend(), same);
    if (result.distinct && !shown && !result.everything)
        use(Use::OrderNotSelected, expr, position);
    if (result.groups && !shown && !expr.aggregate && !result.groups->contains(expr.sql)
        && !(expr.column && isGrouped(*result.groups, expr.name)))
        use(Use::OrderNotGrouped, expr, position);
    if (expr.column && !expr.sql.contains("\".\"")) {
        const auto named
            = [&expr](const Output &output) { return output.name.compare(expr.name, Qt::CaseInsensitive) == 0; };
        const auto times = std::count_if(result.outputs.cbegin(), result.outputs.cend(), named);
        if (times > 1 || (times > 0 && result.everything && !m_aliasUsed))
            use(Use::OrderAmbiguous, expr, position);
    }
}

QByteArray Parser::orderBy(const Query &result)
{
    expect(u"by");
    QByteArray sql;
    QList<QByteArray> terms;
    do {
        const Token token = peek();
        m_ordered = &result;
        m_aliasUsed = false;
        const Expr expr = value();
        m_ordered = nullptr;
        QByteArray term = withCollation(expr);
        const Output *output = nullptr;
        if (token.kind == Token::Kind::Integer && expr.sql == token.text.toLatin1()) {
            const int number = token.text.toInt();
            if (!result.everything && number >= 1 && number <= result.outputs.size())
                output = &result.outputs[number - 1];
        } else if (expr.column && !expr.sql.contains("\".\"")) {
            for (const Output &candidate : result.outputs) {
                if (candidate.name.compare(expr.name, Qt::CaseInsensitive) == 0)
                    output = &candidate;
            }
        }
        checkOrder(result, expr, output != nullptr, token.position);
        if (terms.contains(expr.sql))
            use(Use::OrderTwice, expr, token.position);
        terms << expr.sql;
        // An expression brings no order of its own.
        if (output && !output->column && mayBeText(output->kind))
            term = expr.sql + " COLLATE NOCASE";
        sql += (sql.isEmpty() ? " ORDER BY " : ", ") + term;
        if (accept(u"desc"))
            sql += " DESC";
        else
            accept(u"asc");
    } while (acceptSymbol(u","));
    return sql;
}

} // namespace db::sql
