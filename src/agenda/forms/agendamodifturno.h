#pragma once

#include "agenda/CambiosTurno.h"
#include "agenda/TurnoGuardado.h"
#include "ui/Ventana.h"

class QComboBox;
class QLabel;
class QLineEdit;
class QListWidget;
class QPlainTextEdit;
class QPushButton;
class QSpinBox;
class QToolButton;

namespace agenda {

class CalendarioMes;
class LineaAviso;
class SelectorHora;

/// Changes the appointment "id": another day and hour of the same professional, its reason, its observations. With
/// "fecha" (QDate) it is that day that is proposed.
class agendamodifturno : public ui::Ventana
{
    Q_OBJECT

public:
    agendamodifturno(db::Entorno &entorno, ui::Ventanas &ventanas);

    bool preparar(const ui::Pedido &pedido) override;
    void refrescar() override;
    [[nodiscard]] bool hayCambios() const override;

    QLabel *turno;
    SelectorHora *selector;
    QComboBox *mes;
    QSpinBox *anio;
    CalendarioMes *fechadia;
    QListWidget *listahoras;
    QLineEdit *hora;
    QComboBox *motivo;
    QToolButton *listamotivo;
    QPlainTextEdit *observacionestur;
    LineaAviso *aviso;
    QPushButton *guardar;
    QPushButton *cancelar;

private:
    void construir();
    void mostrarAviso();
    /// Reason and observations, as far as they are others than those the window was opened with.
    [[nodiscard]] CambioTurno cambioDeTextos() const;
    void save();

    TurnoGuardado m_guardado;
};

} // namespace agenda
