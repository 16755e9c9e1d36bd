#include "agenda/TurnosPaciente.h"

#include "agenda/GrillaDia.h"
#include "agenda/Textos.h"
#include "base/Fechas.h"
#include "db/Connection.h"

#include <QLocale>

#include <algorithm>

namespace agenda {

QStringList TurnoPaciente::textos() const
{
    const auto siNo = [](bool si) { return si ? QStringLiteral("SI") : QStringLiteral("NO"); };
    return {
        base::fechaTexto(momento.date()),
        QLocale().toString(momento.date(), QStringLiteral("dddd")),
        horaTexto(momento.time()),
        profesional,
        motivo,
        siNo(llegado),
        siNo(atendido),
        observaciones};
}

std::vector<TurnoPaciente> turnosDePaciente(db::Connection &conexion, int nrohc, QDate hoy)
{
    const db::Rows filas = conexion.query(
        QStringLiteral(
            "SELECT id,Fecha,Doctor,"
            "(SELECT NomDoc FROM [Lista Doctores] WHERE [Lista Doctores].id = [Agenda Turnos].Doctor) AS profesional,"
            "(SELECT Motivo FROM [Lista Motivos Consulta] WHERE [Lista Motivos Consulta].id = [Agenda Turnos].motivo)"
            " AS moticonsul,llegado,Atendido,observacionestur FROM [Agenda Turnos] WHERE NroHC = ? ORDER BY Fecha,id"),
        {nrohc});
    std::vector<TurnoPaciente> turnos;
    turnos.reserve(size_t(filas->rowCount()));
    for (int i = 0; i < filas->rowCount(); ++i) {
        TurnoPaciente &turno = turnos.emplace_back();
        turno.id = filas->integer(i, 0);
        turno.momento = filas->dateTime(i, 1);
        turno.doctor = int(filas->integer(i, 2));
        turno.profesional = filas->isNull(i, 3) ? textoSinProfesional : filas->text(i, 3);
        turno.motivo = filas->text(i, 4);
        turno.llegado = filas->flag(i, 5);
        turno.atendido = filas->flag(i, 6);
        turno.observaciones = filas->text(i, 7);
    }
    // As read they are from the oldest on: the past ones go behind the others, turned round.
    const auto futuros = std::find_if(
        turnos.begin(), turnos.end(), [hoy](const TurnoPaciente &turno) { return turno.momento.date() >= hoy; });
    std::reverse(turnos.begin(), futuros);
    std::rotate(turnos.begin(), futuros, turnos.end());
    return turnos;
}

} // namespace agenda
