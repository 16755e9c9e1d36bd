#include "db/access/Reemplazo.h"

#include "db/Error.h"

#include <QCryptographicHash>
#include <QFile>
#include <QFileInfo>

#include <filesystem>

#ifdef Q_OS_UNIX
#include <fcntl.h>
#include <unistd.h>
#endif

namespace db::access {

namespace {

std::filesystem::path ruta(const QString &archivo) { return archivo.toStdU16String(); }

/// What was done to the names in a folder, or written to a file, is on the disk when this returns.
void alDisco(const QString &que)
{
#ifdef Q_OS_UNIX
    const int descriptor = ::open(QFile::encodeName(que).constData(), O_RDONLY);
    if (descriptor >= 0) {
        ::fsync(descriptor);
        ::close(descriptor);
    }
#else
    Q_UNUSED(que)
#endif
}

bool mismoArchivo(const QString &uno, const QString &otro)
{
    std::error_code codigo;
    return std::filesystem::equivalent(ruta(uno), ruta(otro), codigo) && !codigo;
}

/// A second name of the same file, or a copy of it where the disk knows no such thing.
bool conservar(const QString &archivo, const QString &como)
{
    std::error_code codigo;
    std::filesystem::create_hard_link(ruta(archivo), ruta(como), codigo);
    if (!codigo)
        return true;
    const QString parcial = como + QStringLiteral(".parcial");
    QFile::remove(parcial);
    if (!QFile::copy(archivo, parcial))
        return false;
    alDisco(parcial);
    return QFile::rename(parcial, como);
}

} // namespace

QByteArray huellaDeArchivo(const QString &archivo)
{
    QFile file(archivo);
    QCryptographicHash huella(QCryptographicHash::Sha256);
    return file.open(QIODevice::ReadOnly) && huella.addData(&file) ? huella.result() : QByteArray();
}

QString reemplazar(const QString &archivo, const QString &nuevo, const QByteArray &huella)
{
    const QFileInfo info(archivo);
    QString original;
    for (int n = 1;; ++n) {
        original = QStringLiteral("%1/%2 (Access original%3).%4")
                       .arg(
                           info.path(),
                           info.completeBaseName(),
                           n == 1 ? QString() : QStringLiteral(" %1").arg(n),
                           info.suffix());
        // An interrupted conversion may have given it this name already.
        if (!QFileInfo::exists(original) || mismoArchivo(original, archivo))
            break;
    }
    if (!QFileInfo::exists(original) && !conservar(archivo, original))
        throw Error(Error::Kind::General, 0, QStringLiteral("No se pudo conservar el archivo original."));
    if (huella.isEmpty() || huellaDeArchivo(original) != huella) {
        QFile::remove(original);
        throw Error(
            Error::Kind::General,
            0,
            QStringLiteral("El archivo original cambió mientras se lo convertía: ¿está en uso?"));
    }
    alDisco(info.path());
    std::error_code codigo;
    std::filesystem::rename(ruta(nuevo), ruta(archivo), codigo);
    if (codigo) {
        QFile::remove(original);
        throw Error(
            Error::Kind::General, codigo.value(), QStringLiteral("No se pudo poner la base nueva en su lugar."));
    }
    alDisco(info.path());
    return original;
}

} // namespace db::access
