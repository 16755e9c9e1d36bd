#pragma once

#include "ui/Ventana.h"

class QPushButton;
class QTimer;

namespace patients {
class FormularioReducido;
class PanelParecidos;
} // namespace patients

namespace agenda {

class PanelReserva;

/// Books for a patient who is created on the spot, both at once or neither. Opened as `agendanuevoturno` is, with
/// "apellido" as a first guess. Finishes with "nrohc", "nombre", "numehistoria" and, of the first time booked, "fecha"
/// (QDateTime) and "id". When the patient turns out to exist the booking goes on in `agendanuevoturno`: opened from
/// there, it finishes without "id" but with "turnos", "motivo" and "observacionestur" as typed.
class agendanuevoturnoctrln : public ui::Ventana
{
    Q_OBJECT

public:
    agendanuevoturnoctrln(db::Entorno &entorno, ui::Ventanas &ventanas);

    bool preparar(const ui::Pedido &pedido) override;
    void refrescar() override;
    [[nodiscard]] bool hayCambios() const override;

    patients::FormularioReducido *formulario;
    patients::PanelParecidos *parecidos;
    PanelReserva *panel; ///< `listaturnos`, `motivo` and the other controls of a booking
    QPushButton *guardar;
    QPushButton *cancelar;

private:
    void construir();
    void seguirCon(int nrohc, const QString &nombre);
    void save();
    [[nodiscard]] QStringList huella() const;

    QTimer *m_pausa;
    QStringList m_inicial; ///< what stood in the fields before the person typed
};

} // namespace agenda
