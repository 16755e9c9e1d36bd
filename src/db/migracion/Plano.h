#pragma once

#include "db/Schema.h"

#include <QStringList>

#include <functional>

namespace db {
class Connection;
class EmbeddedEngine;
} // namespace db

/// What is to be moved from one back end to the other: found by looking at the source, before anything is made.
namespace db::migracion {

/// A table as it is and as it will be made.
struct TablaPlano {
    /// With types that hold every value found: a number that does not fit its column, or a text longer than it, makes
    /// the new column wider. Its indexes are those of the source, without `ofList`.
    Table tabla;
    qint64 filas = 0;
    qint64 contador = 0; ///< last number that its counter gave; 0 for none
    /// Names of the columns of `tabla` that hold no Null.
    QStringList completas = {};

    /// Name of the counter, empty when it has none.
    [[nodiscard]] QString columnaContador() const;
};

struct Plano {
    QVector<TablaPlano> tablas;
    QStringList avisos; ///< what will not be exactly as it was, for the person

    [[nodiscard]] qint64 filas() const;
};

using AlMirar = std::function<void(const QString &tabla)>;

/// Tables that are left behind, by their given names.
[[nodiscard]] bool seExcluye(const QString &tabla);

/// Reads the catalog of an embedded file and looks through its rows for values that a server's column would refuse:
/// dates before 1753 and texts with a NUL are counted in the notes (they become 31/12/8888, and lose it, in the copy);
/// what cannot be brought over at all throws db::Error, naming table and column. `alMirar` hears each table before it
/// is looked at.
[[nodiscard]] Plano planoDeArchivo(EmbeddedEngine &origen, const AlMirar &alMirar = {});

/// The same of a server database, where every value fits. What `esquema` declares of a table joins what the server
/// knows of it (lists, searches, defaults). Within a transaction of the caller's, until whose end nobody else can write
/// to the tables.
[[nodiscard]] Plano planoDeServidor(Connection &origen, const Schema &esquema, const AlMirar &alMirar = {});

} // namespace db::migracion
