#pragma once

#include "db/Connection.h"

#include <optional>

namespace demo {

/// Writes many rows, fifty thousand to a transaction: each commit writes every index page that was touched, and the
/// indexes by patient are touched all over. What was not closed by cerrar() is undone.
class Lote
{
public:
    explicit Lote(db::Connection &conexion)
        : m_conexion(conexion)
    {
    }

    void escribir(const QString &sql, const db::Params &valores);
    /// The same, yielding the counter's value of the new row.
    qint64 escribirConId(const QString &sql, const db::Params &valores);
    void cerrar();

    [[nodiscard]] db::Connection &conexion() const { return m_conexion; }
    /// INSERT of one row with a "?" for each of the columns, which are separated by blanks.
    [[nodiscard]] QString insertar(const QString &tabla, const QString &columnas) const;

private:
    static constexpr int porTransaccion = 50000;

    db::Connection &m_conexion;
    std::optional<db::Transaction> m_transaccion;
    int m_filas = 0;
};

} // namespace demo
