#include "demo/Practica.h"

namespace demo {

// Whom a practice calls; numbers that nobody has.
void crearTelefonos(Practica &practica)
{
    const QString sql = practica.lote.insertar(
        QStringLiteral("Telefonos"), QStringLiteral("nombre telefono celular email observaciones"));
    const char *entradas[][5] = {
        {"Ambulancias", "107", "", "", "Emergencias, las 24 horas"},
        {"Laboratorio Del Parque",
         "(0341) 455-0110",
         "341-555-0111",
         "resultados@labdelparque.example",
         "Retiran a las 12 y a las 18"},
        {"Diagnóstico por imágenes Centro",
         "(0341) 455-0122",
         "",
         "turnos@imagenescentro.example",
         "Ecografías y radiografías"},
        {"Farmacia de la Plaza", "(0341) 455-0133", "341-555-0134", "", "Abre los domingos"},
        {"Hospital Provincial, guardia", "(0341) 455-0144", "", "", ""},
        {"Insumos médicos (pedidos)",
         "(0341) 455-0155",
         "341-555-0156",
         "pedidos@insumos.example",
         "Guantes, gasas, camilla"},
        {"Sistema, asistencia", "", "341-555-0166", "ayuda@asistencia.example", ""},
        {"Limpieza, Sra. Norma", "", "341-555-0177", "", "Lunes, miércoles y viernes"},
        {"Electricista", "", "341-555-0188", "", ""},
        {"Administración del edificio", "(0341) 455-0199", "", "consorcio@edificio.example", "Expensas antes del 10"}};
    for (const auto &entrada : entradas) {
        db::Params valores;
        for (const char *texto : entrada)
            valores << QString::fromUtf8(texto);
        practica.lote.escribir(sql, valores);
    }
}

} // namespace demo
