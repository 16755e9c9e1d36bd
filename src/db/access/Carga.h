#pragma once

#include "db/access/Plan.h"
#include "db/access/Suma.h"

#include <QHash>

namespace db {
class EmbeddedEngine;
}

namespace db::access {

QByteArray citado(const QString &nombre);

/// Takes the second reading: writes every row into the new file and sums up what it wrote, to be proved afterwards. The
/// tables of the plan exist already. Throws db::Error.
class Carga : public Receptor
{
public:
    using Sigue = std::function<bool(const QString &tabla, qint64 filas)>;
    Carga(EmbeddedEngine &motor, const Plan &plan, Sigue sigue);

    void empezar(const TablaVieja &tabla) override;
    void fila(const std::vector<Valor> &celdas) override;
    void terminar() override;
    bool sigue() override { return m_sigue(m_nombre, m_filas); }

    /// By table of the plan, for each column of its `nueva`.
    [[nodiscard]] const QHash<const TablaDelPlan *, std::vector<Suma>> &sumas() const { return m_sumas; }
    [[nodiscard]] qint64 apartados() const { return m_apartados; }

private:
    void apartar(qint64 fila, const QString &columna, const Valor &valor, const QString &motivo);
    qint64 numeroDe(const Valor &id);

    EmbeddedEngine &m_motor;
    const Plan &m_plan;
    Sigue m_sigue;
    QString m_nombre;
    const TablaDelPlan *m_tabla = nullptr;
    QByteArray m_insercion;
    QHash<const TablaDelPlan *, std::vector<Suma>> m_sumas;
    QSet<qint64> m_ids;
    qint64 m_mayor = 0;
    qint64 m_filasDeTabla = 0;
    qint64 m_filas = 0;
    qint64 m_apartados = 0;
};

} // namespace db::access
