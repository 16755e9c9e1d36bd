#include "clinical/EsquemaPartes.h"

#include "db/Declarar.h"

namespace clinical {

using namespace db::declarar;

namespace {

// "hombroflexionder hombroflexionizq ..." for every movement of both sides.
QString ambosLados(const QString &movements)
{
    QStringList names;
    for (const QString &movement : movements.split(u' ', Qt::SkipEmptyParts))
        names << movement + QStringLiteral("der") << movement + QStringLiteral("izq");
    return names.join(u' ');
}

// A sub-record of the musculoskeletal section.
db::Table subregistro(const QString &name, const Columnas &own)
{
    return seccion(name, con(0, largos("idmuscu")) + own);
}

} // namespace

QVector<db::Table> tablasMusculoesqueleticas()
{
    return {
        seccion(
            "Consulta - Musculoesqueletico",
            banderas("artralgias mialgias rigidez tumefaccion debilidad limitacion lumbalgia cervicalgia")
                + textos(150, "localizacion")),
        subregistro(
            "Consulta - Muscu Ficha Kinesica",
            textos(255, "diagnostico motivo") + memos("antecedentes inspeccion palpacion postura marcha")
                + enteros("dolor") + textos(255, "localizaciondolor irradiacion agravantes atenuantes")
                + memos("objetivos tratamiento evolucion") + enteros("sesiones")),
        // Degrees.
        subregistro(
            "Consulta - Muscu Medicion Articular",
            simples(ambosLados("hombroflexion hombroextension hombroabduccion hombroaduccion hombrorotint "
                               "hombrorotext codoflexion codoextension pronacion supinacion munecaflexion "
                               "munecaextension munecaradial munecacubital caderaflexion caderaextension "
                               "caderaabduccion caderaaduccion caderarotint caderarotext rodillaflexion "
                               "rodillaextension tobillodorsal tobilloplantar inversion eversion"))
                + simples("cervicalflexion cervicalextension lumbarflexion lumbarextension")),
        // Strength from 0 to 5, also "3+" or "4-".
        subregistro(
            "Consulta - Muscu Equilibrio Muscular Extre Sup",
            textos(
                10,
                ambosLados("trapecio serrato romboides deltoidesant deltoidesmed deltoidespost pectoral "
                           "dorsalancho rotadoresint rotadoresext biceps triceps braquial pronadores "
                           "supinador flexoresmuneca extensoresmuneca flexoresdedos extensoresdedos "
                           "interoseos oponente"))),
        subregistro(
            "Consulta - Muscu Equilibrio Muscular Extre Inf",
            textos(
                10,
                ambosLados("psoas gluteomayor gluteomedio aductores rotadoresint rotadoresext sartorio "
                           "tensorfascia cuadriceps isquiotibiales tibialant tibialpost gemelos soleo "
                           "peroneos flexoresdedos extensoresdedos extensorhallux"))
                + textos(10, "abdominales espinales cuadradolumbar")),
    };
}

} // namespace clinical
