#pragma once

#include <QString>

namespace app {

/// What the command line asks for.
struct Opciones {
    QString carpeta = {}; ///< program folder; empty: the default
    bool demo = false;
    QString salida = {}; ///< text to print instead of starting; with `error`, to the error output
    bool error = false;
};

/// Needs no application object: help and version are answered without a screen. Options of the window system
/// ("-platform", "-style"...) are left to it.
[[nodiscard]] Opciones leerOpciones(int argc, char *argv[]);

} // namespace app
