#pragma once

#include "db/migracion/Plano.h"
#include "db/migracion/Valores.h"

namespace db::migracion {

/// Reads a table of either side a stretch of rows at a time, so that no table is ever in memory whole. The rows of the
/// table must not change meanwhile.
class Lector
{
public:
    virtual ~Lector() = default;
    /// The next rows, a value per column of the table; empty at the end. Throws db::Error.
    [[nodiscard]] virtual std::vector<Params> siguientes() = 0;

protected:
    explicit Lector(const TablaPlano &plano)
        : m_plano(plano)
    {
    }
    /// The rows of a result whose first columns, `primera` of them, are not the table's; notes how big they are.
    [[nodiscard]] std::vector<Params> valores(const ResultSet &filas, int primera, bool limitar);
    /// How many rows to ask for next: some megabytes, whether they hold pictures or a number.
    [[nodiscard]] int cuantas() const { return m_cuantas; }

    const TablaPlano &m_plano;

private:
    int m_cuantas = 256;
};

/// Of an embedded file. `limitar`: see valor().
[[nodiscard]] std::unique_ptr<Lector> lectorDeArchivo(EmbeddedEngine &motor, const TablaPlano &plano, bool limitar);
/// Of a server database.
[[nodiscard]] std::unique_ptr<Lector> lectorDeServidor(Connection &conexion, const TablaPlano &plano);

/// "[a],[b]" of all columns.
[[nodiscard]] QString listaDeColumnas(const Dialect &dialecto, const Table &tabla);

} // namespace db::migracion
