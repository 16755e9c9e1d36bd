#pragma once

#include "agenda/SalaEspera.h"
#include "agenda/TodasAgendas.h"
#include "agenda/forms/GrillaTodas.h"
#include "ui/Ventana.h"

#include <set>

class QHBoxLayout;
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

/// All agendas of one date side by side, and the waiting room. Facts understood when it is opened: "fecha" (QDate) and
/// "doctor" (`id`), whose column is chosen. Which professionals are shown is remembered on this computer.
class agendastodas : public ui::Ventana
{
    Q_OBJECT

public:
    agendastodas(db::Entorno &entorno, ui::Ventanas &ventanas);

    bool preparar(const ui::Pedido &pedido) override;
    void refrescar() override;
    [[nodiscard]] QString ayuda() const override;
    /// Work goes on in it all day: it asks for what the frame has on a common screen.
    [[nodiscard]] QSize sizeHint() const override { return {1600, 1000}; }

    CalendarioMes *fechadia;
    QLabel *fechaactiva;
    QPushButton *hoy;
    QToolButton *diaanterior;
    QToolButton *diasiguiente;
    QToolButton *fechamesmenos;
    QToolButton *fechamesmas;
    QToolButton *fechaaniomenos;
    QToolButton *fechaaniomas;
    QListWidget *listaprofesionales;
    QPushButton *todos;
    QPushButton *ninguno;
    GrillaTodas *lista;
    QLabel *titulosala;
    ui::Grilla *sala;
    QLabel *detalle;
    QPushButton *nuevo;
    QPushButton *sinollego;
    QPushButton *sinoatendido;
    QPushButton *bloquear;
    QPushButton *liberar;
    QPushButton *veragenda;
    QPushButton *atender;
    QPushButton *horarios;
    QPushButton *nolabo;
    QPushButton *botontelefonos;
    QTimer *tiempo;

private:
    void construir();
    QWidget *panelIzquierdo();
    /// The operations on the chosen cells; those on the professional go beside the date.
    QWidget *barraOperaciones(QHBoxLayout &titulo);
    QWidget *panelSala();
    void conectar();
    void conectarOperaciones();

    void recargar();
    void mostrar();
    void mostrarProfesionales();
    void mostrarSala();
    void mostrarDetalle();
    void habilitar();
    /// Takes over the marks of the list of professionals.
    void elegirProfesionales();
    void marcarTodos(bool mostrados);

    /// Of a chosen cell, kept apart: the day may load again at any message.
    struct Elegido {
        int doctor = 0;
        FilaDia fila;
    };
    [[nodiscard]] std::optional<Elegido> elegido() const;
    [[nodiscard]] std::optional<Elegido> turnoElegido() const;
    /// Whose column the chosen cell is in; without one the first column's; 0 for none.
    [[nodiscard]] int doctorElegido() const;

    /// The days of all after an action of this window, with the cell of that hour chosen; other windows too.
    void trasCambio(const std::optional<Elegido> &antes);
    void activar();
    void abrirReserva();
    void liberarElegidos();
    void bloquearElegidos();
    /// Runs a change of the chosen appointment, shows its refusal and loads the days again; whether it was done.
    bool cambiar(const std::function<base::Control(const FilaDia &)> &cambio);
    void marcarAtencion();
    void abrirAgenda();
    void abrirFichaElegida();
    void abrirDeProfesional(const QString &ventana);
    void elegirDeSala();
    void alTic();

    std::shared_ptr<const TodasAgendas> m_todas;
    std::vector<EnEspera> m_sala;
    std::set<int> m_ocultos;
    qint64 m_detalleDe = 0;
    bool m_poniendo = false; ///< what changes now is not the person's doing
};

} // namespace agenda
