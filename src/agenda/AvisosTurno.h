#pragma once

#include "agenda/TurnosListados.h"
#include "base/Rechazo.h"

#include <optional>

class QUrl;

namespace db {
class Entorno;
}

namespace agenda {

/// The next day after `hoy` on which a professional (0: any) has appointments; the day after `hoy` when there is none.
[[nodiscard]] QDate proximoDiaConTurnos(db::Connection &conexion, int doctor, QDate hoy);

/// Whom to remind of that day's appointments with a professional (0: with all), by time; deleted patients are among
/// them, as their hours are taken. Refused without the right to the agendas. Throws db::Error.
[[nodiscard]] base::Resultado<std::vector<TurnoListado>> turnosAAvisar(db::Entorno &entorno, int doctor, QDate fecha);

/// The message until the person writes an own one.
[[nodiscard]] QString modeloDeAviso();
/// What may stand in it: "<paciente>" is "Eva Paz", "<nombre>" "Eva", "<fecha>" "martes 24 de noviembre", "<hora>"
/// "10:20", "<medico>" the professional.
[[nodiscard]] QStringList marcadoresDeAviso();
/// The message to one patient; each placeholder is replaced wherever it stands, in any case of letters, and what a
/// value says is not read again. Names that are stored in capitals are written as names are. Empty for a deleted
/// patient.
[[nodiscard]] QString textoAviso(const QString &modelo, const TurnoListado &turno);

/// The address that makes the person's own application open a conversation with that number and the message written in
/// it. Nothing is sent.
[[nodiscard]] QUrl enlaceDeMensaje(const QString &movil, const QString &mensaje);

/// The list with telephones and messages as CSV, ready to be written.
[[nodiscard]] QByteArray avisosCsv(const std::vector<TurnoListado> &turnos, const QString &modelo);
/// Writes avisosCsv() of that day; see exportarArchivo().
[[nodiscard]] base::Control exportarAvisos(
    db::Entorno &entorno,
    const std::vector<TurnoListado> &turnos,
    QDate fecha,
    const QString &modelo,
    const QString &archivo);

} // namespace agenda
