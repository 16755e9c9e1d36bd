#pragma once

#include <QString>

#include <functional>
#include <vector>

namespace db {
class Entorno;
}

namespace app {

class Comprobador;

/// A button of the main window's menu column.
struct BotonMenu {
    enum class Accion {
        Ventana, ///< opens a window after the checks
        Ayuda, ///< opens the help, which must not need a database
        Salir
    };

    QString nombre; ///< object name
    QString titulo; ///< caption
    QString ayuda; ///< tool tip
    QString derecho; ///< column of `Lista Doctores` that guards it; empty: none
    /// Window that asks for an administrator's password in place of the right, once there is one to ask for.
    QString puerta = {};
    QString ventana; ///< name under which the window is registered
    QString accion; ///< text of the activity log; empty: none is written here
    QString icono;
    QChar tecla; ///< letter of the caption that stands for it on the keyboard
    Accion hace = Accion::Ventana;
    bool soloServidor = false; ///< works only on the computer that holds the database
    /// Also for a current user who does not exist any more: choosing another one is the only way out of that.
    bool sinUsuario = false;
};

/// The menu's buttons in their order in the window.
[[nodiscard]] const std::vector<BotonMenu> &menuPrincipal();

/// What the rule needs to know of the open windows.
struct VentanasDelMenu {
    /// Someone may work here. False while a login that the practice asks for has still to come: it has been asked for.
    std::function<bool()> ingresado;
    std::function<bool(const QString &nombre)> existe; ///< the window is part of this version
    std::function<bool(const QString &nombre)> activar; ///< brings an open one to the front; false when none is open
    std::function<bool(const QString &nombre)> abrir; ///< false when the window itself declined
    /// Opens a window that asks for an administrator's password, and hands on the name of the one whose it was.
    std::function<bool(const QString &nombre, std::function<void(const QString &administrador)> alPasar)> abrirPuerta;
};

/// What became of a press.
enum class Apertura {
    SinBase, ///< the database check failed
    SinIngreso, ///< users must log in first
    Activada, ///< it was open already
    Rechazada, ///< no valid user, no right, or not on this computer
    NoDisponible, ///< the window is not part of this version
    Declinada, ///< the window did not want to open
    Puerta, ///< an administrator's password is being asked for
    Abierta
};

/// A press of a menu button that opens a window: database check, open window used again, the current user's row, its
/// right or an administrator's password, and only then the window and its log entry. Whatever stops it has been told to
/// the person. Throws db::Error.
Apertura
abrirDesdeMenu(db::Entorno &entorno, Comprobador &comprobador, const VentanasDelMenu &ventanas, const BotonMenu &boton);

/// Opens the window with which the current user wants to begin (`ventanainicio`), as its button would. Nobody has
/// pressed anything: without the right, or in a version without that window, nothing happens. Throws db::Error.
void abrirVentanaInicio(db::Entorno &entorno, Comprobador &comprobador, const VentanasDelMenu &ventanas);

/// Tells that a window is not part of this version.
void avisarNoDisponible(db::Entorno &entorno);

} // namespace app
