#pragma once

#include "base/Rechazo.h"

namespace db {
class Entorno;
}

namespace agenda {

/// The patient (`NroHC`) whose file is opened from an appointment, which is read again for it. Refused without a
/// current user, while a patient file is open (`fichaAbierta`), for a blocked or deleted row, and when the patient was
/// deleted.
[[nodiscard]] base::Resultado<int> atender(db::Entorno &entorno, qint64 id, bool fichaAbierta);

/// Whether the person working sees the reduced file.
[[nodiscard]] bool veFichaReducida(db::Entorno &entorno);

/// Notes in the activity log that the view of all agendas was opened.
void anotarTodasLasAgendas(db::Entorno &entorno);

} // namespace agenda
