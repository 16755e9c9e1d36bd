#pragma once

#include "base/Rechazo.h"
#include "maintenance/Listas.h"

namespace db {
class Connection;
class Entorno;
} // namespace db

namespace maintenance {

/// How many records name an entry, by place of the list's declaration.
struct CuentaUsos {
    struct Parte {
        const UsoLista *uso;
        int cantidad; ///< above 0
    };
    QVector<Parte> partes;

    [[nodiscard]] bool estaEnUso() const { return !partes.isEmpty(); }
    /// "1.204 pacientes, 3 órdenes y 1 precio"; empty when nothing uses the entry.
    [[nodiscard]] QString texto() const;
};

/// Reads through every table that may name the entry: for one entry on demand, not for a whole list.
[[nodiscard]] CuentaUsos contarUsos(db::Connection &conexion, const Lista &lista, qint64 id);

enum class Eliminacion {
    Cancelada,
    Hecha,
    PideReemplazo ///< it is in use, and the person wants to choose what takes its place
};

/// Deletes an entry that nothing uses, after asking. One in use stays: the question says where, and offers to replace
/// it by another one instead.
[[nodiscard]] base::Resultado<Eliminacion> eliminarEntrada(db::Entorno &entorno, const Lista &lista, qint64 id);

/// Makes every record that names `id` name `destino`, and deletes `id`, whole or not at all; asks before, with the
/// numbers. `destino` 0 leaves those records without an entry, which only a list that is `vaciable` allows. False: the
/// person said no.
[[nodiscard]] base::Resultado<bool>
reemplazarEntrada(db::Entorno &entorno, const Lista &lista, qint64 id, qint64 destino);

} // namespace maintenance
