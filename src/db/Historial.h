#pragma once

#include <QDate>
#include <QString>

#include <functional>

namespace db {

class Entorno;

/// Writes one entry of the activity log: now to the minute, this computer, the current user, the window and the trimmed
/// action. Quotes and line breaks in the texts are stored as typed; what is longer than its column is cut. The row and
/// its link in the log's chain (see CadenaHistorial) are one transaction. Within a transaction of the caller's it
/// should come last: on a server other stations wait with their entries until that ends.
void registrarHistorial(Entorno &entorno, const QString &ventana, const QString &accion);

/// Removes the entries up to the end of that day, and none of a later one; yields how many there were. The removal
/// stands in the log itself ("Configuración del Sistema"), and its link holds how many were removed, of which days, and
/// the sum of what they were, so that a backup can be compared with it; when what was removed did not agree with the
/// chain, the entry says so. One transaction. `avance` hears from 0 to 100 while it is read; nothing may be done with
/// the database meanwhile. Throws Error::Kind::ReadOnly.
int eliminarHistorial(Entorno &entorno, QDate hasta, const std::function<void(int porciento)> &avance = {});

} // namespace db
