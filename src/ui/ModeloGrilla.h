#pragma once

#include "db/ResultSet.h"

#include <QAbstractTableModel>
#include <QColor>

#include <functional>
#include <memory>
#include <vector>

namespace db {
using Rows = std::shared_ptr<const ResultSet>;
}

namespace ui {

/// One column of a grid as its header text describes it: "<" left, "^" centre, ">" right; blanks that pad the title
/// give its width.
struct ColumnaGrilla {
    QString titulo;
    Qt::Alignment alineacion = Qt::AlignLeft;
    int caracteres = 0; ///< width of the padded title, in characters; 0 for a column that is not shown

    bool operator==(const ColumnaGrilla &) const = default;
};

/// "|^Fecha   |<Detalle      |>Importe": the part before the first "|" is the narrow fixed column of a flex grid and is
/// not shown. A column without title or padding is hidden.
[[nodiscard]] std::vector<ColumnaGrilla> leerEncabezado(const QString &encabezado);

/// Rows of a grid: either a query's result as it is, or rows of texts. Sorts by a hidden key column where one is given.
/// Cells become texts only when they are looked at. An "origin" row counts as in the result or the texts given,
/// whatever the order shown; a "shown" row counts as on the screen.
class ModeloGrilla : public QAbstractTableModel
{
    Q_OBJECT

public:
    /// How a result's cell is written. Propio: by its type, with dates day first and a decimal comma.
    enum class Formato { Propio, Fecha, FechaHora, Hora, Dinero, SiNo };
    /// data() roles beside Qt's own: the row's key, and the cell's whole text.
    enum Rol { Clave = Qt::UserRole, TextoEntero };

    /// Text shown in a cell of a result's row and grid column; empty function: by format.
    using Texto = std::function<QString(const db::ResultSet &rows, int row, int column)>;
    /// Background of an origin row; an invalid colour for none.
    using Fondo = std::function<QColor(int row)>;

    explicit ModeloGrilla(std::vector<ColumnaGrilla> columnas, QObject *parent = nullptr);

    /// Shows a result: grid column i is result column `primera` + i. One reset, no copy of the cells. A null result is
    /// an empty one. The order chosen by the person stays.
    void setRows(db::Rows rows, int primera = 0);
    /// Adds the first `cantidad` rows of a further result below those of setRows(), for lists that are read as they are
    /// scrolled. Not within texts.
    void agregarRows(db::Rows rows, int cantidad);
    /// Who knows whether there is more to add, and adds it, at once or later, when the person comes to the last row.
    void setMas(std::function<bool()> hay, std::function<void()> traer);
    /// Shows texts; each row has as many as the grid has columns, and an own key beside it.
    void setTextos(std::vector<QStringList> filas, std::vector<qint64> claves);
    void setTexto(Texto texto) { m_texto = std::move(texto); }
    void setFormato(int columna, Formato formato);
    void setFondo(Fondo fondo) { m_fondo = std::move(fondo); }
    /// Tool tip of an origin row.
    void setAyuda(std::function<QString(int row)> ayuda) { m_ayuda = std::move(ayuda); }
    /// Result column that identifies a row; texts bring their own keys.
    void setColumnaClave(int columna) { m_columnaClave = columna; }
    /// Result column by whose raw value grid column `columna` sorts.
    void setOrden(int columna, int columnaResultado);
    /// Results come in the order of that grid column: nothing is left to compare.
    void setYaOrdenada(int columna) { m_yaOrdenada = columna; }
    /// Called before the person's choice of an order (-1: as read) is carried out; may bring rows that have what it
    /// needs.
    void setAlOrdenar(std::function<void(int columna)> alOrdenar) { m_alOrdenar = std::move(alOrdenar); }

    /// Called with true before a walk through every cell (a copy, an export), which it may make cheaper, and with false
    /// afterwards.
    void setAlRecorrer(std::function<void(bool empieza)> alRecorrer) { m_alRecorrer = std::move(alRecorrer); }
    /// Such a walk, as long as it lives. Throws what the function throws that was set.
    class Recorrido
    {
    public:
        explicit Recorrido(const ModeloGrilla &modelo);
        ~Recorrido();
        Recorrido(const Recorrido &) = delete;
        Recorrido &operator=(const Recorrido &) = delete;

    private:
        const ModeloGrilla &m_modelo;
    };

    [[nodiscard]] const std::vector<ColumnaGrilla> &columnas() const { return m_columnas; }
    /// The result shown, of several the first one; null when there is none.
    [[nodiscard]] db::Rows rows() const { return m_paginas.empty() ? nullptr : m_paginas.front().rows; }
    /// The shown row's key; 0 when out of range.
    [[nodiscard]] qint64 clave(int row) const;
    /// Shown row of a key, -1 when it is not shown.
    [[nodiscard]] int filaDe(qint64 clave) const;
    /// Origin row of a shown row.
    [[nodiscard]] int origen(int row) const { return m_permutacion.empty() ? row : m_permutacion[size_t(row)]; }
    /// The whole text of a cell, line breaks and all. Throws what a function given to setTexto() throws; data() and
    /// sort() take such a cell for an empty one, as they have nobody to tell.
    [[nodiscard]] QString textoCelda(int row, int column) const;

    [[nodiscard]] int rowCount(const QModelIndex &parent = {}) const override;
    [[nodiscard]] int columnCount(const QModelIndex &parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex &index, int role) const override;
    [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    /// Stable; a negative column gives back the order of the origin.
    void sort(int column, Qt::SortOrder order) override;
    [[nodiscard]] bool canFetchMore(const QModelIndex &parent) const override;
    void fetchMore(const QModelIndex &parent) override;

private:
    /// A result that is shown whole or in part.
    struct Pagina {
        db::Rows rows;
        int inicio = 0; ///< origin row of its first
        int cantidad = 0;
    };
    [[nodiscard]] const Pagina &paginaDe(int origin) const;
    [[nodiscard]] int filas() const;
    [[nodiscard]] qint64 claveOrigen(int origin) const;
    [[nodiscard]] QString textoOrigen(int origin, int column) const;
    [[nodiscard]] QString textoSeguro(int origin, int column) const;
    [[nodiscard]] int columnaOrden(int column) const;
    [[nodiscard]] std::vector<int> ordenadas(int column, Qt::SortOrder order) const;

    std::vector<ColumnaGrilla> m_columnas;
    std::vector<Pagina> m_paginas;
    std::function<bool()> m_hayMas;
    std::function<void()> m_traerMas;
    int m_primera = 0;
    int m_columnaClave = -1;
    std::vector<QStringList> m_textos;
    std::vector<qint64> m_claves;
    std::vector<int> m_ordenColumnas; ///< result column by grid column, -1 for its own
    std::vector<Formato> m_formatos;
    std::vector<int> m_permutacion; ///< origin row by shown row; empty: as read
    int m_ordenadaPor = -1;
    int m_yaOrdenada = -1;
    Qt::SortOrder m_sentido = Qt::AscendingOrder;
    Texto m_texto;
    Fondo m_fondo;
    std::function<QString(int)> m_ayuda;
    std::function<void(int)> m_alOrdenar;
    std::function<void(bool)> m_alRecorrer;
};

} // namespace ui
