#include "agenda/TurnoGuardado.h"

#include "agenda/Textos.h"
#include "base/Fechas.h"
#include "db/Recordset.h"
#include "patients/BusquedaPacientes.h"

namespace agenda {

QString TurnoGuardado::titulo() const { return base::fechaHoraTexto(fecha) + QStringLiteral("   ") + paciente; }

std::optional<TurnoGuardado> leerTurnoGuardado(db::Connection &conexion, qint64 id)
{
    const db::Recordset fila(conexion, QStringLiteral("SELECT * FROM [Agenda Turnos] WHERE id = ?"), {id});
    if (fila.isEmpty())
        return std::nullopt;
    TurnoGuardado turno;
    turno.id = fila.integer(u"id");
    turno.nrohc = int(fila.integer(u"NroHC"));
    turno.doctor = int(fila.integer(u"Doctor"));
    turno.fecha = fila.dateTime(u"Fecha");
    turno.motivo = int(fila.integer(u"motivo"));
    turno.observacionestur = fila.text(u"observacionestur");
    turno.paciente = patients::nombrePaciente(conexion, turno.nrohc).value_or(textoPacienteEliminado);
    return turno;
}

} // namespace agenda
