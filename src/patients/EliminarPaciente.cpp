#include "patients/EliminarPaciente.h"

#include "base/Mensajes.h"
#include "db/Connection.h"
#include "db/Entorno.h"
#include "db/Historial.h"
#include "db/ListaDoctores.h"
#include "patients/Foto.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace patients {

namespace {

const QString imagenesDeEstudios = QStringLiteral("Pacientes Estudios Imagenes");

/// "Apellido apellido2, Nombres"; empty when there is no such patient.
QString nombreDe(db::Connection &conexion, int nrohc)
{
    const db::Rows rows
        = conexion.query(QStringLiteral("SELECT Apellido,apellido2,Nombres FROM [Pacientes] WHERE NroHC = ?"), {nrohc});
    if (rows->rowCount() == 0)
        return {};
    const QString apellidos = rows->text(0, 0).trimmed() + u' ' + rows->text(0, 1).trimmed();
    return apellidos.trimmed() + QStringLiteral(", ") + rows->text(0, 2).trimmed();
}

/// Paths of the pictures that only this patient's studies name.
QStringList archivosDeEstudios(db::Entorno &entorno, int nrohc)
{
    const QString tabla = entorno.conexion().dialect().identifier(imagenesDeEstudios);
    const db::Rows rows = entorno.conexion().query(
        QStringLiteral("SELECT DISTINCT archivo FROM %1 WHERE NroPaci = ? and archivo is not null and archivo not in "
                       "(SELECT archivo FROM %1 WHERE NroPaci <> ? and archivo is not null)")
            .arg(tabla),
        {nrohc, nrohc});
    const QDir carpeta(entorno.carpetaDatos() + QStringLiteral("/Imagenes/Estudios"));
    QStringList archivos;
    for (int i = 0; i < rows->rowCount(); ++i) {
        // The name alone: a stored "..\" must not lead out of the folder.
        const QString nombre = rows->text(i, 0).replace(u'\\', u'/').section(u'/', -1).trimmed();
        if (!nombre.isEmpty())
            archivos << carpeta.filePath(nombre);
    }
    return archivos;
}

QString noExiste() { return QStringLiteral("Este paciente no Existe, probablemente a sido eliminado."); }

} // namespace

const QStringList &tablasDelPaciente()
{
    static const QStringList tablas{
        QStringLiteral("Antecedentes Familiares"),
        QStringLiteral("Antecedentes Generales"),
        QStringLiteral("Antecedentes Gineco - Obstetricos"),
        QStringLiteral("Antecedentes Perinatologicos"),
        QStringLiteral("Antecedentes Perso - Fami - Medicamentos"),
        QStringLiteral("Antecedentes Perso - Fami - Patologias"),
        QStringLiteral("Consulta - Cardiopulmonar"),
        QStringLiteral("Consulta - Digestivo"),
        QStringLiteral("Consulta - Endocrino"),
        QStringLiteral("Consulta - Estado General"),
        QStringLiteral("Consulta - Ginecologico"),
        QStringLiteral("Consulta - Musculoesqueletico"),
        QStringLiteral("Consulta - Neurologico"),
        QStringLiteral("Consulta - ORL"),
        QStringLiteral("Consulta - Salud Mental"),
        QStringLiteral("Consulta - Salud Sexual"),
        QStringLiteral("Consulta - Urinario"),
        QStringLiteral("Consulta Exa - Abdominal"),
        QStringLiteral("Consulta Exa - Cardio Vascular"),
        QStringLiteral("Consulta Exa - Dermatologico"),
        QStringLiteral("Consulta Exa - Fisico General"),
        QStringLiteral("Consulta Exa - Genitourinario"),
        QStringLiteral("Consulta Exa - Ginecologico"),
        QStringLiteral("Consulta Exa - Mamario"),
        QStringLiteral("Consulta Exa - Mental"),
        QStringLiteral("Consulta Exa - Neurologico"),
        QStringLiteral("Consulta Exa - Oftalmologico"),
        QStringLiteral("Consulta Exa - ORL"),
        QStringLiteral("Consulta Exa - Respiratorio"),
        QStringLiteral("Consulta - Muscu Ficha Kinesica"),
        QStringLiteral("Consulta - Muscu Medicion Articular"),
        QStringLiteral("Consulta - Muscu Equilibrio Muscular Extre Sup"),
        QStringLiteral("Consulta - Muscu Equilibrio Muscular Extre Inf"),
        QStringLiteral("Consultas"),
        QStringLiteral("Consultas Items"),
        QStringLiteral("Pacientes Alimentacion"),
        QStringLiteral("Pacientes Analisis"),
        QStringLiteral("Pacientes Control Feto"),
        QStringLiteral("Pacientes Control Materno"),
        QStringLiteral("Pacientes Controles Antropometricos"),
        QStringLiteral("Pacientes Embarazos"),
        QStringLiteral("Pacientes Embarazos Finalizados"),
        QStringLiteral("Pacientes Enfermedades Ginecologicas"),
        QStringLiteral("Pacientes Esquema Ginecologico"),
        QStringLiteral("Pacientes Estudios"),
        QStringLiteral("Pacientes Lesiones Vulva"),
        QStringLiteral("Pacientes Odontogramas"),
        QStringLiteral("Pacientes Operaciones Ginecologicas"),
        QStringLiteral("Pacientes Pautas"),
        QStringLiteral("Pacientes Vacunas"),
        QStringLiteral("Pacientes Ultrasonografia Pelvica"),
        QStringLiteral("Pacientes Ultrasonografia Primer"),
        QStringLiteral("Pacientes Ultrasonografia Tercer"),
        QStringLiteral("Pacientes Biomicroscopia"),
        QStringLiteral("Pacientes Fondo de Ojo"),
        QStringLiteral("Pacientes Nervio Optico"),
        QStringLiteral("Pacientes Cirugias"),
        QStringLiteral("Pacientes Ordenes"),
        QStringLiteral("Pacientes Pagos"),
        QStringLiteral("Pacientes Presupuestos"),
        QStringLiteral("Pacientes Presupuestos General"),
        QStringLiteral("Pacientes Sesiones"),
        QStringLiteral("Borradores"),
        imagenesDeEstudios};
    return tablas;
}

base::Resultado<bool> eliminarPaciente(db::Entorno &entorno, int nrohc, bool fichaAbierta)
{
    db::Connection &conexion = entorno.conexion();
    if (auto control = db::controlarDerecho(entorno, u"accesoeliminarpaciente"))
        return *control;
    if (fichaAbierta)
        return base::Rechazo{
            base::titulo::atencion,
            QStringLiteral("Un Paciente está siendo atendido, para seguir debe cerrar la ficha del Paciente")};
    const QString nombre = nombreDe(conexion, nrohc);
    if (nombre.isEmpty())
        return base::Rechazo{base::titulo::atencion, noExiste()};
    if (!entorno.mensajes().pregunta(
            base::titulo::confirmacion,
            QStringLiteral("¿Seguro que desea eliminar el Paciente ") + nombre
                + QStringLiteral("?. Si lo hace, perderá toda la Historia Clínica del Paciente y los registros "
                                 "contables del mismo."),
            false))
        return false;

    db::Transaction transaccion(conexion);
    const QStringList archivos = archivosDeEstudios(entorno, nrohc) + archivosDeFoto(entorno.carpetaDatos(), nrohc);
    for (const QString &tabla : tablasDelPaciente())
        conexion.execute(
            QStringLiteral("DELETE FROM %1 WHERE NroPaci = ?").arg(conexion.dialect().identifier(tabla)), {nrohc});
    if (conexion.execute(QStringLiteral("DELETE FROM [Pacientes] WHERE NroHC = ?"), {nrohc}) == 0)
        return base::Rechazo{base::titulo::atencion, noExiste()};
    db::registrarHistorial(
        entorno,
        QStringLiteral("Elección del Paciente"),
        QStringLiteral("Se eliminó el paciente '") + nombre + QStringLiteral("'."));
    transaccion.commit();

    QStringList quedaron;
    for (const QString &archivo : archivos)
        if (QFileInfo::exists(archivo) && !QFile::remove(archivo))
            quedaron << QDir::toNativeSeparators(archivo);
    if (!quedaron.isEmpty())
        entorno.mensajes().advertir(
            base::titulo::atencion,
            QStringLiteral("El paciente fue eliminado, pero no se pudieron borrar estas imágenes:\n")
                + quedaron.join(u'\n'));
    return true;
}

} // namespace patients
