#pragma once

#include "maintenance/Historial.h"

#include <QSaveFile>

namespace maintenance {

/// Writes all rows of a filter to a file as CSV, a piece at a time. The file appears, or replaces another of its name,
/// only when it is whole: one given up leaves nothing behind. Calls throw db::Error.
class ExportacionHistorial
{
public:
    ExportacionHistorial(db::Connection &conexion, const FiltroHistorial &filtro, const QString &archivo);

    /// False when the file is complete.
    [[nodiscard]] bool seguir();
    [[nodiscard]] int porciento() const { return m_busqueda.porciento(); }
    [[nodiscard]] qint64 filas() const { return m_filas; }

private:
    void escribir(const QStringList &campos);
    [[noreturn]] void fallar() const;

    UsuariosHistorial m_usuarios;
    BusquedaHistorial m_busqueda;
    QSaveFile m_archivo;
    qint64 m_filas = 0;
};

} // namespace maintenance
