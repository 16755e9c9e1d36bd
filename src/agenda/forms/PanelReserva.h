#pragma once

#include "agenda/Reserva.h"

#include <QWidget>

class QComboBox;
class QFormLayout;
class QLineEdit;
class QListWidget;
class QPlainTextEdit;
class QPushButton;
class QToolButton;

namespace ui {
class Ventana;
class Ventanas;
} // namespace ui

namespace agenda {

/// What the windows that book hand over: "nrohc" and, of the first time booked, "fecha" (QDateTime) and "id".
[[nodiscard]] QVariantMap resultadoReserva(int nrohc, const QDateTime &fecha, qint64 id);
/// The windows that show appointments: to be loaded again when one was given or changed.
[[nodiscard]] QStringList ventanasDelDia();

/// The part of a booking that does not depend on who the patient is: its times, reason and observations.
class PanelReserva : public QWidget
{
    Q_OBJECT

public:
    /// `ventana` is the window it is part of.
    PanelReserva(ui::Ventana &ventana, ui::Ventanas &ventanas);

    /// The list of reasons; throws db::Error.
    void cargar(db::Connection &conexion);
    /// The lines as handed over ("dd/mm/yyyy hh:nn"); those that are no date-times are left out.
    void setTurnos(const QStringList &lineas);
    /// Adds those that are not in the list yet, and shows the last one.
    void agregar(const QStringList &lineas);
    /// Adds what is typed into `nuevoturno`. Fields: `nuevoturno`.
    [[nodiscard]] base::Control agregarEscrito(db::Connection &conexion, int doctor);
    void quitarElegidos();
    /// Chooses the lines of those times, so that they can be taken away or looked at.
    void elegir(const QVector<QDateTime> &momentos);

    [[nodiscard]] QVector<QDateTime> turnos() const;
    [[nodiscard]] QStringList lineas() const;
    /// The booking as typed; `nrohc` and `doctor` are the window's to say.
    [[nodiscard]] Reserva leer() const;

    QFormLayout *campos; ///< for the rows that the window adds
    QListWidget *listaturnos;
    QPushButton *agregarturno;
    QPushButton *quitarturno;
    QLineEdit *nuevoturno;
    QPushButton *agregarescrito;
    QComboBox *motivo;
    QToolButton *listamotivo;
    QPlainTextEdit *observacionestur;

signals:
    void turnosCambiados();

private:
    void construir();
};

} // namespace agenda
