#pragma once

#include <QString>

#include <vector>

namespace db::sql {

/// One word of a statement.
struct Token {
    enum class Kind {
        End,
        Name, ///< bare word: identifier, keyword or function, perhaps with a final "$"
        Bracketed, ///< [identifier], the brackets taken off
        Text, ///< text literal, quotes taken off and undoubled
        Date, ///< hash date; `text` holds it in the stored form
        Integer,
        Real,
        Symbol,
        Parameter ///< "?"
    };

    Kind kind = Kind::End;
    QString text;
    int position = 0; ///< of its first character, from 1
    int parameter = 0; ///< number of a Parameter, from 1

    [[nodiscard]] bool isSymbol(QStringView symbol) const { return kind == Kind::Symbol && text == symbol; }
    /// Without regard to case; never true of a bracketed identifier.
    [[nodiscard]] bool isWord(QStringView word) const
    {
        return kind == Kind::Name && text.compare(word, Qt::CaseInsensitive) == 0;
    }
};

/// What the dialects' words differ in.
struct LexerRules {
    bool hashDates = true; ///< #mm/dd/yyyy#
    bool doubleQuotedText = true; ///< "text"
    bool nationalText = false; ///< N'text', without which a text is plain ASCII
    bool dollarNames = true; ///< ucase$
    bool dashComments = false; ///< "--" begins a comment, and is therefore refused
    QStringView symbols; ///< one-character symbols beyond the common ones
};

/// Cuts a statement into words, ending with Kind::End. Throws db::Error (Kind::Syntax) at what is none, comments
/// included: no statement of ours holds one.
[[nodiscard]] std::vector<Token> tokenize(QStringView statement, const LexerRules &rules);

/// Throws the db::Error of a statement that was not understood: "... (posición n)".
[[noreturn]] void failSyntax(const QString &what, int position);

} // namespace db::sql
