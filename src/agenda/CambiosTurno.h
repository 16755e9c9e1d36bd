#pragma once

#include "base/Rechazo.h"

#include <QDateTime>
#include <QString>
#include <QVector>

#include <optional>

namespace db {
class Entorno;
}

namespace agenda {

// Every change of an appointment checks the right of the person working, re-reads the row by its `id` and refuses when
// another station deleted it. Whose mark `aplicaraturnos` is set has the right to change and delete for days from today
// on only, and so moves nothing to a day that is over either. Nothing is written on a refusal.

/// Marks as arrived or absent. An attended one cannot become absent. With payments in the cash register the person is
/// asked whether the movement of this appointment goes too.
[[nodiscard]] base::Control marcarLlegado(db::Entorno &entorno, qint64 id, bool llego);
/// Marks as attended or not; only who arrived can be attended.
[[nodiscard]] base::Control marcarAtendido(db::Entorno &entorno, qint64 id, bool atendido);
[[nodiscard]] base::Control cambiarObservaciones(db::Entorno &entorno, qint64 id, const QString &texto);
/// `motivo` is an `id` of [Lista Motivos Consulta], 0 for none.
[[nodiscard]] base::Control cambiarMotivo(db::Entorno &entorno, qint64 id, int motivo);
/// Gives the appointment another day and hour with the same professional: a day on which he attends, within the
/// overbooking limits. Onto its own moment it changes nothing.
[[nodiscard]] base::Control mover(db::Entorno &entorno, qint64 id, const QDateTime &momento);

/// What changes of an appointment; what is absent stays as another station may have left it meanwhile.
struct CambioTurno {
    std::optional<QDateTime> fecha = {}; ///< another day and hour
    std::optional<int> motivo = {};
    std::optional<QString> observacionestur = {};
};
/// All of it or none. A new day must be a working day and lie within the overbooking limits; a reason may not be taken
/// away where one is required. Fields: `fechadia`, `listahoras`, `motivo`.
[[nodiscard]] base::Control modificar(db::Entorno &entorno, qint64 id, const CambioTurno &cambio);

/// Deletes appointments or blocked slots after asking, all of them or, when one is gone already, none. An empty result
/// without refusal: the person said no. Yields how many were deleted.
[[nodiscard]] base::Resultado<int> liberar(db::Entorno &entorno, const QVector<qint64> &ids);
/// Blocks start times that are free; refused when one of them got an appointment meanwhile.
[[nodiscard]] base::Control bloquear(db::Entorno &entorno, int doctor, const QVector<QDateTime> &libres);

} // namespace agenda
