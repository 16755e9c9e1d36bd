#pragma once

#include <QDate>

namespace db {
class Entorno;
}
namespace ui {
class Ventanas;
}

namespace medicion {

class Tabla;

/// The appointment book of an open practice: a day read, also one of sixty appointments, the marks of a month, the next
/// free days, and the window going from day to day. Needs the window "agendas" registered.
void medirAgenda(Tabla &tabla, db::Entorno &entorno, ui::Ventanas &ventanas, QDate hoy, int veces);

} // namespace medicion
