#pragma once

#include "db/Schema.h"

#include <initializer_list>

/// Words for declaring tables briefly: columns of one type are named in one text, separated by blanks, and lists of
/// columns are joined with "+".
namespace db::declarar {

using Columnas = QVector<Column>;

[[nodiscard]] Columnas contador();
[[nodiscard]] Columnas textos(int size, const QString &names);
[[nodiscard]] Columnas memos(const QString &names);
[[nodiscard]] Columnas enteros(const QString &names);
[[nodiscard]] Columnas largos(const QString &names);
[[nodiscard]] Columnas simples(const QString &names);
[[nodiscard]] Columnas dobles(const QString &names);
[[nodiscard]] Columnas banderas(const QString &names); ///< initial 0
[[nodiscard]] Columnas fechas(const QString &names);
[[nodiscard]] Columnas binarios(const QString &names);

/// The same columns with this starting value.
[[nodiscard]] Columnas con(const QVariant &initial, Columnas columns);

/// "impri1 impri2 ... impri20"; `digits` pads with zeros.
[[nodiscard]] QString serie(const QString &stem, int from, int to, int digits = 1);

/// Indexes by the names of their columns, "Doctor Fecha".
[[nodiscard]] Index indice(const QString &columns);
[[nodiscard]] Index unico(const QString &columns);
/// The columns that a list of this table shows, see Index::ofList.
[[nodiscard]] Index listado(const QString &columns);

[[nodiscard]] Table tabla(const QString &name, const Columnas &columns, const QVector<Index> &indexes = {});
/// A list that the person maintains: `id`, `nombre`, `prioridad` (0).
[[nodiscard]] Table lista(const QString &name, int size = 100);
/// A table of records of a patient: `id`, `NroPaci` with its index, and the given columns.
[[nodiscard]] Table registros(const QString &name, const Columnas &columns, const QVector<Index> &indexes = {});

} // namespace db::declarar
