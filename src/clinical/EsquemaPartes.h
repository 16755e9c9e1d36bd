#pragma once

#include "db/Schema.h"

namespace clinical {

/// The declarations of this folder by subject; esquema() joins them.
[[nodiscard]] QVector<db::Table> tablasConsultas();
[[nodiscard]] QVector<db::Table> tablasRevision();
[[nodiscard]] QVector<db::Table> tablasMusculoesqueleticas();
[[nodiscard]] QVector<db::Table> tablasExamen();
[[nodiscard]] QVector<db::Table> tablasGinecologia();
[[nodiscard]] QVector<db::Table> tablasAntecedentes();
[[nodiscard]] QVector<db::Table> tablasObstetricia();
[[nodiscard]] QVector<db::Table> tablasEcografias();
[[nodiscard]] QVector<db::Table> tablasVarias();

/// A section of a consultation: the columns that all of them have, and its own. The key and the link to the
/// consultation come first: a follow-up copies the columns from the third on.
[[nodiscard]] db::Table seccion(const QString &name, const QVector<db::Column> &own);

} // namespace clinical
