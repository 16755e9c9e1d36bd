#pragma once

#include "ui/ModeloGrilla.h"

#include <QTableView>

#include <functional>

namespace ui {

/// The grid of every list: keeps the selected key across a reload, copies its selection (Ctrl+C) as tab-separated text,
/// exports all rows, remembers column widths under its window's and its own object name. A click on a title sorts, a
/// third one gives back the order read. Every row is one line high. Actions added to it head its context menu.
class Grilla : public QTableView
{
    Q_OBJECT

public:
    Grilla(const QString &nombre, const QString &encabezado, QWidget *parent = nullptr);
    ~Grilla() override;

    [[nodiscard]] ModeloGrilla &modelo() const { return *m_modelo; }
    /// Shown row that is current and selected; -1 for none.
    [[nodiscard]] int filaActual() const;
    /// Key of the current row; 0 when none is selected.
    [[nodiscard]] qint64 claveActual() const;
    /// Keys of the selected rows, from top to bottom.
    [[nodiscard]] std::vector<qint64> clavesElegidas() const;
    /// Selects that row alone; none when the key is not shown.
    void elegirClave(qint64 clave);
    void elegirFila(int fila);

    /// Columns that share the room which a wide window leaves, each by its weight; the last column has what remains.
    /// Not once the person has chosen widths of her own.
    void setElasticas(std::vector<std::pair<int, int>> columnasYPesos);

    /// As setRows()/setTextos() of the model, keeping selected keys and scroll position. A row that is gone leaves
    /// nothing selected, so that no action meets another one; the arrows go on from where it was.
    void mostrar(db::Rows rows, int primera = 0);
    void mostrar(std::vector<QStringList> filas, std::vector<qint64> claves);

    /// Takes one line after the other, without its line break; false stops.
    using Linea = std::function<bool(const QString &linea)>;
    /// The selected rows, or all rows under their titles, tab-separated; tabs and line breaks within a cell are blanks.
    /// Hidden columns are left out. Throws as ModeloGrilla::textoCelda().
    void recorrerTexto(bool soloElegidas, const Linea &linea) const;
    [[nodiscard]] QString comoTexto(bool soloElegidas) const;
    /// All rows under their titles as CSV: semicolons, quotes doubled. A text that a spreadsheet would take for a
    /// formula ("=1+1") begins with an apostrophe; numbers and telephones ("-1,50", "+54 341") stay.
    void recorrerCsv(const Linea &linea) const;
    [[nodiscard]] QString comoCsv() const;

    /// Wide enough for its columns where they are few, and a dozen rows high.
    [[nodiscard]] QSize sizeHint() const override;

signals:
    /// Enter or double click on a (shown) row.
    void activada(int fila);
    /// The current row is another one, or the same at another place; -1 for none.
    void filaCambiada(int fila);

protected:
    void keyPressEvent(QKeyEvent *event) override;
    void contextMenuEvent(QContextMenuEvent *event) override;
    void showEvent(QShowEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void currentChanged(const QModelIndex &current, const QModelIndex &previous) override;

private:
    void copiar(bool soloElegidas);
    void recargar(const std::function<void()> &cambio);
    void ponerAnchos();
    void repartirAncho();
    [[nodiscard]] int anchoPropio(int columna) const;
    [[nodiscard]] QString claveAnchos() const;
    [[nodiscard]] std::vector<int> filasElegidas() const;

    ModeloGrilla *m_modelo;
    bool m_recargando = false;
    bool m_anchosPuestos = false;
    bool m_anchosCambiados = false;
    bool m_anchosGuardados = false; ///< the widths are the person's
    bool m_repartiendo = false;
    std::vector<std::pair<int, int>> m_elasticas;
};

} // namespace ui
