#include "db/LectorHistorial.h"

namespace db {

namespace {
constexpr int filasPorLote = 2000;
}

LectorHistorial::LectorHistorial(Connection &conexion, QDate desde, QDate hasta)
    : m_conexion(conexion)
    , m_hasta(hasta.isValid() ? QStringLiteral(" and fecha <= ") + conexion.dialect().dayEnd(hasta) : QString())
    , m_fecha(desde.isValid() ? QVariant(QDateTime(desde, QTime(0, 0))) : QVariant())
    , m_sinFecha(!desde.isValid())
{
}

Rows LectorHistorial::consultar(const QString &condicion, const QVariant &fecha, bool todas)
{
    const QString cuantas = todas ? QString() : QStringLiteral("TOP %1 ").arg(filasPorLote);
    return m_conexion.query(
        QStringLiteral("SELECT %1fecha,equipo,iddoctor,ventana,accion FROM [Historial] WHERE fecha %2%3 ORDER BY fecha")
            .arg(cuantas, condicion, m_hasta),
        fecha.isValid() ? Params{fecha} : Params{});
}

bool LectorHistorial::leer()
{
    if (std::exchange(m_sinFecha, false)) {
        m_filas = m_conexion.query(
            QStringLiteral("SELECT fecha,equipo,iddoctor,ventana,accion FROM [Historial] WHERE fecha IS NULL"));
        m_cantidad = m_filas->rowCount();
        if (m_cantidad > 0)
            return true;
    }
    if (m_terminado)
        return false;
    m_filas = consultar(
        !m_fecha.isValid() ? QStringLiteral("IS NOT NULL")
            : m_incluida   ? QStringLiteral(">= ?")
                           : QStringLiteral("> ?"),
        m_fecha);
    m_cantidad = m_filas->rowCount();
    m_terminado = m_cantidad < filasPorLote;
    if (m_terminado)
        return m_cantidad > 0;

    // The last date may go on behind the lot.
    const int ultima = m_cantidad - 1;
    m_fecha = m_filas->value(ultima, 0);
    m_incluida = m_filas->utf8(0, 0) != m_filas->utf8(ultima, 0);
    if (m_incluida) {
        while (m_filas->utf8(m_cantidad - 1, 0) == m_filas->utf8(ultima, 0))
            --m_cantidad;
    } else {
        m_filas = consultar(QStringLiteral("= ?"), m_fecha, true);
        m_cantidad = m_filas->rowCount();
    }
    return true;
}

} // namespace db
