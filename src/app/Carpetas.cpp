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

    for (const QString &archivo : {QStringLiteral("/Datos_Vacio.mdb"), QStringLiteral("/chat.wav")}) {
        if (QFileInfo::exists(carpeta + archivo) || !QFileInfo::exists(carpetaEjecutable + archivo))
            continue;
        const QString nuevo = carpeta + archivo + QStringLiteral(".nuevo");
        QFile::remove(nuevo);
        if (QFile::copy(carpetaEjecutable + archivo, nuevo))
            QFile::rename(nuevo, carpeta + archivo);
    }
    return carpeta;
}

} // namespace app
