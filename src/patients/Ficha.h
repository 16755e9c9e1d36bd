#pragma once

#include "base/Rechazo.h"
#include "patients/PacienteAbierto.h"

#include <QDate>
#include <QHash>
#include <QVariantMap>

namespace db {
class Entorno;
}

namespace patients {

/// Medical coverage as [Pacientes].cobertura holds it.
enum Cobertura { CoberturaSinIndicar = 0, ConCobertura = 1, SinCobertura = 2 };

/// What the patient file holds when it is to be saved, by column of [Pacientes].
struct DatosFicha {
    QVariantMap valores = {}; ///< every column of the form: the checks go by these
    QVariantMap cambios = {}; ///< those that the person changed: an update writes these and no other
    /// Date columns as typed, for those whose text may be no date; without an entry the column's value counts.
    QHash<QString, QString> escritas = {};
    /// What the form itself cannot read (a text that is no entry of its list): refused after every check of the fields.
    base::Control reparo = {};
};

/// Empty optional: the person answered that she does not want a second patient of that name.
using FichaGuardada = base::Resultado<std::optional<PacienteAbierto>>;

/// Whether the active user may change patients.
[[nodiscard]] base::Control controlarModificacion(db::Entorno &entorno);

/// Checks and stores the patient file, of `paciente` or, without one, of a new patient: number, perinatal row and
/// counters included. A refusal's `campo` is the name of a column. A new patient's clinical-history number is the next
/// generated one unless `cambios` holds another. A refusal, a No or a db::Error (RowGone among them) leave the database
/// as it was.
[[nodiscard]] FichaGuardada
guardarFicha(db::Entorno &entorno, const std::optional<PacienteAbierto> &paciente, const DatosFicha &datos);

/// The age beside a date of birth: calendar years begun, "46 años". Empty for an invalid or unknown date, and for one
/// in a year to come.
[[nodiscard]] QString edadTexto(QDate nacimiento, QDate hoy);

/// "Este paciente no Existe, probablemente a sido eliminado."
[[nodiscard]] base::Rechazo pacienteAusente();

/// "Apellido apellido2, Nombres" of a row of [Pacientes].
[[nodiscard]] QString nombreDe(const db::Recordset &fila);

} // namespace patients
