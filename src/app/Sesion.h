#pragma once

namespace db {
class Entorno;
}

namespace app {

/// What the main window does in the database beside its buttons. All throw db::Error.

void registrarIngreso(db::Entorno &entorno);
/// Empties the statistics print table and logs the end of the session.
void registrarCierre(db::Entorno &entorno);

/// Removes the temporary user row; the notice that is waiting for the current user, empty for none.
[[nodiscard]] QString anuncio(db::Entorno &entorno);
/// Removes the temporary rows of the print tables.
void borrarImpresionesTemporales(db::Entorno &entorno);

} // namespace app
