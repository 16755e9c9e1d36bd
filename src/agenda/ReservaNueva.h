#pragma once

#include "agenda/Reserva.h"
#include "patients/NuevoPaciente.h"

namespace agenda {

/// What became of a booking for a patient created on the spot. Without `paciente` neither exists: the limits refused
/// the times `noAsignados`, or, when there are none, the person did not want a second patient of that name.
struct ReservaNueva {
    std::optional<patients::PacienteCreado> paciente;
    QVector<qint64> ids;
    QVector<QDateTime> noAsignados;

    /// The report of the limit; empty when it was not reached.
    [[nodiscard]] base::Control informe() const;
};

/// Whether the active user may create patients and give appointments, both of which this takes.
[[nodiscard]] base::Control controlarReservaNueva(db::Entorno &entorno);

/// Creates the patient of the reduced form and books all the times, or does neither. The checks of the patient come
/// first, then those of the booking; `nrohc` of the booking does not count. Fields: those of guardarReducido() and
/// reservar().
[[nodiscard]] base::Resultado<ReservaNueva>
reservarPacienteNuevo(db::Entorno &entorno, const patients::DatosReducidos &datos, const Reserva &reserva);

} // namespace agenda
