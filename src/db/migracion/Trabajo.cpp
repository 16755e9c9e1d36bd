#include "db/migracion/Trabajo.h"

#include "db/Connection.h"
#include "db/Error.h"

#include <QLocale>
#include <QMutexLocker>

#include <algorithm>

namespace db::migracion {

Estado Seguimiento::estado() const
{
    const QMutexLocker cerrado(&m_candado);
    return m_estado;
}

void Seguimiento::poner(const Estado &estado)
{
    const QMutexLocker cerrado(&m_candado);
    m_estado = estado;
}

qint64 Desenlace::filas() const
{
    qint64 total = 0;
    for (const TablaComparada &tabla : tablas)
        total += tabla.filasDestino;
    return total;
}

QString Servidor::cadena(const QString &catalogo) const
{
    return QStringLiteral("Provider=SQLOLEDB; Initial Catalog=") + catalogo + QStringLiteral("; Data Source=") + nombre
        + QStringLiteral("; UID=") + usuario + QStringLiteral("; PWD=") + clave;
}

void Trabajo::setPlano(Plano plano)
{
    m_plano = std::move(plano);
    m_sumas.resize(m_plano.tablas.size());
    m_estado.tablas = int(m_plano.tablas.size());
    m_estado.total = 2 * m_plano.filas(); // there, and read back
}

void Trabajo::etapa(const QString &que, const QString &tabla, int numero)
{
    m_estado.que = que;
    m_estado.tabla = tabla;
    m_estado.numero = numero;
    m_estado.filas = 0;
    m_estado.filasTabla = numero > 0 ? m_plano.tablas[numero - 1].filas : 0;
    avanzar(0);
}

void Trabajo::avanzar(qint64 filas)
{
    m_estado.filas += filas;
    m_estado.hechas += filas;
    m_seguimiento.poner(m_estado);
    if (m_pasos.alAvanzar)
        m_pasos.alAvanzar(m_estado);
    if (m_seguimiento.cancelado())
        throw Cancelado();
}

void Trabajo::copiar(int numero, Lector &lector, Connection &destino, const QString &insertar)
{
    const Table &tabla = m_plano.tablas[numero - 1].tabla;
    etapa(QStringLiteral("Copiando"), tabla.name, numero);
    Suma &suma = m_sumas[numero - 1];
    while (true) {
        const std::vector<Params> filas = lector.siguientes();
        if (filas.empty())
            return;
        Transaction transaccion(destino);
        destino.executeBatch(insertar, filas);
        transaccion.commit();
        for (const Params &fila : filas)
            suma.agregar(tabla.columns, fila);
        avanzar(qint64(filas.size()));
    }
}

void Trabajo::comparar(int numero, Lector &destino)
{
    const Table &tabla = m_plano.tablas[numero - 1].tabla;
    etapa(QStringLiteral("Comprobando"), tabla.name, numero);
    Suma suma;
    for (auto filas = destino.siguientes(); !filas.empty(); filas = destino.siguientes()) {
        for (const Params &fila : filas)
            suma.agregar(tabla.columns, fila);
        avanzar(qint64(filas.size()));
    }
    const Suma &origen = m_sumas[numero - 1];
    m_comparadas.append({tabla.name, origen.filas(), suma.filas(), origen.huella(), suma.huella()});
}

bool Trabajo::iguales() const
{
    return std::all_of(m_comparadas.begin(), m_comparadas.end(), [](const TablaComparada &t) { return t.igual(); });
}

QString Trabajo::diferencias() const
{
    const QLocale regional;
    QStringList renglones;
    for (const TablaComparada &tabla : m_comparadas) {
        if (tabla.igual())
            continue;
        renglones
            << (tabla.filasOrigen == tabla.filasDestino
                    ? QStringLiteral("La tabla '%1' tiene registros con otro contenido.").arg(tabla.tabla)
                    : QStringLiteral("La tabla '%1' tiene %2 registros en lugar de %3.")
                          .arg(
                              tabla.tabla,
                              regional.toString(tabla.filasDestino),
                              regional.toString(tabla.filasOrigen)));
    }
    return renglones.join(u'\n');
}

Desenlace concluir(const std::function<Desenlace()> &trabajo)
{
    using Tipo = Desenlace::Tipo;
    try {
        return trabajo();
    } catch (const Cancelado &) {
        return {Tipo::Cancelada};
    } catch (const Negado &negado) {
        return {Tipo::Rechazada, negado.motivo};
    } catch (const Error &error) {
        return {Tipo::Fallada, error.description()};
    } catch (const std::exception &) {
        return {Tipo::Fallada, QStringLiteral("No alcanzó la memoria de la computadora.")};
    }
}

} // namespace db::migracion
