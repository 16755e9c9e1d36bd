#pragma once

#include "db/Schema.h"
#include "db/sql/Parser.h"

#include <functional>

namespace soporte {

/// A statement of the server as the test engine carries it out.
struct ServerStatement {
    db::sql::Translated native;
    /// "IF [NOT] EXISTS (...)" in front of it: the condition, in the engine's SQL.
    QByteArray condition;
    std::optional<db::Table> newTable;
    QString addTo;
    QVector<db::Column> newColumns;
    /// What a "?" is compared with or written into: of which kind its value has to be.
    struct Parameter {
        int number = 0; ///< from 1
        db::sql::Kind kind = db::sql::Kind::Unknown;
        bool compared = false; ///< not written
        bool bit = false; ///< compared with one
    };
    std::vector<Parameter> parameters;
    /// "ALTER TABLE [t] DROP CONSTRAINT c" and "DROP COLUMN c".
    QString dropFrom, droppedConstraint, droppedColumn;
};

/// The SQL Server dialect, as strict as the oldest server that is to be served (2008) and a table that Access copied
/// there: no word of Access passes, nothing that a later version brought, dates come as 'yyyymmdd hh:nn', a flag is 1
/// or 0 and no condition, a number and a text are neither joined nor compared unless converted, a long text may be
/// "ntext".
class ServerParser final : public db::sql::Parser
{
public:
    using Lookup = std::function<QVector<db::Column>(const QString &table)>;

    ServerParser(QStringView statement, Lookup lookup);

    [[nodiscard]] ServerStatement parse();

protected:
    using Expr = db::sql::Expr;
    using Kind = db::sql::Kind;
    using Token = db::sql::Token;

    db::sql::Translated statement() override;
    [[nodiscard]] Operator operatorAt(const Token &token) const override;
    Expr combine(Operator op, Expr left, Expr right, int position) override;
    Expr function(const Token &name) override;
    [[nodiscard]] bool isFunction(const Token &name) const override;
    std::optional<Expr> special(const Token &token) override;
    int topCount() override;
    [[nodiscard]] std::optional<Kind> columnKind(const QString &table, const QString &column) const override;
    void fit(Expr &expr, Kind kind, int position) override;
    void describe(Expr &expr, const QString &table) override;
    void unknownColumn(const QString &name, int position) override;
    [[nodiscard]] bool reserves(const QString &word) const override;
    Expr suffix(Expr operand) override;
    void use(Use use, const Expr &expr, int position) override;
    void pair(Expr &left, Expr &right, int position) override;
    void liked(const Expr &left, const Expr &pattern, int position) override;
    void assigned(const QString &table, const QString &column, Expr &value, int position, bool isNew) override;
    [[nodiscard]] QByteArray scalar(const Query &inner) override;
    Expr conditionAsValue(Expr condition, int position) override;
    void checkCondition(const Expr &expr, int position) override;
    void checkNestedOrder(int position) override;
    [[nodiscard]] bool allowsPlainJoin() const override { return true; }
    QByteArray tableReference(QString &name) override;

private:
    /// What is known of a column beyond its kind; above them the size of a text.
    enum Trait { Bit = 1, Long = 2, Whole = 4, Inexact = 8, Collated = 16, Money = 32, SizeFactor = 64 };

    [[nodiscard]] const db::Column *columnOf(const QString &table, const QString &column) const;
    [[nodiscard]] const QVector<db::Column> &columnsOf(const QString &table) const;
    void wants(const Expr &parameter, Kind kind, bool compared, bool bit = false);
    Expr caseExpression();
    Expr dateFunction(const QString &function, const Token &name);
    Expr conversion(bool cast);
    Expr simple(const QString &function, const Token &name);
    void refuseLong(const std::vector<Expr> &arguments, const Token &name);
    /// What a choice yields, by the server's order of types: dates, numbers, texts.
    Kind unify(std::vector<Expr *> branches, int position);
    db::sql::Translated guarded();
    db::sql::Translated create();
    db::sql::Translated alter();
    void tableBody(db::Table &table);
    db::Column columnDefinition(db::Table &table);
    db::Type columnType(int &size);
    int number();
    void primaryKey();

    Lookup m_lookup;
    mutable QHash<QString, QVector<db::Column>> m_tables;
    ServerStatement m_result;
};

} // namespace soporte
