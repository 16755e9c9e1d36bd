#pragma once

#include "db/Connection.h"
#include "db/engine/EmbeddedEngine.h"

#include <QTemporaryDir>

/// A new database file in a folder that goes with it.
class Base
{
public:
    Base() { db::createDatabaseFile(ruta(), clave()); }

    [[nodiscard]] QString ruta() const { return m_folder.filePath(QStringLiteral("Datos.mdb")); }
    [[nodiscard]] static QString clave() { return QStringLiteral("kestrel428"); }
    [[nodiscard]] std::unique_ptr<db::Connection> abrir() const
    {
        return std::make_unique<db::Connection>(std::make_unique<db::EmbeddedEngine>(ruta(), clave()));
    }

private:
    QTemporaryDir m_folder;
};
