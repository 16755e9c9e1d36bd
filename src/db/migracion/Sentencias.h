#pragma once

#include "db/migracion/Plano.h"

/// What the server is told while a database moves there. The base and its tables are made bare and filled; defaults,
/// keys and indexes follow.
namespace db::migracion {

/// Dates that the server cannot hold, in the columns that every practice has them in: one statement each for the Access
/// database, "UPDATE [Pacientes] SET FeNac = #31/12/8888# WHERE FeNac < #01/01/1753#".
struct FechaLimitada {
    QString tabla;
    QString columna;
    [[nodiscard]] QString sentencia() const;
};
[[nodiscard]] const QVector<FechaLimitada> &fechasLimitadas();

/// "CREATE TABLE [Pacientes] ([id] int IDENTITY(1,1), ...)".
[[nodiscard]] QString crearTabla(const TablaPlano &plano);
/// "INSERT INTO [Pacientes] ([id],[NroHC],...) VALUES (?,?,...)".
[[nodiscard]] QString insertar(const TablaPlano &plano);

/// "ALTER TABLE [Caja] ADD CONSTRAINT a7_modopago DEFAULT 0 FOR modopago", one per column with a default; `numero`
/// counts on, so that no two names of the base are equal.
[[nodiscard]] QStringList valoresIniciales(const Table &tabla, int &numero);

/// Keys and indexes, in the order in which they are made.
struct Clave {
    QString sentencia;
    /// What to try when the rows do not allow the first one (two equal where the file did not mind); empty: nothing.
    QString alternativa = {};
};
[[nodiscard]] QVector<Clave> claves(const TablaPlano &plano);

} // namespace db::migracion
