#include "db/access/Carga.h"

#include "db/Error.h"
#include "db/access/Informe.h"
#include "db/engine/EmbeddedEngine.h"

namespace db::access {

QByteArray citado(const QString &nombre) { return '"' + nombre.toUtf8().replace('"', "\"\"") + '"'; }

Carga::Carga(EmbeddedEngine &motor, const Plan &plan, Sigue sigue)
    : m_motor(motor)
    , m_plan(plan)
    , m_sigue(std::move(sigue))
{
}

void Carga::empezar(const TablaVieja &tabla)
{
    m_nombre = tabla.nombre;
    m_tabla = m_plan.tabla(tabla.nombre);
    m_filasDeTabla = 0;
    m_ids.clear();
    if (!m_tabla)
        return;
    if (tabla.columnas.size() != m_tabla->vieja.columnas.size())
        throw Error(Error::Kind::Corrupt, 0, QStringLiteral("El archivo cambió mientras se lo leía: ¿está en uso?"));
    m_mayor = m_tabla->mayorId;
    m_sumas[m_tabla].assign(size_t(m_tabla->nueva.columns.size()), {});
    QByteArray columnas, lugares;
    for (const int destino : m_tabla->destino) {
        columnas += (columnas.isEmpty() ? "" : ", ") + citado(m_tabla->nueva.columns[destino].name);
        lugares += lugares.isEmpty() ? "?" : ", ?";
    }
    m_insercion = "INSERT INTO " + citado(m_tabla->nueva.name) + " (" + columnas + ") VALUES (" + lugares + ')';
}

qint64 Carga::numeroDe(const Valor &id)
{
    if (id.clase == Valor::Clase::Entero && !m_ids.contains(id.entero)) {
        m_ids.insert(id.entero);
        return id.entero;
    }
    m_ids.insert(++m_mayor);
    apartar(m_mayor, m_tabla->nueva.columns[m_tabla->contador].name, id, QStringLiteral("número repetido o ausente"));
    return m_mayor;
}

void Carga::fila(const std::vector<Valor> &celdas)
{
    if (!m_tabla)
        return;
    ++m_filas;
    ++m_filasDeTabla;
    const qint64 numero = m_tabla->contador >= 0 ? numeroDe(celdas[size_t(m_tabla->contador)]) : m_filasDeTabla;
    std::vector<Suma> &sumas = m_sumas[m_tabla];
    Params valores;
    valores.reserve(m_tabla->destino.size());
    for (int c = 0; c < m_tabla->destino.size(); ++c) {
        const int destino = m_tabla->destino[c];
        const Column &columna = m_tabla->nueva.columns[destino];
        Guardado guardado = c == m_tabla->contador ? Guardado{qlonglong(numero)} : guardar(celdas[size_t(c)], columna);
        if (!guardado.exacto)
            apartar(numero, columna.name, celdas[size_t(c)], QStringLiteral("no cabe exactamente"));
        sumas[size_t(destino)].agregar(numero, guardado.valor);
        valores << std::move(guardado.valor);
    }
    m_motor.executeNative(m_insercion, valores);
}

void Carga::apartar(qint64 fila, const QString &columna, const Valor &valor, const QString &motivo)
{
    if (m_apartados++ == 0)
        m_motor.createTable(
            {tablaApartados,
             {columna::contador(),
              columna::texto(QStringLiteral("tabla"), 64),
              columna::largo(QStringLiteral("fila")),
              columna::texto(QStringLiteral("columna"), 64),
              columna::memo(QStringLiteral("valor")),
              columna::texto(QStringLiteral("motivo"), 50)},
             {}});
    m_motor.executeNative(
        "INSERT INTO " + citado(tablaApartados) + " (tabla, fila, columna, valor, motivo) VALUES (?, ?, ?, ?, ?)",
        {m_tabla->nueva.name, fila, columna, valor.descripcion(), motivo});
}

void Carga::terminar()
{
    if (!m_tabla)
        return;
    if (m_filasDeTabla != m_tabla->filas)
        throw Error(Error::Kind::Corrupt, 0, QStringLiteral("El archivo cambió mientras se lo leía: ¿está en uso?"));
    if (m_tabla->contador < 0)
        return;
    // The numbers of deleted rows are not given again, as the old file did not.
    const qint64 ultimo = m_tabla->vieja.ultimoNumero;
    constexpr qint64 creible = 1'000'000;
    const qint64 desde = ultimo > m_mayor && ultimo - m_mayor < creible ? ultimo : m_mayor;
    m_motor.executeNative("DELETE FROM sqlite_sequence WHERE name = ?", {m_tabla->nueva.name});
    m_motor.executeNative("INSERT INTO sqlite_sequence (name, seq) VALUES (?, ?)", {m_tabla->nueva.name, desde});
}

} // namespace db::access
