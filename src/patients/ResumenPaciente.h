#pragma once

#include "patients/PacienteAbierto.h"

#include <QString>

namespace db {
class Entorno;
}

namespace patients {

/// Who a window is about, as the header of every window of a patient tells it.
struct ResumenPaciente {
    QString nombre = {}; ///< "Apellido apellido2, Nombres"
    QString edad = {}; ///< "46 años"; empty when unknown
    QString etiqueta = {}; ///< what the practice calls the identifier: "Nº Historia Clínica: ", "Nº ID: "
    QString identificador = {};
    QString cobertura = {};
    QString alertas = {};
    QString notas = {};
    bool inactivo = false;
    QString motivoInactividad = {};

    bool operator==(const ResumenPaciente &) const = default;
};

/// The patient's summary as stored now; empty when he was removed.
[[nodiscard]] std::optional<ResumenPaciente> leerResumen(db::Entorno &entorno, const PacienteAbierto &paciente);

/// How the practice labels the identifier that it shows, with its colon and blank: by clinical-history number where
/// `nuidhc` is set, else `reemplazoid` or "Nº ID".
[[nodiscard]] QString etiquetaIdentificador(db::Connection &conexion);
/// The identifier of a row of [Pacientes] by the same setting.
[[nodiscard]] QString identificadorDe(db::Connection &conexion, const db::Recordset &fila);

/// The name of an entry of a lookup list; empty when there is none of that id.
[[nodiscard]] QString nombreEnLista(db::Connection &conexion, const QString &tabla, qint64 id);
/// Coverage and affiliate number of a row of [Pacientes], in words.
[[nodiscard]] QString coberturaTexto(db::Connection &conexion, const db::Recordset &fila);

} // namespace patients
