#include "app/Carpetas.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStandardPaths>
#include <QTemporaryFile>

namespace app {

namespace {

/// Tried, not asked: the file system's answer about permissions is not always the truth.
bool seEscribeEn(const QString &carpeta)
{
    QTemporaryFile prueba(carpeta + QStringLiteral("/.vastelo-XXXXXX"));
    return prueba.open();
}

} // namespace

base::Resultado<QString> carpetaDePrograma(const Opciones &opciones, const QString &carpetaEjecutable)
{
    QString carpeta = opciones.carpeta;
    if (carpeta.isEmpty()) {
        carpeta = seEscribeEn(carpetaEjecutable) ? carpetaEjecutable
                                                 : QStandardPaths::writableLocation(QStandardPaths::AppDataLocation);
        if (opciones.demo)
            carpeta += QStringLiteral("/demo");
    }
    carpeta = QDir(carpeta).absolutePath();
    if (!QDir().mkpath(carpeta))
        return base::Rechazo{
            QStringLiteral("Error..."),
            QStringLiteral("No se puede usar la carpeta de programa:\n%1").arg(QDir::toNativeSeparators(carpeta))};

    const QString plantilla = QStringLiteral("/Datos_Vacio.mdb");
    if (!QFileInfo::exists(carpeta + plantilla) && QFileInfo::exists(carpetaEjecutable + plantilla)) {
        const QString nueva = carpeta + plantilla + QStringLiteral(".nuevo");
        QFile::remove(nueva);
        if (QFile::copy(carpetaEjecutable + plantilla, nueva))
            QFile::rename(nueva, carpeta + plantilla);
    }
    return carpeta;
}

} // namespace app
