#include "db/ProfesionalInicial.h"

#include "base/Mensajes.h"
#include "db/Recordset.h"

namespace db {

std::optional<int> asegurarProfesional(Connection &connection, base::Mensajes &mensajes)
{
    if (connection.query(QStringLiteral("SELECT id FROM [Lista Doctores] WHERE tipo = 0"))->rowCount() > 0)
        return {};
    Recordset doctores(connection, QStringLiteral("SELECT * FROM [Lista Doctores] WHERE id = 0"));
    doctores.addNew();
    doctores.set(u"tipo", 0);
    doctores.set(u"NomDoc", QStringLiteral("Juan Pérez"));
    const int id = int(doctores.update());
    mensajes.informar(
        QStringLiteral("Atención"),
        QStringLiteral(
            "Como el sistema detectó que No existe ningún Médico cargado, se procedió a crear uno de prueba. "
            "Al iniciar el sistema diríjase a la ventana 'Configuración', opción 'Médicos y Usuarios', para "
            "cargar los datos del Médico real."));
    return id;
}

} // namespace db
