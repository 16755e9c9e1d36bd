#pragma once

#include "db/Schema.h"

namespace db {

/// The tables that every part of the system consults: `Config`, `Lista Doctores`, `Lista Especialidades`,
/// `Historial` with its chain and its uses, `Borradores`.
[[nodiscard]] Schema esquemaNucleo();

} // namespace db
