#pragma once

#include <QString>

namespace db {
class Connection;
struct Schema;
} // namespace db

namespace catalogos {

/// Fills the tables of a new, empty database: the diagnosis catalogue, the patient, clinical and billing lists from the
/// files in `folder`, the row of `Config` with its starting values and the row of `Plantillas Consulta` with empty
/// texts. `Lista Doctores` stays empty. All of it or, with a db::Error, nothing.
void cargar(db::Connection &connection, const QString &folder);

/// Makes the empty database that a first start copies: every table of `schema`, then cargar(). The file appears under
/// its name only when it is whole; an older one is replaced.
void crearPlantilla(const QString &path, const QString &password, const db::Schema &schema, const QString &folder);

} // namespace catalogos
