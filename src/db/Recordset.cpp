#include "db/Recordset.h"

#include "db/Error.h"

#include <limits>

namespace db {

namespace {

QVariant fitted(const Column &column, const QVariant &value)
{
    if (!value.isValid() || (value.isNull() && value.typeId() != QMetaType::QString))
        return {};
    const auto number = [&](qint64 lowest, qint64 highest) -> QVariant {
        bool fine = false;
        const qint64 n = value.typeId() == QMetaType::Double ? qRound64(value.toDouble()) : value.toLongLong(&fine);
        if ((!fine && value.typeId() != QMetaType::Double) || n < lowest || n > highest)
            throw Error(Error::Kind::General, 0, QStringLiteral("El número está fuera de los límites del campo."));
        return n;
    };
    switch (column.type) {
    case Type::Flag: return value.toBool() || value.toDouble() != 0 ? -1 : 0;
    case Type::Integer: return number(std::numeric_limits<qint16>::min(), std::numeric_limits<qint16>::max());
    case Type::Counter:
    case Type::Long: return number(std::numeric_limits<qint32>::min(), std::numeric_limits<qint32>::max());
    case Type::Single: return double(float(value.toDouble()));
    case Type::Double: return value.toDouble();
    case Type::DateTime:
        if (value.typeId() == QMetaType::QDate || value.typeId() == QMetaType::QTime
            || value.typeId() == QMetaType::QDateTime)
            return value;
        throw Error(Error::Kind::General, 0, QStringLiteral("El valor no es una fecha."));
    case Type::Text:
        if (value.toString().size() > column.size)
            throw Error(
                Error::Kind::General,
                0,
                QStringLiteral("Un texto es demasiado largo: admite hasta %1 caracteres.").arg(column.size));
        return value.toString();
    case Type::Memo: return value.toString();
    case Type::Binary: return value.toByteArray();
    }
    return value;
}

} // namespace

Recordset::Recordset(Connection &connection, const QString &sql, const Params &params)
    : m_connection(connection)
    , m_table(connection.singleTable(sql))
    , m_rows(connection.query(sql, params))
{
}

int Recordset::columnOf(QStringView column) const
{
    const int i = m_rows->column(column);
    if (i < 0)
        throw Error(Error::Kind::NoSuchColumn, 0, QStringLiteral("Columna desconocida: %1.").arg(column));
    return i;
}

bool Recordset::isNull(QStringView column) const { return m_rows->isNull(m_row, columnOf(column)); }

QString Recordset::text(QStringView column) const { return m_rows->text(m_row, columnOf(column)); }

qint64 Recordset::integer(QStringView column) const { return m_rows->integer(m_row, columnOf(column)); }

double Recordset::real(QStringView column) const { return m_rows->real(m_row, columnOf(column)); }

bool Recordset::flag(QStringView column) const { return m_rows->flag(m_row, columnOf(column)); }

QDateTime Recordset::dateTime(QStringView column) const { return m_rows->dateTime(m_row, columnOf(column)); }

QVariant Recordset::value(QStringView column) const { return m_rows->value(m_row, columnOf(column)); }

void Recordset::checkUpdatable() const
{
    if (m_table.isEmpty())
        throw Error(Error::Kind::General, 0, QStringLiteral("El resultado no se puede modificar: no es de una tabla."));
}

void Recordset::addNew()
{
    checkUpdatable();
    m_adding = true;
    m_pending.clear();
}

void Recordset::set(QStringView column, const QVariant &value)
{
    checkUpdatable();
    if (m_declared.isEmpty())
        m_declared = m_connection.columns(m_table);
    for (int i = 0; i < m_declared.size(); ++i) {
        if (column.compare(m_declared[i].name, Qt::CaseInsensitive) != 0)
            continue;
        std::erase_if(m_pending, [i](const auto &pending) { return pending.first == i; });
        m_pending.emplace_back(i, fitted(m_declared[i], value));
        return;
    }
    throw Error(Error::Kind::NoSuchColumn, 0, QStringLiteral("Columna desconocida: %1.").arg(column));
}

qint64 Recordset::update()
{
    checkUpdatable();
    const QString table = m_connection.dialect().identifier(m_table);
    const auto name = [this](int i) { return m_connection.dialect().identifier(m_declared[i].name); };
    Params params;

    if (m_adding) {
        QStringList names, marks;
        for (const auto &[i, value] : m_pending) {
            names << name(i);
            marks << QStringLiteral("?");
            params << value;
        }
        if (names.isEmpty())
            throw Error(Error::Kind::General, 0, QStringLiteral("El registro nuevo no tiene datos."));
        m_connection.execute(
            QStringLiteral("INSERT INTO %1 (%2) VALUES (%3)").arg(table, names.join(u','), marks.join(u',')), params);
        m_adding = false;
        m_pending.clear();
        for (const Column &column : std::as_const(m_declared))
            if (column.type == Type::Counter)
                return m_connection.insertedId();
        return 0;
    }

    if (m_row < 0 || m_row >= m_rows->rowCount())
        throw Error(Error::Kind::General, 0, QStringLiteral("No hay un registro actual."));
    const int idColumn = m_rows->column(u"id");
    const qint64 id = idColumn >= 0 ? m_rows->integer(m_row, idColumn) : 0;
    if (m_pending.empty())
        return id;

    QStringList sets;
    for (const auto &[i, value] : m_pending) {
        sets << name(i) + QStringLiteral(" = ?");
        params << value;
    }
    QStringList conditions;
    if (idColumn >= 0) {
        conditions << QStringLiteral("id = ?");
        params << id;
    } else {
        // Long texts and inexact numbers are left out: the server compares the one not at all, the other never equal.
        for (int c = 0; c < m_rows->columnCount(); ++c) {
            const Type type = m_rows->fields()[size_t(c)].type;
            if (type == Type::Memo || type == Type::Binary || type == Type::Single || type == Type::Double)
                continue;
            const QString column = m_connection.dialect().identifier(m_rows->fields()[size_t(c)].name);
            if (m_rows->isNull(m_row, c)) {
                conditions << column + QStringLiteral(" IS NULL");
            } else if (type == Type::Flag) {
                // True is -1 in one back end and 1 in the other.
                conditions << column + (m_rows->flag(m_row, c) ? QStringLiteral(" <> 0") : QStringLiteral(" = 0"));
            } else {
                conditions << column + QStringLiteral(" = ?");
                params << m_rows->value(m_row, c);
            }
        }
    }
    const QString where
        = conditions.isEmpty() ? QString() : QStringLiteral(" WHERE ") + conditions.join(QStringLiteral(" and "));
    const int changed = m_connection.execute(
        QStringLiteral("UPDATE %1 SET %2%3").arg(table, sets.join(QStringLiteral(", ")), where), params);
    if (changed == 0)
        throw Error(
            Error::Kind::RowGone,
            0,
            QStringLiteral("Este Registro ya No existe, debe haber sido eliminado por otro usuario."));
    m_pending.clear();
    return id;
}

void Recordset::cancelUpdate()
{
    m_adding = false;
    m_pending.clear();
}

} // namespace db
