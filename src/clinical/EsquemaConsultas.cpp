#include "clinical/EsquemaPartes.h"

#include "db/Declarar.h"

namespace clinical {

using namespace db::declarar;

namespace {

db::Table plantillas()
{
    // One row; a section without a text of its own has no column.
    return tabla(
        "Plantillas Consulta",
        memos("revi-estadogeneral revi-cardiopulmonar revi-digestivo revi-endocrino revi-neurologico revi-ong "
              "revi-genitourinario-hombres revi-urinario-mujeres revi-saludmental revi-saludsexual-hombres "
              "revi-saludsexual-mujeres exa-fisicogeneral exa-cardiovascular exa-respiratorio exa-abdominal "
              "exa-dermatologico exa-neurologico exa-mental exa-oftalmologico exa-ong "
              "exa-genitourinario-hombres"));
}

} // namespace

QVector<db::Table> tablasConsultas()
{
    return {
        registros(
            "Consultas",
            con(0, largos("iddoctor")) + fechas("Fecha") + memos("histoenferactu") + enteros("control controldias")
                + memos("observaciones")
                + textos(250, "detallemotivo detallediagnos detalletrata detalleestusoli detalleestureali"),
            {indice("Fecha")}),
        registros(
            "Consultas Items",
            largos("idconsulta") + enteros("tipoconsulta") + con(0, enteros("tipoitem") + largos("iditem"))
                + memos("item") + con(0, enteros("cie10 fami")),
            {indice("idconsulta tipoconsulta"), indice("tipoconsulta iditem")}),
        // The tree of the classification: a row's `nivel` is its parent's `iddiagnostico`, "*0" at the top.
        tabla(
            "CIE10",
            contador() + textos(10, "iddiagnostico") + textos(255, "diagnostico") + textos(10, "nivel"),
            {indice("nivel"), indice("iddiagnostico")}),
        plantillas(),
        tabla("Lista Motivos Consulta", contador() + textos(150, "Motivo") + con(0, largos("prioridad"))),
        lista("Lista Estudios", 150),
        lista("Lista Patologias", 150),
        lista("Lista Tratamientos", 150),
        tabla(
            "Lista Medicamentos",
            contador() + textos(150, "nombre presentacion") + textos(50, "grupo") + con(0, largos("prioridad")))};
}

} // namespace clinical
