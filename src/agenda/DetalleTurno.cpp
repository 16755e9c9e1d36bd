#include "agenda/DetalleTurno.h"

#include "agenda/Textos.h"
#include "base/Fechas.h"
#include "db/Recordset.h"
#include "patients/ResumenPaciente.h"

namespace agenda {

namespace {

QString turnoDado(const db::Recordset &turno)
{
    const QDateTime momento = turno.dateTime(u"fechahoraasignado");
    if (!momento.isValid())
        return {};
    return QStringLiteral("Turno dado el día: %1 a las %2 por el usuario: %3")
        .arg(
            base::fechaTexto(momento.date()), momento.toString(QStringLiteral("HH:mm")), turno.text(u"usuarioasigtur"));
}

QString cobertura(db::Connection &conexion, const db::Recordset &paciente)
{
    const db::Rows filas = conexion.query(
        QStringLiteral("SELECT nombre FROM [Lista Coberturas] WHERE id = ?"), {paciente.integer(u"idcobertura")});
    return filas->rowCount() > 0 ? filas->text(0, 0) : QStringLiteral("No tiene");
}

} // namespace

QStringList detalleTurno(db::Connection &conexion, qint64 id)
{
    const db::Recordset turno(conexion, QStringLiteral("SELECT * FROM [Agenda Turnos] WHERE id = ?"), {id});
    if (turno.isEmpty() || turno.integer(u"NroHC") == nroBloqueado)
        return {};

    QStringList lineas;
    const db::Recordset paciente(
        conexion,
        QStringLiteral(
            "SELECT NroHC,numehistoria,Apellido,Nombres,idcobertura,NroOS,ultimacons FROM [Pacientes] WHERE NroHC = ?"),
        {turno.integer(u"NroHC")});
    if (paciente.isEmpty()) {
        lineas << QStringLiteral("Paciente: ") + textoPacienteEliminado;
    } else {
        lineas << QStringLiteral("Paciente: ") + paciente.text(u"Apellido") + QStringLiteral(", ")
                + paciente.text(u"Nombres") + QStringLiteral("      ") + patients::etiquetaIdentificador(conexion)
                + patients::identificadorDe(conexion, paciente);
        lineas << QStringLiteral("Cobertura Médica: ") + cobertura(conexion, paciente);
        lineas << QStringLiteral("Nº Afiliado: ") + paciente.text(u"NroOS");
        lineas << QStringLiteral("Ultima Consulta: ") + base::fechaTexto(paciente.date(u"ultimacons"));
    }
    if (const QString dado = turnoDado(turno); !dado.isEmpty())
        lineas << dado;
    return lineas;
}

} // namespace agenda
