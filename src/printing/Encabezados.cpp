#include "printing/Encabezados.h"

#include "base/Fechas.h"
#include "db/Config.h"
#include "db/Entorno.h"
#include "db/Historial.h"
#include "db/ListaDoctores.h"
#include "db/Recordset.h"
#include "texto/TextoRico.h"

namespace printing {

const QVector<Marcador> &marcadoresGenerales()
{
    static const QVector<Marcador> marcadores{
        {QStringLiteral("medico"), QStringLiteral("Nombre del profesional")},
        {QStringLiteral("especialidad"), QStringLiteral("Especialidad")},
        {QStringLiteral("matricula"), QStringLiteral("Matrícula")}};
    return marcadores;
}

const QVector<Marcador> &marcadoresPaciente()
{
    static const QVector<Marcador> marcadores{
        {QStringLiteral("apellido"), QStringLiteral("Apellido")},
        {QStringLiteral("nombre"), QStringLiteral("Nombres")},
        {QStringLiteral("sexo"), QStringLiteral("Sexo")},
        {QStringLiteral("dni"), QStringLiteral("Documento")},
        {QStringLiteral("fechanac"), QStringLiteral("Fecha de nacimiento")},
        {QStringLiteral("id"), QStringLiteral("Nº ID")},
        {QStringLiteral("hc"), QStringLiteral("Nº H.C.")}};
    return marcadores;
}

std::optional<DatosPaciente> leerDatosPaciente(db::Connection &conexion, int nrohc)
{
    const db::Recordset fila(
        conexion,
        QStringLiteral("SELECT NroHC,numehistoria,Apellido,apellido2,Nombres,sexo,DNI,FeNac FROM [Pacientes]"
                       " WHERE NroHC = ?"),
        {nrohc});
    if (fila.isEmpty())
        return std::nullopt;
    DatosPaciente paciente;
    paciente.apellido = QString(fila.text(u"Apellido") + u' ' + fila.text(u"apellido2")).trimmed();
    paciente.nombre = fila.text(u"Nombres");
    if (!fila.isNull(u"sexo")) {
        const qint64 sexo = fila.integer(u"sexo");
        paciente.sexo = sexo == 0 ? QStringLiteral("Femenino") : sexo == 1 ? QStringLiteral("Masculino") : QString();
    }
    paciente.dni = fila.text(u"DNI");
    if (const QDate nacio = fila.date(u"FeNac"); nacio != base::fechaDesconocida())
        paciente.fechanac = base::fechaTexto(nacio);
    paciente.id = QString::number(fila.integer(u"NroHC"));
    paciente.hc = fila.text(u"numehistoria");
    return paciente;
}

PlantillasEncabezado leerPlantillas(db::Connection &conexion)
{
    const db::Config config(conexion);
    return {
        config.bandera(u"encabezadoimagen"), config.texto(u"encabezadogeneral"), config.texto(u"encabezadopaciente")};
}

base::Control guardarPlantillas(db::Entorno &entorno, const PlantillasEncabezado &plantillas, int administrador)
{
    if (auto rechazo = db::controlarConfiguracion(entorno, administrador))
        return rechazo;
    db::Transaction transaccion(entorno.conexion());
    db::Config config(entorno.conexion());
    config.guardar(u"encabezadoimagen", plantillas.imagen);
    config.guardar(u"encabezadogeneral", plantillas.general);
    config.guardar(u"encabezadopaciente", plantillas.paciente);
    db::registrarHistorial(entorno, QStringLiteral("Encabezados"), QStringLiteral("Se presionó el botón Guardar."));
    transaccion.commit();
    return std::nullopt;
}

QString encabezadoGeneral(db::Entorno &entorno, const QString &plantilla)
{
    const db::Recordset profesional(
        entorno.conexion(),
        QStringLiteral("SELECT * FROM [Lista Doctores] WHERE id = ?"),
        {db::profesionalActivo(entorno)});
    const auto dato
        = [&](QStringView columna) { return profesional.isEmpty() ? QString() : profesional.text(columna); };
    return texto::reemplazar(
        plantilla,
        {{QStringLiteral("medico"), dato(u"NomDoc")},
         {QStringLiteral("especialidad"), dato(u"Especialidad")},
         {QStringLiteral("matricula"), dato(u"Matricula")}});
}

QString encabezadoPaciente(const DatosPaciente &paciente, const QString &plantilla)
{
    return texto::reemplazar(
        plantilla,
        {{QStringLiteral("apellido"), paciente.apellido},
         {QStringLiteral("nombre"), paciente.nombre},
         {QStringLiteral("sexo"), paciente.sexo},
         {QStringLiteral("dni"), paciente.dni},
         {QStringLiteral("fechanac"), paciente.fechanac},
         {QStringLiteral("id"), paciente.id},
         {QStringLiteral("hc"), paciente.hc}});
}

} // namespace printing
