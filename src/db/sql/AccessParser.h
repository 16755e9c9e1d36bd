#pragma once

#include "db/sql/Parser.h"

namespace db::sql {

/// The Access dialect: iif, "&", hash dates, TRUE and FALSE, DISTINCTROW, and its functions by a list of those known.
class AccessParser final : public Parser
{
public:
    explicit AccessParser(QStringView statement);

protected:
    Translated statement() override;
    [[nodiscard]] Operator operatorAt(const Token &token) const override;
    Expr combine(Operator op, Expr left, Expr right, int position) override;
    Expr function(const Token &name) override;
    [[nodiscard]] bool isFunction(const Token &name) const override;
    std::optional<Expr> special(const Token &token) override;
    Expr conditionAsValue(Expr condition, int position) override;
    [[nodiscard]] bool allowsDistinctRow() const override { return true; }

private:
    Expr choice(const Token &name);
    Expr dateFunction(const QString &function, const Token &name);
    Expr formatFunction(const Token &name);
    Expr concatenate(Expr left, Expr right);
    Translated alterTable();
    QByteArray columnDeclaration();
};

} // namespace db::sql
