#pragma once

#include "agenda/DiaAgenda.h"

namespace agenda {

/// One professional's day among those of all.
struct AgendaDelDia {
    QString nombre;
    DiaAgenda dia; ///< as cargarDia() has it
    int duracion = duracionSupuesta; ///< minutes of a slot on that weekday

    /// Has hours by the template, or appointments: there is something to show.
    [[nodiscard]] bool tieneAlgo() const { return !dia.filas.empty(); }
    [[nodiscard]] int libres() const;
    /// What stands below the name: "12 turnos · 5 libres", "No se atiende", "Sin horario".
    [[nodiscard]] QString resumen() const;
};

/// One date, all professionals.
struct TodasAgendas {
    QDate fecha;
    std::vector<AgendaDelDia> agendas; ///< in the order of the list of professionals
};

/// Loads the day of every professional with a fixed number of statements, however many there are. Appointments of
/// somebody who is no professional (any more) come last, so that none is out of sight. `hoy` as for cargarDia().
[[nodiscard]] TodasAgendas cargarTodas(db::Connection &conexion, QDate fecha, QDate hoy);

} // namespace agenda
