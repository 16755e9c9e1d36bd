#include "db/odbc/SingleTable.h"

#include "db/Error.h"
#include "db/sql/Lexer.h"

#include <algorithm>

namespace db::odbc {

namespace {

using sql::Token;

std::vector<Token> tokensOf(const QString &statement)
{
    sql::LexerRules rules;
    rules.hashDates = false;
    rules.doubleQuotedText = false;
    rules.nationalText = true;
    rules.dollarNames = false;
    rules.dashComments = true;
    rules.symbols = u"%";
    try {
        return sql::tokenize(statement, rules);
    } catch (const Error &) {
        return {}; // the server will say what is wrong with it
    }
}

template <typename... Words>
bool isOneOf(const Token &token, Words... words)
{
    return (token.isWord(words) || ...);
}

bool isName(const Token &token)
{
    return token.kind == Token::Kind::Bracketed
        || (token.kind == Token::Kind::Name
            && !isOneOf(
                token,
                u"where",
                u"order",
                u"group",
                u"having",
                u"union",
                u"inner",
                u"left",
                u"right",
                u"full",
                u"cross",
                u"join",
                u"on",
                u"as"));
}

} // namespace

QString singleTable(const QString &sql)
{
    const std::vector<Token> tokens = tokensOf(sql);
    if (tokens.size() < 4 || !tokens[0].isWord(u"select") || isOneOf(tokens[1], u"distinct"))
        return {};

    // The words of the statement itself: what stands in a nested SELECT is not its own.
    std::vector<const Token *> own;
    std::vector<bool> nested;
    for (size_t i = 0; i < tokens.size(); ++i) {
        const bool inside = std::find(nested.begin(), nested.end(), true) != nested.end();
        if (tokens[i].isSymbol(u"(")) {
            nested.push_back(i + 1 < tokens.size() && tokens[i + 1].isWord(u"select"));
            continue;
        }
        if (tokens[i].isSymbol(u")")) {
            if (!nested.empty())
                nested.pop_back();
            continue;
        }
        if (inside)
            continue;
        if (isOneOf(tokens[i], u"count", u"sum", u"min", u"max", u"avg") && i + 1 < tokens.size()
            && tokens[i + 1].isSymbol(u"("))
            return {};
        if (nested.empty() || tokens[i].kind == Token::Kind::End)
            own.push_back(&tokens[i]);
    }

    const auto from = std::find_if(own.begin(), own.end(), [](const Token *t) { return t->isWord(u"from"); });
    if (from == own.end()
        || std::any_of(from, own.end(), [](const Token *t) { return isOneOf(*t, u"group", u"having", u"union"); }))
        return {};
    auto at = from + 1;
    if (at == own.end() || !isName(**at))
        return {};
    QString table = (*at++)->text;
    while (at + 1 < own.end() && (*at)->isSymbol(u".") && isName(**(at + 1))) {
        table = (*(at + 1))->text;
        at += 2;
    }
    if (at != own.end() && (*at)->isWord(u"as"))
        ++at;
    if (at != own.end() && isName(**at))
        ++at;
    return at == own.end() || (*at)->kind == Token::Kind::End || isOneOf(**at, u"where", u"order") ? table : QString();
}

} // namespace db::odbc
