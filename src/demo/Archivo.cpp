#include "demo/Archivo.h"

#include "db/Connection.h"

#include <QFile>
#include <QFileInfo>

namespace demo {

bool crearArchivo(const QString &plantilla, const QString &destino, const Medida &medida, const Avance &avance)
{
    if (QFileInfo::exists(destino))
        return false;
    const QString nuevo = destino + QStringLiteral(".nuevo");
    QFile::remove(nuevo);
    if (!QFile::copy(plantilla, nuevo))
        return false;
    QFile::setPermissions(nuevo, QFile::permissions(nuevo) | QFile::ReadOwner | QFile::WriteOwner);
    {
        const auto conexion = db::Connection::open(
            QStringLiteral("Provider=Microsoft.Jet.OLEDB.4.0; Jet OLEDB:Database Password=kestrel428;Data Source=")
                + nuevo,
            db::Engines::standard());
        llenar(*conexion, medida, avance);
    }
    return QFile::rename(nuevo, destino);
}

} // namespace demo
