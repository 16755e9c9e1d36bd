#pragma once

#include "db/Connection.h"
#include "db/HuellaHistorial.h"

#include <QHash>
#include <QSet>

#include <optional>

/// The chain that makes changes of `Historial` from outside show. `Historial` itself has no key and keeps its columns;
/// beside it, `Historial Cadena` holds one link per row: the HMAC of the row, and a seal over the seal of the link
/// before, the link's own number and its contents. Links are numbered without gaps and their number is a key, so that
/// two stations can never hang two links on the same one.
///
/// What it shows: rows that were changed, removed or added, and links that were changed or removed, by somebody who
/// edits the tables with other tools. Links cut off at the end together with their rows do not show in the chain alone;
/// every computer therefore remembers the last link it knew (CabezaHistorial).
///
/// What it does not: the key comes from the database password, which is part of the program, and a salt that lies in
/// the table. Whoever takes the program apart can make a chain anew; then only what the other computers remember speaks
/// against it. Nor does it hinder anything: it tells.
namespace db {

/// A row of `Historial Cadena`.
struct Eslabon {
    enum class Clase {
        Comienzo, ///< the first link: salt, and where the chain begins
        Accion, ///< a row of the log
        Eliminacion, ///< the same; rows up to `hasta`, logged before it, were removed
        Anteriores ///< rows without links of their own, sealed together
    };

    int orden = 0;
    Clase clase = Clase::Accion;
    QByteArray fecha; ///< of the row, of the sealing for the others; as stored, for there are a million to be read
    Huella huella; ///< of the row; of a Comienzo, what authenticates itself
    Huella sello; ///< of a Comienzo that stands for removed links, that of the last of them
    /// Rows removed or sealed; of a Comienzo, the last number used by an older chain that lost its beginning.
    int cantidad = 0;
    QDate desde; ///< days of those rows, both included
    QDate hasta;
    Huella suma; ///< of their HMACs
    /// First day whose earlier rows still await sealing; invalid when none do.
    QDate pendiente;
    QByteArray sal;

    [[nodiscard]] int dia() const { return claveDia(QByteArrayView(fecha)); }
};

/// "The beginning of time" for days to be sealed; rows without a date belong there too.
[[nodiscard]] QDate primerDiaHistorial();

/// Reads and lengthens the chain. Everything that writes runs within a transaction of the caller's.
class CadenaHistorial
{
public:
    explicit CadenaHistorial(Connection &conexion)
        : m_conexion(conexion)
    {
    }

    /// Finds the first link. False when there is none: an empty chain, or one that lost its beginning.
    [[nodiscard]] bool abrir();
    /// Begins the chain. Rows logged before today are left to sellar(); today's are sealed at once, so that no row of
    /// this program's own is ever taken for an earlier one.
    void comenzar(const QDateTime &ahora);

    [[nodiscard]] const Eslabon &comienzo() const { return m_comienzo; }
    /// Valid once abrir() or comenzar() succeeded.
    [[nodiscard]] LlaveHistorial &llave() { return *m_llave; }
    [[nodiscard]] std::optional<Eslabon> cola();
    [[nodiscard]] std::optional<Eslabon> eslabon(int orden);
    /// Links with greater numbers than `orden`, in their order.
    [[nodiscard]] std::vector<Eslabon> siguientes(int orden, int cuantos);

    /// Hangs a link on the last one: fills in its number and seal. Throws Error::Kind::Constraint when another station
    /// was first; then nothing was written, and it may be tried again.
    void anexar(Eslabon &nuevo);
    /// Seals whole days of earlier rows until about `filas` are done. Yields how many rows that were; nothing is left
    /// to do when the last link's `pendiente` is invalid.
    int sellar(int filas, const QDateTime &ahora);
    /// Replaces the links up to and including that one by a beginning from which the rest can be checked.
    void podar(const Eslabon &ultimo);

    /// Keeps in `Historial Usos` that this user was active in this window: the viewer's lists come from there, without
    /// a walk through the log.
    void anotarUso(int iddoctor, const QString &ventana);

    /// What the link's seal has to be after one with the seal `anterior`.
    [[nodiscard]] Huella selloDe(const Huella &anterior, const Eslabon &eslabon);
    /// What the `huella` of a Comienzo has to be.
    [[nodiscard]] Huella firmaDe(const Eslabon &comienzo);

private:
    using Usos = QHash<QString, QSet<int>>; ///< users by window

    void insertar(const Eslabon &eslabon);
    [[nodiscard]] QByteArray contenido(const Eslabon &eslabon) const;
    void sellarDia(const QDateTime &ahora);
    void anotarUsos(const Usos &usos);

    Connection &m_conexion;
    std::optional<LlaveHistorial> m_llave;
    Eslabon m_comienzo;
};

/// Goes along a chain and checks each link against the one before.
class RecorridoCadena
{
public:
    struct Paso {
        Eslabon eslabon;
        int faltan = 0; ///< numbers missing before it; the seal of such a link cannot be checked
        bool alterado = false; ///< its seal is not what it should be
        bool perdido = false; ///< of an older chain that lost its beginning: cannot be checked
    };

    /// Begins after a link that is taken as it is.
    RecorridoCadena(CadenaHistorial &cadena, const Eslabon &desde);

    /// The next links, at most so many; empty at the end of the chain. More may come later.
    [[nodiscard]] const std::vector<Paso> &leer(int cuantos);
    /// The last link read.
    [[nodiscard]] const Eslabon &ultimo() const { return m_ultimo; }

private:
    CadenaHistorial &m_cadena;
    Eslabon m_ultimo;
    std::vector<Paso> m_pasos;
};

} // namespace db
