#pragma once

#include "db/Schema.h"
#include "db/access/Fuente.h"

#include <QVariant>

namespace db::access {

/// What is stored of a cell.
struct Guardado {
    QVariant valor = {}; ///< as Engine binds it; Null for a null QVariant
    /// False when the column cannot hold exactly what the old file had: it is kept aside as well.
    bool exacto = true;
};

/// Whether a column of this kind holds the value as it is (a cell without one fits everywhere).
[[nodiscard]] bool entra(const Valor &valor, const Column &columna);
[[nodiscard]] Guardado guardar(const Valor &valor, const Column &columna);

/// The column that an old one becomes where the system declares none, or one that cannot hold its values. `ancho`: of
/// the longest text in it.
[[nodiscard]] Column columnaNatural(const ColumnaVieja &vieja, int ancho);

/// "Texto (50)", for the report.
[[nodiscard]] QString nombreDeTipo(const Column &columna);

} // namespace db::access
