#pragma once

#include "ui/Ventana.h"

class QCheckBox;
class QLabel;
class QLineEdit;
class QListWidget;
class QPushButton;

namespace ui {
class CampoFecha;
}

namespace agenda {

class CalendarioMes;
class SelectorHora;

/// Chooses the times to add to a booking: one date and hour, or, with `diaunico` off, that hour on each working day
/// from `desde` to `hasta` that has it. Opened with "doctor" (`id`) and what it shows first: "momento" (QDateTime), or
/// only a "fecha" (QDate); finishes with "turnos" (QStringList, "dd/mm/yyyy hh:nn").
class agendanuevahora : public ui::Ventana
{
    Q_OBJECT

public:
    agendanuevahora(db::Entorno &entorno, ui::Ventanas &ventanas);

    bool preparar(const ui::Pedido &pedido) override;
    void refrescar() override;

    SelectorHora *selector;
    CalendarioMes *fechadia;
    QListWidget *listahoras;
    QLineEdit *hora;
    QCheckBox *diaunico;
    ui::CampoFecha *desde;
    ui::CampoFecha *hasta;
    QLabel *cantidad; ///< what adding gives
    QPushButton *guardar;
    QPushButton *cancelar;

private:
    void construir();
    void mostrarCantidad();
    [[nodiscard]] base::Resultado<QStringList> elegidos();

    int m_doctor = 0;
};

} // namespace agenda
