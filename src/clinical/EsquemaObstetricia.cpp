#include "clinical/EsquemaPartes.h"

#include "db/Declarar.h"

namespace clinical {

using namespace db::declarar;

namespace {

// One row a pregnancy. Choices are the index of the option; usual weight in kg, height in m.
db::Table embarazos()
{
    db::Table table = tabla(
        "Pacientes Embarazos",
        largos("NroPaci") + enteros("NroEmba") + fechas("FUM fppeco") + con(1, enteros("CantiFeto"))
            + banderas("FinEmba") + fechas("FechaParto") + simples("PesoHabi talla imc") + textos(100, "lugarparto")
            + enteros("antitetanica") + textos(20, "mesdosis1 mesdosis2") + enteros("antirubeola")
            + enteros(
                serie("fumaacti", 1, 3) + ' ' + serie("fumapasi", 1, 3) + ' ' + serie("drogas", 1, 3) + ' '
                + serie("alcohol", 1, 3) + ' ' + serie("violencia", 1, 3))
            + enteros("tsh creatinina tp exaodon examamas inspecvisu pap colp toxomenos20 toxomas20 vihmenos20soli "
                      "vihmenos20reali vihmas20soli vihmas20reali hctomenos20 hctomas20 bactermenos20 bactermas20 "
                      "vdrlmenos20 vdrlmas20 ptgomenos20 ptgomas20")
            + simples("hb0 hb1") + enteros("hb110 hb111") + simples("glu0 glu1") + enteros("glu1050 glu1051")
            + enteros("fe folatos chagas palu estrep prepa conse sificonfir tratasifi consulta1")
            + banderas("anteanemia anteciru antemalfor antetrombo anteotra anteviolen") + memos("detaanteper")
            + banderas("antepreeclam antetrastor anteotrafa") + memos("detaantefami") + fechas("fechaultiemba")
            + enteros("antepesoulti")
            + banderas("antegeme antepreeclamob anteretar anterotu anteparto anteplacen anteproduc anteincom "
                       "antedespren anteproblem")
            + memos("detaanteobste") + enteros("anteemba fracameto") + memos("observaciones"));
    table.key = {QStringLiteral("NroPaci"), QStringLiteral("NroEmba")};
    return table;
}

// One row a newborn: weight in g, height and head circumference in mm.
db::Table finalizados()
{
    db::Table table = tabla(
        "Pacientes Embarazos Finalizados",
        largos("NroPaci") + enteros("NroEmba NroFeto") + fechas("fechaparto") + textos(100, "lugarparto")
            + enteros("iniparto termi") + textos(100, "termideta") + enteros("presen episiotomia desga alum placen arm")
            + textos(100, "partoatendidopor neonatoatendidopor") + enteros("controlemba gesta para parto")
            + banderas("muertefetal") + fechas("fechaovito") + textos(100, "nombre") + enteros("sexo")
            + largos("pesonacer") + simples("talla") + con(0, simples("percef")) + banderas("malfcong")
            + memos("detallesnacido") + enteros("tsh torch toxo vdrl serologia bili hbpatia") + memos("bacteriologia")
            + fechas("fechaingreso fechaalta") + textos(255, "diagingreso") + enteros("alimentacion anticoncep")
            + textos(100, "anticoncepmetodo") + fechas(serie("cpfecha", 1, 3)) + simples(serie("cptemp", 1, 3))
            + enteros(serie("cppulso", 1, 3)) + textos(20, serie("cppa", 1, 3))
            + textos(
                100,
                serie("cpinvo", 1, 3) + ' ' + serie("cploquios", 1, 3) + ' ' + serie("cpmamas", 1, 3) + ' '
                    + serie("cpanimo", 1, 3))
            + memos(serie("cpobser", 1, 3)) + memos("notas"));
    table.key = {QStringLiteral("NroPaci"), QStringLiteral("NroEmba"), QStringLiteral("NroFeto")};
    return table;
}

} // namespace

QVector<db::Table> tablasObstetricia()
{
    return {
        embarazos(),
        finalizados(),
        registros(
            "Pacientes Control Materno",
            enteros("NroEmba") + fechas("fecha") + dobles("AltuUter") + simples("pesoactual PesoGana DinaUter")
                + enteros("Sistolica Diastolica") + banderas("MoviFeta Edema prurito") + memos("Observaciones")),
        // Lengths in mm, weight in g. The words keep the blanks they are stored with.
        registros(
            "Pacientes Control Feto",
            enteros("NroEmba NroFeto") + fechas("fecha")
                + dobles("DiameBipa CircuCraneal DiameToracico Abdomen CircunAbdo LongiFemur") + largos("PesoFeto")
                + simples("TallaFeto CRL") + enteros("FreCar") + textos(20, "PresenFeto UbiPlacen Madu Liquido")
                + textos(100, "hechopor") + memos("Observaciones")),
        // Weight in kg, lengths in cm.
        registros("Pacientes Controles Antropometricos", fechas("fecha") + simples("peso talla pericefa")),
    };
}

} // namespace clinical
