#include "odbc/Postgres.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QThread>

#include <arpa/inet.h>
#include <csignal>
#include <sys/socket.h>
#include <unistd.h>

namespace {

int freePort()
{
    const int probe = ::socket(AF_INET, SOCK_STREAM, 0);
    sockaddr_in place{};
    place.sin_family = AF_INET;
    place.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    socklen_t size = sizeof place;
    ::bind(probe, reinterpret_cast<sockaddr *>(&place), size);
    ::getsockname(probe, reinterpret_cast<sockaddr *>(&place), &size);
    ::close(probe);
    return ntohs(place.sin_port);
}

QString programs()
{
    QDir versions(QStringLiteral("/usr/lib/postgresql"));
    const QStringList all = versions.entryList(QDir::Dirs | QDir::NoDotAndDotDot, QDir::Name | QDir::Reversed);
    if (all.isEmpty())
        qFatal("postgresql is not installed");
    return versions.filePath(all.first()) + QStringLiteral("/bin/");
}

QString driver()
{
    const QDir libraries(QStringLiteral("/usr/lib"));
    for (const QString &folder : libraries.entryList({QStringLiteral("*-linux-*")}, QDir::Dirs))
        if (const QString path = libraries.filePath(folder) + QStringLiteral("/odbc/psqlodbcw.so"); QFile::exists(path))
            return path;
    qFatal("odbc-postgresql is not installed");
}

} // namespace

Postgres::Postgres()
    : m_programs(programs())
    , m_port(freePort())
{
    QFile::setPermissions(m_folder.path(), QFile::Permissions(0x7055));
    const QString data = m_folder.filePath(QStringLiteral("datos"));
    const QString password = m_folder.filePath(QStringLiteral("clave"));
    QDir().mkpath(data);
    QFile file(password);
    if (!file.open(QIODevice::WriteOnly) || file.write(clave().toUtf8() + '\n') < 0)
        qFatal("no room for the tests' server");
    file.close();
    // The server does not run as root.
    if (::geteuid() == 0
        && QProcess::execute(
               QStringLiteral("chown"), {QStringLiteral("-R"), QStringLiteral("postgres"), m_folder.path()})
            != 0)
        qFatal("no user for the tests' server");
    run(
        {m_programs + QStringLiteral("initdb"),
         QStringLiteral("-D"),
         data,
         QStringLiteral("-U"),
         QStringLiteral("prueba"),
         QStringLiteral("-A"),
         QStringLiteral("scram-sha-256"),
         QStringLiteral("--pwfile"),
         password,
         QStringLiteral("-E"),
         QStringLiteral("UTF8"),
         QStringLiteral("--locale=C.UTF-8"),
         QStringLiteral("-N")});
    start();
}

Postgres::~Postgres() { stop(); }

QStringList Postgres::asItsUser(const QStringList &command) const
{
    // It ends with this program, however that ends.
    QStringList all{QStringLiteral("--pdeathsig"), QStringLiteral("QUIT")};
    if (::geteuid() == 0)
        all << QStringLiteral("--reuid=postgres") << QStringLiteral("--regid=postgres")
            << QStringLiteral("--clear-groups");
    return all + command;
}

void Postgres::run(const QStringList &command) const
{
    QProcess process;
    process.setWorkingDirectory(m_folder.path());
    process.start(QStringLiteral("setpriv"), asItsUser(command));
    if (!process.waitForFinished(120000) || process.exitCode() != 0)
        qFatal("%s: %s", qPrintable(command.first()), process.readAllStandardError().constData());
}

void Postgres::start()
{
    m_server.setWorkingDirectory(m_folder.path());
    m_server.setStandardErrorFile(m_folder.filePath(QStringLiteral("registro")));
    m_server.start(
        QStringLiteral("setpriv"),
        asItsUser(
            {m_programs + QStringLiteral("postgres"),
             QStringLiteral("-D"),
             m_folder.filePath(QStringLiteral("datos")),
             QStringLiteral("-p"),
             QString::number(m_port),
             QStringLiteral("-k"),
             m_folder.path(),
             QStringLiteral("-c"),
             QStringLiteral("listen_addresses=127.0.0.1"),
             QStringLiteral("-c"),
             QStringLiteral("fsync=off")}));
    QElapsedTimer waited;
    waited.start();
    while (QProcess::execute(
               m_programs + QStringLiteral("pg_isready"),
               {QStringLiteral("-q"),
                QStringLiteral("-h"),
                QStringLiteral("127.0.0.1"),
                QStringLiteral("-p"),
                QString::number(m_port)})
           != 0) {
        if (waited.hasExpired(60000))
            qFatal("the tests' server did not start");
        QThread::msleep(100);
    }
}

void Postgres::stop()
{
    if (m_server.state() == QProcess::NotRunning)
        return;
    ::kill(pid_t(m_server.processId()), SIGINT); // without waiting for its clients
    if (!m_server.waitForFinished(20000))
        m_server.kill();
}

db::odbc::Target Postgres::target(db::odbc::Passing passing, const QString &password, const QString &database) const
{
    db::odbc::Target target;
    target.server = QStringLiteral("127.0.0.1");
    target.database = database;
    target.passing = passing;
    target.text = QStringLiteral("DRIVER=%1;Server=127.0.0.1;Port=%2;Database=%3;UID=prueba;PWD=%4;BoolsAsChar=0;"
                                 "ByteaAsLongVarBinary=1;MaxLongVarcharSize=0;")
                      .arg(driver(), QString::number(m_port), database, db::odbc::quotedValue(password));
    return target;
}
