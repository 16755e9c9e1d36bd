#include "db/sql/Parser.h"

#include <algorithm>

namespace db::sql {

namespace {

bool isText(Kind kind) { return kind == Kind::Text || kind == Kind::Unknown || kind == Kind::Null; }

Expr compound(QByteArray sql, Kind kind)
{
    Expr result;
    result.sql = std::move(sql);
    result.kind = kind;
    result.atomic = false;
    return result;
}

} // namespace

QByteArray Parser::balanced(const std::vector<QByteArray> &terms, size_t from, size_t to, const char *joint)
{
    // A hundred ticked codes make a chain; as a tree it stays far below the engine's depth limit.
    if (to - from == 1)
        return terms[from];
    const size_t middle = from + (to - from) / 2;
    return '(' + balanced(terms, from, middle, joint) + joint + balanced(terms, middle, to, joint) + ')';
}

Expr Parser::expression()
{
    const Depth depth(*this);
    return disjunction();
}

Expr Parser::value()
{
    const int at = position();
    Expr result = expression();
    return result.kind == Kind::Boolean ? conditionAsValue(std::move(result), at) : result;
}

Expr Parser::condition()
{
    const int at = position();
    Expr result = expression();
    checkCondition(result, at);
    return result;
}

Expr Parser::disjunction()
{
    const int at = position();
    Expr first = conjunction();
    if (!peek().isWord(u"or"))
        return first;
    checkCondition(first, at);
    std::vector<QByteArray> terms{operand(first)};
    bool aggregates = first.aggregate;
    while (accept(u"or")) {
        const int next = position();
        const Expr term = conjunction();
        checkCondition(term, next);
        terms.push_back(operand(term));
        aggregates = aggregates || term.aggregate;
    }
    Expr result;
    result.sql = balanced(terms, 0, terms.size(), " OR ");
    result.kind = Kind::Boolean;
    result.aggregate = aggregates;
    return result;
}

Expr Parser::conjunction()
{
    const int at = position();
    Expr first = negation();
    if (!peek().isWord(u"and"))
        return first;
    checkCondition(first, at);
    std::vector<QByteArray> terms{operand(first)};
    bool aggregates = first.aggregate;
    while (accept(u"and")) {
        const int next = position();
        const Expr term = negation();
        checkCondition(term, next);
        terms.push_back(operand(term));
        aggregates = aggregates || term.aggregate;
    }
    Expr result;
    result.sql = balanced(terms, 0, terms.size(), " AND ");
    result.kind = Kind::Boolean;
    result.aggregate = aggregates;
    return result;
}

Expr Parser::negation()
{
    if (!accept(u"not"))
        return comparison();
    const Depth depth(*this);
    const int at = position();
    const Expr inner = negation();
    checkCondition(inner, at);
    Expr result = compound("NOT " + operand(inner), Kind::Boolean);
    result.aggregate = inner.aggregate;
    return result;
}

Expr Parser::comparison()
{
    Expr left = arithmetic(1);
    for (int links = 0;; ++links) {
        if (links > 50)
            fail(QStringLiteral("Expresión demasiado larga"));
        const Token token = peek();
        const int at = token.position;
        const bool aggregates = left.aggregate;
        if (token.kind == Token::Kind::Symbol
            && QStringList{QStringLiteral("="), QStringLiteral("<"), QStringLiteral(">"), QStringLiteral("<="), QStringLiteral(">="), QStringLiteral("<>")}
                   .contains(token.text)) {
            take();
            Expr right = arithmetic(1);
            const bool either = aggregates || right.aggregate;
            left = compare(token.text, std::move(left), std::move(right), at);
            left.aggregate = either;
            continue;
        }
        if (accept(u"is")) {
            const bool negated = accept(u"not");
            expect(u"null");
            left = compound(operand(left) + (negated ? " IS NOT NULL" : " IS NULL"), Kind::Boolean);
            left.aggregate = aggregates;
            continue;
        }
        const bool negated = token.isWord(u"not");
        const Token &word = negated ? peek(1) : token;
        if (!word.isWord(u"like") && !word.isWord(u"in") && !word.isWord(u"between"))
            return left;
        if (negated)
            take();
        const Token kind = take();
        if (kind.isWord(u"like"))
            left = like(std::move(left), negated);
        else if (kind.isWord(u"in"))
            left = membership(std::move(left), negated);
        else
            left = range(std::move(left), negated);
        left.aggregate = left.aggregate || aggregates;
    }
}

QByteArray Parser::withCollation(const Expr &expr)
{
    return isText(expr.kind) && !expr.column ? operand(expr) + " COLLATE NOCASE" : operand(expr);
}

Expr Parser::compare(const QString &op, Expr left, Expr right, int position)
{
    if (left.truth && !right.truth) {
        std::swap(left, right); // only "=" and "<>" are taken below, which are symmetric
        if (op != u"=" && op != u"<>")
            failSyntax(QStringLiteral("Comparación con un valor lógico"), position);
    }
    if (right.truth) {
        // Any number but zero is true, as the conditions take it.
        if (op != u"=" && op != u"<>")
            failSyntax(QStringLiteral("Comparación con un valor lógico"), position);
        const bool wantsTrue = (*right.truth != 0) == (op == u"=");
        return compound(operand(left) + (wantsTrue ? " <> 0" : " = 0"), Kind::Boolean);
    }
    if ((left.kind == Kind::Boolean) != (right.kind == Kind::Boolean)) {
        Expr &truth = left.kind == Kind::Boolean ? left : right;
        truth = conditionAsValue(std::move(truth), position);
    }
    fit(left, right.kind, position);
    fit(right, left.kind, position);
    pair(left, right, position);

    // The order of text ignores case anyway, and the bare column can use its index.
    const bool leftCased = !left.uncased.isEmpty(), rightCased = !right.uncased.isEmpty();
    if ((leftCased || left.literal) && (rightCased || right.literal) && (leftCased || rightCased)) {
        const QByteArray a = leftCased ? left.uncased : left.sql, b = rightCased ? right.uncased : right.sql;
        return compound(a + " COLLATE NOCASE " + op.toLatin1() + ' ' + b, Kind::Boolean);
    }
    const bool bare = !left.column && !right.column && isText(left.kind) && isText(right.kind);
    return compound(
        (bare ? withCollation(left) : operand(left)) + ' ' + op.toLatin1() + ' ' + operand(right), Kind::Boolean);
}

Expr Parser::like(const Expr &left, bool negated)
{
    const int at = position();
    Expr right = arithmetic(1);
    if (right.kind == Kind::Boolean || left.kind == Kind::Boolean)
        failSyntax(QStringLiteral("LIKE de un valor lógico"), at);
    liked(left, right, at);
    // LIKE ignores case by itself.
    const QByteArray subject = left.uncased.isEmpty() ? operand(left) : left.uncased;
    const QByteArray pattern = right.uncased.isEmpty() ? operand(right) : right.uncased;
    Expr result = compound(subject + (negated ? " NOT LIKE " : " LIKE ") + pattern, Kind::Boolean);
    result.aggregate = right.aggregate;
    return result;
}

Expr Parser::membership(Expr left, bool negated)
{
    const Depth depth(*this);
    const int at = position();
    if (left.kind == Kind::Boolean)
        left = conditionAsValue(std::move(left), at);
    expectSymbol(u"(");
    QByteArray list;
    bool aggregates = false;
    if (peek().isWord(u"select")) {
        const Query inner = query(true);
        if (inner.everything || inner.outputs.size() != 1)
            failSyntax(QStringLiteral("IN con más de una columna"), at);
        list = inner.sql;
        Expr item;
        item.kind = inner.outputs.first().kind;
        item.traits = inner.outputs.first().traits;
        pair(left, item, at);
    } else {
        do {
            const int next = position();
            Expr item = value();
            fit(item, left.kind, next);
            if (left.literal)
                fit(left, item.kind, at);
            pair(left, item, next);
            aggregates = aggregates || item.aggregate;
            list += (list.isEmpty() ? "" : ", ") + item.sql;
        } while (acceptSymbol(u","));
    }
    expectSymbol(u")");
    Expr result = compound(withCollation(left) + (negated ? " NOT IN (" : " IN (") + list + ')', Kind::Boolean);
    result.aggregate = aggregates;
    return result;
}

Expr Parser::range(Expr left, bool negated)
{
    const int at = position();
    Expr low = arithmetic(1);
    expect(u"and");
    Expr high = arithmetic(1);
    if (left.kind == Kind::Boolean || low.kind == Kind::Boolean || high.kind == Kind::Boolean)
        failSyntax(QStringLiteral("BETWEEN de un valor lógico"), at);
    fit(low, left.kind, at);
    fit(high, left.kind, at);
    fit(left, low.kind == Kind::Date ? low.kind : high.kind, at);
    pair(left, low, at);
    pair(left, high, at);
    Expr result = compound(
        withCollation(left) + (negated ? " NOT BETWEEN " : " BETWEEN ") + operand(low) + " AND " + operand(high),
        Kind::Boolean);
    result.aggregate = low.aggregate || high.aggregate;
    return result;
}

Expr Parser::arithmetic(int least)
{
    Expr left;
    if (peek().isSymbol(u"-") || peek().isSymbol(u"+")) {
        const Depth depth(*this);
        const Token sign = take();
        Expr inner = arithmetic(unary);
        if (inner.kind == Kind::Boolean)
            inner = conditionAsValue(std::move(inner), sign.position);
        if (inner.literal || inner.kind == Kind::Date)
            failSyntax(QStringLiteral("Signo delante de un texto o fecha"), sign.position);
        use(Use::Signed, inner, sign.position);
        // Always inside parentheses: two signs in a row would begin a comment of the engine's.
        left.sql = sign.text == u"-" ? "(- " + operand(inner) + ')' : operand(inner);
        left.kind = Kind::Number;
        left.aggregate = inner.aggregate;
    } else {
        left = suffix(primary());
    }
    for (int links = 0;; ++links) {
        const Operator op = operatorAt(peek());
        if (op.precedence < least || op.precedence == 0)
            return left;
        if (links > 400)
            fail(QStringLiteral("Expresión demasiado larga"));
        const int at = take().position;
        Expr right = arithmetic(op.precedence + 1);
        if (left.kind == Kind::Boolean)
            left = conditionAsValue(std::move(left), at);
        if (right.kind == Kind::Boolean)
            right = conditionAsValue(std::move(right), at);
        const bool aggregates = left.aggregate || right.aggregate;
        left = combine(op, std::move(left), std::move(right), at);
        left.aggregate = aggregates;
    }
}

// The dialects that derive from this one take their operands apart, so they are handed over.
// NOLINTNEXTLINE(performance-unnecessary-value-param)
Expr Parser::combine(Operator op, Expr left, Expr right, int)
{
    return compound(operand(left) + ' ' + op.id + ' ' + operand(right), Kind::Number);
}

Expr Parser::primary()
{
    const Token token = peek();
    Expr result;
    switch (token.kind) {
    case Token::Kind::Integer:
    case Token::Kind::Real:
        take();
        result.sql = token.text.toLatin1();
        result.kind = Kind::Number;
        return result;
    case Token::Kind::Text:
        take();
        result.sql = textLiteral(token.text);
        result.kind = Kind::Text;
        result.literal = token.text;
        return result;
    case Token::Kind::Date:
        take();
        result.sql = textLiteral(token.text);
        result.kind = Kind::Date;
        return result;
    case Token::Kind::Parameter:
        take();
        // Numbered, because the rewriting may move or repeat it.
        result.sql = '?' + QByteArray::number(token.parameter);
        result.parameter = token.parameter;
        return result;
    case Token::Kind::Bracketed: return columnReference();
    case Token::Kind::Symbol:
        if (acceptSymbol(u"(")) {
            if (peek().isWord(u"select"))
                return scalarQuery();
            result = expression();
            expectSymbol(u")");
            if (!result.atomic) {
                result.sql = '(' + result.sql + ')';
                result.atomic = true;
            }
            return result;
        }
        unexpected();
    case Token::Kind::Name:
        if (auto own = special(token))
            return *own;
        if (peek(1).isSymbol(u"(") && isFunction(token)) {
            take();
            const Depth depth(*this);
            return function(token);
        }
        if (accept(u"null")) {
            result.sql = "NULL";
            result.kind = Kind::Null;
            return result;
        }
        if (accept(u"exists")) {
            expectSymbol(u"(");
            result.sql = "EXISTS (" + query(true).sql + ')';
            result.kind = Kind::Boolean;
            expectSymbol(u")");
            return result;
        }
        if (peek(1).isSymbol(u"(") && atIdentifier())
            fail(QStringLiteral("Función desconocida \"%1\"").arg(token.text));
        return columnReference();
    case Token::Kind::End: break;
    }
    unexpected();
}

Expr Parser::scalarQuery()
{
    const Depth depth(*this);
    const int at = position();
    const Query inner = query(true);
    expectSymbol(u")");
    if (inner.everything || inner.outputs.size() != 1)
        failSyntax(QStringLiteral("Subconsulta con más de una columna"), at);
    Expr result;
    result.sql = scalar(inner);
    result.kind = inner.outputs.first().kind;
    result.traits = inner.outputs.first().traits;
    if (result.kind == Kind::Boolean)
        result.kind = Kind::Number;
    return result;
}

Expr Parser::columnReference()
{
    const int at = position();
    QString table, name = identifier();
    if (acceptSymbol(u".")) {
        table = name;
        name = identifier();
    }
    Expr result;
    result.column = true;
    result.name = name;
    result.sql = (table.isEmpty() ? QByteArray() : quoted(table) + '.') + quoted(name);
    if (m_columns && m_aggregates == 0)
        *m_columns << name.toLower();

    for (auto scope = m_scopes.rbegin(); scope != m_scopes.rend(); ++scope) {
        for (const Source &source : *scope) {
            if (!table.isEmpty() && source.alias.compare(table, Qt::CaseInsensitive) != 0)
                continue;
            std::optional<Kind> kind;
            if (!source.derived)
                kind = columnKind(source.table, name);
            else if (const auto found = source.derived->constFind(name.toLower()); found != source.derived->cend())
                kind = *found;
            if (kind) {
                result.kind = *kind;
                if (!source.derived)
                    describe(result, source.table);
                return result;
            }
        }
    }
    const auto renamed = [&](const Output &output) { return output.name.compare(name, Qt::CaseInsensitive) == 0; };
    if (m_ordered && table.isEmpty() && std::any_of(m_ordered->outputs.cbegin(), m_ordered->outputs.cend(), renamed))
        m_aliasUsed = true;
    else
        unknownColumn(name, at);
    return result;
}

std::vector<Expr> Parser::arguments(const Token &name, int least, int most)
{
    std::vector<Expr> result;
    expectSymbol(u"(");
    if (!peek().isSymbol(u")")) {
        do {
            result.push_back(value());
            if (int(result.size()) > most)
                break;
        } while (acceptSymbol(u","));
    }
    if (int(result.size()) < least || int(result.size()) > most)
        failSyntax(QStringLiteral("Cantidad de argumentos de \"%1\"").arg(name.text), name.position);
    expectSymbol(u")");
    return result;
}

Expr Parser::aggregate(const Token &name)
{
    if (m_aggregates > 0)
        failSyntax(QStringLiteral("Función de grupo dentro de otra"), name.position);
    const QByteArray function = name.text.toLower().toLatin1();
    Expr result;
    result.aggregate = true;
    result.kind = Kind::Number;
    if (function == "count" && peek().isSymbol(u"(") && peek(1).isSymbol(u"*")) {
        take();
        take();
        expectSymbol(u")");
        result.sql = "count(*)";
        return result;
    }
    ++m_aggregates;
    const std::vector<Expr> inner = arguments(name, 1, 1);
    --m_aggregates;
    if (function == "sum" || function == "avg")
        use(function == "sum" ? Use::Sum : Use::Average, inner.front(), name.position);
    else if (function != "count")
        use(Use::Extreme, inner.front(), name.position);
    result.sql = call(function.constData(), inner);
    if (function == "min" || function == "max") {
        result.kind = inner.front().kind;
        // So that "z" is not above "Á" just because the argument is no plain column.
        if (isText(result.kind) && !inner.front().column)
            result.sql = function + '(' + withCollation(inner.front()) + ')';
    }
    return result;
}

Kind Parser::agree(const std::vector<Expr *> &branches, int position)
{
    Kind whole = Kind::Null;
    for (const Expr *branch : branches) {
        if (branch->kind == Kind::Date)
            whole = Kind::Date;
    }
    for (Expr *branch : branches) {
        fit(*branch, whole, position);
        if (branch->kind == Kind::Null)
            continue;
        if (whole == Kind::Null)
            whole = branch->kind;
        else if (whole != branch->kind)
            whole = Kind::Unknown;
    }
    return whole;
}

} // namespace db::sql
