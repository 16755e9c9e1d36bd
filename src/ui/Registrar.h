#pragma once

#include "ui/Ventanas.h"

namespace db {
class Entorno;
}

namespace ui {

/// Registers a window made from the shared state and the register, as all are.
template <typename Form>
void registrar(db::Entorno &entorno, Ventanas &ventanas, const QString &nombre, Modo modo)
{
    ventanas.registrar(nombre, modo, [&entorno, &ventanas] { return new Form(entorno, ventanas); });
}

} // namespace ui
