#pragma once

#include "base/Rechazo.h"
#include "db/Connection.h"
#include "maintenance/Listas.h"

namespace db {
class Entorno;
}

namespace maintenance {

/// One entry of a list, as it is typed.
struct Entrada {
    qint64 id = 0; ///< 0: new
    QString nombre;
    int prioridad = 0;
    QStringList campos; ///< one text per CampoLista; an Opcion's is its number

    bool operator==(const Entrada &) const = default;
};

/// The name of the window in the activity log.
inline const QString ventanaHistorial = QStringLiteral("Mantenimiento del Sistema");

/// Another station deleted the entry that was to be changed.
[[nodiscard]] base::Rechazo entradaEliminada();

/// An empty entry with what most new ones hold.
[[nodiscard]] Entrada entradaNueva(const Lista &lista);

/// `id`, the name, the fields and `prioridad` of every entry that holds `filtro` in one of its texts (any, when it is
/// blank), by descending priority and then by name.
[[nodiscard]] db::Rows leerEntradas(db::Connection &conexion, const Lista &lista, const QString &filtro = {});
/// A cell of such a result as it is typed; for an Opcion its number.
[[nodiscard]] QString textoCampo(const CampoLista &campo, const db::ResultSet &rows, int row, int column);
/// The name, and in brackets what tells it from another entry of the same name.
[[nodiscard]] QString textoEntrada(const Lista &lista, const db::ResultSet &rows, int row);
[[nodiscard]] QString textoEntrada(const Lista &lista, const Entrada &entrada);

[[nodiscard]] std::optional<Entrada> leerEntrada(db::Connection &conexion, const Lista &lista, qint64 id);
/// The `id` of the entry of that name, without regard to case; 0 for none.
[[nodiscard]] qint64 buscarEntrada(db::Connection &conexion, const Lista &lista, const QString &nombre);
/// Longest text of a text column, in characters; 0 when it has no limit.
[[nodiscard]] int largoMaximo(db::Connection &conexion, const Lista &lista, QStringView columna);

/// Adds the entry, or changes the one of its `id`; yields its `id`. Blanks around and repeated within its texts go. A
/// name must be there, fit its column and, when it is another than the stored one, not be held by another entry.
[[nodiscard]] base::Resultado<qint64> guardarEntrada(db::Entorno &entorno, const Lista &lista, const Entrada &entrada);

} // namespace maintenance
