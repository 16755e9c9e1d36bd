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
    int parameter = 0; ///< number of the "?" that it is
    int traits = 0; ///< of a plain column: what the dialect noted in describe()
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
        bool named = true;
        QByteArray sql;
        int traits = 0;
    };
    struct Query {
        QByteArray sql;
        QVector<Output> outputs;
        QString singleTable;
        bool everything = false; ///< holds a "*"
        bool distinct = false;
        bool oneRow = false; ///< never yields more
        /// Columns and expressions of GROUP BY; none for aggregates over everything, no value without aggregates.
        std::optional<QList<QByteArray>> groups;
    };
    struct Source {
        QString table;
        QString alias; ///< the name by which columns call it
        std::optional<QHash<QString, Kind>> derived;
    };

    Parser(QStringView statement, const LexerRules &rules);

    /// What a value or condition is used for where one of the dialects takes fewer than the other.
    enum class Use {
        Order, ///< a column or expression of ORDER BY
        OrderNotSelected, ///< one that a SELECT DISTINCT does not show
        OrderNotGrouped, ///< one that a grouped query does not group by
        OrderTwice,
        OrderAmbiguous, ///< a name that the list shows twice
        OrderByInnerAlias, ///< a column's new name inside an expression
        Group,
        GroupConstant, ///< a GROUP BY without a column
        GroupedSubquery, ///< a subquery inside GROUP BY or an aggregate
        HavingNotGrouped,
        Distinct, ///< a column of SELECT DISTINCT or UNION
        UnionOfKinds, ///< columns of a UNION that are of different kinds
        Unnamed, ///< a computed column without a name in a FROM
        RepeatedName, ///< two columns of one name in a FROM
        Sum, ///< SUM and AVG
        Average,
        Extreme, ///< MIN and MAX
        Signed
    };

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
    /// Of a column just found in a table of the catalog.
    virtual void describe(Expr &, const QString & /*table*/) { }
    /// A column that no table of the statement has.
    virtual void unknownColumn(const QString &, int) { }
    [[nodiscard]] virtual bool reserves(const QString &word) const { return isReserved(word); }
    /// What may follow an operand.
    virtual Expr suffix(Expr operand) { return operand; }
    /// Refuses what the dialect does not take.
    virtual void use(Use, const Expr &, int) { }
    /// Two values about to be compared.
    virtual void pair(Expr &, Expr &, int) { }
    virtual void liked(const Expr &, const Expr & /*pattern*/, int) { }
    /// A value about to be written into a column.
    virtual void assigned(const QString &table, const QString &column, Expr &value, int position, bool isNew);
    /// A subquery as a value.
    [[nodiscard]] virtual QByteArray scalar(const Query &inner) { return '(' + inner.sql + ')'; }
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
    struct Target {
        QString table, column;
    };

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
    QByteArray groupBy(const std::vector<Item> &items, QList<QByteArray> &groups);
    void checkGrouping(const std::vector<Item> &items, const QStringList &columns, const QList<QByteArray> &groups);
    void checkSources(const Query &inner, int position);
    void checkOrder(const Query &result, const Expr &expr, bool selected, int position);
    QByteArray orderBy(const Query &result);

    std::vector<Token> m_tokens;
    size_t m_at = 0;
    int m_depth = 0;
    int m_aggregates = 0; ///< aggregates that the word being read stands in
    QStringList *m_columns = nullptr; ///< where the columns of the item being read are noted
    std::vector<Target> m_targets; ///< columns that the next select list is inserted into
    bool m_grouping = false; ///< inside GROUP BY
    const Query *m_ordered = nullptr; ///< whose ORDER BY is being read
    bool m_aliasUsed = false; ///< by the term of ORDER BY being read
};

} // namespace db::sql
