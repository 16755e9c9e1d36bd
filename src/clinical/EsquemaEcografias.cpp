#include "clinical/EsquemaPartes.h"

#include "db/Declarar.h"

namespace clinical {

using namespace db::declarar;

namespace {

// Measures in cm, volumes in cubic cm.
db::Table pelvica()
{
    return registros(
        "Pacientes Ultrasonografia Pelvica",
        fechas("fecha") + textos(100, "medicoreferentepelvi") + dobles("longiutepelvi anteutepelvi transverutepelvi")
            + textos(150, "posiutepelvi") + memos("descriutepelvi")
            + dobles("longiderpelvi antederpelvi transverderpelvi voluderpelvi") + memos("descriderpelvi")
            + dobles("longiizqpelvi anteizqpelvi transverizqpelvi voluizqpelvi") + memos("descriizqpelvi")
            + memos("sacopelvi diagnospelvi"));
}

db::Table primerTrimestre()
{
    return registros(
        "Pacientes Ultrasonografia Primer",
        fechas("fecha") + textos(100, "medicoreferenteprimer") + fechas("furprimer")
            + enteros("amesemaprimer amediasprimer") + textos(255, "embaprimer sacoprimer")
            + dobles("diameprimer vesiprimer actiprimer") + textos(255, "fetaprimer coriprimer liquiprimer")
            + dobles("longiprimer") + textos(255, "oriprimer cuerpoprimer") + memos("obserprimer")
            + enteros("usgsemaprimer usgdiasprimer") + fechas("partoprimer") + memos("diagnosprimer"));
}

db::Table tercerTrimestre()
{
    return registros(
        "Pacientes Ultrasonografia Tercer",
        fechas("fecha") + textos(100, "medicoreferentetercer") + fechas("furtercer")
            + enteros("amesematercer amediastercer") + textos(255, "embatercer presentercer situtercer dorsotercer")
            + enteros("frecutercer")
            + textos(
                255,
                "caratercer ventritercer lineatercer columtercer estotercer rinotercer vejitercer "
                "madutercer locatercer")
            + dobles("inditercer bipacmtercer") + enteros("bipasematercer bipadiastercer") + dobles("cefacmtercer")
            + enteros("cefasematercer cefadiastercer") + dobles("abdocmtercer")
            + enteros("abdosematercer abdodiastercer") + dobles("femurcmtercer")
            + enteros("femursematercer femurdiastercer") + dobles("pesotercer percentercer") + textos(50, "sexotercer")
            + enteros("tonotercer movitercer liquitercer respitercer totaltercer biomesematercer biomediastercer")
            + fechas("fpptercer") + memos("diagnostercer"));
}

} // namespace

QVector<db::Table> tablasEcografias() { return {pelvica(), primerTrimestre(), tercerTrimestre()}; }

} // namespace clinical
