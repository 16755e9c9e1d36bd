#include "db/FondoAplicacion.h"

#include "base/Imagenes.h"
#include "db/Connection.h"
#include "db/Entorno.h"

namespace db {

QString fondoAplicacion(Entorno &entorno)
{
    const Rows rows = entorno.conexion().query(QStringLiteral("SELECT fondoaplicacion FROM [Config]"));
    const QString valor = rows->rowCount() > 0 ? rows->text(0, 0).trimmed() : QString();
    if (valor.isEmpty() || valor == u'0')
        return {};
    return base::imagenDelPrograma(entorno.carpetaPrograma(), QStringLiteral("fondoaplicacion"));
}

} // namespace db
