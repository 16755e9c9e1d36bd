#pragma once

#include "db/Engine.h"
#include "db/HuellaHistorial.h"

#include <QCryptographicHash>

namespace db::migracion {

/// First day that the server's dates know, and the program's value for a missing date there.
inline const QDate primerDia(1753, 1, 1);
inline const QDate sinFecha(8888, 12, 31);

/// The value of a cell as it travels, by the type of the column that will hold it: a flag is a flag whether stored as
/// -1 or 1, a date is to the second, a single is the nearest one. With `limitar`, as the server can hold it: 31/12/8888
/// for a date before 1753, a text without NUL. Null and the empty text stay two things. Throws db::Error for a date
/// that is none.
[[nodiscard]] QVariant
valor(const ResultSet &filas, int fila, int columna, const Column &destino, bool limitar = false);

/// The sum of the hashes of the rows of a table in the form of valor(): the same on both sides whatever the order.
class Suma
{
public:
    /// Throws nothing; `fila` holds a value per column.
    void agregar(const QVector<Column> &columnas, const Params &fila);

    [[nodiscard]] qint64 filas() const { return m_filas; }
    [[nodiscard]] const Huella &huella() const { return m_huella; }
    bool operator==(const Suma &otra) const { return m_filas == otra.m_filas && m_huella == otra.m_huella; }

private:
    qint64 m_filas = 0;
    Huella m_huella;
    QByteArray m_texto; ///< kept for its room
};

} // namespace db::migracion
