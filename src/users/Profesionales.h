#pragma once

#include "base/Rechazo.h"

#include <QString>
#include <QStringList>
#include <QVariantMap>

#include <optional>

namespace db {
class Connection;
class Entorno;
} // namespace db

namespace users {

/// What is edited of a row of `Lista Doctores`: its columns by name, and of the password whether there is one. The
/// password itself leaves the rules in neither of its forms.
struct FichaUsuario {
    int id = 0; ///< 0: a new user
    QVariantMap columnas;
    bool tieneClave = false;
};

/// A user as edited, to be written.
struct UsuarioEditado {
    int id = 0; ///< 0: a new user
    QVariantMap columnas; ///< all of columnasDeUsuario()
    QVariantMap cambios; ///< those that are not as they were read: of an existing row only these are written
    std::optional<QString> clave; ///< empty text: none from now on; no value: as it was
};

/// The columns that the window edits, but for the password.
[[nodiscard]] const QStringList &columnasDeUsuario();

/// A user that does not exist yet, with the values that a new row starts with.
[[nodiscard]] FichaUsuario usuarioNuevo();
/// Refused when the row is gone. Throws db::Error, as all below.
[[nodiscard]] base::Resultado<FichaUsuario> leerUsuario(db::Connection &conexion, int id);

/// Saves a user and yields the `id`. Refused, in this order: who may not change the settings (`administrador`: see
/// db::controlarConfiguracion()); no name; an administrator without password; the last
/// professional made something else; a password that another user has, whatever the letter case; the row is gone. The
/// password is stored as its hash; one that is kept is not touched. Compares a new password with everybody's: some
/// hundredths of a second for each user. Throws std::bad_alloc too.
[[nodiscard]] base::Resultado<int>
guardarUsuario(db::Entorno &entorno, const UsuarioEditado &usuario, int administrador = 0);

/// Deletes a user after asking. The last professional is refused, and the log tells who was deleted. True when it was
/// done; whatever stopped it has been told.
bool eliminarUsuario(db::Entorno &entorno, int id, int administrador = 0);

/// What "copy the rights of another user" copies: every right, and the flags that say how she works; not what makes
/// an administrator, nor the web agenda. Refused when the row is gone.
[[nodiscard]] base::Resultado<QVariantMap> permisosDe(db::Connection &conexion, int id);

} // namespace users
