#pragma once

#include "db/odbc/Target.h"

#include <QProcess>
#include <QTemporaryDir>

/// A PostgreSQL of the tests' own: its data in a folder that goes with it, on a free port of this computer, stopped at
/// the end. It cannot start: the tests fail.
class Postgres
{
public:
    Postgres();
    ~Postgres();

    [[nodiscard]] db::odbc::Target target(
        db::odbc::Passing passing,
        const QString &password = clave(),
        const QString &database = QStringLiteral("postgres")) const;
    [[nodiscard]] static QString clave() { return QStringLiteral("cl;ave}de=prueba"); }

    void stop();
    void start();

private:
    [[nodiscard]] QStringList asItsUser(const QStringList &command) const;
    void run(const QStringList &command) const;

    QTemporaryDir m_folder;
    QString m_programs;
    int m_port = 0;
    QProcess m_server;
};
