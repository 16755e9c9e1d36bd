#pragma once

#include "db/Dialect.h"
#include "db/Schema.h"

namespace db {

class Connection;

/// The weekly hours that older versions kept in 28 columns of `Lista Doctores` ("LuMaDesde": by day, half-day and from
/// or until), which live in `Agenda Turnos Horarios` now.
namespace horariosviejos {

/// The 28 names, Sunday's first; `Agenda Turnos Horarios` has columns of the same names.
[[nodiscard]] const QStringList &columnas();

/// Those of the 28 that are among `present` in whatever letter case, as spelled there.
[[nodiscard]] QStringList presentes(const QStringList &present);

/// Writes one template, valid from 01/01/1900 to 31/12/2100, for every professional who has none: into a table just
/// made for all professionals, else only for those who have an hour. A slot length that is missing or not above 0
/// becomes 20, a missing limit of extra appointments -1. `present`: the columns of `Lista Doctores`.
[[nodiscard]] QString sentenciaMover(const Dialect &dialect, const QStringList &present, bool tableIsNew);

[[nodiscard]] QString sentenciaQuitar(const QString &column);

} // namespace horariosviejos

} // namespace db
