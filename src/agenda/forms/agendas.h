#pragma once

#include "agenda/DiaAgenda.h"
#include "agenda/DiasNoLaborables.h"
#include "ui/Ventana.h"

class QComboBox;
class QLabel;
class QListWidget;
class QPushButton;
class QTimer;
class QToolButton;

namespace ui {
class Grilla;
}

namespace agenda {

class CalendarioMes;

/// "Agenda de Turnos": one professional's day with its appointments and what is done with them. Facts understood when
/// it is opened: "doctor" (`id`) and "fecha" (QDate).
class agendas : public ui::Ventana
{
    Q_OBJECT

public:
    agendas(db::Entorno &entorno, ui::Ventanas &ventanas);

    bool preparar(const ui::Pedido &pedido) override;
    void refrescar() override;
    [[nodiscard]] QString ayuda() const override;

    /// The day as it is shown.
    [[nodiscard]] const DiaAgenda &dia() const { return m_dia; }

    QComboBox *lisdocto;
    CalendarioMes *fechadia;
    QLabel *fechaactiva;
    QPushButton *hoy;
    QToolButton *fechamesmenos;
    QToolButton *fechamesmas;
    QToolButton *fechaaniomenos;
    QToolButton *fechaaniomas;
    QListWidget *listatemp;
    ui::Grilla *lista;
    QLabel *detalle;
    QPushButton *nuevo;
    QPushButton *liberar;
    QPushButton *bloquear;
    QPushButton *sinollego;
    QPushButton *sinoatendido;
    QPushButton *modifobservacion;
    QPushButton *modifmoticonsul;
    QPushButton *modifhora;
    QPushButton *horarios;
    QPushButton *imprimir;
    QPushButton *plantillatur;
    QPushButton *exportarics;
    QPushButton *manana;
    QTimer *tiempo;

private:
    void construir();
    QWidget *panelIzquierdo();
    QWidget *barraOperaciones();
    QWidget *barraSalidas();
    void conectar();
    void atajo(const QKeySequence &tecla, QPushButton *boton);

    void cargarProfesionales();
    void recargar();
    /// recargar() after an action of this window: the row of that hour stays chosen.
    void recargarEn(std::optional<QTime> hora);
    void mostrarDia();
    void mostrarMarcas();
    void mostrarResumen();
    void mostrarDetalle();
    void habilitar();

    [[nodiscard]] const FilaDia *filaDe(qint64 clave) const;
    [[nodiscard]] const FilaDia *filaActual() const;
    [[nodiscard]] std::optional<QTime> horaActual() const;
    /// Times of the selected rows that may get an appointment, the current row first where it is not free.
    [[nodiscard]] QStringList turnosElegidos() const;

    void abrirReserva();
    void liberarElegidos();
    void bloquearElegidos();
    void copiarAtendidos();
    /// Runs a change of the current appointment, shows its refusal and loads the day again either way.
    void cambiar(const std::function<base::Control(const FilaDia &)> &cambio);
    /// Opens a window about the current appointment.
    void abrirDeTurno(const QString &ventana);
    void irA(QDate fecha);
    void alTic();

    int m_doctor = 0; ///< whose day is shown; 0 while there are no professionals
    DiaAgenda m_dia;
    QVector<DiaNoLaborable> m_noLaborables;
    qint64 m_detalleDe = 0;
};

} // namespace agenda
