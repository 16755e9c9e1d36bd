#include "clinical/EsquemaPartes.h"

#include "db/Declarar.h"

namespace clinical {

using namespace db::declarar;

namespace {

// The choices are kept as the index of the option; the columns ending in "lis" or "lista" hold the id of a list's row.
db::Table consulta()
{
    return seccion(
        "Consulta - Ginecologico",
        fechas("fum")
            // Smear
            + enteros("papexamen") + textos(255, "papexamendeta") + fechas("papfecha") + largos("papresullis")
            + textos(255, "papresuldeta") + enteros("papante")
            + textos(255, "papantedeta")
            // Cycle, in days
            + enteros("ciclo cicloduradesde ciclodurahasta ciclomenstrudesde ciclomenstruhasta cicloflujo ciclodisme "
                      "ciclosangra")
            + textos(255, "ciclosangradeta") + enteros("ciclosindro")
            + textos(255, "ciclosindrodeta")
            // Sexual life
            + enteros("vidaactiva") + textos(255, "vidaactivadeta") + enteros("vidasati") + textos(255, "vidasatideta")
            + enteros("vidameto") + largos("vidametosilista vidametonolista") + textos(255, "vidametosideta")
            + enteros("vidadispa") + textos(255, "vidadispadeta") + enteros("vidaflujo") + textos(255, "vidaflujodeta")
            + enteros("vidadolor") + textos(255, "vidadolordeta")
            + enteros("vidanuparesex")
            // Sexually transmitted infections
            + enteros("infecante") + textos(255, "infecantedeta") + largos("infecproteclista") + enteros("infecprueba")
            + textos(255, "infecpruebadeta") + fechas("infecfecha")
            + enteros("infecresul")
            // Breasts
            + largos("mamasproblelis") + textos(255, "mamasprobledeta") + largos("mamasautolis")
            + textos(255, "mamasautodeta") + enteros("mamasmamo") + textos(255, "mamasmamodeta") + enteros("mamasante")
            + textos(255, "mamasantedeta") + fechas("mamasfecha") + largos("mamasresullis")
            + textos(255, "mamasresuldeta")
            // Bone densitometry
            + enteros("densito") + fechas("densitofecha") + simples("densitoresult densitoresulz")
            + largos("densitoresullista"));
}

} // namespace

QVector<db::Table> tablasGinecologia()
{
    QVector<db::Table> tables{
        consulta(),
        registros(
            "Antecedentes Gineco - Obstetricos",
            enteros(serie("antegine", 0, 6)) + textos(255, serie("anteginedeta", 0, 10))
                + textos(100, "estironpuberal lactancia") + memos("antegineobser") + enteros(serie("anteobste", 13, 22))
                + banderas("espontaneos3") + memos("anteobsteobser")),
        registros(
            "Pacientes Enfermedades Ginecologicas", largos("idenfermedad") + fechas("fecha") + memos("observaciones")),
        registros(
            "Pacientes Operaciones Ginecologicas", largos("idoperacion") + fechas("fecha") + memos("observaciones")),
        registros(
            "Pacientes Esquema Ginecologico",
            fechas("fecha") + enteros("tipo") + largos("iddoctor") + memos("descripcion") + binarios("imagen")),
        registros(
            "Pacientes Lesiones Vulva",
            fechas("fecha") + textos(150, "lesion localizacion") + enteros("posix posiy") + largos("iddoctor")
                + memos("observaciones")),
    };
    for (const char *name :
         {"Lista Resultados de PAP",
          "Lista Metodos Anticonceptivos",
          "Lista Motivos No Anticoncepcion",
          "Lista Proteccion ITS",
          "Lista Problemas Mamarios",
          "Lista Autoexamen Mamario",
          "Lista Resultados Mamografia",
          "Lista Resultados Densitometria",
          "Lista Enfermedades Ginecologicas",
          "Lista Operaciones Gineco - Obstetrica"})
        tables.append(lista(QString::fromUtf8(name)));
    return tables;
}

QVector<db::Table> tablasAntecedentes()
{
    return {
        registros(
            "Antecedentes Generales",
            banderas(serie("a", 0, 12)) + enteros("tipodiabete") + textos(150, "hipotiroidismoper coagulopatiasper")
                + memos("detallesanteper detallesantefam") + banderas("Ejercicios") + textos(100, "ejerfrec")
                + memos("ejerdeta") + banderas("Tabaco") + largos("idtabaco") + enteros("tabanume tabaedad")
                + banderas("tabaexfuma") + textos(50, "tabaexfumadesde tabaexfumaprome tabaexfumadurante")
                + memos("tabadeta") + banderas("Alcohol") + largos("idalcohol") + textos(50, "alcofrec alconume")
                + enteros("alcoedad") + memos("alcodeta") + banderas("Drogas") + largos("iddrogas")
                + memos("drogasdeta")
                + enteros("antesoestu antesomayornivel antesohijosvivos antesovive antesoapoyo antesosegurocasa "
                          "antesosegurorelacion antesovivienda antesosanitaria antesorecursos")
                + memos("antesodeta")),
        registros(
            "Antecedentes Familiares",
            enteros("fami") + banderas(serie("a", 0, 12)) + enteros("tipodiabete")
                + textos(150, "hipotiroidismo coagulopatias") + memos("detalles"),
            {indice("NroPaci fami")}),
        // `fami` 0 is the patient, any other number a relative.
        registros("Antecedentes Perso - Fami - Patologias", con(0, enteros("fami")) + largos("idpatologia")),
        registros(
            "Antecedentes Perso - Fami - Medicamentos",
            con(0, enteros("fami")) + largos("idmedicamento") + textos(255, "medicamento")),
        registros(
            "Antecedentes Perinatologicos",
            enteros("semgesta gesta para parto1 parto2") + textos(100, "lugarparto")
                + enteros("controlemba apgar1 apgar2") + simples("peso talla pericefa")),
        lista("Lista Tabaco"),
        lista("Lista Alcohol"),
        lista("Lista Otras Drogas"),
    };
}

} // namespace clinical
