#pragma once

#include "base/Rechazo.h"

#include <QString>
#include <QVariant>
#include <QVector>

namespace db {

class Connection;
class Entorno;

struct Doctor {
    int id = 0;
    QString nombre;
    bool operator==(const Doctor &) const = default;
};

/// Professionals (`tipo` 0) by descending priority and then name.
[[nodiscard]] QVector<Doctor> profesionales(Connection &connection);
/// All users in the same order.
[[nodiscard]] QVector<Doctor> usuarios(Connection &connection);

/// `NomDoc` of the current user; empty when there is no such row.
[[nodiscard]] QString nombreUsuarioActual(Entorno &entorno);

/// A column of the current user's row; a null QVariant when the row is missing.
[[nodiscard]] QVariant opcionUsuario(Entorno &entorno, QStringView column);

/// `id` of the active professional: `medisecre` for a user of `tipo` 1, else the current user itself.
[[nodiscard]] int profesionalActivo(Entorno &entorno);

/// The rights check: the current user's row must exist ("Defina un Usuario Activo válido desde la ventana
/// Configuración.") and, when `derecho` is not empty, that flag of it must be set ("No tiene permiso para ejecutar esta
/// acción. ..."). Both titled "Atención...".
[[nodiscard]] base::Control controlarDerecho(Entorno &entorno, QStringView derecho = {});
/// The refusal for want of a right.
[[nodiscard]] base::Rechazo sinPermiso();

/// Whether the settings may be changed: by the administrator (`id`) whose password opened them, who must still be one,
/// or, with none (0), by a current user with the right `accesoconfiguracion`. There must be a current user either way.
[[nodiscard]] base::Control controlarConfiguracion(Entorno &entorno, int administrador);

} // namespace db
