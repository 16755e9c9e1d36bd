#include "db/Config.h"

#include "db/Recordset.h"

namespace db {

namespace {

/// Null when the column or the row is missing: the reader's default then holds.
QVariant lastValue(Connection &connection, QStringView column)
{
    const Rows rows = connection.query(QStringLiteral("SELECT * FROM [Config]"));
    const int i = rows->column(column);
    return rows->rowCount() == 0 || i < 0 ? QVariant() : rows->value(rows->rowCount() - 1, i);
}

} // namespace

QString Config::texto(QStringView column, const QString &otherwise) const
{
    const QVariant value = lastValue(m_connection, column);
    return value.isNull() ? otherwise : value.toString();
}

int Config::numero(QStringView column, int otherwise) const
{
    const QVariant value = lastValue(m_connection, column);
    if (value.isNull())
        return otherwise;
    if (value.typeId() == QMetaType::Bool)
        return value.toBool() ? -1 : 0;
    bool numeric = false;
    const double number = value.toString().trimmed().replace(u',', u'.').toDouble(&numeric);
    return numeric ? int(number) : otherwise;
}

bool Config::bandera(QStringView column, bool otherwise) const
{
    const QVariant value = lastValue(m_connection, column);
    if (value.isNull())
        return otherwise;
    return value.typeId() == QMetaType::Bool ? value.toBool() : value.toString().trimmed().toDouble() != 0;
}

void Config::guardar(QStringView column, const QVariant &value) { guardar({{column.toString(), value}}); }

void Config::guardar(const QVariantMap &values)
{
    Recordset config(m_connection, QStringLiteral("SELECT * FROM [Config]"));
    if (config.isEmpty())
        config.addNew();
    else
        config.moveLast();
    for (auto it = values.begin(); it != values.end(); ++it)
        config.set(it.key(), it.value());
    config.update();
}

} // namespace db
