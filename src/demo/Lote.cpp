#include "demo/Lote.h"

namespace demo {

void Lote::escribir(const QString &sql, const db::Params &valores)
{
    if (m_filas >= porTransaccion)
        cerrar();
    if (!m_transaccion)
        m_transaccion.emplace(m_conexion);
    m_conexion.execute(sql, valores);
    ++m_filas;
}

qint64 Lote::escribirConId(const QString &sql, const db::Params &valores)
{
    escribir(sql, valores);
    return m_conexion.insertedId();
}

void Lote::cerrar()
{
    if (m_transaccion) {
        m_transaccion->commit();
        m_transaccion.reset();
    }
    m_filas = 0;
}

QString Lote::insertar(const QString &tabla, const QString &columnas) const
{
    QStringList nombres, marcas;
    for (const QString &columna : columnas.split(u' ', Qt::SkipEmptyParts)) {
        nombres << columna;
        marcas << QStringLiteral("?");
    }
    return QStringLiteral("INSERT INTO %1 (%2) VALUES (%3)")
        .arg(m_conexion.dialect().identifier(tabla), nombres.join(u','), marcas.join(u','));
}

} // namespace demo
