#pragma once

#include "db/access/Fuente.h"

namespace db::access {

/// Reads through a program beside this one, whose death is only a failed reading: "vastelo-access", which walks the
/// file's pages, or "vastelo-access-odbc" on Windows, which asks Access's own driver. Every frame of it is checked, and
/// one that stays silent too long is ended.
class LectorProceso final : public Fuente
{
public:
    LectorProceso(const QString &archivo, const QString &lector, int segundosDeEspera = 60);
    bool leer(Receptor &receptor, const QString &solo = {}) override;

    /// This system's reader; empty when it is not there.
    [[nodiscard]] static QString rutaDelLector();

private:
    QString m_archivo;
    QString m_lector;
    int m_segundosDeEspera;
};

/// The file read in the way that this system has.
[[nodiscard]] std::unique_ptr<Fuente> fuenteDelSistema(const QString &archivo);

} // namespace db::access
