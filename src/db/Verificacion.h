#pragma once

#include <QString>

namespace base {
class Mensajes;
}

namespace db {

class Connection;
class Error;

/// The probe of every database check: the diagnosis catalogue holds exactly one row with `id` 2. In server mode the
/// count is not tested. A file without that table or row is "incompatible"; any other failure is told as damage, with
/// its number and description. The person has been told when false comes back.
[[nodiscard]] bool verificarCatalogo(Connection &connection, base::Mensajes &mensajes);

/// The messages of the check, for failures found before there is a connection to probe.
void avisarBaseAusente(base::Mensajes &mensajes);
void avisarBaseIncompatible(base::Mensajes &mensajes);
void avisarBaseDaniada(base::Mensajes &mensajes, const Error &error);

} // namespace db
