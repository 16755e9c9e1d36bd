#pragma once

#include <QString>
#include <QStringList>

namespace db {
class Connection;
}

namespace agenda {

/// What the book tells of an appointment below the grid: lines "Paciente: ...      Nº ID: ..." (by the identifier of
/// the practice), "Cobertura Médica: ...",
/// "Nº Afiliado: ...", "Ultima Consulta: ...", "Turno dado el día: ... por el usuario: ..."; the last one only when it
/// is known who gave it. Empty for a blocked slot or a row that is gone.
[[nodiscard]] QStringList detalleTurno(db::Connection &conexion, qint64 id);

} // namespace agenda
