#include "db/Verificacion.h"

#include "base/Mensajes.h"
#include "db/Connection.h"
#include "db/Error.h"

namespace db {

namespace {
const QString tituloError = QStringLiteral("Error...");

Rows sondear(Connection &connection)
{
    const QString sonda = QStringLiteral("SELECT * FROM [CIE10] WHERE id = 2");
    try {
        return connection.query(sonda);
    } catch (const Error &error) {
        if (error.kind() != Error::Kind::Lost || connection.inTransaction())
            throw;
        // The server went away since the last action. Nothing was under way: when it is back, there is nothing to tell.
        return connection.query(sonda);
    }
}

} // namespace

void avisarBaseAusente(base::Mensajes &mensajes)
{
    mensajes.fallar(
        tituloError,
        QStringLiteral("No se encuentra la Base de Datos, asigne una ruta válida en el menú 'Red' del programa."));
}

void avisarBaseIncompatible(base::Mensajes &mensajes)
{
    mensajes.fallar(
        tituloError,
        QStringLiteral("La Base de Datos es incompatible con el programa, asigne una ruta válida en el menú 'Red' del "
                       "programa."));
}

void avisarBaseDaniada(base::Mensajes &mensajes, const Error &error)
{
    const QStringList lineas{
        QStringLiteral("ERROR... LA BASE DE DATOS ESTÁ DAÑADA!!!"),
        QStringLiteral("Descripción del Error: (%1) %2").arg(error.number()).arg(error.description()),
        QStringLiteral("PRIMERA SOLUCIÓN: Intente repararla desde la opción 'Compactar Base de Datos' de la ventana "
                       "'Back-up' del menú principal."),
        QStringLiteral(
            "SEGUNDA SOLUCIÓN: Si luego de compactarla el error continúa, entonces desde la misma ventana "
            "'Back-up' restaure la copia de respaldo más reciente que hizo el programa, para ello seleccione "
            "el primer respaldo de la lista de la derecha de la ventana y luego presione el botón inferior "
            "'Restaurar Copia Seleccionada', a continuación debe indicar que Sí al mensaje de advertencia y "
            "por último reincie el programa."),
    };
    mensajes.fallar(tituloError, lineas.join(QStringLiteral("\n\n")));
}

bool verificarCatalogo(Connection &connection, base::Mensajes &mensajes)
{
    bool compatible = false;
    try {
        const Rows rows = sondear(connection);
        compatible = connection.dialect().kind() == Dialect::Kind::SqlServer || rows->rowCount() == 1;
    } catch (const Error &error) {
        const bool foreign = error.kind() == Error::Kind::NoSuchTable || error.kind() == Error::Kind::NoSuchColumn;
        if (!foreign || connection.dialect().kind() == Dialect::Kind::SqlServer) {
            avisarBaseDaniada(mensajes, error);
            return false;
        }
    }
    if (!compatible)
        avisarBaseIncompatible(mensajes);
    return compatible;
}

} // namespace db
