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

/// The right without which no appointment is changed.
inline constexpr QStringView derechoCambios = u"accesomodificarturno";

// Every change of an appointment checks the right of the person working, re-reads the row by its `id` and refuses when
// another station deleted it. Whose mark `aplicaraturnos` is set has the right to change and delete for days from today
// on only, and so moves nothing to a day that is over either. Nothing is written on a refusal.

/// Marks as arrived or absent. An attended one cannot become absent. With payments in the cash register the person is
/// asked whether the movement of this appointment goes too.
[[nodiscard]] base::Control marcarLlegado(db::Entorno &entorno, qint64 id, bool llego);
/// Marks as attended or not; only who arrived can be attended.
[[nodiscard]] base::Control marcarAtendido(db::Entorno &entorno, qint64 id, bool atendido);

/// What changes of an appointment; what is absent stays as another station may have left it meanwhile.
struct CambioTurno {
    std::optional<QDateTime> fecha = {}; ///< another day and hour, with the same professional
    std::optional<int> motivo = {}; ///< `id` of [Lista Motivos Consulta], 0 for none
    std::optional<QString> observacionestur = {};
};
/// All of it or none. Another moment must be on a working day and within the overbooking limits; a reason may not be
/// taken away where one is required. Fields: `fechadia`, `listahoras`, `motivo`.
[[nodiscard]] base::Control modificar(db::Entorno &entorno, qint64 id, const CambioTurno &cambio);

/// Deletes appointments or blocked slots after asking, all of them or, when one is gone already, none. An empty result
/// without refusal: the person said no. Yields how many were deleted.
[[nodiscard]] base::Resultado<int> liberar(db::Entorno &entorno, const QVector<qint64> &ids);
/// Blocks start times that are free; refused when one of them got an appointment meanwhile.
[[nodiscard]] base::Control bloquear(db::Entorno &entorno, int doctor, const QVector<QDateTime> &libres);

} // namespace agenda
