#include "users/Puerta.h"

#include "db/Recordset.h"
#include "users/Claves.h"

namespace users::puerta {

namespace {

db::Recordset administradores(db::Connection &conexion)
{
    return {conexion, u"SELECT * FROM [Lista Doctores] WHERE administrador <> 0"_qs};
}

base::Rechazo rechazo(const QString &texto) { return {base::titulo::atencion, texto, u"claveactual"_qs}; }

} // namespace

bool seOfrece(db::Connection &conexion)
{
    for (db::Recordset fila = administradores(conexion); !fila.eof(); fila.moveNext())
        if (!claves::vacia(fila.text(u"claveusuario")))
            return true;
    return false;
}

base::Resultado<QString> pasar(db::Connection &conexion, const QString &clave)
{
    if (claves::vacia(clave))
        return rechazo(u"Debe ingresar la Clave de Acceso de Administrador."_qs);
    for (db::Recordset fila = administradores(conexion); !fila.eof(); fila.moveNext())
        if (claves::coincide(fila.text(u"claveusuario"), clave))
            return fila.text(u"NomDoc");
    return rechazo(u"La Clave de Acceso de Administrador es Incorrecta."_qs);
}

} // namespace users::puerta
