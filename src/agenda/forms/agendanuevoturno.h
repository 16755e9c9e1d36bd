#pragma once

#include "ui/Ventana.h"

#include <QSet>

class QPushButton;

namespace patients {
class CampoPaciente;
}

namespace agenda {

class PanelReserva;

/// Books one or more times for a patient. Opened with "doctor" (`id`), "turnos" (QStringList, "dd/mm/yyyy hh:nn") and
/// "fecha" (QDate, where a time is looked for), and, where they are known already, "nrohc", "motivo" and
/// "observacionestur". Finishes with "nrohc" and, of the first
/// time booked, "fecha" (QDateTime) and "id".
class agendanuevoturno : public ui::Ventana
{
    Q_OBJECT

public:
    agendanuevoturno(db::Entorno &entorno, ui::Ventanas &ventanas);

    bool preparar(const ui::Pedido &pedido) override;
    void refrescar() override;
    [[nodiscard]] bool hayCambios() const override;

    PanelReserva *panel; ///< `listaturnos`, `motivo` and the other controls of a booking
    patients::CampoPaciente *paciente;
    QPushButton *elegirpaciente;
    QPushButton *nuevopaciente;
    QPushButton *guardar;
    QPushButton *cancelar;

private:
    void construir();
    void recibirDatos(const QVariantMap &datos);
    void elegirPaciente(const QString &apellido, const QString &nombres);
    void crearPaciente();
    void mostrarAviso();
    [[nodiscard]] bool aceptaNovedades();
    void save();

    QStringList m_iniciales; ///< the lines that the window was opened with
    QSet<qint64> m_avisados; ///< appointments of the same days that the person was shown
};

} // namespace agenda
