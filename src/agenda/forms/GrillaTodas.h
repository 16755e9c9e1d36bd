#pragma once

#include "agenda/forms/ModeloTodas.h"

#include <QTableView>

#include <functional>

namespace agenda {

/// The table of all agendas: what lasts several lines is one cell, arrows go from one to the next, left and right to
/// the nearest hour of the neighbour. A reload keeps the chosen cells and the place; what is gone leaves nothing chosen
/// in its stead.
class GrillaTodas : public QTableView
{
    Q_OBJECT

public:
    using Lugar = ModeloTodas::Lugar;

    GrillaTodas(const QString &nombre, QWidget *parent);

    /// What is past is painted by this clock.
    void setAhora(std::function<QDateTime()> ahora) { m_ahora = std::move(ahora); }
    [[nodiscard]] QDateTime ahora() const { return m_ahora ? m_ahora() : QDateTime(); }
    /// What is told where there is no column.
    void setAviso(const QString &aviso);

    void mostrar(std::shared_ptr<const TodasAgendas> todas, const std::set<int> &ocultos);
    [[nodiscard]] const ModeloTodas &modelo() const { return *m_modelo; }

    /// The current cell when it is chosen; else nothing.
    [[nodiscard]] Lugar actual() const;
    /// The chosen cells, by column and hour.
    [[nodiscard]] std::vector<Lugar> elegidos() const;
    /// Chooses the row of that key (FilaDia::clave()) alone; false when it is not shown.
    bool elegir(int doctor, qint64 clave);
    /// Chooses what stands at that hour, or covers it.
    bool elegirHora(int doctor, QTime hora);

signals:
    /// Enter or double click on a cell.
    void activada();
    void eleccionCambiada();

protected:
    QModelIndex moveCursor(CursorAction accion, Qt::KeyboardModifiers modificadores) override;
    void keyPressEvent(QKeyEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void paintEvent(QPaintEvent *event) override;
    /// Letters choose nothing: an action would meet whom nobody looks at.
    void keyboardSearch(const QString &) override { }

private:
    [[nodiscard]] QModelIndex cercana(int columna, int renglon) const;
    [[nodiscard]] QModelIndex enHora(int columna, int desde, int paso) const;
    void ponerAnchos();
    void elegirIndice(const QModelIndex &indice);

    ModeloTodas *m_modelo;
    std::function<QDateTime()> m_ahora;
    QString m_aviso;
    bool m_recargando = false;
};

} // namespace agenda
