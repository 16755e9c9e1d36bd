#pragma once

#include "db/CabezaHistorial.h"
#include "db/CadenaHistorial.h"
#include "db/CeldasHistorial.h"
#include "db/LectorHistorial.h"

#include <functional>
#include <optional>

namespace db {

/// Something in the log or its chain that is not as this program left it.
struct HallazgoHistorial {
    enum class Clase {
        SinComienzo, ///< the chain has no first link: nothing before a new beginning can be checked
        ComienzoAlterado,
        OtroComienzo, ///< this computer knew another chain
        SinFinal, ///< the last links that this computer saw are gone
        FaltanEslabones,
        EslabonAlterado,
        Anteriores, ///< rows from before the chain changed
        Modificada, ///< a row reads otherwise than when it was written
        Eliminada,
        Agregada
    };

    Clase clase;
    QDateTime desde; ///< when the rows concerned were logged, as far as known
    QDateTime hasta;
    int cantidad = 1;
    QString detalle; ///< a row's window and action as they are now
};

struct InformeHistorial {
    bool comenzado = false; ///< there is a chain
    bool completo = false; ///< everything was looked at, not only what is recent
    bool sinSellar = false; ///< rows from before the chain are not sealed yet
    QDateTime comienzo; ///< when the chain was begun
    QDate desde; ///< first day of the entries that were checked
    qint64 acciones = 0; ///< how many they are
    qint64 anteriores = 0; ///< rows from before the chain that were checked
    std::vector<HallazgoHistorial> hallazgos; ///< the first thousand, by date
    int otros = 0; ///< days with differences that were not looked into any more

    [[nodiscard]] bool integro() const { return comenzado && hallazgos.empty(); }
    /// The last moment known to be concerned; invalid when it is whole or the moment unknown.
    [[nodiscard]] QDateTime ultimaDiferencia() const;
};

/// Compares the log with its chain in steps of a few milliseconds, so that a window can go on living: each link with
/// the one before, each day's rows with its links, and the end of the chain with what this computer remembers. Rows
/// written meanwhile do no harm. Every call may throw db::Error.
class VerificadorHistorial
{
public:
    enum class Alcance {
        Todo, ///< seals what still awaits it, too
        Reciente ///< some thousand links and their whole days; all when that is not much more, or when something is
                 ///< wrong
    };

    VerificadorHistorial(Entorno &entorno, Alcance alcance);

    /// A piece of the work; false when there is nothing left to do.
    [[nodiscard]] bool seguir();
    [[nodiscard]] int porciento() const;
    /// What is being done, for the person: "Sellando las acciones anteriores".
    [[nodiscard]] QString etapa() const;
    /// Complete once seguir() yielded false.
    [[nodiscard]] const InformeHistorial &informe() const { return m_informe; }

private:
    enum class Fase { Abrir, Sellar, Cadena, Filas, Dias, Fin };
    using Clase = HallazgoHistorial::Clase;

    void abrir();
    void sellar();
    void empezarCadena();
    void recorrerCadena();
    void anotar(const RecorridoCadena::Paso &paso);
    /// Reads what was hung on the chain meanwhile.
    void ponerAlDia();
    void empezarFilas();
    void recorrerFilas();
    void elegirDias();
    void comparar();
    void compararTramo(const CeldasHistorial::Tramo &tramo);
    void compararDia(int dia);
    void recorrerDia(int dia, const std::function<void(const ResultSet &filas, int fila, const Huella &)> &fila);
    void compararFinal();
    void terminar();
    /// Something is wrong among what is recent: only the whole tells for sure what.
    void verTodo();
    [[nodiscard]] std::vector<Eslabon> eslabonesDe(const CeldasHistorial::Dia &dia);
    void hallar(Clase clase, QDateTime desde, QDateTime hasta, int cantidad = 1, const QString &detalle = {});

    Entorno &m_entorno;
    Connection &m_conexion;
    Alcance m_alcance;
    Fase m_fase = Fase::Abrir;
    CadenaHistorial m_cadena;
    std::optional<RecorridoCadena> m_recorrido;
    std::optional<CeldasHistorial> m_celdas;
    std::optional<LectorHistorial> m_lector;
    QByteArray m_fechaAnterior; ///< of the last link
    std::vector<int> m_alterados; ///< numbers of links that do not count, in their order
    std::vector<Huella> m_huellasAlteradas; ///< and what they say of their rows
    std::vector<CeldasHistorial::Tramo> m_tramos; ///< still to be compared
    std::vector<CeldasHistorial::Dia> m_dias;
    int m_desdeDia = 0; ///< days before it are not compared
    int m_pendienteDesde = 0, m_pendienteHasta = 0; ///< between them, without the last, rows are not sealed yet
    qint64 m_hecho = 0, m_total = 0;
    InformeHistorial m_informe;
};

} // namespace db
