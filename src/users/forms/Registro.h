#pragma once

namespace db {
class Entorno;
}
namespace ui {
class Ventanas;
}

namespace users {

/// Registers the windows of users: login, change of user, rights.
void registrarVentanas(db::Entorno &entorno, ui::Ventanas &ventanas);

} // namespace users
