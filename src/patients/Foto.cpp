#include "patients/Foto.h"

#include "base/Mensajes.h"
#include "db/Entorno.h"
#include "db/Error.h"
#include "patients/Ficha.h"

#include <QDir>
#include <QFileInfo>
#include <QImageReader>
#include <QPainter>
#include <QSaveFile>

#include <algorithm>

namespace patients {

namespace {

using namespace Qt::StringLiterals;

constexpr int calidad = 88;
/// Larger than any camera's picture; a small file can hold more by fraud.
constexpr qint64 puntosMaximos = 150'000'000;

QString carpetaDeFotos(const QString &carpetaDatos) { return carpetaDatos + u"/Imagenes/Fotos"_s; }

QString nombreDeFoto(int nrohc) { return u"Foto"_s + QString::number(nrohc); }

base::Rechazo rechazo(const QString &texto) { return {base::titulo::aviso, texto}; }

} // namespace

QStringList archivosDeFoto(const QString &carpetaDatos, int nrohc)
{
    const QString nombre = nombreDeFoto(nrohc);
    QStringList finales{{}};
    for (const char *final : {"jpg", "jpeg", "bmp", "gif", "png"})
        finales << u'.' + QString::fromLatin1(final);
    QFileInfoList hallados = QDir(carpetaDeFotos(carpetaDatos)).entryInfoList({nombre, nombre + u".*"_s}, QDir::Files);
    const auto lugar
        = [&](const QFileInfo &archivo) { return finales.indexOf(archivo.fileName().mid(nombre.size()).toLower()); };
    hallados.removeIf([&](const QFileInfo &archivo) { return lugar(archivo) < 0; });
    std::stable_sort(
        hallados.begin(), hallados.end(), [&](const QFileInfo &a, const QFileInfo &b) { return lugar(a) < lugar(b); });
    QStringList rutas;
    for (const QFileInfo &archivo : std::as_const(hallados))
        rutas << archivo.filePath();
    return rutas;
}

QImage leerFoto(const QString &archivo)
{
    if (QFileInfo(archivo).size() > tamanoMaximoDeFoto)
        return {};
    QImageReader lector(archivo);
    lector.setDecideFormatFromContent(true);
    lector.setAutoTransform(true);
    const QSize tamano = lector.size();
    if (tamano.isValid()) {
        if (qint64(tamano.width()) * tamano.height() > puntosMaximos)
            return {};
        // Read smaller at once where the format allows it: a photograph of 40 million dots takes a tenth of the time.
        if (qMax(tamano.width(), tamano.height()) > ladoDeFoto)
            lector.setScaledSize(tamano.scaled(ladoDeFoto, ladoDeFoto, Qt::KeepAspectRatio).expandedTo({1, 1}));
    }
    return lector.read();
}

base::Resultado<QImage> elegirFoto(const QString &archivo)
{
    if (QFileInfo(archivo).size() > tamanoMaximoDeFoto)
        return rechazo(u"El archivo elegido es demasiado grande para ser una foto (hasta %1 MB)."_s.arg(
            tamanoMaximoDeFoto / (1024 * 1024)));
    QImage foto = leerFoto(archivo);
    if (foto.isNull())
        return rechazo(u"El archivo elegido no es una imagen que se pueda leer."_s);
    return foto;
}

base::Control guardarFoto(db::Entorno &entorno, const PacienteAbierto &paciente, const QImage &foto)
{
    if (auto control = controlarModificacion(entorno))
        return control;
    if (!paciente.existe(entorno.conexion()))
        return pacienteAusente();
    const QString carpeta = carpetaDeFotos(entorno.carpetaDatos());
    const QString destino = carpeta + u'/' + nombreDeFoto(paciente.nrohc());
    QImage chica = foto;
    if (qMax(chica.width(), chica.height()) > ladoDeFoto)
        chica = chica.scaled(ladoDeFoto, ladoDeFoto, Qt::KeepAspectRatio, Qt::SmoothTransformation);
    if (chica.hasAlphaChannel()) {
        // What shines through would turn black.
        QImage blanca(chica.size(), QImage::Format_RGB32);
        blanca.fill(Qt::white);
        QPainter(&blanca).drawImage(0, 0, chica);
        chica = blanca;
    }
    const QStringList anteriores = archivosDeFoto(entorno.carpetaDatos(), paciente.nrohc());
    QDir().mkpath(carpeta);
    QSaveFile archivo(destino);
    if (!archivo.open(QIODevice::WriteOnly) || !chica.save(&archivo, "JPEG", calidad) || !archivo.commit())
        return base::Rechazo{
            base::titulo::error,
            u"No se pudo guardar la foto en la carpeta %1."_s.arg(QDir::toNativeSeparators(carpeta))};
    for (const QString &vieja : anteriores)
        if (QFileInfo(vieja) != QFileInfo(destino))
            QFile::remove(vieja);
    return std::nullopt;
}

base::Resultado<bool> eliminarFoto(db::Entorno &entorno, const PacienteAbierto &paciente)
{
    if (auto control = controlarModificacion(entorno))
        return *control;
    const QStringList archivos = archivosDeFoto(entorno.carpetaDatos(), paciente.nrohc());
    if (archivos.isEmpty()
        || !entorno.mensajes().pregunta(
            base::titulo::confirmacion, u"¿Seguro que desea Eliminar la Foto de Perfil actual?"_s, false))
        return false;
    for (const QString &archivo : archivos)
        if (!QFile::remove(archivo))
            return base::Rechazo{
                base::titulo::error, u"No se pudo borrar el archivo %1."_s.arg(QDir::toNativeSeparators(archivo))};
    return true;
}

} // namespace patients
