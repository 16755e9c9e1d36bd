#pragma once

#include "base/Rechazo.h"

#include <QByteArray>

namespace db {
class Entorno;
}

namespace agenda {

/// Writes a file with appointments, whole or not at all, and the entry `accion` of the activity log (window "Agenda de
/// Turnos"): no file without its entry. Refused without the right to the agendas, and when the file cannot be written;
/// one that stood there stays as it was. Throws db::Error.
[[nodiscard]] base::Control
exportarArchivo(db::Entorno &entorno, const QString &archivo, const QByteArray &bytes, const QString &accion);

/// "1 turno", "12 turnos".
[[nodiscard]] QString cantidadTurnos(int cantidad);

} // namespace agenda
