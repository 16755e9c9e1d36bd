#include "app/Sesion.h"

#include "db/Connection.h"
#include "db/Entorno.h"
#include "db/Historial.h"
#include "db/ListaDoctores.h"

#include <QDir>
#include <QFileInfo>

namespace app {

namespace {
const QString ventanaGeneral = QStringLiteral("Sistema General");
}

QString fondoAplicacion(db::Entorno &entorno)
{
    const db::Rows rows = entorno.conexion().query(QStringLiteral("SELECT fondoaplicacion FROM [Config]"));
    const QString valor = rows->rowCount() > 0 ? rows->text(0, 0).trimmed() : QString();
    if (valor.isEmpty() || valor == u'0')
        return {};
    const QDir imagenes(entorno.carpetaPrograma() + QStringLiteral("/Imagenes"));
    const QFileInfoList archivos = imagenes.entryInfoList(
        {QStringLiteral("fondoaplicacion"), QStringLiteral("fondoaplicacion.*")}, QDir::Files, QDir::Name);
    return archivos.isEmpty() ? QString() : archivos.first().absoluteFilePath();
}

void registrarIngreso(db::Entorno &entorno)
{
    db::registrarHistorial(entorno, ventanaGeneral, QStringLiteral("Se ingresó al sistema."));
}

void registrarCierre(db::Entorno &entorno)
{
    entorno.conexion().execute(QStringLiteral("DELETE FROM [Imprimir2]"));
    db::registrarHistorial(entorno, ventanaGeneral, QStringLiteral("Se cerró el sistema."));
}

QString anuncio(db::Entorno &entorno)
{
    entorno.conexion().execute(QStringLiteral("DELETE FROM [Lista Doctores] WHERE id = -99"));
    return db::opcionUsuario(entorno, u"anuncio").toString();
}

void borrarImpresionesTemporales(db::Entorno &entorno)
{
    db::Connection &conexion = entorno.conexion();
    conexion.execute(QStringLiteral("DELETE FROM [Imprimir] WHERE nrohc = -99"));
    conexion.execute(QStringLiteral("DELETE FROM [Imprimir2] WHERE nrohc = -99"));
}

} // namespace app
