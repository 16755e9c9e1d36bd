#pragma once

#include "db/migracion/Lectores.h"
#include "db/migracion/Migracion.h"

namespace db::migracion {

/// Thrown when the person has had enough.
class Cancelado
{
};

/// It cannot begin.
struct Negado {
    QString motivo;
};

/// What both ways share: the tables one after the other, told of and cancelled between two stretches of rows.
class Trabajo
{
public:
    Trabajo(Seguimiento &seguimiento, const Pasos &pasos)
        : m_seguimiento(seguimiento)
        , m_pasos(pasos)
    {
    }

    void setPlano(Plano plano);
    [[nodiscard]] const Plano &plano() const { return m_plano; }

    /// Says what is being done now. Throws Cancelado.
    void etapa(const QString &que, const QString &tabla = {}, int numero = 0);
    /// Copies a table: rows from the reader, each stretch in one transaction of the destination.
    void copiar(int numero, Lector &lector, Connection &destino, const QString &insertar);
    /// Reads the rows of the copied table back and compares.
    void comparar(int numero, Lector &destino);

    [[nodiscard]] const QVector<TablaComparada> &comparadas() const { return m_comparadas; }
    [[nodiscard]] bool iguales() const;
    /// "La tabla 'Caja' tiene 12 registros en lugar de 13."
    [[nodiscard]] QString diferencias() const;

private:
    void avanzar(qint64 filas);

    Seguimiento &m_seguimiento;
    const Pasos &m_pasos;
    Plano m_plano;
    Estado m_estado;
    QVector<Suma> m_sumas; ///< of the source, by table
    QVector<TablaComparada> m_comparadas;
};

/// Runs the work and turns whatever it throws into its outcome.
[[nodiscard]] Desenlace concluir(const std::function<Desenlace()> &trabajo);

} // namespace db::migracion
