#pragma once

#include "base/Rechazo.h"

#include <QString>

#include <optional>
#include <vector>

namespace db {
class Connection;
class Entorno;
} // namespace db

namespace agenda {

/// An entry of the practice's own telephone list.
struct Telefono {
    int id = 0; ///< 0: not stored yet
    QString nombre = {};
    QString telefono = {};
    QString celular = {};
    QString email = {};
    QString direccion = {};
    QString observaciones = {};

    bool operator==(const Telefono &) const = default;
};

/// All entries by name.
[[nodiscard]] std::vector<Telefono> listarTelefonos(db::Connection &conexion);
[[nodiscard]] std::optional<Telefono> leerTelefono(db::Connection &conexion, int id);

/// Stores a new (`id` 0) or changed entry, its texts trimmed; yields its `id`. A name is needed, and a telephone, a
/// mobile or an e-mail. Fields of refusals: `nombre`, `telefono`. Refused without the right, and when another station
/// deleted it.
[[nodiscard]] base::Resultado<int> guardarTelefono(db::Entorno &entorno, const Telefono &entrada);
/// Asks and deletes, and writes it to the activity log; false when the person said no. Refused without the right, and
/// when it is no longer there.
[[nodiscard]] base::Resultado<bool> eliminarTelefono(db::Entorno &entorno, int id);

} // namespace agenda
