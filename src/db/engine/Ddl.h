#pragma once

#include "db/Schema.h"

#include <QByteArray>
#include <QList>

/// How the embedded file declares tables: the declared type tells an outside reader, and this program, what a column
/// holds. Text compares through the order registered as NOCASE.
namespace db::ddl {

/// CREATE TABLE, the counter's start where it has one, and the indexes.
[[nodiscard]] QList<QByteArray> createTable(const Table &table);
[[nodiscard]] QByteArray createIndex(const QString &table, const Index &index);
/// The indexes alone, for a table that was filled before it has them.
[[nodiscard]] QList<QByteArray> createIndexes(const Table &table);
[[nodiscard]] QByteArray addColumn(const QString &table, const Column &column);

/// Type of a declaration such as "TEXT(50)" or "YESNO"; Type::Memo for one that is not ours.
[[nodiscard]] Type typeOf(QByteArrayView declaration);
/// A column read back from the catalog.
[[nodiscard]] Column columnOf(const QString &name, const QString &declaration, const QString &initial, bool isKey);

} // namespace db::ddl
