#include "agenda/TodasAgendas.h"

#include "agenda/DiasNoLaborables.h"
#include "agenda/LecturaDia.h"
#include "agenda/Textos.h"
#include "db/ListaDoctores.h"

#include <algorithm>

namespace agenda {

namespace {

/// What everybody's days are made from.
struct Leido {
    std::map<int, Plantilla> plantillas;
    std::set<int> noAtienden;
    std::map<int, std::vector<FilaDia>> turnos;
};

AgendaDelDia armar(Leido &leido, int doctor, const QString &nombre, QDate fecha)
{
    AgendaDelDia agenda;
    agenda.nombre = nombre;
    agenda.dia.doctor = doctor;
    agenda.dia.fecha = fecha;
    if (const auto suya = leido.plantillas.find(doctor); suya != leido.plantillas.end()) {
        agenda.dia.hayPlantilla = true;
        agenda.dia.grilla = grillaDe(suya->second, fecha);
        agenda.dia.ajustes = suya->second.sobreturnos;
        agenda.duracion = suya->second.jornada(fecha).duracion;
    }
    agenda.dia.noLaborable = leido.noAtienden.count(doctor) > 0;
    std::vector<FilaDia> suyos;
    if (auto nodo = leido.turnos.extract(doctor))
        suyos = std::move(nodo.mapped());
    acomodar(agenda.dia, std::move(suyos));
    return agenda;
}

} // namespace

int AgendaDelDia::libres() const
{
    return int(std::count_if(
        dia.filas.begin(), dia.filas.end(), [](const FilaDia &fila) { return fila.clase == FilaDia::Clase::Libre; }));
}

QString AgendaDelDia::resumen() const
{
    const QString turnos = dia.turnos == 1 ? QStringLiteral("1 turno") : QStringLiteral("%1 turnos").arg(dia.turnos);
    if (dia.noLaborable || dia.grilla.cantidad() == 0) {
        const QString porque = dia.noLaborable ? QStringLiteral("No se atiende") : QStringLiteral("Sin horario");
        return dia.turnos == 0 ? porque : porque + QStringLiteral(" · ") + turnos;
    }
    const int cuantos = libres();
    return turnos
        + (cuantos == 0       ? QStringLiteral(" · completo")
               : cuantos == 1 ? QStringLiteral(" · 1 libre")
                              : QStringLiteral(" · %1 libres").arg(cuantos));
}

TodasAgendas cargarTodas(db::Connection &conexion, QDate fecha, QDate hoy)
{
    Leido leido{
        elegirPlantillas(conexion, fecha), quienesNoAtienden(conexion, fecha), leerTurnosDeTodos(conexion, fecha, hoy)};
    TodasAgendas todas;
    todas.fecha = fecha;
    for (const db::Doctor &doctor : db::profesionales(conexion))
        todas.agendas.push_back(armar(leido, doctor.id, doctor.nombre, fecha));
    while (!leido.turnos.empty())
        todas.agendas.push_back(armar(leido, leido.turnos.begin()->first, textoSinProfesional, fecha));
    return todas;
}

} // namespace agenda
