#pragma once

#include "db/Connection.h"

#include <QDate>

namespace db {

/// Goes through `Historial` from the oldest row to the newest in lots of bounded size, over the index by date: the
/// table has no key, so a lot ends between two dates, never within one. Columns: fecha 0, equipo 1, iddoctor 2, ventana
/// 3, accion 4. Rows without a date come first, unless there is a first day.
class LectorHistorial
{
public:
    /// Whole days, both included; an invalid one is no bound.
    explicit LectorHistorial(Connection &conexion, QDate desde = {}, QDate hasta = {});

    /// Reads the next lot; false when there are no more rows.
    [[nodiscard]] bool leer();
    /// The first cantidad() rows are the lot; those after them will come again.
    [[nodiscard]] const ResultSet &filas() const { return *m_filas; }
    [[nodiscard]] int cantidad() const { return m_cantidad; }

private:
    [[nodiscard]] Rows consultar(const QString &condicion, const QVariant &fecha, bool todas = false);

    Connection &m_conexion;
    QString m_hasta; ///< condition of the last day, empty for none
    QVariant m_fecha; ///< where the next lot begins; invalid: at the first date
    bool m_incluida = true; ///< whether rows of m_fecha itself are still to come
    bool m_sinFecha; ///< whether rows without a date are still to come
    bool m_terminado = false;
    Rows m_filas;
    int m_cantidad = 0;
};

} // namespace db
