#include "agenda/GrillaDia.h"

#include <algorithm>

namespace agenda {

namespace {

int minutos(QTime hora) { return hora.hour() * 60 + hora.minute(); }

} // namespace

GrillaDia::GrillaDia(const Jornada &jornada)
{
    agregar(jornada.maDesde, jornada.maHasta, jornada.duracion);
    agregar(jornada.taDesde, jornada.taHasta, jornada.duracion);
}

void GrillaDia::agregar(const std::optional<QTime> &desde, const std::optional<QTime> &hasta, int duracion)
{
    if (!desde || !hasta)
        return;
    const int paso = duracion > 0 ? duracion : duracionSupuesta;
    for (int t = minutos(*desde); t < minutos(*hasta) && cantidad() < maximo; t += paso)
        m_horas.emplace_back(t / 60, t % 60);
}

bool GrillaDia::contiene(QTime hora) const
{
    return std::find(m_horas.begin(), m_horas.end(), alMinuto(hora)) != m_horas.end();
}

QString GrillaDia::celda(int numero) const
{
    if (numero == celdaCantidad)
        return QString::number(cantidad());
    return numero >= 1 && numero <= cantidad() ? horaTexto(m_horas[size_t(numero - 1)]) : QString();
}

GrillaDia grillaDe(const std::optional<Plantilla> &plantilla, QDate fecha)
{
    return plantilla ? GrillaDia(plantilla->jornada(fecha)) : GrillaDia();
}

QString horaTexto(QTime hora) { return hora.toString(QStringLiteral("HH:mm")); }

QTime alMinuto(QTime hora) { return {hora.hour(), hora.minute()}; }

} // namespace agenda
