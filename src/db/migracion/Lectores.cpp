#include "db/migracion/Lectores.h"

#include "db/Connection.h"
#include "db/Error.h"
#include "db/engine/EmbeddedEngine.h"

#include <algorithm>

namespace db::migracion {

namespace {

constexpr int masFilas = 4000;
constexpr qint64 bytesPorTramo = 8 << 20;
/// A table without a key that is no longer than this is read at once.
constexpr qint64 filasDeUnaVez = 5000;

class LectorArchivo final : public Lector
{
public:
    LectorArchivo(EmbeddedEngine &motor, const TablaPlano &plano, bool limitar)
        : Lector(plano)
        , m_motor(motor)
        , m_limitar(limitar)
    {
        QByteArray columnas = "_rowid_";
        for (const Column &columna : plano.tabla.columns)
            columnas += ", \"" + columna.name.toUtf8().replace('"', "\"\"") + '"';
        m_sql = "SELECT " + columnas + " FROM \"" + plano.tabla.name.toUtf8().replace('"', "\"\"")
            + "\" WHERE _rowid_ > ? ORDER BY _rowid_ LIMIT ?";
    }

    std::vector<Params> siguientes() override
    {
        const Rows filas = m_motor.queryNative(m_sql, {m_ultimo, cuantas()});
        if (filas->rowCount() > 0)
            m_ultimo = filas->integer(filas->rowCount() - 1, 0);
        return valores(*filas, 1, m_limitar);
    }

private:
    EmbeddedEngine &m_motor;
    bool m_limitar;
    QByteArray m_sql;
    qint64 m_ultimo = std::numeric_limits<qint64>::min();
};

/// Goes along the counter; without one, along stretches of a column's values that are read whole.
class LectorServidor final : public Lector
{
public:
    LectorServidor(Connection &conexion, const TablaPlano &plano)
        : Lector(plano)
        , m_conexion(conexion)
        , m_tabla(conexion.dialect().identifier(plano.tabla.name))
        , m_columnas(listaDeColumnas(conexion.dialect(), plano.tabla))
        , m_guia(plano.columnaContador())
        , m_unica(!m_guia.isEmpty())
    {
        if (m_guia.isEmpty() && plano.filas > filasDeUnaVez)
            m_guia = masVariada();
        if (!m_guia.isEmpty())
            m_guia = conexion.dialect().identifier(m_guia);
    }

    std::vector<Params> siguientes() override
    {
        if (m_fin)
            return {};
        if (m_guia.isEmpty()) {
            m_fin = true;
            return valores(*m_conexion.query(QStringLiteral("SELECT %1 FROM %2").arg(m_columnas, m_tabla)), 0, false);
        }
        return m_unica ? porContador() : porTramo();
    }

private:
    std::vector<Params> porContador()
    {
        const Rows filas = m_conexion.query(
            QStringLiteral("SELECT TOP %1 %2 FROM %3%4 ORDER BY %5")
                .arg(QString::number(cuantas()), m_columnas, m_tabla, despues(), m_guia),
            desde());
        if (filas->rowCount() > 0)
            m_ultimo = filas->integer(filas->rowCount() - 1, filas->column(m_plano.columnaContador()));
        m_fin = filas->rowCount() == 0;
        return valores(*filas, 0, false);
    }

    std::vector<Params> porTramo()
    {
        // The rows without a value come first.
        if (!m_empezado) {
            m_empezado = true;
            const Rows nulas = leerTramo(QStringLiteral(" WHERE %1 IS NULL").arg(m_guia), {});
            if (nulas->rowCount() > 0)
                return valores(*nulas, 0, false);
        }
        // So many rows further along the values there is another one: all rows up to it.
        const Rows paso = m_conexion.query(
            QStringLiteral("SELECT MAX(x.v), COUNT(*) FROM (SELECT TOP %1 %2 AS v FROM %3%4 ORDER BY %2) x")
                .arg(QString::number(cuantas()), m_guia, m_tabla, despues(true)),
            desde());
        const qint64 hay = paso->integer(0, 1);
        if (hay == 0) {
            m_fin = true;
            return {};
        }
        if (hay < cuantas()) {
            m_fin = true;
            return valores(*leerTramo(despues(true), desde()), 0, false);
        }
        const QVariant hasta = limite(*paso);
        Params parametros = desde();
        parametros << hasta;
        const Rows filas = leerTramo(
            despues(true) + (m_ultimo.isValid() ? QStringLiteral(" AND ") : QStringLiteral(" WHERE "))
                + QStringLiteral("%1 %2 ?").arg(m_guia, m_porDia ? QStringLiteral("<") : QStringLiteral("<=")),
            parametros);
        m_ultimo = hasta;
        return valores(*filas, 0, false);
    }

    /// Where the stretch ends. Dates go by whole days: other programs may have stored parts of a second.
    [[nodiscard]] QVariant limite(const ResultSet &paso) const
    {
        if (!m_porDia)
            return paso.value(0, 0);
        const QVariant dia = valor(paso, 0, 0, columna::fecha(QString()));
        return QDateTime(dia.toDateTime().date().addDays(1), QTime(0, 0), Qt::UTC);
    }

    Rows leerTramo(const QString &condicion, const Params &parametros)
    {
        return m_conexion.query(QStringLiteral("SELECT %1 FROM %2%3").arg(m_columnas, m_tabla, condicion), parametros);
    }

    [[nodiscard]] QString despues(bool tramo = false) const
    {
        if (!m_ultimo.isValid())
            return {};
        return QStringLiteral(" WHERE %1 %2 ?")
            .arg(m_guia, tramo && m_porDia ? QStringLiteral(">=") : QStringLiteral(">"));
    }
    [[nodiscard]] Params desde() const { return m_ultimo.isValid() ? Params{m_ultimo} : Params{}; }

    /// The column that tells the rows apart best: a day of a date is a few hundred rows, a yes or no is half of all.
    QString masVariada()
    {
        QString mejor;
        qint64 cuantos = 1;
        for (const Column &columna : m_plano.tabla.columns) {
            const bool fecha = columna.type == Type::DateTime;
            if (!fecha && columna.type != Type::Long && columna.type != Type::Integer)
                continue;
            const qint64 distintos
                = m_conexion
                      .query(QStringLiteral("SELECT COUNT(*) FROM (SELECT DISTINCT %1 AS v FROM %2) x")
                                 .arg(m_conexion.dialect().identifier(columna.name), m_tabla))
                      ->integer(0, 0);
            if (distintos > cuantos) {
                mejor = columna.name;
                cuantos = distintos;
                m_porDia = fecha;
            }
        }
        return mejor;
    }

    Connection &m_conexion;
    QString m_tabla;
    QString m_columnas;
    QString m_guia; ///< column along which it goes
    bool m_unica; ///< no two rows have the same value there
    bool m_porDia = false;
    bool m_empezado = false;
    bool m_fin = false;
    QVariant m_ultimo;
};

} // namespace

std::vector<Params> Lector::valores(const ResultSet &filas, int primera, bool limitar)
{
    const QVector<Column> &columnas = m_plano.tabla.columns;
    std::vector<Params> resultado;
    resultado.reserve(size_t(filas.rowCount()));
    qint64 bytes = 0;
    for (int f = 0; f < filas.rowCount(); ++f) {
        Params fila;
        fila.reserve(columnas.size());
        for (qsizetype c = 0; c < columnas.size(); ++c) {
            const int donde = primera + int(c);
            try {
                fila << valor(filas, f, donde, columnas[c], limitar);
            } catch (const Error &error) {
                throw Error(
                    error.kind(),
                    error.number(),
                    QStringLiteral("Tabla '%1': %2").arg(m_plano.tabla.name, error.description()));
            }
            bytes += 16 + filas.utf8(f, donde).size();
        }
        resultado.push_back(std::move(fila));
    }
    if (!resultado.empty()) {
        const qint64 porFila = std::max<qint64>(1, bytes / qint64(resultado.size()));
        m_cuantas = int(std::clamp<qint64>(bytesPorTramo / porFila, 1, masFilas));
    }
    return resultado;
}

std::unique_ptr<Lector> lectorDeArchivo(EmbeddedEngine &motor, const TablaPlano &plano, bool limitar)
{
    return std::make_unique<LectorArchivo>(motor, plano, limitar);
}

std::unique_ptr<Lector> lectorDeServidor(Connection &conexion, const TablaPlano &plano)
{
    return std::make_unique<LectorServidor>(conexion, plano);
}

QString listaDeColumnas(const Dialect &dialecto, const Table &tabla)
{
    QStringList nombres;
    for (const Column &columna : tabla.columns)
        nombres << dialecto.identifier(columna.name);
    return nombres.join(u',');
}

} // namespace db::migracion
