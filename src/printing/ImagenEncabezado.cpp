#include "printing/ImagenEncabezado.h"

#include "db/Entorno.h"
#include "db/ListaDoctores.h"

#include <QBuffer>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QImageReader>
#include <QSaveFile>

namespace printing {

namespace {

constexpr qint64 bytesMaximos = 4 * 1024 * 1024;
constexpr int ladoMaximo = 8000;

base::Rechazo rechazo(const QString &texto) { return {base::titulo::error, texto}; }

/// The file's bytes; nothing when it is larger than a header picture may be.
std::optional<QByteArray> leer(const QString &archivo)
{
    QFile origen(archivo);
    if (!origen.open(QIODevice::ReadOnly))
        return QByteArray();
    QByteArray bytes = origen.read(bytesMaximos + 1);
    return bytes.size() > bytesMaximos ? std::nullopt : std::optional(std::move(bytes));
}

} // namespace

QString archivoImagen(const db::Entorno &entorno)
{
    return entorno.carpetaPrograma() + QStringLiteral("/Imagenes/encabezado");
}

QImage imagenDe(const QByteArray &bytes)
{
    QBuffer lectura;
    lectura.setData(bytes);
    QImageReader lector(&lectura);
    lector.setDecideFormatFromContent(true);
    lector.setAutoTransform(true);
    const QSize lados = lector.size();
    if (!lector.canRead() || lados.width() > ladoMaximo || lados.height() > ladoMaximo)
        return {};
    const QImage imagen = lector.read();
    return imagen.width() > ladoMaximo || imagen.height() > ladoMaximo ? QImage() : imagen;
}

QByteArray leerImagen(const db::Entorno &entorno) { return leer(archivoImagen(entorno)).value_or(QByteArray()); }

base::Control ponerImagen(db::Entorno &entorno, const QString &archivo, int administrador)
{
    if (auto sinDerecho = db::controlarConfiguracion(entorno, administrador))
        return sinDerecho;
    const auto bytes = leer(archivo);
    if (!bytes)
        return rechazo(QStringLiteral("La imagen es demasiado grande: el archivo debe ocupar menos de 4 MB."));
    if (imagenDe(*bytes).isNull())
        return rechazo(
            QStringLiteral("El archivo elegido no es una imagen que se pueda usar como encabezado. Elija una "
                           "imagen jpg o bmp de hasta 8000 píxeles por lado."));
    const QString destino = archivoImagen(entorno);
    QDir().mkpath(QFileInfo(destino).absolutePath());
    QSaveFile salida(destino);
    if (!salida.open(QIODevice::WriteOnly) || salida.write(*bytes) != bytes->size() || !salida.commit())
        return rechazo(QStringLiteral("No se pudo copiar la imagen a la carpeta Imagenes del programa: %1")
                           .arg(salida.errorString()));
    return std::nullopt;
}

base::Resultado<bool> quitarImagen(db::Entorno &entorno, int administrador)
{
    if (auto sinDerecho = db::controlarConfiguracion(entorno, administrador))
        return *sinDerecho;
    if (!entorno.mensajes().pregunta(
            base::titulo::atencion,
            QStringLiteral("¿Seguro que desea Eliminar la imagen usada como Encabezado de las impresiones?"),
            false))
        return false;
    QFile archivo(archivoImagen(entorno));
    if (archivo.exists() && !archivo.remove())
        return rechazo(QStringLiteral("No se pudo eliminar la imagen: %1").arg(archivo.errorString()));
    return true;
}

} // namespace printing
