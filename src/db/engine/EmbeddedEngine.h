#pragma once

#include "db/Engine.h"
#include "db/sql/Translate.h"

#include <QHash>

#include <list>
#include <map>

struct sqlite3;
struct sqlite3_stmt;

namespace db {

class SearchIndex;

/// Makes a new, empty database file in the format of the embedded engine. Throws db::Error when the file exists or
/// cannot be written.
void createDatabaseFile(const QString &path, const QString &password);

/// Name and version of the embedded engine, for the about box.
[[nodiscard]] QString embeddedEngineVersion();

/// The embedded engine: one encrypted file (SQLCipher 4 format: AES-256 pages of 4096 bytes, HMAC-SHA512, key from
/// PBKDF2-HMAC-SHA512 with 256,000 rounds over the file's salt), Access SQL in, several stations on one file. Rollback
/// journal and full synchronisation; a station waits up to ten seconds for another's write.
class EmbeddedEngine : public Engine
{
public:
    enum class Opening { ReadWrite, ReadOnly };

    /// Opens an existing file; throws db::Error (CannotOpen, NotADatabase). A file that may not be written opens
    /// read-only all the same: readOnly() tells.
    EmbeddedEngine(const QString &path, const QString &password, Opening opening = Opening::ReadWrite);
    ~EmbeddedEngine() override;
    EmbeddedEngine(const EmbeddedEngine &) = delete;
    EmbeddedEngine &operator=(const EmbeddedEngine &) = delete;

    [[nodiscard]] Dialect::Kind dialect() const override { return Dialect::Kind::Access; }
    [[nodiscard]] Rows query(const QString &sql, const Params &params) override;
    int execute(const QString &sql, const Params &params) override;
    [[nodiscard]] qint64 insertedId() override;
    void begin() override;
    void commit() override;
    void rollback() override;
    [[nodiscard]] QString singleTable(const QString &sql) override;
    [[nodiscard]] QStringList tableNames() override;
    [[nodiscard]] QVector<Column> columns(const QString &table) override;
    void createTable(const Table &table) override;
    void addColumn(const QString &table, const Column &column) override;
    [[nodiscard]] Rows search(const QString &table, const Conditions &conditions, const QStringList &columns) override;
    void prepareSearch(const Table &table) override;
    [[nodiscard]] bool moved() const override;
    [[nodiscard]] bool readOnly() const override;
    [[nodiscard]] std::optional<EmbeddedFile> embeddedFile() const override { return m_file; }
    void setBusyWait(int milliseconds) override;

    /// The same with text in the engine's own SQL, for what stands above another dialect.
    [[nodiscard]] Rows queryNative(const QByteArray &sql, const Params &params);
    int executeNative(const QByteArray &sql, const Params &params);
    /// Walks through a result too long to be held whole.
    void walkNative(const QByteArray &sql, const Params &params, const std::function<void(sqlite3_stmt *)> &row);
    [[nodiscard]] bool inTransaction() const;

    /// The raw handle, for measurements and the online copy.
    [[nodiscard]] sqlite3 *handle() const { return m_database; }
    /// The failure that a call on the handle ended with, as an error of ours.
    [[noreturn]] void fail(int code, const QByteArray &sql = {}) const;

private:
    struct Prepared {
        QByteArray text;
        sqlite3_stmt *statement;
    };
    [[nodiscard]] const sql::Translated &translated(const QString &sql);
    [[nodiscard]] sqlite3_stmt *prepare(const QByteArray &sql);
    void bind(sqlite3_stmt *statement, const Params &params);
    void finalizeAll();
    [[nodiscard]] QByteArray salt() const;

    EmbeddedFile m_file;
    sqlite3 *m_database = nullptr;
    std::list<Prepared> m_statements; ///< most recently used first
    QHash<QByteArray, std::list<Prepared>::iterator> m_byText;
    QHash<QString, sql::Translated> m_translations;
    std::map<QString, std::unique_ptr<SearchIndex>> m_searches; ///< by table
};

} // namespace db
