#pragma once

#include "db/CadenaHistorial.h"

#include <map>

namespace db {

/// Compares the rows of the log with the links of its chain, day by day and in any order, in memory that grows with the
/// days and not with the rows: each side of a day is a count and sums over the rows' HMACs.
class CeldasHistorial
{
public:
    static constexpr int ultimaClave = 99991231;

    /// A stretch of days whose rows were sealed together.
    struct Tramo {
        int desde = 0; ///< keys of the days, see claveDia(); both included
        int hasta = 0;
        int cantidad = 0; ///< rows sealed
        Huella suma;
        int hay = 0; ///< rows there are without links of their own
        Huella sumaHay;

        [[nodiscard]] bool igual() const { return cantidad == hay && suma == sumaHay; }
    };
    /// A day whose rows and links differ.
    struct Dia {
        int clave = 0;
        int primero = 0; ///< numbers of its first and last link; 0 when it has none
        int ultimo = 0;
    };

    CeldasHistorial();
    CeldasHistorial(const CeldasHistorial &) = delete;
    CeldasHistorial &operator=(const CeldasHistorial &) = delete;

    void agregarFila(int dia, const Huella &huella);
    /// Links come in their order: a removal makes those before it count no more.
    void agregarEslabon(const Eslabon &eslabon);

    /// Whether the row of a link is still to be there after the removals so far.
    [[nodiscard]] bool vive(int orden, int dia) const;
    /// Every sealed stretch that begins between these days; what there is, is counted up to the last of them.
    [[nodiscard]] std::vector<Tramo> tramos(int desde = 0, int hasta = ultimaClave) const;
    /// The days between these two, outside sealed stretches, on which rows and links differ.
    [[nodiscard]] std::vector<Dia> distintos(int desde = 0, int hasta = ultimaClave) const;

    /// Rows that have links of their own, and the first of their days; invalid without any.
    [[nodiscard]] qint64 acciones(int desde = 0) const;
    [[nodiscard]] QDate primerDia(int desde = 0) const;

    struct Lado {
        int cuantos = 0;
        quint64 mezcla = 0;
        Huella suma;
    };
    /// The links of those days together.
    [[nodiscard]] Lado eslabones(int desde, int hasta) const;

private:
    struct Celda {
        Lado filas, eslabones;
        int primero = 0, ultimo = 0;
    };
    struct Corte {
        int orden = 0;
        int hasta = 0;
    };
    void agregar(Lado &lado, const Huella &huella) const;
    [[nodiscard]] Celda &celda(int dia);
    [[nodiscard]] bool enTramo(int dia) const;

    std::map<int, Celda> m_dias;
    std::map<int, Celda>::iterator m_ultima; ///< rows and links come day after day
    std::vector<Tramo> m_tramos;
    std::vector<Corte> m_cortes;
    size_t m_semilla;
};

} // namespace db
