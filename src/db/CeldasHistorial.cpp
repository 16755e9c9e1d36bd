#include "db/CeldasHistorial.h"

#include <QHashFunctions>
#include <QRandomGenerator>

#include <algorithm>

namespace db {

namespace {

// Rows without a date are sealed with the first day.
int claveTramo(QDate desde) { return desde == primerDiaHistorial() ? 0 : claveDia(desde); }

} // namespace

CeldasHistorial::CeldasHistorial()
    : m_ultima(m_dias.end())
    , m_semilla(size_t(QRandomGenerator::system()->generate64()))
{
}

void CeldasHistorial::agregar(Lado &lado, const Huella &huella) const
{
    ++lado.cuantos;
    lado.suma += huella;
    // The HMACs of linked rows lie in the table: whoever looks for other rows of equal sum may not know this one's.
    lado.mezcla += qHashBits(&huella, sizeof huella, m_semilla);
}

CeldasHistorial::Celda &CeldasHistorial::celda(int dia)
{
    if (m_ultima == m_dias.end() || m_ultima->first != dia)
        m_ultima = m_dias.try_emplace(dia).first;
    return m_ultima->second;
}

void CeldasHistorial::agregarFila(int dia, const Huella &huella) { agregar(celda(dia).filas, huella); }

void CeldasHistorial::agregarEslabon(const Eslabon &eslabon)
{
    using Clase = Eslabon::Clase;
    if (eslabon.clase == Clase::Anteriores)
        m_tramos.push_back(
            {claveTramo(eslabon.desde), claveDia(eslabon.hasta), eslabon.cantidad, eslabon.suma, 0, Huella()});
    if (eslabon.clase == Clase::Eliminacion) {
        const int hasta = claveDia(eslabon.hasta);
        m_cortes.push_back({eslabon.orden, hasta});
        for (auto &[dia, suya] : m_dias)
            if (dia != 0 && dia <= hasta) {
                suya.eslabones = {};
                suya.primero = suya.ultimo = 0;
            }
        std::erase_if(m_tramos, [hasta](const Tramo &tramo) { return tramo.desde <= hasta; });
    }
    if (eslabon.clase == Clase::Accion || eslabon.clase == Clase::Eliminacion) {
        Celda &suya = celda(eslabon.dia());
        agregar(suya.eslabones, eslabon.huella);
        if (suya.primero == 0)
            suya.primero = eslabon.orden;
        suya.ultimo = eslabon.orden;
    }
}

bool CeldasHistorial::vive(int orden, int dia) const
{
    return std::none_of(m_cortes.begin(), m_cortes.end(), [=](const Corte &corte) {
        return orden < corte.orden && dia != 0 && dia <= corte.hasta;
    });
}

bool CeldasHistorial::enTramo(int dia) const
{
    return std::any_of(m_tramos.begin(), m_tramos.end(), [dia](const Tramo &tramo) {
        return tramo.desde <= dia && dia <= tramo.hasta;
    });
}

std::vector<CeldasHistorial::Tramo> CeldasHistorial::tramos(int desde, int hasta) const
{
    std::vector<Tramo> resultado;
    for (Tramo tramo : m_tramos) {
        if (tramo.desde < desde || tramo.desde > hasta)
            continue;
        const int fin = std::min(tramo.hasta, hasta);
        for (auto dia = m_dias.lower_bound(tramo.desde); dia != m_dias.end() && dia->first <= fin; ++dia) {
            tramo.hay += dia->second.filas.cuantos - dia->second.eslabones.cuantos;
            tramo.sumaHay += dia->second.filas.suma;
            tramo.sumaHay -= dia->second.eslabones.suma;
        }
        resultado.push_back(tramo);
    }
    return resultado;
}

std::vector<CeldasHistorial::Dia> CeldasHistorial::distintos(int desde, int hasta) const
{
    std::vector<Dia> resultado;
    for (auto dia = m_dias.lower_bound(desde); dia != m_dias.end() && dia->first <= hasta; ++dia) {
        const auto &[filas, eslabones, primero, ultimo] = dia->second;
        if ((filas.cuantos != eslabones.cuantos || filas.mezcla != eslabones.mezcla) && !enTramo(dia->first))
            resultado.push_back({dia->first, primero, ultimo});
    }
    return resultado;
}

CeldasHistorial::Lado CeldasHistorial::eslabones(int desde, int hasta) const
{
    Lado todos;
    for (auto dia = m_dias.lower_bound(desde); dia != m_dias.end() && dia->first <= hasta; ++dia) {
        todos.cuantos += dia->second.eslabones.cuantos;
        todos.suma += dia->second.eslabones.suma;
    }
    return todos;
}

qint64 CeldasHistorial::acciones(int desde) const
{
    qint64 cuantas = 0;
    for (auto dia = m_dias.lower_bound(desde); dia != m_dias.end(); ++dia)
        cuantas += dia->second.eslabones.cuantos;
    return cuantas;
}

QDate CeldasHistorial::primerDia(int desde) const
{
    for (auto dia = m_dias.lower_bound(desde); dia != m_dias.end(); ++dia)
        if (dia->second.eslabones.cuantos > 0)
            return diaDeClave(dia->first);
    return {};
}

} // namespace db
