#pragma once

#include "db/Connection.h"

#include <QVariantMap>

namespace db {

/// The practice-wide settings: columns of the last row of `Config`. Read afresh at each call; a Null, missing column or
/// missing row gives the default.
class Config
{
public:
    explicit Config(Connection &connection)
        : m_connection(connection)
    {
    }

    [[nodiscard]] QString texto(QStringView column, const QString &otherwise = {}) const;
    [[nodiscard]] int numero(QStringView column, int otherwise = 0) const;
    [[nodiscard]] bool bandera(QStringView column, bool otherwise = false) const;
    /// Writes one column of the last row; adds the row when the table is empty.
    void guardar(QStringView column, const QVariant &value);
    /// Writes several columns of it at once; those not named keep what they hold by then.
    void guardar(const QVariantMap &values);

private:
    Connection &m_connection;
};

} // namespace db
