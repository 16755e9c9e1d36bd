#pragma once

#include "ui/Ventana.h"

class QComboBox;
class QLabel;
class QLineEdit;
class QListWidget;
class QPlainTextEdit;
class QPushButton;
class QToolButton;

namespace agenda {

/// Books one or more times for a patient. Opened with "doctor" (`id`) and "turnos" (QStringList, "dd/mm/yyyy hh:nn");
/// hands over "nrohc".
class agendanuevoturno : public ui::Ventana
{
    Q_OBJECT

public:
    agendanuevoturno(db::Entorno &entorno, ui::Ventanas &ventanas);

    bool preparar(const ui::Pedido &pedido) override;
    void refrescar() override;
    [[nodiscard]] bool hayCambios() const override;

    QLabel *paciente;
    QPushButton *elegirpaciente;
    QPushButton *nuevopaciente;
    QListWidget *listaturnos;
    QLineEdit *nuevoturno;
    QPushButton *agregarturno;
    QPushButton *quitarturno;
    QComboBox *motivo;
    QToolButton *listamotivo;
    QPlainTextEdit *observacionestur;
    QPushButton *guardar;
    QPushButton *cancelar;

private:
    void construir();
    void pedirPaciente(const QString &ventana);
    void mostrarPaciente(int nrohc, const QString &nombre);
    void agregarTurno();
    void quitarTurno();
    void save();
    [[nodiscard]] QStringList turnos() const;

    int m_doctor = 0;
    int m_nrohc = 0;
};

} // namespace agenda
