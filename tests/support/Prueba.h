#pragma once

#include <QtTest>

namespace soporte {

/// Makes a test object for the program's main() to run.
using Fabrica = QObject *(*)();
bool anotar(const char *nombre, Fabrica fabrica);

} // namespace soporte

/// Registers a test class of this program. One .cpp per class, ending in PRUEBA(Class) and #include "file.moc".
#define PRUEBA(Clase)                                                                                                  \
    static const bool anotada_##Clase = soporte::anotar(#Clase, []() -> QObject * { return new Clase; });
