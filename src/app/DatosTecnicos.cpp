#include "app/DatosTecnicos.h"

#include "app/Modulo.h"
#include "base/Clock.h"
#include "base/Fechas.h"
#include "db/Connection.h"
#include "db/Error.h"
#include "db/engine/EmbeddedEngine.h"

#include <QDir>
#include <QFileInfo>
#include <QLocale>
#include <QStringList>
#include <QSysInfo>

namespace app {

QVector<DatoTecnico> datosDelSistema(db::Entorno &entorno)
{
    QString base = QStringLiteral("ninguna"), tamano;
    try {
        db::Connection &conexion = entorno.conexion();
        base = conexion.dialect().kind() == db::Dialect::Kind::SqlServer
            ? QStringLiteral("en un servidor SQL Server")
            : QDir::toNativeSeparators(entorno.carpetaDatos() + QStringLiteral("/Datos.mdb"));
        if (const auto archivo = conexion.engine().embeddedFile())
            tamano
                = QLocale().formattedDataSize(QFileInfo(archivo->path).size(), 1, QLocale::DataSizeTraditionalFormat);
        if (conexion.readOnly())
            tamano += QStringLiteral(" (sólo lectura)");
    } catch (const db::Error &) {
        // Without a database it says so.
    }
    QVector<DatoTecnico> datos{{QStringLiteral("Base de datos"), base}};
    if (!tamano.isEmpty())
        datos << DatoTecnico{QStringLiteral("Tamaño"), tamano};
    datos << DatoTecnico{
        QStringLiteral("Esta computadora"),
        entorno.equipo()
            + (entorno.esClienteDeRed() ? QStringLiteral(" (terminal)") : QStringLiteral(" (servidor o única)"))};
    return datos;
}

QVector<DatoTecnico> bibliotecas()
{
    return {
        {QStringLiteral("Qt %1").arg(QLatin1String(qVersion())), QStringLiteral("LGPL 3")},
        {db::embeddedEngineVersion(), QStringLiteral("MIT; SQLite, dominio público")},
        {QStringLiteral("Argon2 (libargon2)"), QStringLiteral("CC0 o Apache 2.0")},
        {QStringLiteral("Íconos Breeze, de KDE"), QStringLiteral("LGPL 3")},
        {QStringLiteral("Letra: la del sistema (DejaVu en Debian)"), QStringLiteral("licencia libre Bitstream Vera")},
    };
}

QString textoTecnico(db::Entorno &entorno)
{
    QStringList lineas{
        QStringLiteral("Vastelo %1").arg(QLatin1String(Modulo::version)),
        QStringLiteral("Fecha: %1").arg(base::fechaHoraTexto(entorno.clock().now()))};
    const auto agregar = [&](const QVector<DatoTecnico> &datos) {
        for (const DatoTecnico &dato : datos)
            lineas << dato.nombre + QStringLiteral(": ") + dato.valor;
    };
    agregar(datosDelSistema(entorno));
    agregar(
        {{QStringLiteral("Carpeta del programa"), QDir::toNativeSeparators(entorno.carpetaPrograma())},
         {QStringLiteral("Sistema operativo"),
          QSysInfo::prettyProductName() + QStringLiteral(", ") + QSysInfo::kernelType() + u' '
              + QSysInfo::kernelVersion() + QStringLiteral(", ") + QSysInfo::currentCpuArchitecture()},
         {QStringLiteral("Idioma"), QLocale().name()}});
    agregar(bibliotecas());
    return lineas.join(u'\n') + u'\n';
}

} // namespace app
