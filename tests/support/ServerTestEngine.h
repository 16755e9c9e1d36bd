#pragma once

#include "db/engine/EmbeddedEngine.h"

namespace soporte {

struct ServerStatement;

/// Stands for the server in tests: takes the server's SQL and nothing else (see ServerParser), and executes it on an
/// embedded file. Anything the server would refuse is a db::Error (Kind::Syntax).
class ServerTestEngine final : public db::EmbeddedEngine
{
public:
    ServerTestEngine(const QString &path, const QString &password, Opening opening = Opening::ReadWrite);

    [[nodiscard]] db::Dialect::Kind dialect() const override { return db::Dialect::Kind::SqlServer; }
    [[nodiscard]] db::Rows query(const QString &sql, const db::Params &params) override;
    int execute(const QString &sql, const db::Params &params) override;
    void createTable(const db::Table &table) override;
    void addColumn(const QString &table, const db::Column &column) override;
    [[nodiscard]] QString singleTable(const QString &sql) override;
    [[nodiscard]] db::Rows search(const QString &, const db::Conditions &, const QStringList &) override { return {}; }

private:
    [[nodiscard]] ServerStatement parse(const QString &sql);

    void checkDrop(const QString &table, const QString &name);

    QStringList m_freed; ///< default values dropped so that their columns may go
};

} // namespace soporte
