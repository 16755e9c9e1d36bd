#include "app/Migracion.h"

#include "app/Red.h"
#include "base/Clock.h"
#include "db/Entorno.h"
#include "db/Error.h"
#include "db/Historial.h"
#include "db/ListaDoctores.h"

#include <QDir>
#include <QFileInfo>
#include <QLocale>
#include <QSaveFile>

#include <algorithm>

namespace app {

namespace {

using Clase = PedidoTraslado::Clase;
using Tipo = db::migracion::Desenlace::Tipo;

const QString ventanaRed = QStringLiteral("Red (Modo de Acceso - Ubicación de la Base de Datos)");

QString plantilla(const QString &carpetaPrograma) { return carpetaPrograma + QStringLiteral("/Datos_Vacio.mdb"); }

QString corta(const db::Huella &huella) { return QString::fromLatin1(huella.bytes().toHex().left(12)); }

/// "103 tablas, 45.300 registros"
QString cuenta(const db::migracion::Desenlace &desenlace)
{
    const QLocale regional;
    return QStringLiteral("%1 tablas, %2 registros")
        .arg(regional.toString(desenlace.tablas.size()), regional.toString(desenlace.filas()));
}

QString destinoDelTexto(const PedidoTraslado &pedido, const QString &carpetaPrograma)
{
    const Destino destino = destinoDe(pedido.ruta, carpetaPrograma);
    return destino.servidor ? QStringLiteral("el servidor '%1'").arg(destino.nombreServidor)
                            : QStringLiteral("el archivo '%1'").arg(QDir::toNativeSeparators(destino.archivo));
}

} // namespace

QString impedimento(const db::Entorno &entorno, const CambioDeRuta &red, Clase clase, const Ruta &ruta)
{
    const bool enServidor = red.rutaGuardada().modoServidor;
    if (!red.admiteServidor())
        return QStringLiteral("Esta versión del programa todavía no se conecta a SQL Server.");
    if (clase == Clase::AlArchivo) {
        if (!enServidor || !red.baseLista())
            return QStringLiteral("Los datos con los que se trabaja no están en un servidor.");
        return ruta.modoServidor ? QStringLiteral("Elija arriba 'Archivo de la base de datos' y la carpeta donde "
                                                  "guardarlo.")
                                 : QString();
    }
    if (clase == Clase::DatosActuales && enServidor)
        return QStringLiteral("Los datos con los que se trabaja ya están en un servidor.");
    if (clase == Clase::DatosActuales && !red.baseLista())
        return QStringLiteral("No hay una base de datos abierta para copiar.");
    if (clase == Clase::BaseVacia && !QFileInfo::exists(plantilla(entorno.carpetaPrograma())))
        return QStringLiteral("No está el archivo Datos_Vacio.mdb en la carpeta del programa.");
    if (!ruta.modoServidor)
        return QStringLiteral("Elija arriba 'Servidor de base de datos' y complete sus datos.");
    return ruta.servidor.isEmpty() ? QStringLiteral("Escriba el nombre del servidor.") : QString();
}

base::Control controlarTraslado(db::Entorno &entorno, const CambioDeRuta &red, const PedidoTraslado &pedido)
{
    if (red.baseLista())
        if (const base::Control derecho = db::controlarDerecho(entorno, u"accesored"))
            return derecho;
    if (const base::Control control = controlarRuta(pedido.ruta, entorno.carpetaPrograma()))
        return control;
    const QString motivo = impedimento(entorno, red, pedido.clase, pedido.ruta);
    if (!motivo.isEmpty())
        return base::Rechazo{base::titulo::aviso, motivo, {}, base::Icono::Advertencia};
    return {};
}

bool confirmarTraslado(db::Entorno &entorno, PedidoTraslado &pedido)
{
    pedido.apartar.clear();
    const Destino destino = destinoDe(pedido.ruta, entorno.carpetaPrograma());
    if (pedido.clase == Clase::AlArchivo && QFileInfo::exists(destino.archivo)) {
        const QString nombre
            = QStringLiteral("Datos (%1).mdb").arg(entorno.clock().now().toString(QStringLiteral("yyyyMMddHHmm")));
        if (!entorno.mensajes().pregunta(
                base::titulo::atencion,
                QStringLiteral("En '%1' ya hay un archivo Datos.mdb. No se pierde: cuando el nuevo esté completo y "
                               "comprobado, el que está ahora pasará a llamarse '%2'.\n¿Desea continuar?")
                    .arg(QDir::toNativeSeparators(destino.carpetaDatos), nombre),
                false))
            return false;
        pedido.apartar = destino.carpetaDatos + u'/' + nombre;
    }
    return entorno.mensajes().confirmar(
        QStringLiteral("Atención!!"),
        QStringLiteral(
            "Este proceso puede demorar varios minutos, haga clic en el botón Aceptar para comenzar y aguarde "
            "por favor."));
}

QString descripcion(const PedidoTraslado &pedido, const QString &carpetaPrograma)
{
    const QString destino = destinoDelTexto(pedido, carpetaPrograma);
    switch (pedido.clase) {
    case Clase::DatosActuales: return QStringLiteral("Los datos actuales se copian en %1.").arg(destino);
    case Clase::BaseVacia: return QStringLiteral("Se crea una base de datos vacía en %1.").arg(destino);
    case Clase::AlArchivo: break;
    }
    return QStringLiteral("Los datos del servidor se copian en %1.").arg(destino);
}

QString informe(
    const db::Entorno &entorno,
    const PedidoTraslado &pedido,
    const db::migracion::Desenlace &desenlace,
    const QDateTime &desde)
{
    const QLocale regional;
    const QString formato = QStringLiteral("dd/MM/yyyy HH:mm:ss");
    QStringList lineas{
        QStringLiteral("TRASLADO DE LA BASE DE DATOS"),
        {},
        descripcion(pedido, entorno.carpetaPrograma()),
        QStringLiteral("Equipo: %1").arg(entorno.equipo()),
        QStringLiteral("Comenzó: %1").arg(desde.toString(formato)),
        QStringLiteral("Terminó: %1").arg(entorno.clock().now().toString(formato)),
        QStringLiteral("Resultado: %1")
            .arg(
                desenlace.tipo == Tipo::Hecha ? QStringLiteral("completo y comprobado (%1)").arg(cuenta(desenlace))
                                              : QStringLiteral("NO COINCIDE con el original; la copia se descartó")),
    };
    if (!desenlace.motivo.isEmpty())
        lineas << QString() << desenlace.motivo;
    if (!desenlace.apartado.isEmpty())
        lineas << QStringLiteral("El archivo que estaba antes se guardó como '%1'.")
                      .arg(QDir::toNativeSeparators(desenlace.apartado));
    if (!desenlace.avisos.isEmpty())
        lineas << QString() << QStringLiteral("Avisos:") << desenlace.avisos;
    lineas << QString() << QStringLiteral("Registros y suma de control de cada tabla, en el origen y en el destino:");
    qsizetype ancho = 5;
    for (const auto &tabla : desenlace.tablas)
        ancho = std::max(ancho, tabla.tabla.size());
    for (const auto &tabla : desenlace.tablas)
        lineas << QStringLiteral("%1 %2 %3   %4 %5   %6")
                      .arg(
                          tabla.tabla.leftJustified(ancho),
                          regional.toString(tabla.filasOrigen).rightJustified(10),
                          corta(tabla.sumaOrigen),
                          regional.toString(tabla.filasDestino).rightJustified(10),
                          corta(tabla.sumaDestino),
                          tabla.igual() ? QStringLiteral("igual") : QStringLiteral("DISTINTA"));
    return lineas.join(QStringLiteral("\r\n")) + QStringLiteral("\r\n");
}

QString anotarTraslado(
    db::Entorno &entorno,
    const PedidoTraslado &pedido,
    const db::migracion::Desenlace &desenlace,
    const QDateTime &desde)
{
    if (desenlace.tipo != Tipo::Hecha && desenlace.tipo != Tipo::NoCoincide)
        return {};
    const QString carpeta = pedido.clase == Clase::AlArchivo
        ? destinoDe(pedido.ruta, entorno.carpetaPrograma()).carpetaDatos
        : entorno.carpetaDatos();
    QString archivo = carpeta
        + QStringLiteral("/Traslado (%1).txt").arg(entorno.clock().now().toString(QStringLiteral("yyyyMMddHHmmss")));
    QSaveFile texto(archivo);
    if (!texto.open(QIODevice::WriteOnly) || texto.write(informe(entorno, pedido, desenlace, desde).toUtf8()) < 0
        || !texto.commit())
        archivo.clear();
    try {
        db::registrarHistorial(
            entorno,
            ventanaRed,
            desenlace.tipo == Tipo::Hecha ? QStringLiteral("%1 %2, comprobados.")
                                                .arg(descripcion(pedido, entorno.carpetaPrograma()), cuenta(desenlace))
                                          : QStringLiteral("%1 La copia no coincidió con el original y se descartó.")
                                                .arg(descripcion(pedido, entorno.carpetaPrograma())));
    } catch (const db::Error &) {
        // The copy is what counts; without a database there is no log either.
    }
    return archivo;
}

bool concluirTraslado(
    db::Entorno &entorno, CambioDeRuta &red, const PedidoTraslado &pedido, const db::migracion::Desenlace &desenlace)
{
    base::Mensajes &mensajes = entorno.mensajes();
    switch (desenlace.tipo) {
    case Tipo::Hecha: break;
    case Tipo::Cancelada:
        mensajes.informar(
            QStringLiteral("Información"),
            QStringLiteral("La operación se canceló. No se copió nada y los datos siguen donde estaban.")
                + (desenlace.motivo.isEmpty() ? QString() : QStringLiteral("\n\n") + desenlace.motivo));
        return false;
    case Tipo::Rechazada: mensajes.advertir(base::titulo::atencion, desenlace.motivo); return false;
    case Tipo::Fallada:
        mensajes.fallar(
            base::titulo::error,
            QStringLiteral("La operación no se pudo completar. Los datos siguen donde estaban y se puede intentar "
                           "nuevamente.\n\n")
                + desenlace.motivo);
        return false;
    case Tipo::NoCoincide:
        mensajes.fallar(
            base::titulo::error,
            QStringLiteral("LA COPIA NO COINCIDE CON EL ORIGINAL y se descartó. Los datos siguen donde estaban.\n\n")
                + desenlace.motivo);
        return false;
    }
    mensajes.informar(
        QStringLiteral("Información"),
        QStringLiteral("La operación finalizó con éxito!\n\n%1, comprobados uno por uno.").arg(cuenta(desenlace)));
    for (const QString &texto : desenlace.mensajes)
        mensajes.informar(QStringLiteral("Atención"), texto);
    if (!mensajes.pregunta(
            base::titulo::confirmacion,
            QStringLiteral(
                "¿Desea que esta computadora trabaje desde ahora con %1?\nDespués haga el mismo cambio en 'Red' "
                "en las demás computadoras: lo que se guarde en la base anterior ya no llegará a la nueva.")
                .arg(destinoDelTexto(pedido, entorno.carpetaPrograma()))))
        return false;
    const auto cambiada = guardarRuta(entorno, red, pedido.ruta);
    if (!cambiada) {
        mensajes.mensaje(cambiada.rechazo().titulo, cambiada.rechazo().texto, cambiada.rechazo().icono);
        return false;
    }
    if (*cambiada != RutaCambiada::Usada)
        return false;
    mensajes.informar(
        QStringLiteral("Información"), QStringLiteral("El programa trabaja ahora con la base de datos indicada."));
    return true;
}

} // namespace app
