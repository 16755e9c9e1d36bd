#pragma once

#include <QDate>

class QWidget;

namespace db {
class Entorno;
}
namespace ui {
class Ventanas;
}

namespace medicion {

class Tabla;

/// From the key until the window is painted, inside the shown main window: a day and a month in "agendas", a day in
/// "agendastodas" of ten professionals, each of sixty appointments a day. The shown window is closed again.
void medirPintado(Tabla &tabla, db::Entorno &entorno, ui::Ventanas &ventanas, QWidget &marco, QDate hoy, int veces);

} // namespace medicion
