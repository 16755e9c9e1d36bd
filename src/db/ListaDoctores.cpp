#include "db/ListaDoctores.h"

#include "db/Connection.h"
#include "db/Entorno.h"

namespace db {

namespace {

QVector<Doctor> listar(Connection &connection, const QString &condition)
{
    const Rows rows = connection.query(
        QStringLiteral("SELECT id,NomDoc FROM [Lista Doctores]") + condition
        + QStringLiteral(" ORDER BY prioridad DESC,NomDoc"));
    QVector<Doctor> doctores;
    for (int r = 0; r < rows->rowCount(); ++r)
        doctores.append({int(rows->integer(r, 0)), rows->text(r, 1)});
    return doctores;
}

Rows filaUsuarioActual(Entorno &entorno)
{
    return entorno.conexion().query(
        QStringLiteral("SELECT * FROM [Lista Doctores] WHERE id = ?"), {entorno.usuarioActual()});
}

} // namespace

QVector<Doctor> profesionales(Connection &connection) { return listar(connection, QStringLiteral(" WHERE tipo = 0")); }

QVector<Doctor> usuarios(Connection &connection) { return listar(connection, {}); }

QString nombreUsuarioActual(Entorno &entorno) { return opcionUsuario(entorno, u"NomDoc").toString(); }

QVariant opcionUsuario(Entorno &entorno, QStringView column)
{
    const Rows rows = filaUsuarioActual(entorno);
    const int i = rows->column(column);
    return rows->rowCount() == 0 || i < 0 ? QVariant() : rows->value(0, i);
}

int profesionalActivo(Entorno &entorno)
{
    const Rows rows = filaUsuarioActual(entorno);
    if (rows->rowCount() == 0)
        return 0;
    const int tipo = rows->column(u"tipo"), medisecre = rows->column(u"medisecre");
    if (tipo >= 0 && medisecre >= 0 && rows->integer(0, tipo) == 1)
        return int(rows->integer(0, medisecre));
    return entorno.usuarioActual();
}

base::Control controlarDerecho(Entorno &entorno, QStringView derecho)
{
    const Rows rows = filaUsuarioActual(entorno);
    if (rows->rowCount() == 0)
        return base::Rechazo{
            base::titulo::atencion, QStringLiteral("Defina un Usuario Activo válido desde la ventana Configuración.")};
    if (!derecho.isEmpty()) {
        const int i = rows->column(derecho);
        if (i < 0 || !rows->flag(0, i))
            return sinPermiso();
    }
    return std::nullopt;
}

base::Rechazo sinPermiso()
{
    return {
        base::titulo::atencion,
        QStringLiteral("No tiene permiso para ejecutar esta acción. Consulte con el Administrador del sistema para "
                       "definir sus permisos de accesos.")};
}

base::Control controlarConfiguracion(Entorno &entorno, int administrador)
{
    if (administrador == 0)
        return controlarDerecho(entorno, u"accesoconfiguracion");
    if (const base::Control rechazo = controlarDerecho(entorno))
        return rechazo;
    const Rows rows = entorno.conexion().query(
        QStringLiteral("SELECT id FROM [Lista Doctores] WHERE id = ? and administrador <> 0"), {administrador});
    if (rows->rowCount() > 0)
        return std::nullopt;
    return base::Rechazo{
        base::titulo::atencion,
        QStringLiteral("El usuario con cuya clave se ingresó a esta ventana ya no es Administrador del sistema. Cierre "
                       "la ventana y vuelva a ingresar con la clave de un Administrador.")};
}

} // namespace db
