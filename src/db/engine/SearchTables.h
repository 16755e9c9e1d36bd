#pragma once

#include "db/Schema.h"

#include <QByteArray>
#include <QString>

#include <optional>

namespace db {
class EmbeddedEngine;
}

/// What the embedded file keeps of a searched table (Table::search) beside it:
///
///   motor_busqueda           one row per table: which columns, which state of the rows
///   motor_busqueda_tramos    the values of each column in the order of the list, thousands to a blob
///   motor_busqueda_cambios   the keys of the rows that were written since, by triggers of the table
///
/// The triggers use nothing that an outside tool would lack: whoever writes is noticed, and whoever reads puts the
/// changed rows in their place. The first two are written anew when the list of changes has grown long.
namespace db::searchtables {

/// A value in a blob ends with this, ...
constexpr char separator = '\0';
/// ... and a Null is this byte alone, which no text holds.
constexpr char null = '\xFF';

/// "NroHC|Apellido,apellido2|DNI,Tel": all that the kept columns depend on.
[[nodiscard]] QString definition(const SearchList &list);
[[nodiscard]] SearchList list(const QString &definition);
/// The key, the order's columns and the others, as they are kept.
[[nodiscard]] QStringList columns(const SearchList &list);

/// True when the file has the three tables and the table's triggers as they should be.
[[nodiscard]] bool complete(EmbeddedEngine &engine, const QString &table, const SearchList &list);
/// True when there is nothing that build() would mend: complete, of this definition, and little has changed since.
[[nodiscard]] bool current(EmbeddedEngine &engine, const QString &table, const SearchList &list);
/// Makes tables and triggers where they are missing, and writes the columns from the rows as they are. Within a
/// transaction of the caller. Throws db::Error.
void build(EmbeddedEngine &engine, const QString &table, const SearchList &list);

} // namespace db::searchtables
