#pragma once

#include "base/Rechazo.h"

#include <QString>

namespace db {
class Connection;
}

/// The administrator gate: a password in front of what only an administrator may open.
namespace users::puerta {

/// Some administrator has a password. Until then nobody could pass, and the gate is not offered.
[[nodiscard]] bool seOfrece(db::Connection &conexion);

/// Name of the first administrator whose password was typed, or the refusal. Throws db::Error, std::bad_alloc.
[[nodiscard]] base::Resultado<QString> pasar(db::Connection &conexion, const QString &clave);

} // namespace users::puerta
