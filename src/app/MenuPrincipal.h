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
    QString ventana; ///< name under which the window is registered
    QString accion; ///< text of the activity log; empty: none is written here
    QString icono;
    QChar tecla; ///< letter of the caption that stands for it on the keyboard
    Accion hace = Accion::Ventana;
    bool soloServidor = false; ///< works only on the computer that holds the database
    /// Opens all the same when the check failed, which has been told by then: nobody's row and rights can be read, and
    /// nothing is logged.
    bool sinBase = false;
};

/// The menu's buttons in their order in the window.
[[nodiscard]] const std::vector<BotonMenu> &menuPrincipal();

/// What the rule needs to know of the open windows.
struct VentanasDelMenu {
    std::function<bool(const QString &nombre)> existe; ///< the window is part of this version
    std::function<bool(const QString &nombre)> activar; ///< brings an open one to the front; false when none is open
    std::function<bool(const QString &nombre)> abrir; ///< false when the window itself declined
};

/// What became of a press.
enum class Apertura {
    SinBase, ///< the database check failed
    AbiertaSinBase, ///< it failed, and the window is one that needs no database
    Activada, ///< it was open already
    Rechazada, ///< no valid user, no right, or not on this computer
    NoDisponible, ///< the window is not part of this version
    Declinada, ///< the window did not want to open
    Abierta
};

/// A press of a menu button that opens a window: database check, open window used again, the current user's row, its
/// right, and only then the window and its log entry. A button marked `sinBase` opens its window also when the check
/// failed. Whatever stops it has been told to the person. Throws db::Error.
Apertura
abrirDesdeMenu(db::Entorno &entorno, Comprobador &comprobador, const VentanasDelMenu &ventanas, const BotonMenu &boton);

/// Tells that a window is not part of this version.
void avisarNoDisponible(db::Entorno &entorno);

} // namespace app
