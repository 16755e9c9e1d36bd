#pragma once

#include "db/Error.h"
#include "db/sql/Functions.h"
#include "db/sql/Translate.h"

#include <QStringList>

#include <sqlite3.h>

/// An in-memory engine that runs Access statements, with each row as one text: columns joined by "|", Null as "NULL".
class SqlMemoria
{
public:
    SqlMemoria()
    {
        sqlite3_open(":memory:", &m_database);
        db::sql::registerFunctions(m_database);
    }
    ~SqlMemoria() { sqlite3_close(m_database); }
    SqlMemoria(const SqlMemoria &) = delete;
    SqlMemoria &operator=(const SqlMemoria &) = delete;

    /// In the engine's own SQL. A failure is a row that begins with "ERROR".
    QStringList native(const QByteArray &sql, const QStringList &parameters = {})
    {
        QStringList rows;
        sqlite3_stmt *statement = nullptr;
        const char *tail = nullptr;
        if (sqlite3_prepare_v2(m_database, sql.constData(), -1, &statement, &tail) != SQLITE_OK)
            return {
                QStringLiteral("ERROR ") + QString::fromUtf8(sqlite3_errmsg(m_database)) + u' '
                + QString::fromUtf8(sql)};
        if (*tail != 0)
            rows << QStringLiteral("ERROR more than one statement");
        for (int i = 0; i < parameters.size(); ++i) {
            const QByteArray value = parameters[i].toUtf8();
            sqlite3_bind_text(statement, i + 1, value.constData(), int(value.size()), SQLITE_TRANSIENT);
        }
        int step = 0;
        while ((step = sqlite3_step(statement)) == SQLITE_ROW) {
            QStringList cells;
            for (int i = 0; i < sqlite3_column_count(statement); ++i) {
                const auto *text = reinterpret_cast<const char *>(sqlite3_column_text(statement, i));
                cells << (text ? QString::fromUtf8(text) : QStringLiteral("NULL"));
            }
            rows << cells.join(u'|');
        }
        if (step != SQLITE_DONE)
            rows << QStringLiteral("ERROR ") + QString::fromUtf8(sqlite3_errmsg(m_database));
        sqlite3_finalize(statement);
        return rows;
    }

    /// In the Access dialect.
    QStringList run(const QString &sql, const QStringList &parameters = {})
    {
        return native(db::sql::fromAccess(sql).text, parameters);
    }
    /// Of an expression alone.
    QString value(const QString &expression) { return run(QStringLiteral("SELECT ") + expression).join(u'\n'); }

    [[nodiscard]] sqlite3 *handle() const { return m_database; }

private:
    sqlite3 *m_database = nullptr;
};
