#pragma once

#include "agenda/DiasNoLaborables.h"
#include "ui/Ventana.h"

class QCheckBox;
class QComboBox;
class QLabel;
class QListWidget;
class QPushButton;

namespace ui {
class CampoFecha;
class Grilla;
} // namespace ui

namespace agenda {

/// Days on which nobody attends, of the professional "doctor" (without one: the active professional) or of all: dates
/// and ranges are gathered in a list and stored together. "agendasnolabo2" is the same window, opened from the view of
/// all agendas.
class agendasnolabo : public ui::Ventana
{
    Q_OBJECT

public:
    agendasnolabo(
        db::Entorno &entorno, ui::Ventanas &ventanas, const QString &nombre = QStringLiteral("agendasnolabo"));

    bool preparar(const ui::Pedido &pedido) override;
    void refrescar() override;
    [[nodiscard]] bool hayCambios() const override;
    [[nodiscard]] QString ayuda() const override;

    QComboBox *lisdocto;
    QCheckBox *paratodos; ///< additions and deletions are for every professional
    ui::CampoFecha *desde;
    ui::CampoFecha *hasta; ///< empty: a single day
    QCheckBox *cadaanio;
    QPushButton *agregar; ///< puts the dates typed into the list
    QListWidget *fechas; ///< chosen, not stored yet
    QPushButton *quitar;
    QPushButton *guardar;
    QPushButton *feriados;
    ui::Grilla *lista; ///< stored
    QPushButton *eliminar;
    QPushButton *cerrar;
    QLabel *aviso; ///< what came of the last change

private:
    /// One line of the list `fechas`.
    struct Periodo {
        QString texto;
        QVector<DiaNoLaborable> dias;
    };

    void construir();
    QWidget *panelAgregar();
    QWidget *panelLista();
    void conectar();
    /// Moves the dates typed into the list; false when they are refused, which it has told.
    bool juntar();
    void mostrarPeriodos();
    void save();
    void remove();
    void abrirFeriados();
    void cargarProfesionales();
    void listar();
    void decir(const QString &texto);
    [[nodiscard]] QVector<int> paraQuienes() const;

    QVector<Periodo> m_periodos;
    int m_doctor = 0;
};

} // namespace agenda
