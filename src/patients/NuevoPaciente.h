#pragma once

#include "base/Rechazo.h"

#include <QDate>
#include <QVariantMap>

#include <functional>
#include <optional>

namespace db {
class Connection;
class Entorno;
} // namespace db

namespace patients {

/// What the reduced form of a new patient asks, as typed.
struct DatosReducidos {
    QString apellido = {};
    QString nombres = {};
    QString dni = {};
    QString telefono = {};
    int idcobertura = 0; ///< `id` of [Lista Coberturas]; 0: no insurer chosen, below: what was typed is none
    QString domicilio = {};
    QString email = {};

    bool operator==(const DatosReducidos &) const = default;
};

/// A patient that was just stored.
struct PacienteCreado {
    int nrohc = 0;
    QString numehistoria = {};
    QString nombre = {}; ///< "Apellido, Nombres"

    bool operator==(const PacienteCreado &) const = default;
};

/// Empty optional: the person answered that she does not want a second patient of that name.
using Alta = base::Resultado<std::optional<PacienteCreado>>;

/// Whether the active user may create patients.
[[nodiscard]] base::Control controlarAlta(db::Entorno &entorno);

/// What goes into the database together with a new patient, within the same transaction: what it refuses undoes the
/// patient too.
using ConElPaciente = std::function<base::Control(const PacienteCreado &)>;

/// Checks and stores a new patient of the reduced form. The names in a refusal's `campo` are the controls of
/// `nuevopaci`. A refusal, a No or a db::Error leave the database as it was, both counters included.
[[nodiscard]] Alta guardarReducido(db::Entorno &entorno, const DatosReducidos &datos, const ConElPaciente &ademas = {});
/// What guardarReducido() asks of the fields themselves, before it looks at the other patients.
[[nodiscard]] base::Control controlarReducido(db::Connection &conexion, const DatosReducidos &datos);

/// Surname and names as lists show them.
[[nodiscard]] QString nombreCompleto(const QString &apellido, const QString &nombres);

// The pieces that every form of a new patient is made of.

/// True in strict mode (`forzarguardarpaci` is 1).
[[nodiscard]] bool altaEstricta(db::Connection &conexion);
/// True when some patient other than `nrohc` (0: a new one) has that non-empty document number.
[[nodiscard]] bool documentoEnUso(db::Connection &conexion, const QString &dni, int nrohc = 0);
/// True when some patient other than `nrohc` has that non-empty clinical-history number.
[[nodiscard]] bool numeroHistoriaEnUso(db::Connection &conexion, const QString &numehistoria, int nrohc = 0);
[[nodiscard]] bool mismoNombre(db::Connection &conexion, const QString &apellido, const QString &nombres);
/// Asks whether to go on when a patient of that name exists. True: go on.
[[nodiscard]] bool aceptaMismoNombre(db::Entorno &entorno, const QString &apellido, const QString &nombres);

/// Inserts the patient with the next `NroHC`, its perinatal row, and moves the counters, whole or not at all.
/// `columnas` are columns of `Pacientes` by name; without `numehistoria` among them the generated number is taken, or
/// the first one after it that nobody has.
[[nodiscard]] PacienteCreado insertarPaciente(db::Connection &conexion, QVariantMap columnas);

} // namespace patients
