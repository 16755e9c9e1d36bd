#pragma once

#include "db/Schema.h"
#include "db/access/Fuente.h"
#include "db/access/Informe.h"

namespace base {
class Clock;
class Mensajes;
} // namespace base

namespace db::access {

/// How far it is: shown to the person, who may end it while nothing is changed yet.
class Seguimiento
{
public:
    virtual ~Seguimiento() = default;
    /// `hechas` of `total` rows, or a total of 0 while that is not known. False: no further.
    [[nodiscard]] virtual bool avanzar(const QString &que, qint64 hechas, qint64 total) = 0;
};

struct Pedido {
    QString archivo; ///< the old database
    QString clave; ///< of the new one
    QVector<Schema> rutinas; ///< the system's tables, in the order of the upgrade
    AbrirFuente abrir;
    QDateTime ahora;
    /// Asked when the old file says that a table has another number of rows than could be read; false ends it.
    std::function<bool(const QString &diferencias)> continuarConDiferencias = {};
    std::function<qint64(const QString &carpeta)> lugarLibre = {}; ///< bytes; for tests
};

struct Desenlace {
    enum class Tipo { Hecha, Cancelada, Fallada };
    Tipo tipo = Tipo::Cancelada;
    QString motivo = {}; ///< of the failure, for the person
    Informe informe = {};
};

/// What a first look at the old file tells.
enum class Examen { Propia, Incompatible };
/// Whether it is a database of this system: its table CIE10 has exactly one row with `id` 2. Throws db::Error when it
/// cannot be read.
[[nodiscard]] Examen examinar(Fuente &fuente);

/// Makes a database of ours beside the old one, proves it and puts it in its place (see reemplazar()). Unless it comes
/// back as Hecha, the old file is where it was and nothing stays beside it. Throws nothing.
[[nodiscard]] Desenlace convertir(const Pedido &pedido, Seguimiento &seguimiento) noexcept;

} // namespace db::access
