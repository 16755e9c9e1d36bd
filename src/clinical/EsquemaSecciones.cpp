#include "clinical/EsquemaPartes.h"

#include "db/Declarar.h"

namespace clinical {

using namespace db::declarar;

db::Table seccion(const QString &name, const QVector<db::Column> &own)
{
    return tabla(
        name,
        contador() + largos("idconsulta nropaci") + fechas("fecha") + con(0, largos("iddoctor"))
            + enteros("examennormal") + memos("comentarios") + own,
        {indice("nropaci idconsulta"), indice("idconsulta")});
}

QVector<db::Table> tablasRevision()
{
    return {
        seccion(
            "Consulta - Estado General",
            banderas("astenia adinamia anorexia fiebre perdidapeso") + simples("perdidapesokg")
                + banderas("sudoracion insomnio")),
        seccion(
            "Consulta - Cardiopulmonar",
            banderas("disnea ortopnea palpitaciones dolorprecordial edemas sincope tos expectoracion hemoptisis "
                     "sibilancias claudicacion")),
        seccion(
            "Consulta - Digestivo",
            banderas("disfagia pirosis nauseas vomitos dolorabdominal distension diarrea constipacion melena "
                     "hematemesis proctorragia ictericia")
                + textos(100, "habitoevacuatorio")),
        seccion(
            "Consulta - Endocrino",
            banderas("poliuria polidipsia polifagia intoleranciafrio intoleranciacalor temblor caidapelo bocio "
                     "galactorrea hirsutismo")),
        seccion(
            "Consulta - Neurologico",
            banderas("cefalea mareos vertigo convulsiones perdidaconocimiento paresias parestesias temblores "
                     "trastornomarcha trastornohabla trastornomemoria")),
        seccion(
            "Consulta - ORL",
            banderas("otalgia otorrea hipoacusia acufenos epistaxis rinorrea obstruccionnasal odinofagia disfonia "
                     "ronquidos")),
        seccion(
            "Consulta - Urinario",
            banderas("disuria polaquiuria nocturia hematuria incontinencia urgencia tenesmo dolorlumbar chorrodebil "
                     "secrecionuretral")),
        seccion(
            "Consulta - Salud Mental",
            banderas("ansiedad animodepresivo insomnio irritabilidad ideassuicidas alucinaciones fobias "
                     "trastornoalimentario")
                + textos(150, "tratamientopsico")),
        seccion(
            "Consulta - Salud Sexual",
            banderas("activa dispareunia disfuncionerectil eyaculacionprecoz disminuciondeseo infecciones")
                + textos(100, "metodoanticonceptivo") + enteros("parejas")),
    };
}

QVector<db::Table> tablasExamen()
{
    return {
        seccion(
            "Consulta Exa - Fisico General",
            simples("peso talla imc temperatura") + enteros("pulso fr sistolica diastolica") + dobles("glucosa")
                + textos(100, "facies actitud marcha hidratacion")),
        seccion(
            "Consulta Exa - Cardio Vascular",
            enteros("frecuencia") + banderas("ritmoregular soplos r3 r4 ingurgitacion edemas")
                + textos(150, "choquepunta soplosdeta pulsos")),
        seccion(
            "Consulta Exa - Respiratorio",
            enteros("frecuencia saturacion")
                + banderas("tiraje murmullodisminuido rales roncus sibilancias soplos frotes")
                + textos(150, "torax percusion")),
        seccion(
            "Consulta Exa - Abdominal",
            banderas("blando doloroso defensa descompresion hepatomegalia esplenomegalia masas hernias ascitis")
                + textos(150, "ruidos localizacion tacto")),
        seccion(
            "Consulta Exa - Dermatologico",
            textos(150, "color lesiones localizacion distribucion") + banderas("prurito palidez ictericia cianosis")
                + textos(150, "faneras")),
        seccion(
            "Consulta Exa - Neurologico",
            enteros("glasgow") + banderas("lucido orientado signosmeningeos babinski romberg")
                + textos(150, "pupilas parescraneales motilidad sensibilidad reflejos marcha coordinacion")),
        seccion(
            "Consulta Exa - Mental",
            textos(
                150,
                "aspecto conciencia orientacion atencion memoria lenguaje pensamiento afectividad "
                "sensopercepcion juicio")),
        seccion(
            "Consulta Exa - Oftalmologico",
            textos(20, "agudezaod agudezaoi agudezaodcorr agudezaoicorr") + simples("presionod presionoi")
                + textos(150, "parpados conjuntiva cornea pupilas motilidad fondood fondooi")),
        seccion("Consulta Exa - ORL", textos(150, "oidoder oidoizq nariz fauces amigdalas laringe cuello")),
        seccion(
            "Consulta Exa - Genitourinario",
            banderas("punopercusion globovesical fimosis varicocele hidrocele")
                + textos(150, "pene testiculos prostata uretra")),
        seccion(
            "Consulta Exa - Ginecologico",
            textos(150, "vulva vagina cuello utero anexos especuloscopia tactovaginal tactorectal")
                + banderas("flujo dolor sangrado") + textos(150, "flujodeta")),
        seccion(
            "Consulta Exa - Mamario",
            textos(150, "inspeccion palpacionder palpacionizq axilader axilaizq")
                + banderas("nodulos secrecion retraccion adenopatias") + textos(150, "nodulosdeta secreciondeta")),
    };
}

} // namespace clinical
