#pragma once

#include "db/engine/EmbeddedEngine.h"
#include "support/ServerParser.h"

namespace soporte {

/// Stands for the server in tests: takes the server's SQL and nothing else (see ServerParser), and executes it on an
/// embedded file. Anything the server would refuse is a db::Error (Kind::Syntax). The files of its folder are the
/// server's databases, "master.mdb" the one from which others are made and removed.
class ServerTestEngine : public db::EmbeddedEngine, private ServerCatalog
{
public:
    ServerTestEngine(const QString &path, const QString &password, Opening opening = Opening::ReadWrite);

    [[nodiscard]] db::Dialect::Kind dialect() const override { return db::Dialect::Kind::SqlServer; }
    [[nodiscard]] db::Rows query(const QString &sql, const db::Params &params) override;
    int execute(const QString &sql, const db::Params &params) override;
    int executeBatch(const QString &sql, const std::vector<db::Params> &rows) override;
    void createTable(const db::Table &table) override;
    void addColumn(const QString &table, const db::Column &column) override;
    [[nodiscard]] QString singleTable(const QString &sql) override;
    [[nodiscard]] db::Rows search(const QString &, const db::Conditions &, const QStringList &) override { return {}; }

private:
    [[nodiscard]] ServerStatement parse(const QString &sql);
    int run(const ServerStatement &statement, const db::Params &params);
    void carryOut(const ServerErrand &errand);
    void setDefault(const ServerErrand &errand);
    void orderRows(const QString &table);
    void checkIdentity(const ServerStatement &statement);
    [[nodiscard]] QString baseFile(const QString &base) const;
    [[nodiscard]] QString folder() const;
    void checkDrop(const QString &table, const QString &name);

    // ServerCatalog
    [[nodiscard]] QVector<db::Column> columnsOf(const QString &table) override { return columns(table); }
    [[nodiscard]] QStringList bases() override;
    [[nodiscard]] QString collationOf(const QString &base) override;

    QString m_identityInsert; ///< table whose counter may be given
    QStringList m_freed; ///< default values dropped so that their columns may go
};

} // namespace soporte
