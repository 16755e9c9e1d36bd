#include "agenda/Esquema.h"

#include "db/Declarar.h"

namespace agenda {

using namespace db::declarar;

namespace {

db::Table turnos()
{
    return tabla(
        "Agenda Turnos",
        contador() + largos("NroHC") + fechas("Fecha") + largos("Doctor") + con(0, largos("motivo"))
            + banderas("llegado Atendido pagado") + con(0, largos("idcaja")) + memos("observacionestur")
            + con(0, largos("idorden idsesion") + enteros("numesesion")) + fechas("fechahoraasignado")
            + textos(100, "usuarioasigtur")
            // When the patient came: nothing where an older program marked it, and where he is absent.
            + fechas("fechahorallegada"),
        {indice("Doctor Fecha"), indice("Fecha"), indice("NroHC")});
}

db::Table horarios()
{
    Columnas horas;
    for (const char *dia : {"Do", "Lu", "Ma", "Mi", "Ju", "Vi", "Sa"})
        horas += fechas(QStringLiteral("%1MaDesde %1MaHasta %1TaDesde %1TaHasta").arg(QLatin1String(dia)));
    return tabla(
        "Agenda Turnos Horarios",
        contador() + largos("iddoctor") + fechas("fechadesde fechahasta") + con(20, enteros(serie("durtur", 1, 7)))
            + horas
            // -1: no limit.
            + con(-1, enteros("cantidadsobreturnos cantidadsobreturnoshora"))
            + banderas("sobreturnoshoraresaltar solosobreturnoshoraplanilla"),
        {indice("iddoctor")});
}

// A day, month or year of 0 means every one.
db::Table noSeAtiende()
{
    return tabla(
        "Agenda Turnos No Se Atiende",
        contador() + largos("iddoctor") + con(0, enteros("dia mes anio")),
        {indice("iddoctor")});
}

/// The practice's own telephone list.
db::Table telefonos()
{
    return tabla(
        "Telefonos",
        contador() + textos(100, "nombre") + textos(50, "telefono celular") + textos(150, "email direccion")
            + memos("observaciones"));
}

} // namespace

db::Schema esquema() { return {{turnos(), horarios(), noSeAtiende(), telefonos()}}; }

} // namespace agenda
