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
};

/// The SQL Server dialect, as strict as the server is: no word of Access passes, dates come as 'yyyymmdd hh:nn', a flag
/// is no condition, a number and a text are not joined unless converted.
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
    Expr conditionAsValue(Expr condition, int position) override;
    void checkCondition(const Expr &expr, int position) override;
    void checkNestedOrder(int position) override;
    [[nodiscard]] bool allowsPlainJoin() const override { return true; }
    QByteArray tableReference(QString &name) override;

private:
    Expr caseExpression();
    Expr formatFunction(const Token &name);
    Expr dateFunction(const QString &function, const Token &name);
    Expr conversion(bool cast);
    Expr simple(const QString &function, const Token &name);
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
