#include "db/Schema.h"

namespace db {

Column Column::def(const QVariant &value) const
{
    Column c = *this;
    c.initial = value;
    return c;
}

Column Column::existentes(const QVariant &value) const
{
    Column c = *this;
    c.existing = value;
    return c;
}

const Column *Table::column(QStringView columnName) const
{
    for (const Column &c : columns)
        if (columnName.compare(c.name, Qt::CaseInsensitive) == 0)
            return &c;
    return nullptr;
}

const Table *Schema::table(QStringView name) const
{
    for (const Table &t : tables)
        if (name.compare(t.name, Qt::CaseInsensitive) == 0)
            return &t;
    return nullptr;
}

Schema &Schema::operator+=(const Schema &other)
{
    for (const Table &t : other.tables) {
        Q_ASSERT_X(!table(t.name), "Schema", "a table has one owner");
        tables.append(t);
    }
    return *this;
}

namespace columna {

namespace {
Column columnOf(const QString &name, Type type, int size = 0)
{
    Column c;
    c.name = name;
    c.type = type;
    c.size = size;
    return c;
}
} // namespace

Column contador(const QString &name) { return columnOf(name, Type::Counter); }
Column texto(const QString &name, int size) { return columnOf(name, Type::Text, size); }
Column memo(const QString &name) { return columnOf(name, Type::Memo); }
Column entero(const QString &name) { return columnOf(name, Type::Integer); }
Column largo(const QString &name) { return columnOf(name, Type::Long); }
Column simple(const QString &name) { return columnOf(name, Type::Single); }
Column doble(const QString &name) { return columnOf(name, Type::Double); }
Column bandera(const QString &name) { return columnOf(name, Type::Flag).def(0); }
Column fecha(const QString &name) { return columnOf(name, Type::DateTime); }
Column binario(const QString &name) { return columnOf(name, Type::Binary); }

} // namespace columna

} // namespace db
