#pragma once

#include "agenda/TurnosPaciente.h"
#include "ui/Ventana.h"

class QLabel;
class QPushButton;

namespace ui {
class Grilla;
}

namespace agenda {

/// The appointments of the patient "nrohc" (called "nombre"), to go to one of them in the agenda.
class resulbusque : public ui::Ventana
{
    Q_OBJECT

public:
    resulbusque(db::Entorno &entorno, ui::Ventanas &ventanas);

    bool preparar(const ui::Pedido &pedido) override;
    void refrescar() override;
    [[nodiscard]] QString ayuda() const override;

    QLabel *paciente;
    QLabel *cantidad;
    ui::Grilla *lista;
    QPushButton *veragenda;
    QPushButton *cerrar;

private:
    void construir();
    void recargar();
    void abrirTurno();

    int m_nrohc = 0;
    std::vector<TurnoPaciente> m_turnos;
};

} // namespace agenda
