#include "maintenance/Listas.h"

#include <algorithm>

namespace maintenance {

namespace {

const QString grupoPacientes = QStringLiteral("Pacientes");
const QString grupoConsultas = QStringLiteral("Agenda y consultas");
const QString grupoHabitos = QStringLiteral("Antecedentes");
const QString grupoGinecologia = QStringLiteral("Ginecología");
const QString grupoOrdenes = QStringLiteral("Órdenes y profesionales");

Lista simple(const char *tabla, const QString &titulo, const QString &grupo, const QVector<UsoLista> &usos)
{
    return {QString::fromUtf8(tabla), titulo, grupo, QStringLiteral("nombre"), {}, usos, true};
}

UsoLista enPacientes(const char *columnas)
{
    return {
        QStringLiteral("Pacientes"),
        QString::fromUtf8(columnas).split(u' '),
        QStringLiteral("paciente"),
        QStringLiteral("pacientes")};
}

UsoLista enItems(const QString &condicion)
{
    return {
        QStringLiteral("Consultas Items"),
        {QStringLiteral("iditem")},
        QStringLiteral("anotación de consultas"),
        QStringLiteral("anotaciones de consultas"),
        condicion};
}

/// A table of records of a patient in which one column names the entry.
UsoLista enFicha(const char *tabla, const char *columna, const QString &uno, const QString &varios)
{
    return {QString::fromUtf8(tabla), {QString::fromUtf8(columna)}, uno, varios};
}

UsoLista enGinecologia(const char *columna)
{
    return enFicha(
        "Consulta - Ginecologico",
        columna,
        QStringLiteral("revisión ginecológica"),
        QStringLiteral("revisiones ginecológicas"));
}

UsoLista enAntecedentes(const char *columna)
{
    return enFicha(
        "Antecedentes Generales",
        columna,
        QStringLiteral("ficha de antecedentes"),
        QStringLiteral("fichas de antecedentes"));
}

Lista coberturas()
{
    Lista l = simple(
        "Lista Coberturas",
        QStringLiteral("Coberturas Médicas"),
        grupoPacientes,
        {enPacientes("idcobertura idcobertura2"),
         enFicha("Pacientes Ordenes", "idobrasocial", QStringLiteral("orden"), QStringLiteral("órdenes")),
         enFicha(
             "Pacientes Presupuestos",
             "idobrasocial",
             QStringLiteral("práctica presupuestada"),
             QStringLiteral("prácticas presupuestadas")),
         {.tabla = QStringLiteral("Lista Precios"),
          .columnas = {QStringLiteral("idobrasocial")},
          .uno = QStringLiteral("precio"),
          .varios = QStringLiteral("precios"),
          .clave = {QStringLiteral("idpractica")},
          .repetido = UsoLista::Repetido::SeDescarta}});
    l.campos
        = {{.columna = QStringLiteral("Porcentaje_Cobertura"),
            .rotulo = QStringLiteral("Porcenta&je que cubre:"),
            .encabezado = QStringLiteral(">Cubre %"),
            .clase = CampoLista::Clase::Porcentaje}};
    // An order, a budget or a price without its coverage would belong to nobody.
    l.vaciable = false;
    return l;
}

QVector<Lista> dePacientes()
{
    return {
        coberturas(),
        simple(
            "Lista Tipo de documento",
            QStringLiteral("Tipo de Documento de Identidad"),
            grupoPacientes,
            {enPacientes("idtipodoc")}),
        simple(
            "Lista Ocupacion",
            QStringLiteral("Ocupación"),
            grupoPacientes,
            {enPacientes("idocupacion idocupacionpadre idocupacionmadre")}),
        simple(
            "Lista Relacion con el paciente",
            QStringLiteral("Relación con el Paciente"),
            grupoPacientes,
            {enPacientes("idrelacion")}),
        simple("Lista Estado civil", QStringLiteral("Estado Civil"), grupoPacientes, {enPacientes("idestadocivil")}),
        simple("Lista Etnia", QStringLiteral("Etnia"), grupoPacientes, {enPacientes("idetnia")}),
        simple("Lista Ciudad", QStringLiteral("Ciudad"), grupoPacientes, {enPacientes("idciudad")}),
        simple(
            "Lista Provincia",
            QStringLiteral("Provincia / Departamento"),
            grupoPacientes,
            {enPacientes("idprovincia")}),
        simple("Lista Pais", QStringLiteral("País"), grupoPacientes, {enPacientes("idpais")}),
        simple(
            "Lista Estatus en el pais",
            QStringLiteral("Estatus en el país"),
            grupoPacientes,
            {enPacientes("idestatus")})};
}

Lista vacunas()
{
    using Clase = CampoLista::Clase;
    Lista l = simple(
        "Lista Vacunas",
        QStringLiteral("Vacunas"),
        grupoConsultas,
        {{.tabla = QStringLiteral("Pacientes Vacunas"),
          .columnas = {QStringLiteral("idvacuna")},
          .uno = QStringLiteral("dosis aplicada"),
          .varios = QStringLiteral("dosis aplicadas"),
          .clave = {QStringLiteral("NroPaci"), QStringLiteral("dosis")},
          .repetido = UsoLista::Repetido::SeRechaza}});
    l.columnaNombre = QStringLiteral("Vacuna");
    l.vaciable = false;
    l.campos
        = {{.columna = QStringLiteral("Tipo"),
            .rotulo = QStringLiteral("&Tipo de Vacuna:"),
            .encabezado = QStringLiteral("<Tipo de Vacuna  "),
            .clase = Clase::Opcion,
            .opciones
            = {{1, QStringLiteral("Vacunas Oficiales")},
               {2, QStringLiteral("Vacunas Especiales")},
               {3, QStringLiteral("Otras Vacunas")}}},
           {.columna = QStringLiteral("NroDosis"),
            .rotulo = QStringLiteral("Número de &dosis:"),
            .encabezado = QStringLiteral("^Dosis"),
            .clase = Clase::Entero,
            .minimo = 1,
            .maximo = 5}};
    for (int dosis = 1; dosis <= 5; ++dosis)
        l.campos.append(
            {.columna = QStringLiteral("Edad%1").arg(dosis),
             .rotulo = QStringLiteral("&%1ª dosis (meses):").arg(dosis),
             .encabezado = dosis == 1 ? QStringLiteral("<Edades (meses)  ") : QString(),
             .clase = Clase::Meses});
    return l;
}

Lista medicamentos()
{
    Lista l = simple(
        "Lista Medicamentos",
        QStringLiteral("Vademecum (Medicamentos)"),
        grupoConsultas,
        {enItems(QStringLiteral("tipoconsulta = 3 And tipoitem = 1")),
         enFicha(
             "Antecedentes Perso - Fami - Medicamentos",
             "idmedicamento",
             QStringLiteral("antecedente"),
             QStringLiteral("antecedentes"))});
    l.campos
        = {{.columna = QStringLiteral("presentacion"),
            .rotulo = QStringLiteral("Presen&tación:"),
            .encabezado = QStringLiteral("<Presentación                   "),
            .distingue = true},
           {.columna = QStringLiteral("grupo"),
            .rotulo = QStringLiteral("Grup&o:"),
            .encabezado = QStringLiteral("<Grupo              ")}};
    return l;
}

QVector<Lista> deConsultas()
{
    Lista motivos = simple(
        "Lista Motivos Consulta",
        QStringLiteral("Motivos de Consulta"),
        grupoConsultas,
        {enFicha("Agenda Turnos", "motivo", QStringLiteral("turno"), QStringLiteral("turnos")),
         enItems(QStringLiteral("tipoconsulta = 1"))});
    motivos.columnaNombre = QStringLiteral("Motivo");
    Lista estudios = simple(
        "Lista Estudios",
        QStringLiteral("Estudios"),
        grupoConsultas,
        {enItems(QStringLiteral("(tipoconsulta = 2 Or tipoconsulta = 5)")),
         enFicha(
             "Pacientes Estudios",
             "idestudio",
             QStringLiteral("estudio de pacientes"),
             QStringLiteral("estudios de pacientes"))});
    QVector<Lista> todas{
        motivos,
        estudios,
        medicamentos(),
        simple(
            "Lista Tratamientos",
            QStringLiteral("Otros Tratamientos y Recomendaciones"),
            grupoConsultas,
            {enItems(QStringLiteral("tipoconsulta = 3 And tipoitem = 2"))}),
        simple(
            "Lista Patologias",
            QStringLiteral("Patologías propias (fuera del CIE-10)"),
            grupoConsultas,
            {enItems(QStringLiteral("tipoconsulta = 4 And cie10 = 0"))}),
        vacunas()};
    // What a consultation says is an entry: it cannot say nothing.
    for (Lista &l : todas)
        l.vaciable = false;
    return todas;
}

QVector<Lista> deGinecologia()
{
    QVector<Lista> todas{
        simple(
            "Lista Resultados de PAP",
            QStringLiteral("Resultados de PAP"),
            grupoGinecologia,
            {enGinecologia("papresullis")}),
        simple(
            "Lista Metodos Anticonceptivos",
            QStringLiteral("Métodos Anticonceptivos"),
            grupoGinecologia,
            {enGinecologia("vidametosilista")}),
        simple(
            "Lista Motivos No Anticoncepcion",
            QStringLiteral("Motivos de No Anticoncepción"),
            grupoGinecologia,
            {enGinecologia("vidametonolista")}),
        simple(
            "Lista Proteccion ITS",
            QStringLiteral("Protección contra ITS"),
            grupoGinecologia,
            {enGinecologia("infecproteclista")}),
        simple(
            "Lista Problemas Mamarios",
            QStringLiteral("Problemas Mamarios"),
            grupoGinecologia,
            {enGinecologia("mamasproblelis")}),
        simple(
            "Lista Autoexamen Mamario",
            QStringLiteral("Autoexamen Mamario"),
            grupoGinecologia,
            {enGinecologia("mamasautolis")}),
        simple(
            "Lista Resultados Mamografia",
            QStringLiteral("Resultados de Mamografía"),
            grupoGinecologia,
            {enGinecologia("mamasresullis")}),
        simple(
            "Lista Resultados Densitometria",
            QStringLiteral("Resultados de Densitometría"),
            grupoGinecologia,
            {enGinecologia("densitoresullista")}),
        simple(
            "Lista Enfermedades Ginecologicas",
            QStringLiteral("Enfermedades Ginecológicas"),
            grupoGinecologia,
            {enFicha(
                "Pacientes Enfermedades Ginecologicas",
                "idenfermedad",
                QStringLiteral("enfermedad registrada"),
                QStringLiteral("enfermedades registradas"))}),
        simple(
            "Lista Operaciones Gineco - Obstetrica",
            QStringLiteral("Operaciones Gineco - Obstétrica"),
            grupoGinecologia,
            {enFicha(
                "Pacientes Operaciones Ginecologicas",
                "idoperacion",
                QStringLiteral("operación registrada"),
                QStringLiteral("operaciones registradas"))})};
    // A disease or an operation is nothing but its entry.
    todas[todas.size() - 2].vaciable = todas.last().vaciable = false;
    return todas;
}

QVector<Lista> deAntecedentes()
{
    return {
        simple("Lista Tabaco", QStringLiteral("Tabaco"), grupoHabitos, {enAntecedentes("idtabaco")}),
        simple("Lista Alcohol", QStringLiteral("Alcohol"), grupoHabitos, {enAntecedentes("idalcohol")}),
        simple("Lista Otras Drogas", QStringLiteral("Otras Drogas"), grupoHabitos, {enAntecedentes("iddrogas")})};
}

QVector<Lista> deOrdenes()
{
    return {
        simple(
            "Lista Derivadores",
            QStringLiteral("Médicos Derivadores"),
            grupoOrdenes,
            {enFicha("Pacientes Ordenes", "idderivado", QStringLiteral("orden"), QStringLiteral("órdenes"))}),
        // A professional keeps the specialty as text: nothing refers to the entry.
        simple("Lista Especialidades", QStringLiteral("Especialidades"), grupoOrdenes, {})};
}

} // namespace

const QVector<Lista> &listas()
{
    static const QVector<Lista> todas
        = dePacientes() + deConsultas() + deAntecedentes() + deGinecologia() + deOrdenes();
    return todas;
}

const Lista *lista(QStringView tabla)
{
    const QVector<Lista> &todas = listas();
    const auto it = std::find_if(todas.begin(), todas.end(), [tabla](const Lista &l) {
        return tabla.compare(l.tabla, Qt::CaseInsensitive) == 0;
    });
    return it == todas.end() ? nullptr : &*it;
}

} // namespace maintenance
