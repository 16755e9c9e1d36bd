#pragma once

#include "demo/Demo.h"

namespace demo {

/// Makes the database file `destino` as a copy of the template, filled. The file appears whole or not at all. False
/// when the template cannot be copied or `destino` exists; throws db::Error.
bool crearArchivo(const QString &plantilla, const QString &destino, const Medida &medida, const Avance &avance = {});

} // namespace demo
