#pragma once

#include <QString>

namespace base {
class Clock;
class Mensajes;
} // namespace base

namespace db {

class Connection;

/// What a person may set for this computer alone: the numbers of setup.dat beside the current user.
struct AjustesEquipo {
    int segundosAgenda = 30; ///< 1 to 60
    int segundosMensajes = 30; ///< 1 to 60
    bool modoTurno = false; ///< agenda and patient chooser act on the selected appointment

    bool operator==(const AjustesEquipo &) const = default;
};

/// What every rule and window is handed: the shared connection and the facts of this computer. The program's `Modulo`
/// is one, tests make their own.
class Entorno
{
public:
    virtual ~Entorno() = default;

    /// The single shared connection; throws db::Error (Closed) when there is none.
    [[nodiscard]] virtual Connection &conexion() = 0;
    [[nodiscard]] virtual base::Mensajes &mensajes() = 0;
    [[nodiscard]] virtual const base::Clock &clock() const = 0;
    /// `id` of the row of `Lista Doctores` of the person working, read from setup.dat at each call.
    [[nodiscard]] virtual int usuarioActual() const = 0;
    virtual void setUsuarioActual(int id) = 0;
    /// Name of this computer, or "Desconocido".
    [[nodiscard]] virtual QString equipo() const = 0;
    /// Without a trailing separator.
    [[nodiscard]] virtual QString carpetaPrograma() const = 0;
    [[nodiscard]] virtual QString carpetaDatos() const = 0;
    /// True on a computer whose database lies in another folder: the server computer does its backups.
    [[nodiscard]] virtual bool esClienteDeRed() const = 0;
    /// Seconds of setup.dat, or the default 30 where the file holds no valid value.
    [[nodiscard]] virtual int segundosAgenda() const = 0;
    [[nodiscard]] virtual int segundosMensajes() const = 0;
    [[nodiscard]] virtual bool modoTurno() const = 0;
    /// Writes those numbers to setup.dat; throws db::Error.
    virtual void setAjustesEquipo(const AjustesEquipo &ajustes) = 0;
};

} // namespace db
