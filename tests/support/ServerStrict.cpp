#include "db/Error.h"
#include "support/ServerParser.h"

#include <QRegularExpression>
#include <QSet>

#include <algorithm>

namespace soporte {

using namespace db::sql;

bool ServerParser::reserves(const QString &word) const
{
    // The server's own, beyond those that end a clause in both dialects.
    static const QSet<QString> words = [] {
        const QString list = QStringLiteral(
            "authorization backup break browse bulk cascade check checkpoint close clustered coalesce column commit "
            "compute constraint contains containstable continue convert current current_date current_time "
            "current_timestamp current_user cursor database dbcc deallocate declare default deny disk distributed "
            "double dump errlvl except execute exit external fetch file fillfactor for foreign freetext "
            "freetexttable function goto grant holdlock identity identity_insert identitycol index intersect key "
            "kill lineno load merge national nocheck nonclustered nullif of off offsets open opendatasource "
            "openquery openrowset openxml option over percent pivot plan precision primary print proc procedure "
            "public raiserror read readtext reconfigure references replication restore restrict return revert "
            "revoke rollback rowcount rowguidcol rule save schema securityaudit session_user setuser shutdown "
            "statistics system_user tablesample textsize to tran transaction trigger truncate try_convert tsequal "
            "unpivot updatetext use user varying view waitfor while within writetext");
        const QStringList split = list.split(u' ');
        return QSet<QString>(split.cbegin(), split.cend());
    }();
    return Parser::reserves(word) || words.contains(word.toLower());
}

void ServerParser::describe(Expr &expr, const QString &table)
{
    const db::Column *column = table.contains(u'.') ? nullptr : columnOf(table, expr.name);
    if (!column)
        return;
    using db::Type;
    switch (column->type) {
    case Type::Flag: expr.traits = Bit; break;
    case Type::Memo:
    case Type::Binary: expr.traits = Long; break;
    case Type::Counter:
    case Type::Integer:
    case Type::Long: expr.traits = Whole; break;
    case Type::Single:
    case Type::Double: expr.traits = Inexact; break;
    case Type::Text: expr.traits = column->size * SizeFactor; break;
    case Type::DateTime: break;
    }
}

void ServerParser::unknownColumn(const QString &name, int)
{
    for (const std::vector<Source> &scope : m_scopes) {
        for (const Source &source : scope) {
            // A table that is not there is the engine's to tell; a "*" in a FROM hides its names.
            if (source.derived || source.table.contains(u'.') || columnsOf(source.table).isEmpty())
                return;
        }
    }
    throw db::Error(db::Error::Kind::NoSuchColumn, 207, QStringLiteral("Columna desconocida (%1).").arg(name));
}

Expr ServerParser::suffix(Expr operand)
{
    if (!accept(u"collate"))
        return operand;
    const int at = position();
    const QString collation = identifier();
    const bool byCode = collation == u"Latin1_General_BIN2"; // of texts in the statement, to take a sign out of them
    if (collation != u"Modern_Spanish_CI_AI" && !(byCode && operand.literal))
        failSyntax(QStringLiteral("Orden desconocido \"%1\"").arg(collation), at);
    if (operand.kind != Kind::Text && operand.kind != Kind::Unknown)
        failSyntax(QStringLiteral("COLLATE de lo que no es un texto"), at);
    if (operand.traits & Long)
        failSyntax(QStringLiteral("COLLATE de un texto largo: falta convertirlo"), at);
    operand.traits |= byCode ? 0 : Collated;
    return operand;
}

void ServerParser::use(Use use, const Expr &expr, int position)
{
    const auto refuse = [&](const QString &what) {
        failSyntax(expr.name.isEmpty() ? what : what + QStringLiteral(" (%1)").arg(expr.name), position);
    };
    const bool isLong = expr.traits & Long, bit = expr.traits & Bit;
    switch (use) {
    case Use::Order:
        if (isLong)
            refuse(QStringLiteral("ORDER BY de un texto largo: falta convertirlo"));
        break;
    case Use::Group:
        if (isLong)
            refuse(QStringLiteral("GROUP BY de un texto largo: falta convertirlo"));
        break;
    case Use::Distinct:
        if (isLong)
            refuse(QStringLiteral("DISTINCT de un texto largo: falta convertirlo"));
        break;
    case Use::Sum:
    case Use::Average:
        if (bit || expr.kind == Kind::Text || expr.kind == Kind::Date)
            refuse(QStringLiteral("Suma de lo que no es un número"));
        if (use == Use::Average && (expr.traits & Whole))
            refuse(QStringLiteral("El promedio de números enteros pierde los decimales: falta convertirlos"));
        break;
    case Use::Extreme:
        if (bit || isLong)
            refuse(QStringLiteral("MIN o MAX de una bandera o de un texto largo"));
        break;
    case Use::Signed:
        if (bit)
            refuse(QStringLiteral("Signo delante de una bandera"));
        break;
    case Use::OrderNotSelected: refuse(QStringLiteral("ORDER BY de lo que SELECT DISTINCT no muestra")); break;
    case Use::OrderNotGrouped: refuse(QStringLiteral("ORDER BY de una columna que no está agrupada")); break;
    case Use::OrderTwice: refuse(QStringLiteral("ORDER BY dos veces de lo mismo")); break;
    case Use::OrderAmbiguous: refuse(QStringLiteral("ORDER BY de un nombre que se muestra dos veces")); break;
    case Use::OrderByInnerAlias: refuse(QStringLiteral("ORDER BY de una expresión con un nombre nuevo")); break;
    case Use::GroupConstant: refuse(QStringLiteral("GROUP BY sin columna")); break;
    case Use::GroupedSubquery:
        refuse(QStringLiteral("Subconsulta dentro de GROUP BY o de una función de grupo"));
        break;
    case Use::HavingNotGrouped: refuse(QStringLiteral("HAVING de una columna que no está agrupada")); break;
    case Use::UnionOfKinds: refuse(QStringLiteral("UNION de columnas de distinto tipo")); break;
    case Use::Unnamed: refuse(QStringLiteral("Columna sin nombre en una subconsulta de FROM")); break;
    case Use::RepeatedName:
        refuse(QStringLiteral("Dos columnas con el mismo nombre en una subconsulta de FROM"));
        break;
    }
}

void ServerParser::liked(const Expr &left, const Expr &pattern, int position)
{
    if (left.kind == Kind::Date || left.kind == Kind::Number)
        failSyntax(QStringLiteral("LIKE de lo que no es un texto: falta convertirlo"), position);
    wants(pattern, Kind::Text, true);
    // It keeps accents apart, which the embedded engine does not.
    const bool letters = !pattern.literal
        || std::any_of(pattern.literal->cbegin(), pattern.literal->cend(), [](QChar c) { return c.isLetter(); });
    if (left.traits != 0 && !(left.traits & Collated) && letters)
        failSyntax(QStringLiteral("LIKE que distingue acentos: falta COLLATE"), position);
}

void ServerParser::wants(const Expr &parameter, Kind kind, bool compared, bool bit)
{
    if (parameter.parameter > 0 && kind != Kind::Unknown && kind != Kind::Null)
        m_result.parameters.push_back({parameter.parameter, kind, compared, bit});
}

void ServerParser::pair(Expr &left, Expr &right, int position)
{
    if ((left.traits | right.traits) & Long)
        failSyntax(QStringLiteral("Comparación de un texto largo: falta convertirlo"), position);
    for (const auto &[one, other] : {std::pair(&left, &right), std::pair(&right, &left)}) {
        wants(*one, other->kind, true, other->traits & Bit);
        // The server turns the text into the other kind, row by row, and stops at the first one that is none.
        if (one->kind == Kind::Text && !one->literal && (other->kind == Kind::Number || other->kind == Kind::Date))
            failSyntax(QStringLiteral("Comparación de un texto con lo que no es un texto"), position);
        static const QRegularExpression number(QStringLiteral("^\\(?(- )?[0-9]+\\)?$"));
        if ((other->traits & Bit) && number.match(QString::fromLatin1(one->sql)).hasMatch() && one->sql != "0"
            && one->sql != "1")
            failSyntax(QStringLiteral("Una bandera vale 1 o 0: se compara con \"<> 0\""), position);
    }
}

void ServerParser::assigned(const QString &table, const QString &column, Expr &value, int position, bool isNew)
{
    Parser::assigned(table, column, value, position, isNew);
    const db::Column *into = columnOf(table, column);
    if (!into)
        return;
    const Kind kind = columnKind(table, column).value_or(Kind::Unknown);
    wants(value, kind, false);
    if (value.kind == Kind::Text && !value.literal && (kind == Kind::Number || kind == Kind::Date))
        failSyntax(QStringLiteral("Texto en una columna de otro tipo"), position);
    if (into->type == db::Type::Flag) {
        // Whatever is not zero is stored as 1.
        value.sql = '(' + value.sql + ") <> 0";
        value.atomic = false;
    }
}

QByteArray ServerParser::scalar(const Query &inner)
{
    if (inner.oneRow)
        return Parser::scalar(inner);
    // "Subquery returned more than 1 value": the overflow stands for it.
    return "(SELECT * FROM (" + inner.sql + ") WHERE abs(-9223372036854775807 - ((SELECT count(*) FROM (SELECT 1 FROM ("
        + inner.sql + ") LIMIT 2)) > 1)))";
}

} // namespace soporte
