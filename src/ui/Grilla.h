#pragma once

#include "db/ResultSet.h"

#include <QAbstractTableModel>
#include <QColor>
#include <QTableView>

#include <functional>
#include <memory>
#include <vector>

namespace ui {

/// One column of a grid as its header text describes it: "<" left, "^" centre, ">" right; blanks that pad the title give
/// its width.
struct ColumnaGrilla {
    QString titulo;
    Qt::Alignment alineacion = Qt::AlignLeft;
    int caracteres = 0; ///< width of the padded title, in characters
};

/// "|^Fecha   |<Detalle      |>Importe": the part before the first "|" is the narrow fixed column of a flex grid and is
/// not shown. A column without title or padding is hidden.
[[nodiscard]] std::vector<ColumnaGrilla> leerEncabezado(const QString &encabezado);

/// Rows of a grid: either a query's result as it is, or rows of texts. Sorts by a hidden key column where one is given.
class ModeloGrilla : public QAbstractTableModel
{
    Q_OBJECT

public:
    /// Text shown in a cell; empty function: the result's own text.
    using Texto = std::function<QString(const db::ResultSet &rows, int row, int column)>;
    /// Background of a row; an invalid colour for none.
    using Fondo = std::function<QColor(int row)>;

    explicit ModeloGrilla(std::vector<ColumnaGrilla> columnas, QObject *parent = nullptr);

    /// Shows a result: grid column i is result column `primera` + i. One reset, no copy of the cells.
    void setRows(db::Rows rows, int primera = 0);
    /// Shows texts; each row has as many as the grid has columns, and an own key beside it.
    void setTextos(std::vector<QStringList> filas, std::vector<qint64> claves);
    void setTexto(Texto texto) { m_texto = std::move(texto); }
    void setFondo(Fondo fondo) { m_fondo = std::move(fondo); }
    void setAyuda(std::function<QString(int row)> ayuda) { m_ayuda = std::move(ayuda); }
    /// Result column that identifies a row; texts bring their own keys.
    void setColumnaClave(int columna) { m_columnaClave = columna; }
    /// Result column by whose raw value grid column `columna` sorts.
    void setOrden(int columna, int columnaResultado);

    [[nodiscard]] const std::vector<ColumnaGrilla> &columnas() const { return m_columnas; }
    [[nodiscard]] db::Rows rows() const { return m_rows; }
    /// The row's key; 0 when out of range.
    [[nodiscard]] qint64 clave(int row) const;
    /// Row of a key, -1 when it is not shown.
    [[nodiscard]] int filaDe(qint64 clave) const;

    [[nodiscard]] int rowCount(const QModelIndex &parent = {}) const override;
    [[nodiscard]] int columnCount(const QModelIndex &parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex &index, int role) const override;
    [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    void sort(int column, Qt::SortOrder order) override;

private:
    [[nodiscard]] int fuente(int row) const;

    std::vector<ColumnaGrilla> m_columnas;
    db::Rows m_rows;
    int m_primera = 0;
    int m_columnaClave = -1;
    std::vector<QStringList> m_textos;
    std::vector<qint64> m_claves;
    std::vector<int> m_ordenColumnas;
    std::vector<int> m_permutacion; ///< empty: as read
    Texto m_texto;
    Fondo m_fondo;
    std::function<QString(int)> m_ayuda;
};

/// The grid of every list: keeps the selected key across a reload, copies its selection (Ctrl+C) as tab-separated text,
/// exports all rows, remembers column widths under its object name.
class Grilla : public QTableView
{
    Q_OBJECT

public:
    Grilla(const QString &nombre, const QString &encabezado, QWidget *parent = nullptr);

    [[nodiscard]] ModeloGrilla &modelo() const { return *m_modelo; }
    [[nodiscard]] int filaActual() const;
    /// Key of the current row; 0 when none is selected.
    [[nodiscard]] qint64 claveActual() const;
    [[nodiscard]] std::vector<qint64> clavesElegidas() const;
    void elegirClave(qint64 clave);
    void elegirFila(int fila);

    /// As setRows()/setTextos() of the model, keeping selected key and scroll position.
    void mostrar(db::Rows rows, int primera = 0);
    void mostrar(std::vector<QStringList> filas, std::vector<qint64> claves);

    /// All rows with their titles, tab-separated (clipboard) or as CSV (semicolon, quotes doubled).
    [[nodiscard]] QString comoTexto(bool soloElegidas) const;
    [[nodiscard]] QString comoCsv() const;

signals:
    /// Enter or double click on a row.
    void activada(int fila);
    void filaCambiada(int fila);

protected:
    void keyPressEvent(QKeyEvent *event) override;

private:
    ModeloGrilla *m_modelo;
};

} // namespace ui
