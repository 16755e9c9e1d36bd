#pragma once

#include "db/Error.h"
#include "patients/BusquedaPacientes.h"

namespace patients {

/// The chooser's list: the patients of a filter, with the texts of its cells. What a cell shows is read when it is
/// looked at, a page of patients at a time, and their balances when one of them is.
class ListaPacientes
{
public:
    explicit ListaPacientes(db::Entorno &entorno);

    /// Makes the list anew, by surnames and names, with what ordering it by that column needs. A refusal leaves it as
    /// it was. Throws db::Error.
    [[nodiscard]] base::Control buscar(const FiltroPacientes &filtro, ColumnaPaciente orden = ColNombre);

    /// The rows: ColNroHC and whatever else the search brought.
    [[nodiscard]] const db::Rows &filas() const { return m_filas; }
    [[nodiscard]] int cantidad() const { return m_filas ? m_filas->rowCount() : 0; }
    /// Column of filas() with the values to order by.
    [[nodiscard]] int columnaDeOrden() const { return m_columnaDeOrden; }
    /// Text of a cell. Of a patient who is gone since, empty. Throws db::Error; after the first failure the same one
    /// at once, until the next search.
    [[nodiscard]] QString texto(int fila, ColumnaPaciente columna);

    /// Before every cell of a long list is asked for: reads at once what pages would read bit by bit. Throws db::Error.
    void leerTodo();
    void soltarTodo();

private:
    /// Patients whose cells were read.
    struct Pagina {
        db::Rows datos;
        QHash<qint64, int> lugares; ///< rows of `datos` by patient
        QHash<qint64, double> saldos; ///< empty until one is looked at
    };
    [[nodiscard]] QString leer(int fila, ColumnaPaciente columna);
    [[nodiscard]] Pagina &paginaDe(int fila);
    [[nodiscard]] std::vector<qint64> numeros(int desde, int hasta) const;
    void leerDatos(Pagina &pagina, const db::Rows &datos) const;
    void leerSaldos(Pagina &pagina, const std::vector<qint64> &pacientes) const;
    void agregarSaldos();

    db::Entorno &m_entorno;
    db::Rows m_filas;
    ColumnaPaciente m_orden = ColNombre;
    int m_columnaDeOrden = 0;
    QHash<int, Pagina> m_paginas;
    std::optional<Pagina> m_todo;
    std::optional<db::Error> m_falla;
};

} // namespace patients
