#pragma once

#include "db/access/Fuente.h"

namespace db::access {

/// Has a copy of the file read, in a folder that only this person may look into and that goes with the reading: for
/// those drivers that write to what they read, or leave a file of theirs beside it.
class FuenteSobreCopia final : public Fuente
{
public:
    FuenteSobreCopia(const QString &archivo, AbrirFuente abrir);
    /// Also throws db::Error (CannotOpen) when the copy cannot be made.
    bool leer(Receptor &receptor, const QString &solo = {}) override;

private:
    QString m_archivo;
    AbrirFuente m_abrir;
};

} // namespace db::access
