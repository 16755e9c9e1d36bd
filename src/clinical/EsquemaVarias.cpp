#include "clinical/EsquemaPartes.h"

#include "db/Declarar.h"

namespace clinical {

using namespace db::declarar;

namespace {

QVector<db::Table> vacunas()
{
    // Groups: 1 official, 2 special, 3 other. Suggested ages in months.
    return {
        tabla(
            "Lista Vacunas",
            contador() + textos(150, "Vacuna") + enteros("Tipo") + con(0, largos("prioridad") + enteros("NroDosis"))
                + enteros(serie("Edad", 1, 5))),
        registros(
            "Pacientes Vacunas", largos("idvacuna") + enteros("dosis") + fechas("fecha") + memos("observaciones"))};
}

QVector<db::Table> certificados()
{
    // Margins in millimetres.
    return {
        tabla(
            "Certificados",
            contador() + textos(150, "titulo") + memos("encabezado contenido")
                + con(0, enteros("tipohoja") + simples("margensup margeninf margenizq margender"))),
        tabla(
            "Certificados Historial",
            contador() + fechas("fecha") + textos(150, "titulo") + memos("contenido"),
            {indice("fecha")})};
}

QVector<db::Table> estudios()
{
    return {
        registros(
            "Pacientes Estudios",
            fechas("fecha") + largos("idestudio iddoctor") + textos(150, "estudio") + memos("resultado")
                + memos("observaciones")),
        // `archivo` is the name of a file in the folder of study pictures.
        registros(
            "Pacientes Estudios Imagenes",
            largos("idestudio") + fechas("fecha") + textos(255, "archivo detalle"),
            {indice("idestudio")}),
        registros(
            "Pacientes Analisis",
            fechas("fecha") + largos("idestudio iddoctor") + textos(150, "analisis resultado") + textos(50, "unidad")
                + memos("observaciones"))};
}

// One text per eye.
QVector<db::Table> ojos()
{
    return {
        registros(
            "Pacientes Biomicroscopia",
            fechas("fecha") + largos("iddoctor")
                + textos(
                    255,
                    "parpadosod parpadosoi conjuntivaod conjuntivaoi corneaod corneaoi "
                    "camaraanteriorod camaraanterioroi irisod irisoi pupilaod pupilaoi "
                    "cristalinood cristalinooi vitreood vitreooi")
                + memos("observaciones") + binarios("imagenod imagenoi")),
        registros(
            "Pacientes Fondo de Ojo",
            fechas("fecha") + largos("iddoctor")
                + textos(
                    255,
                    "papilaod papilaoi maculaod maculaoi vasosod vasosoi retinaod retinaoi "
                    "periferiaod periferiaoi")
                + memos("observaciones") + binarios("imagenod imagenoi")),
        registros(
            "Pacientes Nervio Optico",
            fechas("fecha") + largos("iddoctor") + simples("excavacionod excavacionoi")
                + textos(255, "bordesod bordesoi colorod coloroi anillood anillooi") + memos("observaciones")
                + binarios("imagenod imagenoi"))};
}

QVector<db::Table> otras()
{
    return {
        registros(
            "Pacientes Odontogramas",
            fechas("fecha") + textos(20, "diente cara") + con(0, enteros("estado") + largos("idpractica"))
                + largos("iddoctor") + memos("observaciones")),
        registros(
            "Pacientes Cirugias",
            fechas("fecha") + textos(150, "cirugia cirujano ayudante anestesista lugar anestesia") + largos("iddoctor")
                + textos(255, "diagnostico") + memos("descripcion observaciones")),
        registros(
            "Pacientes Alimentacion",
            fechas("fecha") + largos("iddoctor") + textos(150, "titulo") + simples("calorias")
                + memos("dieta observaciones")),
        registros("Pacientes Pautas", fechas("fecha") + largos("iddoctor") + textos(150, "titulo") + memos("pauta"))};
}

} // namespace

QVector<db::Table> tablasVarias() { return vacunas() + certificados() + estudios() + ojos() + otras(); }

} // namespace clinical
