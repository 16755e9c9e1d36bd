#include "base/Imagenes.h"

#include <QDir>
#include <QSaveFile>

namespace base {

namespace {

QDir carpeta(const QString &carpetaPrograma) { return QDir(carpetaPrograma + QStringLiteral("/Imagenes")); }

QFileInfoList archivos(const QString &carpetaPrograma, const QString &nombre)
{
    return carpeta(carpetaPrograma).entryInfoList({nombre, nombre + QStringLiteral(".*")}, QDir::Files, QDir::Name);
}

} // namespace

QString imagenDelPrograma(const QString &carpetaPrograma, const QString &nombre)
{
    const QFileInfoList suyos = archivos(carpetaPrograma, nombre);
    return suyos.isEmpty() ? QString() : suyos.first().absoluteFilePath();
}

bool guardarImagen(const QString &carpetaPrograma, const QString &nombre, const QString &origen)
{
    QFile leida(origen);
    if (!leida.open(QIODevice::ReadOnly))
        return false;
    const QByteArray bytes = leida.readAll(); // all of it first: the origin may be the picture in use
    leida.close();
    const QDir donde = carpeta(carpetaPrograma);
    if (bytes.isEmpty() || !donde.mkpath(QStringLiteral(".")))
        return false;
    QSaveFile nueva(donde.filePath(nombre));
    if (!nueva.open(QIODevice::WriteOnly) || nueva.write(bytes) != bytes.size() || !nueva.commit())
        return false;
    // One with an ending would stand beside it.
    for (const QFileInfo &otra : archivos(carpetaPrograma, nombre))
        if (otra.fileName() != nombre && !QFile::remove(otra.absoluteFilePath()))
            return false;
    return true;
}

bool quitarImagen(const QString &carpetaPrograma, const QString &nombre)
{
    for (const QFileInfo &suyo : archivos(carpetaPrograma, nombre))
        QFile::remove(suyo.absoluteFilePath());
    return archivos(carpetaPrograma, nombre).isEmpty();
}

} // namespace base
