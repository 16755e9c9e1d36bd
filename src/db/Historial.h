#pragma once

#include <QDate>
#include <QString>

namespace db {

class Entorno;

/// Writes one entry of the activity log: now to the minute, this computer, the current user, the window and the trimmed
/// action. Quotes in the texts are stored as typed.
void registrarHistorial(Entorno &entorno, const QString &ventana, const QString &accion);

/// Deletes the entries up to the end of that day and logs that it was done; yields how many they were. Asks nothing and
/// checks no right: its caller does.
int eliminarHistorial(Entorno &entorno, QDate hasta);

} // namespace db
