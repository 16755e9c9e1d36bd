#pragma once

#include "base/Rechazo.h"

#include <QDateTime>
#include <QVariantMap>
#include <QVector>

#include <optional>

namespace db {
class Connection;
class Entorno;
} // namespace db

/// The window `configuracion`: who may use it, and the settings it shows and stores. All throw db::Error.
namespace maintenance {

/// Whether the window may open for the administrator (`id` of `Lista Doctores`) whose password was typed, 0 for none.
/// Once some administrator has a password nobody opens it without one; until then the right `accesoconfiguracion` does.
[[nodiscard]] base::Control controlarApertura(db::Entorno &entorno, int administrador);

/// Every setting by the name of its column, as a form shows it: bool for yes and no, int for numbers and choices (null
/// where there is none), QString for the rest.
[[nodiscard]] QVariantMap leerConfiguracion(db::Entorno &entorno);

/// Checks and stores the settings that a person changed, and those alone: what another station changed meanwhile stays.
/// The names in a refusal's `campo` are the columns. After a refusal or a db::Error nothing is stored.
[[nodiscard]] base::Control guardarConfiguracion(db::Entorno &entorno, int administrador, const QVariantMap &cambios);

/// How much there is in the activity log, and since when.
struct ResumenHistorial {
    qint64 cantidad = 0;
    QDateTime desde; ///< invalid when it is empty
};
[[nodiscard]] ResumenHistorial resumenHistorial(db::Connection &conexion);

/// Asks and deletes the entries of the log up to the end of that day; the number of them, or nothing when the person
/// said no.
[[nodiscard]] base::Resultado<std::optional<int>>
eliminarHistorialHasta(db::Entorno &entorno, int administrador, QDate hasta);

/// A line of the list of users.
struct UsuarioListado {
    int id = 0;
    QString nombre;
    bool medico = false;
    bool administrador = false;
    bool conClave = false;
};
/// In the order of all lists of users.
[[nodiscard]] QVector<UsuarioListado> listarUsuarios(db::Connection &conexion);

} // namespace maintenance
