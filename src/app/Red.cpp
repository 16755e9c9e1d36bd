#include "app/Red.h"

#include "base/Mensajes.h"
#include "base/Windows1252.h"
#include "db/Connection.h"
#include "db/Entorno.h"
#include "db/Error.h"
#include "db/Historial.h"
#include "db/ListaDoctores.h"

#include <QDir>
#include <QFileInfo>
#include <QLocale>

namespace app {

namespace {

const QString ventanaRed = QStringLiteral("Red (Modo de Acceso - Ubicación de la Base de Datos)");

base::Control rechazo(const QString &texto, const QString &campo)
{
    return base::Rechazo{base::titulo::aviso, texto, campo, base::Icono::Advertencia};
}

bool mismaCarpeta(const QString &una, const QString &otra)
{
    const QString real = QFileInfo(una).canonicalFilePath();
    return real.isEmpty() ? QDir::cleanPath(una) == QDir::cleanPath(otra) : real == QFileInfo(otra).canonicalFilePath();
}

QString dondeEsta(const Ruta &ruta, const QString &carpetaPrograma)
{
    const Destino destino = destinoDe(ruta, carpetaPrograma);
    return destino.servidor ? QStringLiteral("servidor '%1'").arg(destino.nombreServidor)
                            : QStringLiteral("carpeta '%1'").arg(QDir::toNativeSeparators(destino.carpetaDatos));
}

} // namespace

TrabajoTraslado CambioDeRuta::traslado(const PedidoTraslado &) const
{
    return [](db::migracion::Seguimiento &) {
        return db::migracion::Desenlace{
            db::migracion::Desenlace::Tipo::Rechazada,
            QStringLiteral("Esta versión del programa todavía no se conecta a SQL Server.")};
    };
}

Hallazgo examinarBase(db::Connection &conexion)
{
    const bool servidor = conexion.dialect().kind() == db::Dialect::Kind::SqlServer;
    const QString deOtro = servidor ? QStringLiteral("La base de datos del servidor no es de este programa.")
                                    : QStringLiteral("El archivo no es una base de datos de este programa.");
    try {
        if (conexion.query(QStringLiteral("SELECT id FROM [CIE10] WHERE id = 2"))->rowCount() != 1)
            return {false, deOtro};
        const QLocale regional;
        QString texto = QStringLiteral("Hay una base de datos válida, con %1 pacientes")
                            .arg(regional.toString(
                                conexion.query(QStringLiteral("SELECT COUNT(*) FROM [Pacientes]"))->integer(0, 0)));
        if (const auto archivo = conexion.engine().embeddedFile())
            texto += QStringLiteral(" (%1)").arg(
                regional.formattedDataSize(QFileInfo(archivo->path).size(), 1, QLocale::DataSizeTraditionalFormat));
        texto += u'.';
        if (conexion.readOnly())
            texto += QStringLiteral(" Es de sólo lectura: se podrá consultar, pero no guardar.");
        return {true, texto};
    } catch (const db::Error &error) {
        const bool ajena
            = error.kind() == db::Error::Kind::NoSuchTable || error.kind() == db::Error::Kind::NoSuchColumn;
        return {false, ajena ? deOtro : error.description()};
    }
}

base::Control controlarRuta(const Ruta &ruta, const QString &carpetaPrograma)
{
    const struct {
        const char *campo;
        QString nombre;
        const QString &texto;
        int ancho;
    } textos[]{
        {"carpeta", QStringLiteral("La carpeta"), ruta.carpeta, Ruta::anchoCarpeta},
        {"servidor", QStringLiteral("El servidor"), ruta.servidor, Ruta::anchoTexto},
        {"instancia", QStringLiteral("La instancia"), ruta.instancia, Ruta::anchoTexto},
        {"usuario", QStringLiteral("El usuario"), ruta.usuario, Ruta::anchoTexto},
        {"clave", QStringLiteral("La clave"), ruta.clave, Ruta::anchoTexto},
    };
    for (const auto &t : textos) {
        const auto bytes = base::aWindows1252(t.texto);
        if (!bytes)
            return rechazo(
                QStringLiteral("%1 tiene caracteres que el archivo de configuración no admite.").arg(t.nombre),
                QLatin1String(t.campo));
        if (bytes->size() > t.ancho)
            return rechazo(
                QStringLiteral("%1 admite hasta %2 caracteres.").arg(t.nombre).arg(t.ancho), QLatin1String(t.campo));
    }
    if (ruta.clave != ruta.clave.trimmed())
        return rechazo(QStringLiteral("La clave no puede empezar ni terminar con espacios."), QStringLiteral("clave"));

    if (ruta.modoServidor)
        return ruta.servidor.isEmpty()
            ? rechazo(QStringLiteral("Escriba el nombre del servidor."), QStringLiteral("servidor"))
            : base::Control();
    if (!ruta.otraCarpeta)
        return {};
    if (ruta.carpeta.isEmpty())
        return rechazo(
            QStringLiteral("Elija la carpeta compartida en la que está la base de datos."), QStringLiteral("carpeta"));
    if (!QDir::isAbsolutePath(ruta.carpeta))
        return rechazo(
            QStringLiteral("Escriba la carpeta completa, desde la unidad o la raíz del disco."),
            QStringLiteral("carpeta"));
    if (mismaCarpeta(ruta.carpeta, carpetaPrograma))
        return rechazo(
            QStringLiteral("Esa carpeta es la de este programa: elija 'La base de datos está en esta computadora'."),
            QStringLiteral("carpeta"));
    return {};
}

base::Resultado<RutaCambiada> guardarRuta(db::Entorno &entorno, CambioDeRuta &red, const Ruta &nueva)
{
    if (red.baseLista())
        if (const base::Control derecho = db::controlarDerecho(entorno, u"accesored"))
            return *derecho;
    if (const base::Control control = controlarRuta(nueva, entorno.carpetaPrograma()))
        return *control;

    const Ruta anterior = red.rutaGuardada();
    if (red.cambiarRuta(nueva)) {
        if (nueva != anterior)
            db::registrarHistorial(
                entorno,
                ventanaRed,
                QStringLiteral("Se cambió la ubicación de la Base de Datos: %1.")
                    .arg(dondeEsta(nueva, entorno.carpetaPrograma())));
        return RutaCambiada::Usada;
    }
    if (nueva == anterior
        || !entorno.mensajes().pregunta(
            base::titulo::atencion,
            QStringLiteral("La base de datos indicada no se puede usar.\n¿Desea volver a la ubicación anterior (%1)?")
                .arg(dondeEsta(anterior, entorno.carpetaPrograma()))))
        return RutaCambiada::SinBase;
    return red.cambiarRuta(anterior) ? RutaCambiada::Restaurada : RutaCambiada::SinBase;
}

} // namespace app
