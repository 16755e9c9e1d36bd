#pragma once

#include "app/Ruta.h"
#include "base/Rechazo.h"
#include "db/migracion/Migracion.h"

#include <QDateTime>

namespace db {
class Entorno;
}

namespace app {

class CambioDeRuta;

/// What the window 'Red' can move, and where to.
struct PedidoTraslado {
    enum class Clase {
        DatosActuales, ///< the embedded database in use to the server
        BaseVacia, ///< the empty template to the server
        AlArchivo ///< the server's database in use to a file of this program
    };
    Clase clase = Clase::DatosActuales;
    Ruta ruta = {}; ///< which leads to the new database
    QString apartar = {}; ///< of AlArchivo, see db::migracion::PedidoAlArchivo
};

/// The work itself, for a thread of its own.
using TrabajoTraslado = std::function<db::migracion::Desenlace(db::migracion::Seguimiento &)>;

/// Why it cannot be asked for as things stand; empty when it can.
[[nodiscard]] QString
impedimento(const db::Entorno &entorno, const CambioDeRuta &red, PedidoTraslado::Clase clase, const Ruta &ruta);

/// Before it begins. Needs the right `accesored`, except while there is no database to read it from.
[[nodiscard]] base::Control
controlarTraslado(db::Entorno &entorno, const CambioDeRuta &red, const PedidoTraslado &pedido);

/// Asks whether to begin; for a file that exists already, whether it may be put aside (and under which name, noted in
/// the request). False: not now.
[[nodiscard]] bool confirmarTraslado(db::Entorno &entorno, PedidoTraslado &pedido);

/// What is being done, in a line: "Los datos actuales pasan al servidor 'X'."
[[nodiscard]] QString descripcion(const PedidoTraslado &pedido, const QString &carpetaPrograma);

/// The whole outcome as a text to be kept: when, from where to where, every table with its rows and sums.
[[nodiscard]] QString informe(
    const db::Entorno &entorno,
    const PedidoTraslado &pedido,
    const db::migracion::Desenlace &desenlace,
    const QDateTime &desde);

/// Keeps the outcome of a copy that came to its proof: as a text beside the database, and in `Historial`. Yields the
/// text's path; empty when there was nothing to keep or it could not be written. Throws nothing.
QString anotarTraslado(
    db::Entorno &entorno,
    const PedidoTraslado &pedido,
    const db::migracion::Desenlace &desenlace,
    const QDateTime &desde);

/// Tells the person how it ended. After a success asks whether this computer is to work with the new database from now
/// on, and goes over to it. True when it did.
[[nodiscard]] bool concluirTraslado(
    db::Entorno &entorno, CambioDeRuta &red, const PedidoTraslado &pedido, const db::migracion::Desenlace &desenlace);

} // namespace app
