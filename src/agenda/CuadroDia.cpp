#include "agenda/CuadroDia.h"

#include <algorithm>
#include <map>

namespace agenda {

const CuadroDia::Celda *CuadroDia::celda(int columna, int renglon) const
{
    const auto &suyas = columnas[size_t(columna)];
    auto siguiente = std::upper_bound(
        suyas.begin(), suyas.end(), renglon, [](int r, const Celda &celda) { return r < celda.renglon; });
    if (siguiente == suyas.begin())
        return nullptr;
    const Celda &candidata = *--siguiente;
    return renglon < candidata.renglon + candidata.alto ? &candidata : nullptr;
}

CuadroDia armarCuadro(const std::vector<const AgendaDelDia *> &agendas)
{
    // Lines that each time needs: as many as the professional with most rows at it.
    std::map<QTime, int> lineas;
    for (const AgendaDelDia *agenda : agendas) {
        std::map<QTime, int> suyas;
        for (const FilaDia &fila : agenda->dia.filas)
            ++suyas[fila.hora];
        for (const auto &[hora, cuantas] : suyas)
            lineas[hora] = std::max(lineas[hora], cuantas);
    }
    CuadroDia cuadro;
    std::map<QTime, int> primera;
    for (const auto &[hora, cuantas] : lineas) {
        primera[hora] = int(cuadro.horas.size());
        cuadro.horas.insert(cuadro.horas.end(), size_t(cuantas), hora);
    }

    for (const AgendaDelDia *agenda : agendas) {
        auto &columna = cuadro.columnas.emplace_back();
        const auto &filas = agenda->dia.filas;
        for (size_t i = 0; i < filas.size(); ++i) {
            const bool repetida = i > 0 && filas[i - 1].hora == filas[i].hora;
            columna.push_back({int(i), repetida ? columna.back().renglon + 1 : primera[filas[i].hora], 1});
        }
        for (size_t i = 0; i < filas.size(); ++i) {
            const int limite = i + 1 < filas.size() ? columna[i + 1].renglon : int(cuadro.horas.size());
            // Of several at one time the last one takes the rest of the slot. Not past midnight.
            const QTime fin = filas[i].hora.addSecs(agenda->duracion * 60);
            CuadroDia::Celda &celda = columna[i];
            while (celda.renglon + celda.alto < limite) {
                const QTime hora = cuadro.horas[size_t(celda.renglon + celda.alto)];
                if (fin > filas[i].hora && hora >= fin)
                    break;
                ++celda.alto;
            }
        }
    }
    return cuadro;
}

} // namespace agenda
