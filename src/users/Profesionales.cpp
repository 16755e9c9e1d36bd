#include "users/Profesionales.h"

#include "base/Mensajes.h"
#include "db/Entorno.h"
#include "db/EsquemaNucleo.h"
#include "db/Historial.h"
#include "db/ListaDoctores.h"
#include "db/Recordset.h"
#include "users/Claves.h"
#include "users/Derechos.h"

namespace users {

namespace {

const auto deUno = u"SELECT * FROM [Lista Doctores] WHERE id = ?"_qs;
const auto modosDeTrabajar = u"cie10 verotrasconsultas verfichareducida verestadisticareducida"_qs;

base::Rechazo registroEliminado() { return {base::titulo::aviso, base::textoRegistroEliminado}; }

base::Rechazo usuarioEliminado()
{
    return {
        base::titulo::atencion,
        u"Este Usuario ya No existe, debe haber sido eliminado por el Administrador del sistema. Actualice la lista de "
        "usuarios cerrando y abriendo nuevamente la ventana Configuración."_qs};
}

QVariantMap valoresDe(const db::Recordset &fila, const QStringList &columnas)
{
    QVariantMap valores;
    for (const QString &columna : columnas)
        valores.insert(columna, fila.value(columna));
    return valores;
}

bool quedaOtroMedico(db::Connection &conexion, int id)
{
    return conexion.query(u"SELECT id FROM [Lista Doctores] WHERE tipo = 0 and id <> ?"_qs, {id})->rowCount() > 0;
}

/// Both forms of stored passwords, so that it is not the database that compares.
bool claveDeOtro(db::Connection &conexion, int id, const QString &clave)
{
    const db::Rows otros
        = conexion.query(u"SELECT claveusuario FROM [Lista Doctores] WHERE id <> ? ORDER BY id"_qs, {id});
    for (int i = 0; i < otros->rowCount(); ++i)
        if (claves::coincideSinMayusculas(otros->text(i, 0), clave))
            return true;
    return false;
}

/// `fila` is the row as it stands, empty for a new user and for one who is gone.
base::Control controlar(db::Connection &conexion, const UsuarioEditado &usuario, const db::Recordset &fila)
{
    const bool hay = usuario.id != 0 && !fila.isEmpty();
    if (usuario.columnas.value(u"NomDoc"_qs).toString().trimmed().isEmpty())
        return base::Rechazo{base::titulo::aviso, u"Debe ingresar el nombre del Usuario."_qs, u"NomDoc"_qs};

    const bool conClave
        = usuario.clave ? !claves::vacia(*usuario.clave) : hay && !claves::vacia(fila.text(u"claveusuario"));
    const bool ida = usuario.id != 0 && !hay; // what is kept of a row that is gone nobody knows: told below
    if (usuario.columnas.value(u"administrador"_qs).toBool() && !conClave && !(ida && !usuario.clave))
        return base::Rechazo{
            base::titulo::aviso,
            u"Si el usuario será Administrador del sistema, entonces debe asignarle una Clave de Usuario."_qs,
            u"claveusuario"_qs};

    const bool eraMedico = hay && fila.integer(u"tipo") == 0;
    if (eraMedico && usuario.columnas.value(u"tipo"_qs).toInt() != 0 && !quedaOtroMedico(conexion, usuario.id))
        return base::Rechazo{
            base::titulo::aviso,
            u"No puede cambiarle el atributo de 'Médico' al usuario ya que en el sistema debe haber al menos un Médico "
            "cargado."_qs,
            u"tipo"_qs};

    if (usuario.clave && !claves::vacia(*usuario.clave) && claveDeOtro(conexion, usuario.id, *usuario.clave))
        return base::Rechazo{
            base::titulo::atencion,
            u"Ya existe un Usuario con la misma Clave de Usuario que desea ingresar. Seleccione una distinta"_qs,
            u"claveusuario"_qs};
    if (ida)
        return registroEliminado();
    return std::nullopt;
}

} // namespace

const QStringList &columnasDeUsuario()
{
    static const QStringList todas
        = (u"tipo administrador NomDoc Especialidad Matricula Domi Locali Tel Prioridad Descripcion "
           "tipoespecialidadactiva ventanainicio medisecre moduloweb "_qs
           + modosDeTrabajar)
              .split(u' ')
        + columnasDeDerechos();
    return todas;
}

FichaUsuario usuarioNuevo()
{
    FichaUsuario nueva;
    const db::Schema esquema = db::esquemaNucleo();
    const db::Table *tabla = esquema.table(u"Lista Doctores");
    Q_ASSERT(tabla);
    for (const QString &nombre : columnasDeUsuario()) {
        const db::Column *columna = tabla->column(nombre);
        Q_ASSERT_X(columna, "usuarioNuevo", qPrintable(nombre));
        nueva.columnas.insert(nombre, columna->initial.value_or(QVariant()));
    }
    return nueva;
}

base::Resultado<FichaUsuario> leerUsuario(db::Connection &conexion, int id)
{
    const db::Recordset fila(conexion, deUno, {id});
    if (fila.isEmpty())
        return usuarioEliminado();
    return FichaUsuario{id, valoresDe(fila, columnasDeUsuario()), !claves::vacia(fila.text(u"claveusuario"))};
}

base::Resultado<int> guardarUsuario(db::Entorno &entorno, const UsuarioEditado &usuario, int administrador)
{
    if (const base::Control rechazo = db::controlarConfiguracion(entorno, administrador))
        return *rechazo;
    db::Connection &conexion = entorno.conexion();
    // What the checks saw still holds when it is written.
    db::Transaction transaccion(conexion);
    db::Recordset fila(conexion, deUno, {usuario.id});
    if (const base::Control rechazo = controlar(conexion, usuario, fila))
        return *rechazo;
    if (usuario.id == 0)
        fila.addNew();
    const QVariantMap &escribir = usuario.id == 0 ? usuario.columnas : usuario.cambios;
    for (auto it = escribir.cbegin(); it != escribir.cend(); ++it)
        fila.set(it.key(), it.value().typeId() == QMetaType::QString ? it.value().toString().trimmed() : it.value());
    if (usuario.clave)
        fila.set(u"claveusuario", claves::vacia(*usuario.clave) ? QString() : claves::huella(*usuario.clave));
    const int id = int(fila.update());
    transaccion.commit();
    return id;
}

bool eliminarUsuario(db::Entorno &entorno, int id, int administrador)
{
    db::Connection &conexion = entorno.conexion();
    base::Mensajes &mensajes = entorno.mensajes();
    const auto decir = [&mensajes](const base::Rechazo &rechazo) {
        mensajes.mensaje(rechazo.titulo, rechazo.texto, rechazo.icono);
        return false;
    };
    if (const base::Control rechazo = db::controlarConfiguracion(entorno, administrador))
        return decir(*rechazo);
    const base::Rechazo ultimoMedico{
        base::titulo::aviso,
        u"No se puede proceder con la acción ya que en el sistema debe haber al menos un Médico cargado."_qs};
    const auto esUltimoMedico = [&conexion, id](const db::Recordset &fila) {
        return fila.integer(u"tipo") == 0 && !quedaOtroMedico(conexion, id);
    };

    const db::Recordset antes(conexion, deUno, {id});
    if (antes.isEmpty())
        return decir(registroEliminado());
    if (esUltimoMedico(antes))
        return decir(ultimoMedico);
    if (!mensajes.pregunta(
            base::titulo::confirmacion, u"¿Seguro que desea eliminar a este Usuario del sistema?"_qs, false))
        return false;

    base::Control rechazo;
    {
        // While the question waited another station may have removed this user, or the other professionals.
        db::Transaction transaccion(conexion);
        const db::Recordset fila(conexion, deUno, {id});
        if (fila.isEmpty())
            rechazo = registroEliminado();
        else if (esUltimoMedico(fila))
            rechazo = ultimoMedico;
        else {
            conexion.execute(u"DELETE FROM [Lista Doctores] WHERE id = ?"_qs, {id});
            db::registrarHistorial(
                entorno, u"Configuración del Sistema"_qs, u"Se eliminó el Usuario "_qs + fila.text(u"NomDoc"));
            transaccion.commit();
        }
    }
    return !rechazo || decir(*rechazo);
}

base::Resultado<QVariantMap> permisosDe(db::Connection &conexion, int id)
{
    const db::Recordset fila(conexion, deUno, {id});
    if (fila.isEmpty())
        return usuarioEliminado();
    return valoresDe(fila, columnasDeDerechos() + modosDeTrabajar.split(u' '));
}

} // namespace users
