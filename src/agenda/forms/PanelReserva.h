#pragma once

#include "agenda/Reserva.h"

#include <QSet>
#include <QWidget>

class QComboBox;
class QFormLayout;
class QLabel;
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

class LineaAviso;

/// What the windows that book hand over: "nrohc" and, of the first time booked, "fecha" (QDateTime) and "id".
[[nodiscard]] QVariantMap resultadoReserva(int nrohc, const QDateTime &fecha, qint64 id);

/// The part of a booking that does not depend on who the patient is: with whom, its times, reason and observations, and
/// a calm notice of what speaks against them. It adds times by itself, typed or through `agendanuevahora`.
class PanelReserva : public QWidget
{
    Q_OBJECT

public:
    /// `ventana` is the window it is part of.
    PanelReserva(ui::Ventana &ventana, ui::Ventanas &ventanas, db::Entorno &entorno);

    /// Whose appointments they are, and the day at which a time is chosen while there is none yet (an invalid date:
    /// today). Throws db::Error.
    void setAgenda(int doctor, QDate fecha);
    [[nodiscard]] QDate fecha() const { return m_fecha; }
    /// The list of reasons; throws db::Error.
    void cargar();
    /// The lines as handed over ("dd/mm/yyyy hh:nn"); those that are no date-times are left out.
    void setTurnos(const QStringList &lineas);
    /// Adds those that are not in the list yet, and shows the last one.
    void agregar(const QStringList &lineas);
    /// Adds what is typed into `nuevoturno`. Fields: `nuevoturno`.
    [[nodiscard]] base::Control agregarEscrito();
    void quitarElegidos();
    /// Chooses the lines of those times, so that they can be taken away or looked at.
    void elegir(const QVector<QDateTime> &momentos);

    [[nodiscard]] QVector<QDateTime> turnos() const;
    [[nodiscard]] QStringList lineas() const;
    /// The booking as typed; `nrohc` is the window's to say.
    [[nodiscard]] Reserva leer() const;
    /// Shows the notice for that patient (0: not known yet), and yields the appointments of the same days that it tells
    /// of, by `id`. Throws db::Error.
    QSet<qint64> mostrarAviso(int nrohc);

    QFormLayout *campos; ///< for the rows that the window adds
    QLabel *profesional;
    QListWidget *listaturnos;
    QPushButton *agregarturno;
    QPushButton *quitarturno;
    QLineEdit *nuevoturno;
    QPushButton *agregarescrito;
    QComboBox *motivo;
    QToolButton *listamotivo;
    QPlainTextEdit *observacionestur;
    LineaAviso *aviso;

signals:
    void turnosCambiados();

private:
    void construir();
    void elegirHora();

    ui::Ventana &m_ventana;
    ui::Ventanas &m_ventanas;
    db::Entorno &m_entorno;
    int m_doctor = 0;
    QDate m_fecha;
};

} // namespace agenda
