#pragma once

#include "base/Rechazo.h"

namespace agenda {

/// `NroHC` of a row that marks a slot in which the professional does not attend: no patient, never counted.
inline constexpr int nroBloqueado = -111;

/// The right without which the agendas and the telephone list are not seen, nor hours and days off changed.
inline constexpr QStringView derechoAgendas = u"accesoagendas";

inline const QString textoPacienteEliminado = QStringLiteral("PACIENTE ELIMINADO DEL SISTEMA");
/// In place of the name of a professional who is not in the list.
inline const QString textoSinProfesional = QStringLiteral("<Médico sin Identificar>");

using base::registroEliminado;

/// What was to be changed is a slot without an appointment.
[[nodiscard]] inline base::Rechazo horarioBloqueado()
{
    return {base::titulo::atencion, QStringLiteral("El horario está bloqueado: no tiene un turno asignado.")};
}

/// Another station deleted the patient.
[[nodiscard]] inline base::Rechazo pacienteInexistente()
{
    return {base::titulo::atencion, QStringLiteral("Este paciente no Existe, probablemente a sido eliminado.")};
}

} // namespace agenda
