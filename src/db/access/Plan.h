#pragma once

#include "db/access/Ajuste.h"

#include <QSet>

#include <deque>

namespace db::access {

/// A table of the old file and what becomes of it.
struct TablaDelPlan {
    TablaVieja vieja;
    Table nueva; ///< with the columns that the old one has; no indexes yet
    const Table *declarada = nullptr; ///< the system's own; null for any other
    qint64 filas = 0; ///< counted, not as its definition says
    QVector<int> destino; ///< for each old column, its position in nueva.columns
    int contador = -1; ///< the old column that becomes the counter; -1: none
    qint64 mayorId = 0;
    QStringList conservadas; ///< columns that the system does not have
    QStringList avisos; ///< what a person should know of it
};

/// What a first reading of the whole old file finds out, so that each table can be made to hold its values.
struct Plan {
    std::deque<TablaDelPlan> tablas;
    QStringList salteadas; ///< tables of old versions that the system does not use
    QStringList vinculadas;
    QStringList cuentasDistintas; ///< tables with another number of rows than their definition says
    qint64 filas = 0;

    [[nodiscard]] const TablaDelPlan *tabla(QStringView nombre) const;
};

/// Tables that stay behind: nothing of this system reads them.
[[nodiscard]] const QStringList &tablasQueNoPasan();

/// Takes the first reading and makes the plan.
class Censo : public Receptor
{
public:
    using Sigue = std::function<bool(const QString &tabla)>;
    /// The schema must live as long as the plan.
    Censo(const Schema &schema, Sigue sigue);

    void vinculada(const QString &nombre) override;
    void empezar(const TablaVieja &tabla) override;
    void fila(const std::vector<Valor> &celdas) override;
    void terminar() override;
    bool sigue() override { return m_sigue(m_nombre); }

    [[nodiscard]] Plan &plan() { return m_plan; }

private:
    struct Columna {
        const Column *declarada = nullptr;
        bool entra = true; ///< every value so far fits the declared one
        int ancho = 0; ///< characters of the longest text
    };
    void elegirColumnas(TablaDelPlan &tabla);
    void elegirClave(TablaDelPlan &tabla);

    const Schema &m_schema;
    Sigue m_sigue;
    Plan m_plan;
    QString m_nombre;
    bool m_saltear = false;
    qint64 m_filas = 0;
    std::vector<Columna> m_columnas;
    QVector<int> m_clave; ///< old columns of the declared key
    QSet<QByteArray> m_claves;
    QSet<qint64> m_ids;
    bool m_claveSirve = true;
    bool m_idsSirven = true;
};

} // namespace db::access
