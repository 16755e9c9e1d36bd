#include "agenda/Sobreturnos.h"

#include "agenda/GrillaDia.h"
#include "agenda/Textos.h"
#include "db/Connection.h"

namespace agenda {

namespace {

/// Appointments at exactly that moment, without the one being moved.
int turnosEn(db::Connection &conexion, int doctor, const QDateTime &momento, qint64 idMovido)
{
    const db::Rows filas = conexion.query(
        QStringLiteral("SELECT id FROM [Agenda Turnos] WHERE (Fecha = ") + conexion.dialect().dateTime(momento)
            + QStringLiteral(") And NroHC <> ? And Doctor = ?"),
        {nroBloqueado, doctor});
    int cuenta = 0;
    for (int i = 0; i < filas->rowCount(); ++i)
        cuenta += filas->integer(i, 0) != idMovido;
    return cuenta;
}

/// Distinct times of the day's appointments that are no slot times.
int horasExtra(db::Connection &conexion, int doctor, QDate fecha, const GrillaDia &grilla)
{
    const db::Dialect &d = conexion.dialect();
    const db::Rows filas = conexion.query(
        QStringLiteral("SELECT Fecha FROM [Agenda Turnos] WHERE (Fecha between ") + d.dayStart(fecha)
            + QStringLiteral(" and ") + d.dayEnd(fecha)
            + QStringLiteral(") And NroHC <> ? And Doctor = ? GROUP BY Fecha"),
        {nroBloqueado, doctor});
    int cuenta = 0;
    for (int i = 0; i < filas->rowCount(); ++i)
        cuenta += !grilla.contiene(filas->dateTime(i, 0).time());
    return cuenta;
}

/// Whether the appointment being moved is itself one of the day's extra hours.
bool esHoraExtra(db::Connection &conexion, int doctor, QDate fecha, const GrillaDia &grilla, qint64 id)
{
    if (id == 0)
        return false;
    const db::Rows filas = conexion.query(
        QStringLiteral("SELECT Fecha FROM [Agenda Turnos] WHERE id = ? And NroHC <> ? And Doctor = ?"),
        {id, nroBloqueado, doctor});
    return filas->rowCount() > 0 && filas->dateTime(0, 0).date() == fecha
        && !grilla.contiene(filas->dateTime(0, 0).time());
}

} // namespace

Permiso controlarSobreturno(db::Connection &conexion, int doctor, const QDateTime &momento, qint64 idMovido)
{
    const QDate fecha = momento.date();
    const auto plantilla = elegirPlantilla(conexion, doctor, fecha);
    const AjustesSobreturno limites = plantilla ? plantilla->sobreturnos : AjustesSobreturno{};
    if (limites.cantidadsobreturnos == -1 && limites.cantidadsobreturnoshora == -1)
        return Permiso::Permitido;

    const GrillaDia grilla = grillaDe(plantilla, fecha);
    if (grilla.contiene(momento.time())) {
        const int existentes = turnosEn(conexion, doctor, momento, idMovido);
        if (existentes == 0)
            return Permiso::Permitido;
        // One of those already there is the regular appointment: with the new one there would be as many extra ones as
        // there are appointments now.
        if (limites.cantidadsobreturnoshora >= 0 && existentes > limites.cantidadsobreturnoshora)
            return Permiso::LimiteHora;
    }

    if (limites.cantidadsobreturnos < 0)
        return Permiso::Permitido;
    if (limites.cantidadsobreturnos == 0)
        return Permiso::LimiteDia;
    const int ocupadas
        = horasExtra(conexion, doctor, fecha, grilla) - int(esHoraExtra(conexion, doctor, fecha, grilla, idMovido));
    return ocupadas < limites.cantidadsobreturnos ? Permiso::Permitido : Permiso::LimiteDia;
}

} // namespace agenda
