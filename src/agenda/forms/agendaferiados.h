#pragma once

#include "agenda/Feriados.h"
#include "ui/Ventana.h"

class QComboBox;
class QLabel;
class QPushButton;
class QSpinBox;
class QTreeWidget;

namespace agenda {

/// Proposes the national holidays of a year as days off of the professional "doctor", or of all with "todos": the
/// person ticks which ones. Result: "agregados", the rows added.
class agendaferiados : public ui::Ventana
{
    Q_OBJECT

public:
    agendaferiados(db::Entorno &entorno, ui::Ventanas &ventanas);

    bool preparar(const ui::Pedido &pedido) override;
    void refrescar() override;
    [[nodiscard]] QString ayuda() const override;

    QSpinBox *anio;
    QComboBox *lisdocto;
    QTreeWidget *lista;
    QPushButton *todos;
    QPushButton *ninguno;
    QPushButton *guardar;
    QPushButton *cancelar;

private:
    void construir();
    void proponer();
    void marcar(Qt::CheckState estado);
    void save();
    [[nodiscard]] std::set<QDate> elegidos() const;
    [[nodiscard]] QVector<int> paraQuienes() const;
};

} // namespace agenda
