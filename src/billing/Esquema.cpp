#include "billing/Esquema.h"

#include "db/Declarar.h"

namespace billing {

using namespace db::declarar;

namespace {

db::Table ordenes()
{
    return registros(
        "Pacientes Ordenes",
        fechas("fecha") + con(0, largos("numero idpractica")) + banderas("entregada") + fechas("fechaentrega")
            + banderas("autorizada") + fechas("fechaautorizacion fechaderivacion")
            + con(0, enteros("sesiones pagaiva") + simples("costo")) + textos(1, "estado") + con(0, simples("costo_os"))
            + textos(1, "estado_os") + con(0, largos("iddoctor idobrasocial idderivado idusuariocarga"))
            + memos("observaciones") + textos(20, "diente cara") + con(0, enteros("tipoasistencia")),
        {indice("fecha"), indice("idobrasocial idpractica")});
}

db::Table sesiones()
{
    return registros(
        "Pacientes Sesiones",
        largos("idorden") + fechas("fecha") + textos(50, "codigoautorizacion") + con(0, largos("iddoctor"))
            + memos("observaciones") + banderas("autorizadafuerafecha liquidadas"),
        {indice("idorden")});
}

db::Table pagos()
{
    db::Table table = registros(
        "Pacientes Pagos",
        con(0, largos("idorden")) + fechas("fecha") + simples("importe") + textos(1, "quien")
            + con(0, largos("iddoctor") + enteros("turno libros")) + memos("observaciones"),
        {indice("idorden"), indice("fecha")});
    // The balance of a patient sums the payments of one kind.
    table.indexes.first() = indice("NroPaci quien");
    return table;
}

QVector<db::Table> precios()
{
    return {
        tabla("Lista Nomenclador", contador() + textos(20, "codigo") + textos(255, "nombre"), {indice("codigo")}),
        lista("Lista Derivadores"),
        tabla(
            "Lista Precios",
            contador() + largos("idobrasocial idpractica") + simples("costopaciente costocobertura")
                + banderas("usarporcentaje") + simples("costoporcentaje cobradr"),
            {indice("idobrasocial idpractica"), indice("idpractica")})};
}

db::Table caja()
{
    return tabla(
        "Caja",
        contador() + fechas("fecha") + con(0, largos("doctor")) + textos(255, "detalle") + simples("importe")
            + con(0, enteros("modopago")) + textos(255, "detallepago"),
        {indice("fecha")});
}

// Articles are linked by their code, not by id.
QVector<db::Table> stock()
{
    return {
        tabla("Lista Productos", contador() + textos(50, "codigo") + textos(150, "descripcion"), {indice("codigo")}),
        tabla(
            "Lista Stock",
            contador() + largos("doctorid") + textos(50, "codigo")
                + con(0, simples("unidenvase costo existente minimo")),
            {indice("doctorid codigo")}),
        tabla(
            "Lista Usos",
            contador() + textos(20, "nomencla") + textos(50, "producto") + con(0, simples("cantidad")),
            {indice("nomencla")})};
}

QVector<db::Table> presupuestos()
{
    return {
        registros(
            "Pacientes Presupuestos",
            con(0, largos("idpractica iddoctor idobrasocial") + simples("costo costo_os")) + textos(20, "diente cara")),
        registros("Pacientes Presupuestos General", fechas("fecha") + memos("observaciones"))};
}

} // namespace

db::Schema esquema()
{
    return {
        QVector<db::Table>{ordenes(), sesiones(), pagos()} + precios() + QVector<db::Table>{caja()} + stock()
        + presupuestos()};
}

} // namespace billing
