#include "db/sql/Parser.h"

#include <QSet>

namespace db::sql {

bool Parser::isReserved(const QString &word)
{
    // Words that end a clause: a name of this spelling needs brackets.
    static const QSet<QString> words = [] {
        QSet<QString> set;
        for (const char *w :
             {"select", "from",      "where",    "group",       "having",  "order",  "union",   "inner",  "left",
              "right",  "full",      "cross",    "outer",       "join",    "on",     "as",      "and",    "or",
              "not",    "xor",       "eqv",      "imp",         "like",    "alike",  "between", "in",     "is",
              "null",   "exists",    "distinct", "all",         "top",     "insert", "into",    "values", "update",
              "set",    "delete",    "alter",    "table",       "add",     "drop",   "create",  "unique", "mod",
              "by",     "asc",       "desc",     "any",         "some",    "case",   "when",    "then",   "else",
              "end",    "true",      "false",    "distinctrow", "begin",   "if",     "escape",  "except", "limit",
              "offset", "intersect", "with",     "returning",   "collate", "exec",   "pragma"})
            set.insert(QString::fromLatin1(w));
        return set;
    }();
    return words.contains(word.toLower());
}

Parser::Depth::Depth(Parser &parser)
    : m_parser(parser)
{
    constexpr int deepest = 150;
    if (m_parser.m_depth >= deepest)
        m_parser.fail(QStringLiteral("Demasiados niveles de paréntesis"));
    ++m_parser.m_depth;
}

Parser::Parser(QStringView statement, const LexerRules &rules)
    : m_tokens(tokenize(statement, rules))
{
}

Translated Parser::translate()
{
    Translated result = statement();
    acceptSymbol(u";");
    if (peek().kind != Token::Kind::End)
        unexpected();
    return result;
}

const Token &Parser::peek(int ahead) const { return m_tokens[std::min(m_at + size_t(ahead), m_tokens.size() - 1)]; }

Token Parser::take()
{
    const Token token = peek();
    if (m_at + 1 < m_tokens.size())
        ++m_at;
    return token;
}

bool Parser::accept(QStringView word)
{
    const bool is = peek().isWord(word);
    if (is)
        ++m_at;
    return is;
}

bool Parser::acceptSymbol(QStringView symbol)
{
    const bool is = peek().isSymbol(symbol);
    if (is)
        ++m_at;
    return is;
}

void Parser::expect(QStringView word)
{
    if (!accept(word))
        fail(QStringLiteral("Se esperaba %1").arg(word.toString().toUpper()));
}

void Parser::expectSymbol(QStringView symbol)
{
    if (!acceptSymbol(symbol))
        fail(QStringLiteral("Se esperaba \"%1\"").arg(symbol));
}

bool Parser::atIdentifier() const
{
    const Token &token = peek();
    return token.kind == Token::Kind::Bracketed
        || (token.kind == Token::Kind::Name && !reserves(token.text) && !token.text.endsWith(u'$'));
}

QString Parser::identifier()
{
    if (!atIdentifier())
        fail(QStringLiteral("Se esperaba un nombre"));
    return take().text;
}

void Parser::fail(const QString &what) const { failSyntax(what, position()); }

void Parser::unexpected() const
{
    switch (peek().kind) {
    case Token::Kind::End: fail(QStringLiteral("Instrucción incompleta"));
    case Token::Kind::Name:
    case Token::Kind::Symbol: fail(QStringLiteral("\"%1\" inesperado").arg(peek().text));
    case Token::Kind::Bracketed: fail(QStringLiteral("\"[%1]\" inesperado").arg(peek().text));
    default:
        // A literal may be a patient's datum: it is not repeated.
        fail(QStringLiteral("Valor inesperado"));
    }
}

QByteArray Parser::quoted(const QString &identifier)
{
    QString doubled = identifier;
    doubled.replace(u'"', QStringLiteral("\"\""));
    return '"' + doubled.toUtf8() + '"';
}

QByteArray Parser::textLiteral(QStringView text)
{
    QString doubled = text.toString();
    doubled.replace(u'\'', QStringLiteral("''"));
    return '\'' + doubled.toUtf8() + '\'';
}

QByteArray Parser::operand(const Expr &expr) { return expr.atomic ? expr.sql : '(' + expr.sql + ')'; }

QByteArray Parser::call(const char *function, const std::vector<Expr> &arguments)
{
    QByteArray sql = function;
    sql += '(';
    for (const Expr &argument : arguments) {
        if (!sql.endsWith('('))
            sql += ", ";
        sql += argument.sql;
    }
    return sql += ')';
}

int Parser::topCount()
{
    bool fits = false;
    const int count = peek().kind == Token::Kind::Integer ? peek().text.toInt(&fits) : 0;
    if (!fits)
        fail(QStringLiteral("TOP sin cantidad"));
    take();
    if (peek().isWord(u"percent"))
        unexpected();
    return count;
}

} // namespace db::sql
