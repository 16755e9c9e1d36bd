#pragma once

#include <optional>

namespace base {
class Mensajes;
}

namespace db {

class Connection;

/// Makes sure that there is a professional to work with: when no row of `Lista Doctores` has `tipo` 0, adds the sample
/// professional "Juan Pérez" and tells the person where to set the real one up. Yields the new row's `id`; empty when
/// there was a professional. Throws db::Error.
std::optional<int> asegurarProfesional(Connection &connection, base::Mensajes &mensajes);

} // namespace db
