#pragma once

#include <QString>

#include <vector>

namespace db {
class Entorno;
}

namespace patients {

/// A patient found by what was typed.
struct PacienteHallado {
    int nrohc = 0;
    QString nombre; ///< as the chooser shows it
    QString dni;
};

struct BusquedaRapida {
    std::vector<PacienteHallado> pacientes; ///< the first ones, by surnames and names
    int total = 0; ///< how many there are
    QString apellido; ///< what finds them all in the chooser; empty when a document found them
    QString nombres;
};

/// Patients by one line of text: "gómez", "gómez, mar" (surname, names), "gomez mar" (the words one after the other
/// when no surname reads so), or a document of at least three digits, points or not. Blank, or a single letter: none.
/// At most `tope` are read.
[[nodiscard]] BusquedaRapida buscarRapido(db::Entorno &entorno, const QString &texto, int tope = 10);

} // namespace patients
