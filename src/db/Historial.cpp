#include "db/Historial.h"

#include "base/Clock.h"
#include "db/Connection.h"
#include "db/Entorno.h"

namespace db {

void registrarHistorial(Entorno &entorno, const QString &ventana, const QString &accion)
{
    Connection &connection = entorno.conexion();
    // What cannot be written is told once at start; a look at the data must not be stopped by its log.
    if (connection.readOnly())
        return;
    connection.execute(
        QStringLiteral("INSERT INTO [Historial] (fecha,equipo,iddoctor,ventana,accion) VALUES (")
            + connection.dialect().dateTime(entorno.clock().now()) + QStringLiteral(",?,?,?,?)"),
        {entorno.equipo(), entorno.usuarioActual(), ventana, accion.trimmed()});
}

int eliminarHistorial(Entorno &entorno, QDate hasta)
{
    Connection &connection = entorno.conexion();
    Transaction transaction(connection);
    const int eliminadas = connection.execute(
        QStringLiteral("DELETE FROM [Historial] WHERE fecha <= ") + connection.dialect().dayEnd(hasta));
    registrarHistorial(
        entorno,
        QStringLiteral("Configuración del Sistema"),
        QStringLiteral("Se eliminaron %1 registros del historial hasta el %2.")
            .arg(eliminadas)
            .arg(hasta.toString(QStringLiteral("dd/MM/yyyy"))));
    transaction.commit();
    return eliminadas;
}

} // namespace db
