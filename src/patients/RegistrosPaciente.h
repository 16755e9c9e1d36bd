#pragma once

#include "base/Rechazo.h"

#include <QString>

#include <vector>

namespace db {
class Entorno;
}

namespace patients {

/// A button of the patient file that opens one kind of the patient's records.
struct BotonRegistro {
    QString nombre; ///< object name
    QString titulo;
    QString ayuda;
    QString ventana; ///< name under which its window is registered; opened with {"nrohc", "nombre"}
    QString derecho; ///< column of `Lista Doctores` that guards it; empty: none
    QString icono;
    bool clinico = true; ///< not for who has only partial access to patients
    bool abreGrupo = false; ///< some room above it
};

/// In their order in the window.
[[nodiscard]] const std::vector<BotonRegistro> &registrosPaciente();

/// Whether the active user may open those records: a valid user, the right that guards them and, for clinical ones,
/// more than partial access (`accesoparcialpaciente`).
[[nodiscard]] base::Control controlarRegistro(db::Entorno &entorno, const BotonRegistro &boton);

} // namespace patients
