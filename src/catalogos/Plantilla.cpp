#include "catalogos/Catalogos.h"

#include "db/Connection.h"
#include "db/Error.h"
#include "db/engine/EmbeddedEngine.h"

#include <QFile>

#include <filesystem>

namespace catalogos {

void crearPlantilla(const QString &path, const QString &password, const db::Schema &schema, const QString &folder)
{
    // Written beside its place and renamed: an interrupted run leaves no half-made database under the real name.
    const QString unfinished = path + QStringLiteral(".nueva");
    QFile::remove(unfinished);
    db::createDatabaseFile(unfinished, password);
    {
        const auto connection = db::Connection::open(
            QStringLiteral("Provider=Microsoft.Jet.OLEDB.4.0; Jet OLEDB:Database Password=%1"
                           ";Data Source=%2")
                .arg(password, unfinished),
            db::Engines::standard());
        db::Transaction transaction(*connection);
        for (const db::Table &table : schema.tables)
            connection->createTable(table);
        cargar(*connection, folder);
        transaction.commit();
    }
    std::error_code code;
    std::filesystem::rename(unfinished.toStdU16String(), path.toStdU16String(), code);
    if (code)
        throw db::Error(
            db::Error::Kind::CannotOpen, code.value(), QStringLiteral("No se puede escribir %1.").arg(path));
}

} // namespace catalogos
