#include "db/sql/AccessParser.h"

#include "db/sql/Format.h"

namespace db::sql {

namespace {

LexerRules accessRules()
{
    LexerRules rules;
    rules.symbols = u"&\\^";
    return rules;
}

/// The functions that translate argument by argument. `sql` names ours (see Functions.cpp) or the engine's.
struct Simple {
    const char *sql;
    int least, most;
    Kind kind;
};

const QHash<QString, Simple> &simpleFunctions()
{
    static const QHash<QString, Simple> functions{
        {QStringLiteral("trim"), {"v_trim", 1, 1, Kind::Text}},
        {QStringLiteral("ltrim"), {"v_ltrim", 1, 1, Kind::Text}},
        {QStringLiteral("rtrim"), {"v_rtrim", 1, 1, Kind::Text}},
        {QStringLiteral("mid"), {"v_mid", 2, 3, Kind::Text}},
        {QStringLiteral("left"), {"v_left", 2, 2, Kind::Text}},
        {QStringLiteral("right"), {"v_right", 2, 2, Kind::Text}},
        {QStringLiteral("len"), {"v_len", 1, 1, Kind::Number}},
        {QStringLiteral("instr"), {"v_instr", 2, 3, Kind::Number}},
        {QStringLiteral("replace"), {"v_replace", 3, 3, Kind::Text}},
        {QStringLiteral("space"), {"v_space", 1, 1, Kind::Text}},
        {QStringLiteral("string"), {"v_string", 2, 2, Kind::Text}},
        {QStringLiteral("chr"), {"v_chr", 1, 1, Kind::Text}},
        {QStringLiteral("asc"), {"v_asc", 1, 1, Kind::Number}},
        {QStringLiteral("strcomp"), {"v_strcomp", 2, 3, Kind::Number}},
        {QStringLiteral("val"), {"v_val", 1, 1, Kind::Number}},
        {QStringLiteral("str"), {"v_str", 1, 1, Kind::Text}},
        {QStringLiteral("cstr"), {"v_cstr", 1, 1, Kind::Text}},
        {QStringLiteral("clng"), {"v_clng", 1, 1, Kind::Number}},
        {QStringLiteral("cint"), {"v_cint", 1, 1, Kind::Number}},
        {QStringLiteral("cdbl"), {"v_cdbl", 1, 1, Kind::Number}},
        {QStringLiteral("csng"), {"v_csng", 1, 1, Kind::Number}},
        {QStringLiteral("cdate"), {"v_cdate", 1, 1, Kind::Date}},
        {QStringLiteral("abs"), {"v_abs", 1, 1, Kind::Number}},
        {QStringLiteral("int"), {"v_int", 1, 1, Kind::Number}},
        {QStringLiteral("fix"), {"v_fix", 1, 1, Kind::Number}},
        {QStringLiteral("round"), {"v_round", 1, 2, Kind::Number}},
        {QStringLiteral("sgn"), {"v_sgn", 1, 1, Kind::Number}},
        {QStringLiteral("sqr"), {"v_sqr", 1, 1, Kind::Number}},
        {QStringLiteral("dateserial"), {"v_dateserial", 3, 3, Kind::Date}},
        {QStringLiteral("timeserial"), {"v_timeserial", 3, 3, Kind::Date}},
        {QStringLiteral("datevalue"), {"v_datevalue", 1, 1, Kind::Date}},
        {QStringLiteral("timevalue"), {"v_timevalue", 1, 1, Kind::Date}},
    };
    return functions;
}

const QStringList &specialFunctions()
{
    static const QStringList functions
        = QStringLiteral("ucase,lcase,iif,isnull,nz,cbool,isnumeric,isdate,format,now,date,time,datediff,dateadd,"
                         "datepart,year,month,day,hour,minute,second,weekday,count,sum,avg,min,max")
              .split(u',');
    return functions;
}

QString functionName(const Token &token)
{
    const QString name = token.text.toLower();
    return name.endsWith(u'$') ? name.chopped(1) : name;
}

bool isText(const Expr &expr) { return expr.kind == Kind::Text; }

} // namespace

AccessParser::AccessParser(QStringView statement)
    : Parser(statement, accessRules())
{
}

Translated AccessParser::statement()
{
    if (peek().isWord(u"select"))
        return select();
    if (peek().isWord(u"insert"))
        return insert();
    if (peek().isWord(u"update"))
        return update();
    if (peek().isWord(u"delete"))
        return deletion(true);
    if (peek().isWord(u"alter"))
        return alterTable();
    if (peek().isWord(u"drop"))
        return drop();
    if (accept(u"create")) {
        const bool unique = accept(u"unique");
        return createIndex(unique);
    }
    unexpected();
}

Parser::Operator AccessParser::operatorAt(const Token &token) const
{
    if (token.isWord(u"mod"))
        return {'m', 4};
    if (token.kind != Token::Kind::Symbol || token.text.size() != 1)
        return {};
    switch (token.text.front().unicode()) {
    case u'&': return {'&', 1};
    case u'+':
    case u'-': return {token.text.front().toLatin1(), additive};
    case u'\\': return {'\\', 6};
    case u'*':
    case u'/': return {token.text.front().toLatin1(), multiplicative};
    case u'^': return {'^', power};
    default: return {};
    }
}

Expr AccessParser::concatenate(Expr left, Expr right)
{
    // One call for the whole chain. The call takes Null as empty text and numbers as Access writes them.
    constexpr size_t mostArguments = 60;
    std::vector<QByteArray> operands;
    if (!left.joined.empty() && left.joined.size() < mostArguments)
        operands = std::move(left.joined);
    else
        operands.push_back(left.kind == Kind::Date ? "v_cstr(" + left.sql + ')' : left.sql);
    operands.push_back(right.kind == Kind::Date ? "v_cstr(" + right.sql + ')' : right.sql);

    Expr result;
    result.kind = Kind::Text;
    result.sql = "v_concat(";
    for (const QByteArray &operand : operands)
        result.sql += (result.sql.endsWith("v_concat(") && &operand == &operands.front() ? "" : ", ") + operand;
    result.sql += ')';
    result.joined = std::move(operands);
    return result;
}

Expr AccessParser::combine(Operator op, Expr left, Expr right, int position)
{
    Expr result;
    switch (op.id) {
    case '&': return concatenate(std::move(left), std::move(right));
    case 'm': result.sql = call("v_mod", {left, right}); break;
    case '\\': result.sql = call("v_idiv", {left, right}); break;
    case '^': result.sql = call("v_pow", {left, right}); break;
    case '/':
        // Always a division with decimals.
        result.sql = "CAST(" + left.sql + " AS REAL) / " + operand(right);
        result.atomic = false;
        break;
    case '+':
        if (isText(left) || isText(right)) {
            result.sql = operand(left) + " || " + operand(right);
            result.kind = Kind::Text;
            result.atomic = false;
            return result;
        }
        [[fallthrough]];
    case '-':
        if (left.kind == Kind::Date || right.kind == Kind::Date) {
            result.sql = call(op.id == '+' ? "v_dateplus" : "v_dateminus", {left, right});
            result.kind = left.kind == Kind::Date && right.kind == Kind::Number ? Kind::Date
                : op.id == '+'                                                  ? Kind::Date
                                                                                : Kind::Unknown;
            return result;
        }
        [[fallthrough]];
    default: return Parser::combine(op, std::move(left), std::move(right), position);
    }
    result.kind = Kind::Number;
    return result;
}

bool AccessParser::isFunction(const Token &name) const
{
    const QString function = functionName(name);
    return simpleFunctions().contains(function) || specialFunctions().contains(function);
}

std::optional<Expr> AccessParser::special(const Token &token)
{
    const bool isTrue = token.isWord(u"true");
    if (!isTrue && !token.isWord(u"false"))
        return std::nullopt;
    take();
    Expr result;
    result.sql = isTrue ? "-1" : "0";
    result.atomic = !isTrue;
    result.kind = Kind::Number;
    result.truth = isTrue ? -1 : 0;
    return result;
}

Expr AccessParser::conditionAsValue(Expr condition, int)
{
    // Access' true is -1.
    condition.sql = "(- (" + condition.sql + "))";
    condition.atomic = true;
    condition.kind = Kind::Number;
    return condition;
}

Expr AccessParser::choice(const Token &)
{
    expectSymbol(u"(");
    const Expr test = condition();
    expectSymbol(u",");
    Expr yes = value();
    expectSymbol(u",");
    Expr no = value();
    expectSymbol(u")");
    Expr result;
    result.kind = agree({&yes, &no}, position());
    result.sql = "CASE WHEN " + test.sql + " THEN " + yes.sql + " ELSE " + no.sql + " END";
    result.aggregate = test.aggregate || yes.aggregate || no.aggregate;
    return result;
}

Expr AccessParser::formatFunction(const Token &name)
{
    std::vector<Expr> inner = arguments(name, 1, 2);
    if (inner.size() == 2) {
        if (!inner[1].literal)
            failSyntax(QStringLiteral("El formato de FORMAT debe ser un texto"), name.position);
        if (!FormatPattern(inner[1].literal->toUtf8()).isValid())
            failSyntax(QStringLiteral("Formato desconocido"), name.position);
    }
    Expr result;
    result.sql = call("v_format", inner);
    result.kind = Kind::Text;
    result.aggregate = inner.front().aggregate;
    return result;
}

Expr AccessParser::dateFunction(const QString &function, const Token &name)
{
    static const QStringList intervals = QStringLiteral("yyyy,q,m,y,d,w,ww,h,n,s").split(u',');
    const bool part = function == u"datepart";
    std::vector<Expr> inner = arguments(name, part ? 2 : 3, part ? 2 : 3);
    if (!inner.front().literal || !intervals.contains(inner.front().literal->toLower()))
        failSyntax(QStringLiteral("Intervalo desconocido en \"%1\"").arg(name.text), name.position);
    inner.front().sql = textLiteral(inner.front().literal->toLower());
    Expr result;
    result.sql = call(("v_" + function.toLatin1()).constData(), inner);
    result.kind = function == u"dateadd" ? Kind::Date : Kind::Number;
    for (const Expr &argument : inner)
        result.aggregate = result.aggregate || argument.aggregate;
    return result;
}

Expr AccessParser::function(const Token &name)
{
    const QString function = functionName(name);
    if (name.text.endsWith(u'$')
        && !QStringLiteral(",ucase,lcase,trim,ltrim,rtrim,mid,left,right,space,string,chr,str,format,date,time,")
                .contains(u',' + function + u','))
        failSyntax(QStringLiteral("Función desconocida \"%1\"").arg(name.text), name.position);
    if (function == u"iif")
        return choice(name);
    if (function == u"format")
        return formatFunction(name);
    if (function == u"datediff" || function == u"dateadd" || function == u"datepart")
        return dateFunction(function, name);
    if (function == u"count" || function == u"sum" || function == u"avg" || function == u"min" || function == u"max")
        return aggregate(name);

    Expr result;
    std::vector<Expr> inner;
    if (const auto simple = simpleFunctions().constFind(function); simple != simpleFunctions().cend()) {
        inner = arguments(name, simple->least, simple->most);
        result.sql = call(simple->sql, inner);
        result.kind = simple->kind;
    } else if (function == u"ucase" || function == u"lcase") {
        inner = arguments(name, 1, 1);
        result.sql = call(function == u"ucase" ? "v_ucase" : "v_lcase", inner);
        result.kind = Kind::Text;
        if (inner.front().column)
            result.uncased = inner.front().sql;
    } else if (function == u"isnull") {
        inner = arguments(name, 1, 1);
        result.sql = operand(inner.front()) + " IS NULL";
        result.atomic = false;
        result.kind = Kind::Boolean;
    } else if (function == u"nz") {
        inner = arguments(name, 1, 2);
        if (inner.size() == 1)
            result.sql = "ifnull(" + inner.front().sql + ", '')";
        else {
            result.kind = agree({&inner[0], &inner[1]}, name.position);
            result.sql = call("ifnull", inner);
        }
    } else if (function == u"cbool") {
        inner = arguments(name, 1, 1);
        result.sql = operand(inner.front()) + " <> 0";
        result.atomic = false;
        result.kind = Kind::Boolean;
    } else if (function == u"isnumeric" || function == u"isdate") {
        inner = arguments(name, 1, 1);
        result.sql = call(function == u"isdate" ? "v_isdate" : "v_isnumeric", inner);
        result.kind = Kind::Boolean;
    } else if (function == u"now" || function == u"date" || function == u"time") {
        inner = arguments(name, 0, 0);
        result.sql = function == u"now" ? "datetime('now', 'localtime')"
            : function == u"date"       ? "strftime('%Y-%m-%d 00:00:00', 'now', 'localtime')"
                                        : "strftime('1899-12-30 %H:%M:%S', 'now', 'localtime')";
        result.kind = Kind::Date;
    } else {
        // year ... second, weekday
        static const QHash<QString, const char *> parts{
            {QStringLiteral("year"), "yyyy"},
            {QStringLiteral("month"), "m"},
            {QStringLiteral("day"), "d"},
            {QStringLiteral("hour"), "h"},
            {QStringLiteral("minute"), "n"},
            {QStringLiteral("second"), "s"},
            {QStringLiteral("weekday"), "w"}};
        inner = arguments(name, 1, 1);
        result.sql = QByteArray("v_datepart('") + parts.value(function) + "', " + inner.front().sql + ')';
        result.kind = Kind::Number;
    }
    for (const Expr &argument : inner)
        result.aggregate = result.aggregate || argument.aggregate;
    return result;
}

Translated AccessParser::alterTable()
{
    expect(u"alter");
    expect(u"table");
    const QByteArray table = "ALTER TABLE " + quoted(identifier());
    if (accept(u"drop")) {
        accept(u"column");
        return {table + " DROP COLUMN " + quoted(identifier()), false, {}};
    }
    expect(u"add");
    accept(u"column");
    return {table + " ADD COLUMN " + columnDeclaration(), false, {}};
}

QByteArray AccessParser::columnDeclaration()
{
    // The names under which Access knows a type, and the one under which the engine declares it.
    static const QHash<QString, const char *> types{
        {QStringLiteral("memo"), "LONGTEXT COLLATE NOCASE"},
        {QStringLiteral("longtext"), "LONGTEXT COLLATE NOCASE"},
        {QStringLiteral("smallint"), "SHORT"},
        {QStringLiteral("short"), "SHORT"},
        {QStringLiteral("byte"), "SHORT"},
        {QStringLiteral("integer"), "LONG"},
        {QStringLiteral("int"), "LONG"},
        {QStringLiteral("long"), "LONG"},
        {QStringLiteral("single"), "REAL"},
        {QStringLiteral("real"), "REAL"},
        {QStringLiteral("double"), "DOUBLE"},
        {QStringLiteral("float"), "DOUBLE"},
        {QStringLiteral("number"), "DOUBLE"},
        {QStringLiteral("bit"), "YESNO"},
        {QStringLiteral("yesno"), "YESNO"},
        {QStringLiteral("logical"), "YESNO"},
        {QStringLiteral("datetime"), "DATETIME"},
        {QStringLiteral("date"), "DATETIME"},
        {QStringLiteral("image"), "BLOB"},
        {QStringLiteral("oleobject"), "BLOB"},
        {QStringLiteral("longbinary"), "BLOB"},
    };
    QByteArray sql = quoted(identifier()) + ' ';
    const Token type = take();
    const QString name = type.kind == Token::Kind::Name ? type.text.toLower() : QString();
    if (name == u"text" || name == u"varchar" || name == u"char") {
        int size = 255;
        if (acceptSymbol(u"(")) {
            const Token length = take();
            size = length.kind == Token::Kind::Integer ? length.text.toInt() : 0;
            if (size < 1 || size > 255)
                failSyntax(QStringLiteral("Largo de texto inválido"), length.position);
            expectSymbol(u")");
        }
        sql += "TEXT(" + QByteArray::number(size) + ") COLLATE NOCASE";
    } else if (const auto known = types.constFind(name); known != types.cend()) {
        sql += *known;
    } else {
        failSyntax(QStringLiteral("Tipo de columna desconocido"), type.position);
    }
    if (accept(u"default")) {
        const Expr initial = value();
        if (initial.kind != Kind::Number && !initial.literal)
            fail(QStringLiteral("Valor inicial inválido"));
        sql += " DEFAULT " + (initial.literal ? initial.sql : '(' + initial.sql + ')');
    }
    return sql;
}

} // namespace db::sql
