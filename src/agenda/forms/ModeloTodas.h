#pragma once

#include "agenda/CuadroDia.h"

#include <QAbstractTableModel>

#include <memory>
#include <set>

namespace agenda {

/// The days of several professionals as a table: a column each, a line per time. Only the first line of what stands
/// there can be chosen; the others it takes are for the view to join.
class ModeloTodas : public QAbstractTableModel
{
public:
    /// Horizontal title's second line, and whether the professional does not attend that day.
    enum Rol { Resumen = Qt::UserRole, NoAtiende };

    /// What stands at a place; null parts where there is nothing.
    struct Lugar {
        const AgendaDelDia *agenda = nullptr;
        const FilaDia *fila = nullptr;
        int alto = 0; ///< lines

        /// Where an appointment could be given: a free time.
        [[nodiscard]] bool libre() const { return fila && fila->clase == FilaDia::Clase::Libre; }
        [[nodiscard]] bool turno() const { return fila && fila->clase == FilaDia::Clase::Turno; }
    };

    using QAbstractTableModel::QAbstractTableModel;

    /// Those of `ocultos` (`id`) and those who have nothing that day get no column.
    void setTodas(std::shared_ptr<const TodasAgendas> todas, const std::set<int> &ocultos);

    [[nodiscard]] const CuadroDia &cuadro() const { return m_cuadro; }
    [[nodiscard]] const AgendaDelDia *agenda(int columna) const;
    [[nodiscard]] Lugar lugar(int renglon, int columna) const;
    /// Column of a professional; -1 when it is not shown.
    [[nodiscard]] int columnaDe(int doctor) const;

    [[nodiscard]] int rowCount(const QModelIndex &parent = {}) const override;
    [[nodiscard]] int columnCount(const QModelIndex &parent = {}) const override;
    [[nodiscard]] Qt::ItemFlags flags(const QModelIndex &index) const override;
    [[nodiscard]] QVariant data(const QModelIndex &index, int role) const override;
    [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

private:
    std::shared_ptr<const TodasAgendas> m_todas;
    std::vector<const AgendaDelDia *> m_agendas;
    CuadroDia m_cuadro;
};

} // namespace agenda
