#include "db/sql/Lexer.h"

#include "db/Error.h"

#include <QDate>
#include <QRegularExpression>
#include <QTime>

#include <algorithm>

namespace db::sql {

namespace {

constexpr int longestStatement = 4 * 1024 * 1024;

bool startsName(QChar c) { return c.isLetter() || c == u'_'; }

bool continuesName(QChar c) { return c.isLetterOrNumber() || c == u'_'; }

bool isDigit(QChar c) { return c >= u'0' && c <= u'9'; }

/// The stored form of a hash date's inside, or an empty text.
QString readHashDate(QStringView inside)
{
    static const QRegularExpression form(
        QStringLiteral("^\\s*(?:([0-9]{1,4})([/"
                       "-])([0-9]{1,2})\\2([0-9]{1,4}))?\\s*(?:([0-9]{1,2}):([0-9]{2})(?::([0-9]{2}))?)?\\s*$"));
    const auto m = form.match(inside);
    if (!m.hasMatch() || (m.capturedLength(1) == 0 && m.capturedLength(5) == 0))
        return {};

    QDate date(1899, 12, 30);
    if (m.capturedLength(1) > 0) {
        int first = m.capturedView(1).toInt(), second = m.capturedView(3).toInt(), third = m.capturedView(4).toInt();
        if (m.capturedLength(1) > 2) {
            if (m.capturedLength(1) != 4 || m.capturedLength(4) > 2)
                return {};
            date = QDate(first, second, third);
        } else {
            if (m.capturedLength(4) <= 2)
                third += third < 30 ? 2000 : 1900;
            else if (m.capturedLength(4) != 4)
                return {};
            // Month first, unless that month cannot be.
            if (first > 12)
                std::swap(first, second);
            date = QDate(third, first, second);
        }
    }
    QTime time(0, 0);
    if (m.capturedLength(5) > 0)
        time = QTime(m.capturedView(5).toInt(), m.capturedView(6).toInt(), m.capturedView(7).toInt());
    if (!date.isValid() || date.year() < 100 || date.year() > 9999 || !time.isValid())
        return {};
    return date.toString(QStringLiteral("yyyy-MM-dd ")) + time.toString(QStringLiteral("HH:mm:ss"));
}

class Lexer
{
public:
    Lexer(QStringView statement, const LexerRules &rules)
        : m_text(statement)
        , m_rules(rules)
    {
    }

    std::vector<Token> run()
    {
        if (m_text.size() > longestStatement)
            failSyntax(QStringLiteral("Instrucción demasiado larga"), 1);
        while (true) {
            while (m_at < m_text.size() && m_text[m_at].isSpace())
                ++m_at;
            Token token;
            token.position = int(m_at) + 1;
            if (m_at < m_text.size())
                read(token);
            const bool end = token.kind == Token::Kind::End;
            m_tokens.push_back(std::move(token));
            if (end)
                return std::move(m_tokens);
        }
    }

private:
    [[nodiscard]] QChar at(qsizetype i) const { return i < m_text.size() ? m_text[i] : QChar(); }

    void read(Token &token)
    {
        const QChar c = m_text[m_at];
        if (c == u'\'' || (c == u'"' && m_rules.doubleQuotedText)) {
            readText(token, c);
            // The server would read it in the code page of its own collation.
            if (m_rules.nationalText
                && std::any_of(token.text.cbegin(), token.text.cend(), [](QChar t) { return t.unicode() > 0x7e; }))
                failSyntax(QStringLiteral("Texto con letras propias del castellano sin N delante"), token.position);
        } else if (m_rules.nationalText && (c == u'N' || c == u'n') && at(m_at + 1) == u'\'') {
            ++m_at;
            readText(token, u'\'');
        } else if (c == u'[')
            readBracketed(token);
        else if (c == u'#' && m_rules.hashDates)
            readDate(token);
        else if (isDigit(c) || (c == u'.' && isDigit(at(m_at + 1))))
            readNumber(token);
        else if (startsName(c))
            readName(token);
        else if (c == u'?') {
            token.kind = Token::Kind::Parameter;
            token.parameter = ++m_parameters;
            ++m_at;
        } else
            readSymbol(token);
    }

    void readText(Token &token, QChar quote)
    {
        token.kind = Token::Kind::Text;
        for (++m_at; m_at < m_text.size(); ++m_at) {
            if (m_text[m_at].isNull())
                failSyntax(QStringLiteral("Carácter nulo en un texto"), int(m_at) + 1);
            if (m_text[m_at] == quote) {
                if (at(m_at + 1) != quote) {
                    ++m_at;
                    return;
                }
                ++m_at;
            }
            token.text += m_text[m_at];
        }
        failSyntax(QStringLiteral("Texto sin cerrar"), token.position);
    }

    void readBracketed(Token &token)
    {
        token.kind = Token::Kind::Bracketed;
        const qsizetype close = m_text.indexOf(u']', m_at);
        if (close < 0)
            failSyntax(QStringLiteral("Nombre sin cerrar"), token.position);
        const QStringView inside = m_text.mid(m_at + 1, close - m_at - 1);
        if (inside.trimmed().isEmpty() || inside.contains(u'[') || inside.contains(QChar()))
            failSyntax(QStringLiteral("Nombre inválido"), token.position);
        token.text = inside.toString();
        m_at = close + 1;
    }

    void readDate(Token &token)
    {
        token.kind = Token::Kind::Date;
        const qsizetype close = m_text.indexOf(u'#', m_at + 1);
        if (close > 0)
            token.text = readHashDate(m_text.mid(m_at + 1, close - m_at - 1));
        if (token.text.isEmpty())
            failSyntax(QStringLiteral("Fecha inválida"), token.position);
        m_at = close + 1;
    }

    void readNumber(Token &token)
    {
        const qsizetype start = m_at;
        token.kind = Token::Kind::Integer;
        while (isDigit(at(m_at)))
            ++m_at;
        if (at(m_at) == u'.') {
            token.kind = Token::Kind::Real;
            ++m_at;
            while (isDigit(at(m_at)))
                ++m_at;
        }
        if (at(m_at) == u'e' || at(m_at) == u'E') {
            const qsizetype sign = at(m_at + 1) == u'+' || at(m_at + 1) == u'-' ? 1 : 0;
            if (isDigit(at(m_at + 1 + sign))) {
                token.kind = Token::Kind::Real;
                m_at += 1 + sign;
                while (isDigit(at(m_at)))
                    ++m_at;
            }
        }
        if (continuesName(at(m_at)) || at(m_at) == u'.')
            failSyntax(QStringLiteral("Número inválido"), token.position);
        token.text = m_text.mid(start, m_at - start).toString();
        bool fits = false;
        (void)token.text.toLongLong(&fits);
        if (token.kind == Token::Kind::Integer && !fits)
            token.kind = Token::Kind::Real;
        if (token.kind == Token::Kind::Real) {
            const double value = token.text.toDouble(&fits);
            if (!fits)
                failSyntax(QStringLiteral("Número inválido"), token.position);
            token.text = QString::number(value, 'g', 17);
            if (!token.text.contains(u'.') && !token.text.contains(u'e'))
                token.text += QStringLiteral(".0");
        }
    }

    void readName(Token &token)
    {
        const qsizetype start = m_at;
        token.kind = Token::Kind::Name;
        while (continuesName(at(m_at)))
            ++m_at;
        if (m_rules.dollarNames && at(m_at) == u'$')
            ++m_at;
        token.text = m_text.mid(start, m_at - start).toString();
    }

    void readSymbol(Token &token)
    {
        static constexpr QStringView pairs[] = {u"<=", u">=", u"<>"};
        static constexpr QStringView common = u"(),.;=<>+-*/";
        token.kind = Token::Kind::Symbol;
        const QStringView two = m_text.mid(m_at, 2);
        if (two == u"/*" || (m_rules.dashComments && two == u"--"))
            failSyntax(QStringLiteral("Comentario"), token.position);
        for (const QStringView pair : pairs) {
            if (two == pair) {
                token.text = pair.toString();
                m_at += 2;
                return;
            }
        }
        const QChar c = m_text[m_at];
        if (!common.contains(c) && !m_rules.symbols.contains(c))
            failSyntax(QStringLiteral("Carácter inesperado \"%1\"").arg(c.isPrint() ? c : QChar(u' ')), token.position);
        token.text = c;
        ++m_at;
    }

    QStringView m_text;
    const LexerRules &m_rules;
    qsizetype m_at = 0;
    int m_parameters = 0;
    std::vector<Token> m_tokens;
};

} // namespace

std::vector<Token> tokenize(QStringView statement, const LexerRules &rules) { return Lexer(statement, rules).run(); }

void failSyntax(const QString &what, int position)
{
    // The number that the original driver gave for a statement it could not read.
    constexpr int syntaxError = int(0x80040E14);
    throw Error(
        Error::Kind::Syntax,
        syntaxError,
        QStringLiteral("Error de sintaxis en la instrucción: %1 (posición %2).").arg(what).arg(position));
}

} // namespace db::sql
