#pragma once

#include "db/Engine.h"

#include <QStringList>

#include <optional>

namespace db::odbc {

/// How the values of a statement travel to the server.
enum class Passing {
    Bound, ///< as parameters of the driver, texts as wide characters
    /// Written into the statement, which every driver sends as wide characters. For FreeTDS: it has been seen to say
    /// that a row with a bound text outside its code page was stored when it was not.
    Written
};

/// What is opened.
struct Target {
    QString text; ///< for the driver; it holds the password: never shown, never logged
    QString server; ///< as the person knows it
    QString database;
    Passing passing = Passing::Bound;
};

/// An ODBC driver: its name as it was installed, or the path of its library.
struct Driver {
    QString name;
    bool freeTds = false;
};

/// "name", "name\instance", "name,port"; a "tcp:" before it is dropped.
struct Address {
    QString host;
    QString instance;
    QString port;
};
[[nodiscard]] Address addressOf(const QString &server);

/// The best driver for SQL Server among those installed: Microsoft's newest, else FreeTDS by name, else FreeTDS by its
/// library (Debian installs it without registering its name when unixODBC comes later). None: nothing is installed.
[[nodiscard]] std::optional<Driver> chooseDriver(const QStringList &installed, const QStringList &freeTdsLibraries);

/// Where a library of FreeTDS may lie on this system; only those that exist.
[[nodiscard]] QStringList freeTdsLibraries();

/// What the person is told when there is no driver: what to install.
[[nodiscard]] QString missingDriverText();

/// A value of a connection text, in braces where it needs them. FreeTDS takes what stands between "{" and "};" as it
/// is, every other driver wants a "}" doubled. Throws db::Error for the one value that FreeTDS cannot be given.
[[nodiscard]] QString quotedValue(const QString &value, bool freeTds = false);

/// From the connection string as it is described: "Data Source", "Initial Catalog", "User Id" or "UID", "Password" or
/// "PWD". Throws db::Error when it names no server, or a value that no driver can be given.
[[nodiscard]] Target targetOf(const ConnectionString &text, const Driver &driver);

} // namespace db::odbc
