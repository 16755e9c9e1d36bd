#pragma once

#include "base/Rechazo.h"

#include <QStringList>

namespace db {
class Entorno;
}

namespace patients {

/// The tables whose rows hang on a patient by `NroPaci` and go with him. Appointments stay: the agenda shows them as
/// those of a deleted patient.
[[nodiscard]] const QStringList &tablasDelPaciente();

/// Removes a patient with every record and picture that hangs on him, after the right, the refusal while a patient file
/// is open (`fichaAbierta`) and the question. All rows go in one transaction with the log entry; files only after it,
/// and not those that another patient's studies name too. A file that could not be removed is told, the patient is gone
/// all the same. False: the person answered No. Throws db::Error, with nothing removed.
[[nodiscard]] base::Resultado<bool> eliminarPaciente(db::Entorno &entorno, int nrohc, bool fichaAbierta);

} // namespace patients
