#include "db/access/FuenteSobreCopia.h"

#include "db/Error.h"

#include <QFile>
#include <QTemporaryDir>

namespace db::access {

FuenteSobreCopia::FuenteSobreCopia(const QString &archivo, AbrirFuente abrir)
    : m_archivo(archivo)
    , m_abrir(std::move(abrir))
{
}

bool FuenteSobreCopia::leer(Receptor &receptor, const QString &solo)
{
    const QTemporaryDir carpeta;
    const QString copia = carpeta.filePath(QStringLiteral("Datos.mdb"));
    if (!carpeta.isValid() || !QFile::copy(m_archivo, copia))
        throw Error(
            Error::Kind::CannotOpen,
            0,
            QStringLiteral("No se pudo copiar la base de datos para leerla. Verifique que se pueda abrir y que haya "
                           "lugar en el disco de esta computadora."));
    return m_abrir(copia)->leer(receptor, solo);
}

} // namespace db::access
