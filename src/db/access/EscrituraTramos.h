#pragma once

#include "db/Error.h"
#include "db/access/Fuente.h"
#include "jet/Salida.h"

namespace db::access {

/// Writes what it is given to the standard output, as the reading process does and Tramos understands.
class EscrituraTramos final : public Receptor
{
public:
    /// Greets.
    EscrituraTramos();

    void vinculada(const QString &nombre) override;
    void empezar(const TablaVieja &tabla) override;
    void fila(const std::vector<Valor> &celdas) override;
    void terminar() override;

    /// The last frame: that everything was said, or why not.
    static void cerrar();
    static void fallar(const Error &error);

private:
    void enviarFilas();

    jet::TramoDeSalida m_tramo;
    quint32 m_filas = 0;
};

} // namespace db::access
