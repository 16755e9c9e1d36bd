#include "Escenas.h"

#include "app/ImportacionAccess.h"
#include "app/forms/AvanceImportacion.h"
#include "base/Mensajes.h"

namespace pantallas {

namespace {

db::access::Informe informe()
{
    db::access::Informe informe;
    informe.tablas
        = {{QStringLiteral("Pacientes"), 8412, 57, true}, {QStringLiteral("Agenda Turnos"), 96305, 12, true}};
    informe.tablas.resize(37); // the others are empty
    informe.salteadas = QStringList{QStringLiteral("Usuarios"), QStringLiteral("Estadisticas")};
    informe.original = QStringLiteral("/home/consultorio/Vastelo/Datos (Access original).mdb");
    informe.archivo = QStringLiteral("/home/consultorio/Vastelo/Datos (importación de Access).txt");
    return informe;
}

} // namespace

std::vector<Pantalla> escenasDeAccess()
{
    return {
        {QStringLiteral("mensaje-convertir"),
         [](Escena &) {},
         [](Escena &, base::Mensajes &mensajes) {
             (void)mensajes.pregunta(
                 app::tituloImportacion,
                 app::preguntaDeImportacion(QStringLiteral("/home/consultorio/Vastelo/Datos.mdb")));
         },
         false},
        {QStringLiteral("avance-conversion"),
         [](Escena &e) {
             const auto avance = std::make_shared<app::AvanceImportacion>(&e.marco());
             (void)avance->avanzar(QStringLiteral("Pasando los datos: Agenda Turnos"), 61'250, 104'717);
             // It stays as long as the frame.
             QObject::connect(&e.marco(), &QObject::objectNameChanged, &e.marco(), [avance] {});
         },
         {},
         false},
        {QStringLiteral("mensaje-convertida"),
         [](Escena &) {},
         [](Escena &, base::Mensajes &mensajes) {
             mensajes.informar(QStringLiteral("Información"), informe().resumen());
         }},
    };
}

} // namespace pantallas
