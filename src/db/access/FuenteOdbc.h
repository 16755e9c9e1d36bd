#pragma once

#include "db/access/Fuente.h"

namespace db::access {

/// An old database read through an ODBC driver, as Access's own on Windows. The driver works on the file in this very
/// process, damage and all: made for the reading process of lector/, not for the program.
class FuenteOdbc final : public Fuente
{
public:
    /// `conexion` is the text for the driver, which may hold a password: no error repeats any of it.
    explicit FuenteOdbc(const QString &conexion);

    /// Every driver tells what its columns are; the autonumber's last value none does, it stays 0.
    bool leer(Receptor &receptor, const QString &solo = {}) override;

private:
    QString m_conexion;
};

} // namespace db::access
