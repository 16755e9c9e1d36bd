#pragma once

#include "db/Connection.h"
#include "db/Schema.h"

#include <functional>
#include <memory>

namespace base {
class Mensajes;
}

namespace db {

using AbrirConexion = std::function<std::unique_ptr<Connection>()>;

/// Brings an Access-mode database up to the declared tables: makes the tables and columns that are missing (names
/// compared without regard to letter case), gives the existing rows of a new column its starting value, and moves the
/// old weekly hours of `Lista Doctores` into `Agenda Turnos Horarios`. One routine per schema, in their order, each on
/// its own connection from `open`; nobody else of this program may hold the file meanwhile. A step that fails is
/// skipped and tried again at the next start; hours are never dropped before they are in the new table. When something
/// was added it tells the person so at the end. Yields whether something was added; throws db::Error only when `open`
/// does. Also prepares what searching as one types reads (Engine::prepareSearch), without a word.
bool actualizarAccess(const QVector<Schema> &routines, const AbrirConexion &open, base::Mensajes &mensajes);

/// The same for a server database, over the shared connection, with guarded statements. Throws db::Error when the
/// catalog cannot be read.
bool actualizarServidor(const Schema &schema, Connection &connection, base::Mensajes &mensajes);

} // namespace db
