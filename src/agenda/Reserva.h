#pragma once

#include "base/Rechazo.h"

#include <QDateTime>
#include <QString>
#include <QVector>

namespace db {
class Entorno;
}

namespace agenda {

/// One or more appointments of one patient with one professional, as typed.
struct Reserva {
    int nrohc = 0; ///< 0: no patient chosen
    int doctor = 0;
    QVector<QDateTime> turnos; ///< to the minute, in the order of the list
    int motivo = 0; ///< `id` of [Lista Motivos Consulta]; 0: none
    QString observacionestur;
};

/// The right without which no appointment is given.
inline constexpr QStringView derechoReserva = u"accesoasignarturno";

/// What became of a booking: the rows written, and the times that the overbooking limits refused.
struct ReservaHecha {
    QVector<qint64> ids;
    QVector<QDateTime> asignados; ///< the times of `ids`
    QVector<QDateTime> noAsignados;

    /// The report of the times not booked; empty when there are none.
    [[nodiscard]] base::Control informe() const;
};

/// Books what the overbooking limits allow, all of it in one transaction, so that two stations at once cannot both pass
/// them. Refused, writing nothing: no rights, no patient, no time, no reason where one is required, patient deleted
/// meanwhile. Fields: `paciente`, `agregarturno`, `motivo`.
[[nodiscard]] base::Resultado<ReservaHecha> reservar(db::Entorno &entorno, const Reserva &reserva);

/// Whether the booking has times, and a reason where one is required; the part of reservar() that needs no patient.
[[nodiscard]] base::Control controlarTurnos(db::Entorno &entorno, const Reserva &reserva);

/// Reads a time as typed ("dd/mm/yyyy hh:nn") for the list of a booking; field `nuevoturno`.
[[nodiscard]] base::Resultado<QDateTime> leerTurno(const QString &texto);

/// The refusal of times that exceed the limits; `algunoAsignado` when others of the same booking were given.
[[nodiscard]] base::Rechazo rechazoSobreturnos(const QVector<QDateTime> &momentos, bool algunoAsignado);

} // namespace agenda
