#pragma once

#include "db/Schema.h"

#include <QStringList>

/// The statements that bring a SQL Server database up to the declared tables. Each is guarded, so that running it again
/// is harmless.
namespace db::servidor {

/// The server's type with, after "DEFAULT", the starting value of new rows: "nvarchar(250)", "SMALLINT DEFAULT 0".
[[nodiscard]] QString tipo(const Column &column);

/// "IF NOT EXISTS (...) BEGIN CREATE TABLE ... END", with its keys and indexes as further statements.
[[nodiscard]] QStringList crearTabla(const Table &table);
/// "IF NOT EXISTS (...) BEGIN ALTER TABLE [Consultas] ADD detallediagnos nvarchar(250) END"
[[nodiscard]] QString agregarColumna(const QString &table, const Column &column);
/// "IF EXISTS (...) BEGIN ALTER TABLE [Lista Doctores] DROP COLUMN LuMaDesde END"
[[nodiscard]] QString quitarColumna(const QString &table, const QString &column);

/// "SELECT * FROM INFORMATION_SCHEMA.COLUMNS WHERE COLUMN_NAME = 'moduloweb' and TABLE_NAME = 'Lista Doctores'"
[[nodiscard]] QString buscarColumna(const QString &table, const QString &column);

/// Asks for the name of the column's default value, which has to be dropped before the column.
[[nodiscard]] QString buscarRestriccion(const QString &table, const QString &column);
[[nodiscard]] QString quitarRestriccion(const QString &table, const QString &name);

} // namespace db::servidor

namespace db {

/// "UPDATE [Pacientes] SET idcobertura2 = -1", for the rows that were there before the column; empty when it has no
/// starting value. The same text in both dialects.
[[nodiscard]] QString sentenciaValorInicial(const QString &table, const Column &column);

} // namespace db
