#pragma once

#include "agenda/DiaAgenda.h"
#include "agenda/DiasNoLaborables.h"
#include "ui/Ventana.h"

#include <QColor>

class QAction;
class QComboBox;
class QLabel;
class QListWidget;
class QPlainTextEdit;
class QPushButton;
class QTimer;
class QToolButton;

namespace agenda {

class CalendarioMes;
class GrillaTurnos;
struct TurnoGuardado;

/// "Agenda de Turnos": one professional's day with its appointments and what is done with them. Facts understood when
/// it is opened: "doctor" (`id`), "fecha" (QDate) and "hora" ("hh:mm", the row to choose); or "id" of an appointment,
/// whose day is shown with it chosen.
class agendas : public ui::Ventana
{
    Q_OBJECT

public:
    agendas(db::Entorno &entorno, ui::Ventanas &ventanas);

    bool preparar(const ui::Pedido &pedido) override;
    void refrescar() override;
    [[nodiscard]] QString ayuda() const override;
    /// Work goes on in it all day: it asks for what the frame has on a common screen.
    [[nodiscard]] QSize sizeHint() const override { return {1600, 1000}; }

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
    QPushButton *proximolibre;
    QListWidget *listatemp;
    GrillaTurnos *lista;
    QLabel *avisocorte; ///< what is cut, while something is
    QLabel *detalle;
    QPlainTextEdit *detalleordenes;
    QPushButton *nuevo;
    QPushButton *liberar;
    QPushButton *bloquear;
    QPushButton *atender;
    QPushButton *sinollego;
    QPushButton *sinoatendido;
    QPushButton *pagar;
    QPushButton *modifobservacion;
    QPushButton *modifmoticonsul;
    QPushButton *modifhora;
    QPushButton *buscar;
    QPushButton *botagentodas;
    QPushButton *telefonos;
    QPushButton *horarios;
    QPushButton *imprimir;
    QPushButton *plantillatur;
    QPushButton *exportarics;
    QPushButton *manana;
    QTimer *tiempo;

    // The same in the list's context menu.
    QAction *menuasignar;
    QAction *menuficha;
    QAction *menullego;
    QAction *menuatendido;
    QAction *menupagar;
    QAction *menuobser;
    QAction *menumotivo;
    QAction *menuhora;
    QAction *menucortar;
    QAction *menupegar;
    QAction *menubloquear;
    QAction *menueliminar;

protected:
    void keyPressEvent(QKeyEvent *event) override;

private:
    // agendasVista.cpp
    void construir();
    QWidget *panelIzquierdo();
    QLayout *renglonTitulo();
    QWidget *barraOperaciones();
    QLayout *panelDetalle();
    void crearMenu();
    QWidget *barraSalidas();
    void atajo(const QKeySequence &tecla, const std::function<void()> &accion);

    void conectar();
    void conectarOperaciones();

    void cargarProfesionales();
    void recargar();
    /// recargar() after an action of this window: the row of that hour stays chosen.
    void recargarEn(std::optional<QTime> hora);
    /// recargar() where the person goes to another day or professional: the row chosen is the one of the hour she was
    /// at or the next, so that the keyboard goes on there. A day that has no such hour does not change it.
    void recargarCerca();
    /// recargarEn() after something was changed: the other windows that show appointments load theirs too.
    void trasCambio(std::optional<QTime> hora);
    void mostrarDia();
    void mostrarMarcas();
    void mostrarResumen();
    void mostrarDetalle();
    void habilitar();

    [[nodiscard]] const FilaDia *filaDe(qint64 clave) const;
    [[nodiscard]] const FilaDia *filaActual() const;
    /// A copy of the current row when it is an appointment: the day may load again at any message.
    [[nodiscard]] std::optional<FilaDia> turnoActual() const;
    [[nodiscard]] std::optional<QTime> horaActual() const;
    void elegirHora(QTime hora);
    /// Times of the selected rows that may get an appointment, the current row first where it is not free.
    [[nodiscard]] QStringList turnosElegidos() const;

    // agendasOperaciones.cpp
    void activarFila();
    void abrirReserva();
    void liberarElegidos();
    void bloquearElegidos();
    void atenderActual();
    void marcarAtencion();
    void pagarActual();
    void buscarTurnos();
    void abrirTodas();
    void abrirProximosLibres();
    /// Runs a change of the current appointment, shows its refusal and loads the day again either way; true when there
    /// was nothing to refuse.
    bool cambiar(const std::function<base::Control(const FilaDia &)> &cambio);
    void copiarAtendidos();
    /// Opens a window about the current appointment.
    void abrirDeTurno(const QString &ventana);

    // agendasMover.cpp
    void conectarMover();
    /// An appointment as stored; says when another station deleted it, and loads the day.
    [[nodiscard]] std::optional<TurnoGuardado> leerOAvisar(qint64 id);
    void cortar(qint64 id);
    void pegar();
    /// Where the day has no row to paste on: the person says the hour.
    void pegarEscribiendoHora();
    void quitarCorte();
    void soltarEn(qint64 id, qint64 clave);
    void moverA(qint64 id, const QDateTime &momento);
    [[nodiscard]] base::Control controlarDestino(int doctor, const FilaDia *destino) const;

    void irA(QDate fecha);
    void irALibre(int sentido);
    void alTic();

    /// An appointment on its way to another hour.
    struct Corte {
        qint64 id = 0;
        int doctor = 0;
        QString titulo;
    };
    struct AccionDeMenu {
        QAction *accion;
        QPushButton *boton;
        QString texto; ///< empty: the button's
        QString tecla;
    };

    int m_doctor = 0; ///< whose day is shown; 0 while there are no professionals
    DiaAgenda m_dia;
    qint64 m_detalleDe = 0;
    std::optional<Corte> m_corte;
    std::optional<QTime> m_horaBuscada; ///< at which the person goes through the days
    std::optional<QTime> m_horaHallada; ///< what the day shown had for it
    std::vector<AccionDeMenu> m_acciones;
    std::vector<QColor> m_fondos; ///< by row of the day
    std::vector<QStringList> m_textosMostrados;
    std::vector<qint64> m_clavesMostradas;
};

} // namespace agenda
