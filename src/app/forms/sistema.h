#pragma once

#include "app/MenuPrincipal.h"

#include <QMainWindow>
#include <QTimer>

#include <chrono>
#include <functional>

class QLabel;
class QStatusBar;

namespace db {
class Entorno;
}
namespace maintenance {
class RespaldoAutomatico;
}
namespace ui {
class Ventanas;
}

namespace app {

class AreaFondo;
class AvisoBorradores;
class ColumnaMenu;
class Comprobador;

/// The frame of the whole system: menu column, the place of the other windows, status bar and the periodic work. Works
/// without a database as far as to say so at each button.
class sistema : public QMainWindow
{
    Q_OBJECT

public:
    /// Called with the path of the sound of a new notice.
    using Sonido = std::function<void(const QString &archivo)>;

    sistema(db::Entorno &entorno, Comprobador &comprobador, ui::Ventanas &ventanas);
    ~sistema() override;

    /// Opens the frame and the window that the user begins with; where users must log in, the login comes first and
    /// alone, and without it nothing opens.
    void empezar(bool conIngreso);
    /// Shows the current user's name, and where the database is, in the status bar.
    void actualizarUsuario();
    /// Plays the sound of a notice; without one the computer beeps.
    void setSonido(Sonido sonido) { m_sonido = std::move(sonido); }
    /// Makes the automatic copies when they are due; outlives this window. Without one there are none.
    void setRespaldo(maintenance::RespaldoAutomatico *respaldo);
    /// The program has another database than before, or none: name, place, background and the start of its session.
    void cambioDeBase();

    QStatusBar *barra;
    QTimer *tiempo; ///< notices of the chat
    QTimer *timerbackup; ///< temporary print rows and automatic copy

signals:
    /// The login of the start was cancelled: the program ends.
    void ingresoCancelado();

protected:
    void showEvent(QShowEvent *event) override;
    void closeEvent(QCloseEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;

private:
    void pulsar(const BotonMenu &boton);
    [[nodiscard]] VentanasDelMenu ventanasDelMenu();
    [[nodiscard]] bool hayVentanas() const;
    void volverAlMenu();
    void abrirInicio();
    /// False while the login has still to come, which is asked for then: the database was not there at start to say
    /// that users must log in.
    bool ingresado();
    void abrirAyuda();
    void revisarAnuncios();
    void mostrarAnuncio(const QString &texto);
    void cuidarBase();
    void mostrarRespaldo();
    /// Whether a message of the program's own would come over a box that waits for an answer.
    [[nodiscard]] bool seEspera() const;
    /// Once, as soon as there is a database: background picture and log entry.
    void iniciarSesion();
    /// Background picture and interval of the notices as the settings say by now.
    void aplicarConfiguracion();
    [[nodiscard]] std::chrono::seconds intervaloMensajes() const;
    void cerrarSesion();
    void actualizarBarra();
    /// Runs an action; a db::Error is shown and yields false.
    bool intentar(const std::function<void()> &accion);
    /// Runs periodic work: nobody asked for it, so that its failure is told once, in the status bar.
    void callado(const std::function<void()> &accion);

    db::Entorno &m_entorno;
    Comprobador &m_comprobador;
    ui::Ventanas &m_ventanas;
    Sonido m_sonido;
    maintenance::RespaldoAutomatico *m_respaldo = nullptr;
    ColumnaMenu *m_menu;
    AreaFondo *m_area;
    QLabel *m_sinRespaldo; ///< stays until there is a copy again
    QLabel *m_mensajeNuevo; ///< stays until the notice is read
    AvisoBorradores *m_borradores;
    QLabel *m_usuario;
    QLabel *m_base;
    QLabel *m_fecha;
    bool m_abierta = false;
    bool m_faltaIngreso = false; ///< nobody could be asked who works, as there was no database
    bool m_iniciada = false; ///< the start of the session is in the log
    bool m_cerrando = false;
    bool m_ocupada = false; ///< a press or a tick is under way, perhaps behind a message box
    bool m_fallaDicha = false; ///< the check failed and the person knows
    QString m_anuncio; ///< user and notice of the last sound
};

} // namespace app
