#include "support/ServerParser.h"

namespace soporte {

using namespace db::sql;

namespace {

struct Simple {
    const char *sql;
    int least, most;
    Kind kind;
};

const QHash<QString, Simple> &simpleFunctions()
{
    static const QHash<QString, Simple> functions{
        {QStringLiteral("substring"), {"v_mid", 3, 3, Kind::Text}},
        {QStringLiteral("ltrim"), {"v_ltrim", 1, 1, Kind::Text}},
        {QStringLiteral("rtrim"), {"v_rtrim", 1, 1, Kind::Text}},
        {QStringLiteral("left"), {"v_left", 2, 2, Kind::Text}},
        {QStringLiteral("right"), {"v_right", 2, 2, Kind::Text}},
        {QStringLiteral("replace"), {"v_replace", 3, 3, Kind::Text}},
        {QStringLiteral("space"), {"v_space", 1, 1, Kind::Text}},
        {QStringLiteral("char"), {"v_chr", 1, 1, Kind::Text}},
        {QStringLiteral("abs"), {"v_abs", 1, 1, Kind::Number}},
        {QStringLiteral("floor"), {"v_int", 1, 1, Kind::Number}},
        {QStringLiteral("round"), {"v_roundaway", 2, 2, Kind::Number}},
        {QStringLiteral("sign"), {"v_sgn", 1, 1, Kind::Number}},
        {QStringLiteral("sqrt"), {"v_sqr", 1, 1, Kind::Number}},
    };
    return functions;
}

const char *interval(const QString &part)
{
    static const QHash<QString, const char *> parts{
        {QStringLiteral("yyyy"), "yyyy"},   {QStringLiteral("yy"), "yyyy"}, {QStringLiteral("year"), "yyyy"},
        {QStringLiteral("qq"), "q"},        {QStringLiteral("q"), "q"},     {QStringLiteral("quarter"), "q"},
        {QStringLiteral("mm"), "m"},        {QStringLiteral("m"), "m"},     {QStringLiteral("month"), "m"},
        {QStringLiteral("dayofyear"), "y"}, {QStringLiteral("dd"), "d"},    {QStringLiteral("d"), "d"},
        {QStringLiteral("day"), "d"},       {QStringLiteral("wk"), "ww"},   {QStringLiteral("ww"), "ww"},
        {QStringLiteral("week"), "ww"},     {QStringLiteral("hh"), "h"},    {QStringLiteral("hour"), "h"},
        {QStringLiteral("mi"), "n"},        {QStringLiteral("n"), "n"},     {QStringLiteral("minute"), "n"},
        {QStringLiteral("ss"), "s"},        {QStringLiteral("s"), "s"},     {QStringLiteral("second"), "s"}};
    return parts.value(part.toLower(), nullptr);
}

} // namespace

bool ServerParser::isFunction(const Token &name) const
{
    static const QStringList others
        = QStringLiteral(
              "isnull,coalesce,nullif,len,charindex,upper,lower,getdate,datediff,dateadd,datepart,year,month,"
              "day,cast,convert,count,sum,avg,min,max,object_id,ceiling,ident_current,databasepropertyex,"
              "serverproperty")
              .split(u',');
    return simpleFunctions().contains(name.text.toLower()) || others.contains(name.text.toLower());
}

Expr ServerParser::function(const Token &name)
{
    const QString function = name.text.toLower();
    if (QStringLiteral(",count,sum,avg,min,max,").contains(u',' + function + u','))
        return aggregate(name);
    if (function == u"datediff" || function == u"dateadd" || function == u"datepart")
        return dateFunction(function, name);
    if (function == u"cast" || function == u"convert")
        return conversion(function == u"cast");
    return simple(function, name);
}

void ServerParser::refuseLong(const std::vector<Expr> &arguments, const Token &name)
{
    for (const Expr &argument : arguments)
        if (argument.traits & Long)
            failSyntax(QStringLiteral("\"%1\" de un texto largo: falta convertirlo").arg(name.text), name.position);
}

Expr ServerParser::simple(const QString &function, const Token &name)
{
    Expr result;
    std::vector<Expr> inner;
    if (const auto known = simpleFunctions().constFind(function); known != simpleFunctions().cend()) {
        inner = arguments(name, known->least, known->most);
        result.sql = call(known->sql, inner);
        result.kind = known->kind;
        if (known->kind == Kind::Text)
            refuseLong(inner, name);
    } else if (function == u"isnull" || function == u"coalesce") {
        inner = arguments(name, 2, function == u"isnull" ? 2 : 20);
        std::vector<Expr *> branches;
        for (Expr &argument : inner)
            branches.push_back(&argument);
        result.kind = unify(branches, name.position);
        result.sql = call("coalesce", inner);
        // ISNULL has the type of its first argument, which cuts the second.
        const int size = inner[0].traits / SizeFactor;
        if (function == u"isnull" && size > 0
            && (inner[1].traits / SizeFactor > size || (inner[1].literal && inner[1].literal->size() > size)))
            failSyntax(QStringLiteral("ISNULL corta su segundo valor"), name.position);
    } else if (function == u"nullif") {
        inner = arguments(name, 2, 2);
        fit(inner[1], inner[0].kind, name.position);
        result.sql = call("nullif", inner);
        result.kind = inner[0].kind;
    } else if (function == u"len") {
        // Blanks at the end do not count.
        inner = arguments(name, 1, 1);
        refuseLong(inner, name);
        result.sql = "v_len(v_rtrim(" + inner.front().sql + "))";
        result.kind = Kind::Number;
    } else if (function == u"charindex") {
        // What is sought comes first.
        inner = arguments(name, 2, 3);
        result.sql = "v_instr(" + (inner.size() == 3 ? inner[2].sql + ", " : QByteArray()) + inner[1].sql + ", "
            + inner[0].sql + ')';
        result.kind = Kind::Number;
    } else if (function == u"upper" || function == u"lower") {
        inner = arguments(name, 1, 1);
        refuseLong(inner, name);
        result.sql = call(function == u"upper" ? "v_ucase" : "v_lcase", inner);
        result.kind = Kind::Text;
        if (inner.front().column)
            result.uncased = inner.front().sql;
    } else if (function == u"getdate") {
        inner = arguments(name, 0, 0);
        result.sql = "datetime('now', 'localtime')";
        result.kind = Kind::Date;
    } else if (function == u"ceiling") {
        inner = arguments(name, 1, 1);
        result.sql = "(- v_int(- " + operand(inner.front()) + "))";
        result.kind = Kind::Number;
    } else if (function == u"ident_current") {
        // The last number given; of a table that never had a row, the first one.
        const QByteArray table = textLiteral(firstText().remove(u'[').remove(u']'));
        result.sql = "coalesce((SELECT max(seq, 1) FROM sqlite_sequence WHERE name = " + table + " COLLATE NOCASE), 1)";
        result.kind = Kind::Number;
        return result;
    } else if (function == u"databasepropertyex" || function == u"serverproperty") {
        expectSymbol(u"(");
        const QString base = function == u"serverproperty" ? QStringLiteral("master") : take().text;
        if (function != u"serverproperty")
            expectSymbol(u",");
        if (take().text.compare(QLatin1String("Collation"), Qt::CaseInsensitive) != 0)
            failSyntax(QStringLiteral("Propiedad desconocida"), name.position);
        expectSymbol(u")");
        result.sql = textLiteral(m_catalog.collationOf(base));
        result.kind = Kind::Text;
        return result;
    } else if (function == u"object_id") {
        inner = arguments(name, 1, 1);
        if (!inner.front().literal)
            failSyntax(QStringLiteral("OBJECT_ID sin nombre"), name.position);
        QString table = *inner.front().literal;
        result.sql = textLiteral(table.remove(u'[').remove(u']'));
        result.kind = Kind::Text;
        return result;
    } else {
        // year, month, day
        inner = arguments(name, 1, 1);
        fit(inner.front(), Kind::Date, name.position);
        result.sql = QByteArray("v_datepart('") + interval(function) + "', " + inner.front().sql + ')';
        result.kind = Kind::Number;
    }
    for (const Expr &argument : inner)
        result.aggregate = result.aggregate || argument.aggregate;
    return result;
}

Expr ServerParser::dateFunction(const QString &function, const Token &name)
{
    expectSymbol(u"(");
    const Token part = take();
    const char *unit = part.kind == Token::Kind::Name ? interval(part.text) : nullptr;
    if (!unit)
        failSyntax(QStringLiteral("Intervalo desconocido en \"%1\"").arg(name.text), name.position);
    Expr result;
    result.sql = "v_" + function.toLatin1() + "('" + unit + '\'';
    const int dates = function == u"datediff" ? 2 : 1;
    if (function == u"dateadd") {
        expectSymbol(u",");
        result.sql += ", " + value().sql;
    }
    for (int i = 0; i < dates; ++i) {
        expectSymbol(u",");
        Expr date = value();
        fit(date, Kind::Date, name.position);
        result.aggregate = result.aggregate || date.aggregate;
        result.sql += ", " + date.sql;
    }
    expectSymbol(u")");
    result.sql += ')';
    result.kind = function == u"dateadd" ? Kind::Date : Kind::Number;
    return result;
}

Expr ServerParser::conversion(bool cast)
{
    const int at = position();
    expectSymbol(u"(");
    Expr expr;
    if (cast) {
        expr = value();
        expect(u"as");
    }
    const QString type = identifier().toLower();
    int sizes[2] = {0, 0};
    if (acceptSymbol(u"(")) {
        if (!accept(u"max")) {
            sizes[0] = number();
            if (acceptSymbol(u","))
                sizes[1] = number();
        }
        expectSymbol(u")");
    }
    int style = -1;
    if (!cast) {
        expectSymbol(u",");
        expr = value();
        if (acceptSymbol(u","))
            style = number();
    }
    expectSymbol(u")");

    Expr result;
    result.aggregate = expr.aggregate;
    if (type == u"int" || type == u"bigint" || type == u"smallint" || type == u"bit") {
        fit(expr, Kind::Number, at);
        result.sql = "CAST(" + expr.sql + " AS INTEGER)";
        result.kind = Kind::Number;
    } else if (type == u"float" || type == u"real") {
        fit(expr, Kind::Number, at);
        result.sql = "CAST(" + expr.sql + " AS REAL)";
        result.kind = Kind::Number;
    } else if (type == u"decimal" || type == u"numeric") {
        fit(expr, Kind::Number, at);
        result.sql = "v_roundaway(" + expr.sql + ", " + QByteArray::number(sizes[1]) + ')';
        result.kind = Kind::Number;
    } else if (type == u"money") {
        fit(expr, Kind::Number, at);
        // Beyond its range the server fails.
        result.sql = "CASE WHEN abs(" + expr.sql + ") > 922337203685477 THEN abs(-9223372036854775807 - (" + expr.sql
            + " IS NOT NULL)) ELSE v_roundaway(" + expr.sql + ", 4) END";
        result.kind = Kind::Number;
        result.traits = Money;
    } else if (type == u"nvarchar" || type == u"varchar" || type == u"nchar" || type == u"char") {
        static const QHash<int, const char *> styles{
            {103, "dd/mm/yyyy"}, {112, "yyyymmdd"}, {108, "hh:nn:ss"}, {120, "yyyy-mm-dd hh:nn:ss"}};
        if (expr.kind == Kind::Date) {
            if (!styles.contains(style))
                failSyntax(QStringLiteral("Fecha convertida a texto sin estilo conocido"), at);
            result.sql = "CASE WHEN " + operand(expr) + " IS NULL THEN NULL ELSE v_format(" + expr.sql + ", '"
                + styles.value(style) + "') END";
            if (sizes[0] > 0)
                result.sql = "v_left(" + result.sql + ", " + QByteArray::number(sizes[0]) + ')';
        } else if (style == 1 && (expr.traits & Money)) {
            // "1,234.50" in every language.
            result.sql
                = "v_replace(v_replace(v_replace(v_format(" + expr.sql + ", '#,0.00'), '.', ';'), ',', '.'), ';', ',')";
            result.sql = "CASE WHEN " + operand(expr) + " IS NULL THEN NULL ELSE " + result.sql + " END";
        } else {
            // Six digits are all that a number with decimals keeps unless told otherwise.
            if (style < 0 && (expr.traits & Inexact))
                failSyntax(QStringLiteral("Número con decimales convertido a texto sin estilo"), at);
            result.sql = expr.kind == Kind::Text ? expr.sql : "v_replace(v_cstr(" + expr.sql + "), ',', '.')";
            if (sizes[0] > 0)
                result.sql = "v_left(" + result.sql + ", " + QByteArray::number(sizes[0]) + ')';
        }
        result.kind = Kind::Text;
    } else if (type == u"varbinary") {
        if (expr.kind != Kind::Unknown && expr.kind != Kind::Null)
            failSyntax(QStringLiteral("Texto convertido a bytes"), at);
        result.sql = expr.sql;
    } else if (type == u"datetime" || type == u"datetime2" || type == u"date") {
        fit(expr, Kind::Date, at);
        result.sql = (type == u"date" ? "v_datevalue(" : "v_cdate(") + expr.sql + ')';
        result.kind = Kind::Date;
    } else {
        failSyntax(QStringLiteral("Tipo desconocido \"%1\"").arg(type), at);
    }
    return result;
}

int ServerParser::number()
{
    const Token token = take();
    bool fits = false;
    const int result = token.kind == Token::Kind::Integer ? token.text.toInt(&fits) : 0;
    if (!fits)
        failSyntax(QStringLiteral("Se esperaba un número"), token.position);
    return result;
}

} // namespace soporte
