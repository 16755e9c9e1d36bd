#include "db/odbc/Target.h"

#include "db/Error.h"

#include <QDir>
#include <QFileInfo>
#include <QRegularExpression>

namespace db::odbc {

namespace {

/// "ODBC Driver 18 for SQL Server": 18; 0 for any other name.
int microsoftVersion(const QString &name)
{
    static const QRegularExpression pattern(QStringLiteral("^ODBC Driver (\\d+) for SQL Server$"));
    return pattern.match(name).captured(1).toInt();
}

/// The drivers that Windows has carried before those: the newer first.
int olderRank(const QString &name)
{
    static const QStringList known{
        QStringLiteral("SQL Server"),
        QStringLiteral("SQL Native Client"),
        QStringLiteral("SQL Server Native Client 10.0"),
        QStringLiteral("SQL Server Native Client 11.0")};
    return int(known.indexOf(name)) + 1;
}

void refuse(const QString &why) { throw Error(Error::Kind::CannotOpen, 0, why); }

} // namespace

Address addressOf(const QString &server)
{
    QString rest = server.trimmed();
    if (rest.startsWith(QLatin1String("tcp:"), Qt::CaseInsensitive))
        rest.remove(0, 4);
    Address address;
    if (const qsizetype comma = rest.indexOf(u','); comma >= 0) {
        address.port = rest.mid(comma + 1).trimmed();
        rest.truncate(comma);
    }
    if (const qsizetype slash = rest.indexOf(u'\\'); slash >= 0) {
        address.instance = rest.mid(slash + 1).trimmed();
        rest.truncate(slash);
    }
    address.host = rest.trimmed();
    // What people write for "here"; FreeTDS looks it up as a name.
    if (address.host == u"." || address.host.compare(u"(local)", Qt::CaseInsensitive) == 0)
        address.host = QStringLiteral("localhost");
    return address;
}

std::optional<Driver> chooseDriver(const QStringList &installed, const QStringList &freeTdsLibraries)
{
    QString best;
    for (const QString &name : installed)
        if (microsoftVersion(name) > microsoftVersion(best)
            || (microsoftVersion(best) == 0 && olderRank(name) > olderRank(best)))
            best = name;
    if (!best.isEmpty())
        return Driver{best, false};
    for (const QString &name : installed)
        if (name.compare(u"FreeTDS", Qt::CaseInsensitive) == 0)
            return Driver{name, true};
    if (!freeTdsLibraries.isEmpty())
        return Driver{freeTdsLibraries.first(), true};
    return {};
}

QStringList freeTdsLibraries()
{
    QStringList found;
#ifndef Q_OS_WIN
    const QString name = QStringLiteral("libtdsodbc.so");
    const QDir multiarch(QStringLiteral("/usr/lib"), QStringLiteral("*-linux-*"), QDir::Name, QDir::Dirs);
    QStringList folders;
    for (const QString &folder : multiarch.entryList())
        folders << multiarch.filePath(folder) + QStringLiteral("/odbc") << multiarch.filePath(folder);
    folders << QStringLiteral("/usr/lib64") << QStringLiteral("/usr/lib") << QStringLiteral("/usr/local/lib");
    for (const QString &folder : std::as_const(folders))
        if (QFileInfo::exists(folder + u'/' + name))
            found << folder + u'/' + name;
#endif
    return found;
}

QString missingDriverText()
{
#ifdef Q_OS_WIN
    return QStringLiteral("Falta el controlador para conectarse a SQL Server. Instale en esta computadora \"Microsoft "
                          "ODBC Driver 18 for SQL Server\" y vuelva a intentar.");
#else
    return QStringLiteral("Falta el controlador para conectarse a SQL Server. Instale en esta computadora los paquetes "
                          "\"tdsodbc\" y \"unixodbc\" y vuelva a intentar.");
#endif
}

QString quotedValue(const QString &value, bool freeTds)
{
    static const QRegularExpression special(QStringLiteral("[\\[\\]{}(),;?*=!@]|^\\s|\\s$"));
    // A NUL would end the text for the driver, and with it what comes after.
    if (value.contains(QChar(u'\0')) || (freeTds && value.contains(QLatin1String("};"))))
        refuse(
            QStringLiteral("Los datos de conexión al servidor tienen caracteres que el controlador no admite (\"};\"): "
                           "cambie la clave del usuario del servidor."));
    if (!special.match(value).hasMatch())
        return value;
    return u'{' + (freeTds ? value : QString(value).replace(u'}', QLatin1String("}}"))) + u'}';
}

Target targetOf(const ConnectionString &text, const Driver &driver)
{
    const auto either = [&text](QStringView one, QStringView other) {
        const QString value = text.value(one);
        return value.isEmpty() ? text.value(other) : value;
    };
    Target target;
    target.server = text.value(u"Data Source");
    target.database = text.value(u"Initial Catalog");
    target.passing = driver.freeTds ? Passing::Written : Passing::Bound;
    const Address address = addressOf(target.server);
    if (address.host.isEmpty())
        refuse(QStringLiteral("No está indicado el servidor de base de datos: complételo en el menú 'Red' del "
                              "programa."));
    static const QRegularExpression foreign(QStringLiteral("[;{}=\\x00]"));
    static const QRegularExpression number(QStringLiteral("^\\d{0,5}$"));
    if (foreign.match(target.server).hasMatch() || !number.match(address.port).hasMatch())
        refuse(QStringLiteral("El nombre del servidor o de la instancia no es válido: corríjalo en el menú 'Red' del "
                              "programa."));

    const auto add = [&target](QLatin1String key, const QString &value) { target.text += key + u'=' + value + u';'; };
    const auto quoted = [&driver](const QString &value) { return quotedValue(value, driver.freeTds); };
    // The driver manager takes its driver's name with or without braces, a path only without.
    add(QLatin1String("DRIVER"), driver.name.contains(u'/') ? driver.name : u'{' + driver.name + u'}');
    if (driver.freeTds) {
        // With a port the instance is not looked up; without either the usual port is meant.
        add(QLatin1String("Server"),
            address.instance.isEmpty() || !address.port.isEmpty() ? address.host
                                                                  : address.host + u'\\' + address.instance);
        if (address.instance.isEmpty() || !address.port.isEmpty())
            add(QLatin1String("Port"), address.port.isEmpty() ? QStringLiteral("1433") : address.port);
        add(QLatin1String("TDS_Version"), QStringLiteral("7.4"));
        add(QLatin1String("ClientCharset"), QStringLiteral("UTF-8"));
        // Encrypted wherever the server can: the login always, and what the server asks for.
        add(QLatin1String("Encryption"), QStringLiteral("request"));
    } else {
        QString server = address.host;
        if (!address.port.isEmpty())
            server += u',' + address.port;
        else if (!address.instance.isEmpty())
            server += u'\\' + address.instance;
        add(QLatin1String("Server"), server);
        // A practice's server signs its own certificate: traffic is encrypted with it, unverified.
        if (microsoftVersion(driver.name) > 0) {
            add(QLatin1String("Encrypt"), QStringLiteral("yes"));
            add(QLatin1String("TrustServerCertificate"), QStringLiteral("yes"));
        }
    }
    add(QLatin1String("Database"), quoted(target.database));
    add(QLatin1String("UID"), quoted(either(u"User Id", u"UID")));
    add(QLatin1String("PWD"), quoted(either(u"Password", u"PWD")));
    add(QLatin1String("APP"), QStringLiteral("Vastelo"));
    return target;
}

} // namespace db::odbc
