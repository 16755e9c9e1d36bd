#pragma once

#include "patients/NuevoPaciente.h"

namespace patients {

/// What the expanded form of a new patient asks, as typed.
struct DatosAmplios {
    /// Absent: the number that the practice's counter gives when the patient is stored.
    std::optional<QString> numehistoria = {};
    QString apellido = {};
    QString apellido2 = {};
    QString nombres = {};
    int sexo = -1; ///< index of "Femenino", "Masculino"; -1: not chosen
    QString fecnac = {}; ///< as typed; empty: unknown
    QString dni = {};
    QString telpar = {};
    int cobertura = 0; ///< 1 has coverage, 2 has none, 0 nobody asked
    int idcobertura = 0; ///< `id` of [Lista Coberturas] when `cobertura` is 1; below 0: what was typed is none
    QString nroos = {};
    QVariantMap demas = {}; ///< further columns of `Pacientes` by name, texts untrimmed

    bool operator==(const DatosAmplios &) const = default;
};

/// Checks and stores a new patient of the expanded form, as guardarReducido() does for the reduced one: names, birth
/// date, strict mode, the same-name question, document and clinical-history number.
[[nodiscard]] Alta guardarAmplio(db::Entorno &entorno, const DatosAmplios &datos);

} // namespace patients
