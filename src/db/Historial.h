#pragma once

#include <QString>

namespace db {

class Entorno;

/// Writes one entry of the activity log: now to the minute, this computer, the current user, the window and the trimmed
/// action. Quotes in the texts are stored as typed.
void registrarHistorial(Entorno &entorno, const QString &ventana, const QString &accion);

} // namespace db
