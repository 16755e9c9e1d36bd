#include "patients/Esquema.h"

#include "db/Declarar.h"

namespace patients {

using namespace db::declarar;

namespace {

db::Table pacientes()
{
    db::Table pacientes = tabla(
        "Pacientes",
        contador() + largos("NroHC") + textos(20, "numehistoria") + textos(100, "Apellido apellido2 Nombres")
            + fechas("FeNac") + enteros("sexo") + textos(20, "DNI") + largos("idtipodoc idocupacion")
            + textos(255, "detallesocupacion") + textos(50, "Tel TelCelular TelLaboral") + textos(100, "nombrepadre")
            + fechas("nacipadre") + largos("idocupacionpadre") + textos(50, "horashogarpadre")
            + textos(100, "nombremadre") + fechas("nacimadre") + largos("idocupacionmadre")
            + textos(50, "horashogarmadre nrohermanos") + textos(100, "edadhermanos") + textos(50, "nrohermanas")
            + textos(100, "edadhermanas") + memos("detallesfamilia")
            + textos(100, "ape1contacto ape2contacto nombrecontacto") + largos("idrelacion")
            + textos(50, "telparcontacto telcelcontacto tellabcontacto") + largos("idestadocivil idetnia")
            + textos(150, "Domicilio") + textos(20, "CP") + largos("idciudad idprovincia idpais idestatus")
            + textos(150, "Email") + textos(100, "referente") + memos("Notas")
            + fechas("ultimacons")
            // 1 has coverage, 2 has none, 0 nobody asked.
            + con(0, enteros("cobertura")) + largos("idcobertura") + textos(50, "NroOS")
            + con(-1, largos("idcobertura2")) + textos(50, "nuafiliado2 nusiniestro") + banderas("pacienteinactivo")
            + textos(255, "motivoinactividad") + memos("alergias") + textos(10, "GrupoSanguineo")
            + textos(20, "FactorSanguineo")
            + memos("HC")
            // Number of the last pregnancy given, and whether one is running.
            + con(0, enteros("UltiEmba")) + banderas("Embarazo"),
        {unico("NroHC"),
         indice("DNI"),
         indice("numehistoria"),
         listado("Apellido apellido2 Nombres NroHC DNI NroOS numehistoria pacienteinactivo")});
    // What the chooser filters by, and the telephone list.
    pacientes.search = db::SearchList{
        QStringLiteral("NroHC"),
        {QStringLiteral("Apellido"), QStringLiteral("apellido2"), QStringLiteral("Nombres")},
        QStringLiteral("numehistoria DNI Tel TelCelular TelLaboral NroOS FeNac sexo pacienteinactivo cobertura "
                       "idcobertura idciudad"
                       " idprovincia")
            .split(u' ')};
    return pacientes;
}

} // namespace

db::Schema esquema()
{
    db::Schema schema;
    schema.tables.append(pacientes());
    // Percentage: the share of the base cost that the coverage pays.
    db::Table coberturas = lista("Lista Coberturas", 150);
    coberturas.columns += con(0, dobles("Porcentaje_Cobertura"));
    schema.tables.append(coberturas);
    for (const char *name :
         {"Lista Tipo de documento",
          "Lista Ocupacion",
          "Lista Relacion con el paciente",
          "Lista Estado civil",
          "Lista Etnia",
          "Lista Ciudad",
          "Lista Provincia",
          "Lista Pais",
          "Lista Estatus en el pais"})
        schema.tables.append(lista(QString::fromUtf8(name)));
    return schema;
}

} // namespace patients
