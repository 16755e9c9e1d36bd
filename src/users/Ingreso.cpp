#include "users/Ingreso.h"

#include "db/Connection.h"
#include "db/Entorno.h"
#include "db/Error.h"
#include "db/Historial.h"
#include "db/ListaDoctores.h"
#include "db/Recordset.h"
#include "users/Claves.h"

namespace users {

namespace {

base::Rechazo rechazo(const QString &texto, const QString &campo = u"claveactual"_qs)
{
    return {base::titulo::atencion, texto, campo};
}

} // namespace

base::Resultado<Identidad> identificar(db::Entorno &entorno, int id, const QString &clave)
{
    const db::Recordset fila(entorno.conexion(), u"SELECT * FROM [Lista Doctores] WHERE id = ?"_qs, {id});
    if (fila.isEmpty())
        return rechazo(
            u"Este usuario ya no se encuentra, seguramente acaba de ser eliminado por el Administrador del sistema."_qs,
            u"lisusuarios"_qs);
    const QString guardada = fila.text(u"claveusuario");
    if (!claves::vacia(guardada) && claves::vacia(clave))
        return rechazo(u"Debe ingresar la Clave de Acceso del Usuario seleccionado."_qs);
    const bool libre = claves::vacia(guardada) && claves::vacia(clave);
    if (!libre && !claves::coincide(guardada, clave))
        return rechazo(u"La Clave de Acceso es Incorrecta."_qs);

    Identidad quien;
    quien.m_id = id;
    quien.m_nombre = fila.text(u"NomDoc");
    if (!libre && !claves::esHuella(guardada))
        quien.m_claveClara = guardada;
    return quien;
}

/// Makes `quien` the current user and puts the hash in place of a password stored as it is typed.
void tomarPuesto(db::Entorno &entorno, const Identidad &quien)
{
    entorno.setUsuarioActual(quien.m_id);
    if (quien.m_claveClara.isEmpty() || entorno.conexion().readOnly())
        return;
    try {
        // Not where another station has changed it since it was read.
        entorno.conexion().execute(
            u"UPDATE [Lista Doctores] SET claveusuario = ? WHERE id = ? and claveusuario = ?"_qs,
            {claves::huella(quien.m_claveClara), quien.m_id, quien.m_claveClara});
    } catch (const db::Error &) {
        // Nobody is kept out by it: the next login tries again.
    }
}

void ingresar(db::Entorno &entorno, const Identidad &quien)
{
    tomarPuesto(entorno, quien);
    db::registrarHistorial(entorno, u"Sistema General"_qs, u"Se ingresó al sistema."_qs);
}

void cambiarUsuario(db::Entorno &entorno, const Identidad &quien)
{
    QString anterior = db::nombreUsuarioActual(entorno);
    if (anterior.isEmpty()) // deleted meanwhile
        anterior = u"<Usuario sin Identificar>"_qs;
    tomarPuesto(entorno, quien);
    db::registrarHistorial(
        entorno,
        u"Cambiar Usuario del Sistema"_qs,
        u"Se cambió al usuario activo %1 por el usuario %2."_qs.arg(anterior, quien.nombre()));
}

} // namespace users
