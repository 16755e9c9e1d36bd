#pragma once

#include "db/sql/Lexer.h"
#include "db/sql/Translate.h"

#include <QHash>
#include <QVector>

#include <optional>

namespace db::sql {

/// What is known of an expression's value before it is run.
enum class Kind { Unknown, Null, Text, Number, Date, Boolean };

/// An expression already rewritten.
struct Expr {
    QByteArray sql;
    Kind kind = Kind::Unknown;
    bool atomic = true; ///< stands as an operand without parentheses
    bool column = false; ///< a plain column: brings its own collation
    bool aggregate = false; ///< holds an aggregate
    std::optional<int> truth; ///< the literals true (-1) and false (0)
    std::optional<QString> literal; ///< value of a text literal
    QString name; ///< of a plain column, without its table
    QByteArray uncased; ///< the argument of ucase or lcase of a plain column
    std::vector<QByteArray> joined; ///< operands of a concatenation
};

/// Recursive descent over the SQL that both dialects share. It understands every word before it writes one: whatever it
/// does not know is a db::Error (Kind::Syntax). The dialects supply literals, operators, functions and statements.
class Parser
{
public:
    virtual ~Parser() = default;
    Parser(const Parser &) = delete;
    Parser &operator=(const Parser &) = delete;

    /// The one statement of the text, with at most one final ";".
    [[nodiscard]] Translated translate();

protected:
    struct Operator {
        char id = 0;
        int precedence = 0; ///< 0: not an operator
    };
    static constexpr int additive = 2, multiplicative = 10, unary = 20, power = 30;

    struct Output {
        QString name;
        Kind kind = Kind::Unknown;
        bool column = false;
    };
    struct Query {
        QByteArray sql;
        QVector<Output> outputs;
        QString singleTable;
        bool everything = false; ///< holds a "*"
    };
    struct Source {
        QString table;
        QString alias; ///< the name by which columns call it
        std::optional<QHash<QString, Kind>> derived;
    };

    Parser(QStringView statement, const LexerRules &rules);

    // What the dialects differ in.
    virtual Translated statement() = 0;
    [[nodiscard]] virtual Operator operatorAt(const Token &token) const = 0;
    virtual Expr combine(Operator op, Expr left, Expr right, int position);
    virtual Expr function(const Token &name) = 0;
    [[nodiscard]] virtual bool isFunction(const Token &name) const = 0;
    /// A word that begins an expression of this dialect only.
    virtual std::optional<Expr> special(const Token &) { return std::nullopt; }
    virtual int topCount();
    /// Type of a table's column; no value when the table has no such column, Unknown where the dialect does not ask.
    [[nodiscard]] virtual std::optional<Kind> columnKind(const QString &, const QString &) const
    {
        return Kind::Unknown;
    }
    /// Turns a literal into what its counterpart of the given kind needs.
    virtual void fit(Expr &, Kind, int) { }
    /// A condition as a value and a value as a condition, where the dialect has them.
    virtual Expr conditionAsValue(Expr condition, int position) = 0;
    virtual void checkCondition(const Expr &, int) { }
    virtual void checkNestedOrder(int) { }
    [[nodiscard]] virtual bool allowsDistinctRow() const { return false; }
    [[nodiscard]] virtual bool allowsPlainJoin() const { return false; }
    /// Reads the name of a table in a FROM; yields its SQL.
    virtual QByteArray tableReference(QString &name);

    // Words.
    [[nodiscard]] const Token &peek(int ahead = 0) const;
    Token take();
    bool accept(QStringView word);
    bool acceptSymbol(QStringView symbol);
    void expect(QStringView word);
    void expectSymbol(QStringView symbol);
    QString identifier();
    [[nodiscard]] bool atIdentifier() const;
    [[nodiscard]] static bool isReserved(const QString &word);
    [[noreturn]] void fail(const QString &what) const;
    [[noreturn]] void unexpected() const;
    [[nodiscard]] int position() const { return peek().position; }

    // Expressions.
    Expr expression();
    Expr value();
    Expr condition();
    std::vector<Expr> arguments(const Token &name, int least, int most);
    Expr aggregate(const Token &name);
    /// Makes the branches of a choice agree; the kind of the whole.
    Kind agree(const std::vector<Expr *> &branches, int position);
    static QByteArray operand(const Expr &expr);
    static QByteArray call(const char *function, const std::vector<Expr> &arguments);

    // Statements that both dialects write alike.
    /// `nested`: inside another statement's expression or FROM.
    Query query(bool nested);
    Translated select();
    Translated insert();
    Translated update();
    Translated deletion(bool starAllowed);
    Translated createIndex(bool unique);
    Translated drop();
    QByteArray indexName(const QString &table, const QString &index) const;
    static QByteArray withCollation(const Expr &expr);

    static QByteArray quoted(const QString &identifier);
    static QByteArray textLiteral(QStringView text);

    /// Nothing of ours nests deeper, and the machine's stack ends somewhere.
    class Depth
    {
    public:
        explicit Depth(Parser &parser);
        ~Depth() { --m_parser.m_depth; }
        Depth(const Depth &) = delete;
        Depth &operator=(const Depth &) = delete;

    private:
        Parser &m_parser;
    };

    std::vector<std::vector<Source>> m_scopes; ///< tables that a column may come from, innermost last

private:
    Expr disjunction();
    Expr conjunction();
    Expr negation();
    Expr comparison();
    Expr arithmetic(int least);
    Expr primary();
    Expr columnReference();
    Expr compare(const QString &op, Expr left, Expr right, int position);
    Expr membership(Expr left, bool negated);
    Expr range(Expr left, bool negated);
    Expr like(const Expr &left, bool negated);
    Expr scalarQuery();
    static QByteArray balanced(const std::vector<QByteArray> &terms, size_t from, size_t to, const char *joint);

    Query core(bool compound, std::optional<int> &top);
    /// One column of the select list, for the rule that a grouped query names no other.
    struct Item {
        QByteArray sql;
        QStringList columns; ///< outside aggregates and subselects
        int position = 0;
    };
    QByteArray outputs(Query &result, std::vector<Item> &items, bool collate, bool &aggregates);
    [[nodiscard]] size_t findAhead(QStringView word) const;
    QByteArray fromClause(QString &singleTable);
    QByteArray joinedSources(bool leftmost, QString &singleTable);
    QByteArray source(bool leftmost, QString &singleTable);
    QByteArray groupBy(const std::vector<Item> &items);
    void checkGrouping(const std::vector<Item> &items, const QStringList &columns, const QList<QByteArray> &groups);
    QByteArray orderBy(const Query &result);

    std::vector<Token> m_tokens;
    size_t m_at = 0;
    int m_depth = 0;
    int m_aggregates = 0; ///< aggregates that the word being read stands in
    QStringList *m_columns = nullptr; ///< where the columns of the item being read are noted
    std::vector<Kind> m_targets; ///< kinds of the columns that the next select list is inserted into
};

} // namespace db::sql
