#pragma once

#include "app/Comprobador.h"
#include "app/Migracion.h"
#include "app/Ruta.h"
#include "base/Rechazo.h"

namespace db {
class Connection;
class Entorno;
} // namespace db

namespace app {

/// What was found where a `ruta.dat` leads to.
struct Hallazgo {
    bool valida = false;
    QString texto; ///< for the person, either way
};

/// What the window 'Red' does to the program that it is part of; the program's `Modulo` is one.
class CambioDeRuta : public Comprobador
{
public:
    /// What `ruta.dat` holds now.
    [[nodiscard]] virtual Ruta rutaGuardada() const = 0;
    /// Writes `ruta.dat` and goes over to the database that it leads to, as a start does: connection, check, upgrade.
    /// False when the check failed, which the person has been told; there is no database then. Throws db::Error when
    /// the file cannot be written: nothing has changed then.
    [[nodiscard]] virtual bool cambiarRuta(const Ruta &ruta) = 0;
    /// Looks at the database that this would lead to, without going over to it.
    [[nodiscard]] virtual Hallazgo examinarRuta(const Ruta &ruta) const = 0;
    /// Whether this computer has what it takes to work on a SQL Server.
    [[nodiscard]] virtual bool admiteServidor() const = 0;
    /// The work that a request means to this program. The one of a program without servers refuses it.
    [[nodiscard]] virtual TrabajoTraslado traslado(const PedidoTraslado &pedido) const;
};

/// Whether a connection leads to a database of this system, and how big it is.
[[nodiscard]] Hallazgo examinarBase(db::Connection &conexion);

/// Something is missing, or does not fit `ruta.dat`. The fields are called as the members of Ruta.
[[nodiscard]] base::Control controlarRuta(const Ruta &ruta, const QString &carpetaPrograma);

enum class RutaCambiada {
    Usada, ///< the program works on the new database
    Restaurada, ///< it could not be used, and the former settings are back
    SinBase ///< there is no database to work on
};

/// Needs the right `accesored`, except while there is no database to read it from. Goes over to another database; when
/// that one cannot be used, offers to put the former settings back. Throws db::Error when they cannot be written.
[[nodiscard]] base::Resultado<RutaCambiada> guardarRuta(db::Entorno &entorno, CambioDeRuta &red, const Ruta &nueva);

} // namespace app
