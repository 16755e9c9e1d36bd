#pragma once

namespace db {
class Entorno;
}
namespace ui {
class Ventanas;
}

namespace medicion {

class Tabla;

/// The activity log of an open practice: an entry written, the viewer opened and filtered, the log verified. Before
/// that it gets so many entries with links of their own. Needs the window "historial" registered.
void medirHistorial(Tabla &tabla, db::Entorno &entorno, ui::Ventanas &ventanas, int encadenadas, int veces);

} // namespace medicion
