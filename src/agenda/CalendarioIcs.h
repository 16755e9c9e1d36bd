#pragma once

#include "agenda/TurnosListados.h"
#include "base/Rechazo.h"

#include <QByteArray>

#include <functional>

namespace db {
class Entorno;
}

namespace agenda {

/// Which appointments of a professional go into a calendar file, and how much it tells of them.
struct PedidoIcs {
    int doctor = 0;
    QDate desde; ///< both included
    QDate hasta;
    bool conNombres = false; ///< patients by name; without it each one is "Turno"
    bool conBloqueados = false; ///< blocked slots, as "No se atiende"
};

/// A calendar file ready to be written.
struct CalendarioIcs {
    QByteArray bytes;
    int turnos = 0; ///< appointments in it, without blocked slots
    PedidoIcs pedido;
};

/// Appointments as an iCalendar object (RFC 5545), in the order given: lines of at most 75 octets that end in CR LF,
/// times in America/Argentina/Buenos_Aires with its zone described. `duracion` gives the minutes of a date's slots,
/// `ahora` is when the file is made. Each event is known by a UID that stays the same from file to file, also when the
/// appointment is moved, so that a calendar that reads a later file changes its events instead of doubling them; it
/// tells nothing about the patient. Observations and reasons never go into it.
[[nodiscard]] QByteArray escribirIcs(
    const std::vector<TurnoListado> &turnos,
    const std::function<int(QDate)> &duracion,
    bool conNombres,
    const QDateTime &ahora);

/// Reads the appointments. Refused without the right to the agendas, for bad dates (fields `desde`, `hasta`) and when
/// there is nothing to write. Throws db::Error.
[[nodiscard]] base::Resultado<CalendarioIcs> prepararIcs(db::Entorno &entorno, const PedidoIcs &pedido);

/// See exportarArchivo().
[[nodiscard]] base::Control guardarIcs(db::Entorno &entorno, const CalendarioIcs &calendario, const QString &archivo);

} // namespace agenda
