#include "app/Sesion.h"

#include "db/Connection.h"
#include "db/Entorno.h"
#include "db/Historial.h"
#include "db/ListaDoctores.h"

namespace app {

namespace {
const QString ventanaGeneral = QStringLiteral("Sistema General");
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
