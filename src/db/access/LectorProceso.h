#pragma once

#include "db/access/Fuente.h"

namespace db::access {

/// Reads through the program "vastelo-access", whose death is only a failed reading. Every frame of it is checked, and
/// one that stays silent too long is ended.
class LectorProceso final : public Fuente
{
public:
    LectorProceso(const QString &archivo, const QString &lector, int segundosDeEspera = 60);
    bool leer(Receptor &receptor, const QString &solo = {}) override;

    /// Beside the program; empty when it is not there.
    [[nodiscard]] static QString rutaDelLector();

private:
    QString m_archivo;
    QString m_lector;
    int m_segundosDeEspera;
};

} // namespace db::access
