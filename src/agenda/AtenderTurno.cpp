#include "agenda/AtenderTurno.h"

#include "agenda/Textos.h"
#include "db/Connection.h"
#include "db/Entorno.h"
#include "db/Historial.h"
#include "db/ListaDoctores.h"
#include "patients/BusquedaPacientes.h"

namespace agenda {

base::Resultado<int> atender(db::Entorno &entorno, qint64 id, bool fichaAbierta)
{
    if (auto rechazo = db::controlarDerecho(entorno))
        return *rechazo;
    if (fichaAbierta)
        return base::Rechazo{
            base::titulo::atencion,
            QStringLiteral("Un Paciente está siendo atendido, para seguir debe cerrar la ficha del Paciente")};
    const db::Rows turno = entorno.conexion().query(QStringLiteral("SELECT * FROM [Agenda Turnos] WHERE id = ?"), {id});
    if (turno->rowCount() == 0)
        return registroEliminado();
    const int nrohc = int(turno->integer(0, turno->column(u"NroHC")));
    if (nrohc == nroBloqueado)
        return horarioBloqueado();
    if (!patients::nombrePaciente(entorno.conexion(), nrohc))
        return pacienteInexistente();
    return nrohc;
}

bool veFichaReducida(db::Entorno &entorno) { return db::opcionUsuario(entorno, u"verfichareducida").toBool(); }

void anotarTodasLasAgendas(db::Entorno &entorno)
{
    db::registrarHistorial(
        entorno,
        QStringLiteral("Agenda de Turnos"),
        QStringLiteral("Se ingresó a la ventana que muestra todas las agendas al mismo tiempo."));
}

} // namespace agenda
