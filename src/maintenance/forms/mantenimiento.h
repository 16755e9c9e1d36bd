#pragma once

#include "maintenance/forms/VentanaLista.h"

class QTreeWidget;
class QTreeWidgetItem;

namespace maintenance {

/// Maintenance of every lookup list: the lists by group at the left, the entries of the chosen one beside. May be
/// opened with the table of the "lista" to show.
class mantenimiento : public VentanaLista
{
    Q_OBJECT

public:
    mantenimiento(db::Entorno &entorno, ui::Ventanas &ventanas);

    bool preparar(const ui::Pedido &pedido) override;
    bool eventFilter(QObject *objeto, QEvent *event) override;
    QSize sizeHint() const override { return {930, 690}; }

    QLineEdit *buscarlista;
    QTreeWidget *listas;

private:
    void llenar();
    void filtrar();
    void alElegirLista();
    [[nodiscard]] QTreeWidgetItem *renglonDe(const Lista *lista) const;
};

} // namespace maintenance
