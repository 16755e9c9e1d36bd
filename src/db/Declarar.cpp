#include "db/Declarar.h"

namespace db::declarar {

namespace {
template <typename Builder>
Columnas each(const QString &names, Builder builder)
{
    Columnas columns;
    for (const QString &name : names.split(u' ', Qt::SkipEmptyParts))
        columns.append(builder(name));
    return columns;
}
} // namespace

Columnas contador() { return {columna::contador()}; }
Columnas textos(int size, const QString &names)
{
    return each(names, [size](const QString &name) { return columna::texto(name, size); });
}
Columnas memos(const QString &names) { return each(names, columna::memo); }
Columnas enteros(const QString &names) { return each(names, columna::entero); }
Columnas largos(const QString &names) { return each(names, columna::largo); }
Columnas simples(const QString &names) { return each(names, columna::simple); }
Columnas dobles(const QString &names) { return each(names, columna::doble); }
Columnas banderas(const QString &names) { return each(names, columna::bandera); }
Columnas fechas(const QString &names) { return each(names, columna::fecha); }
Columnas binarios(const QString &names) { return each(names, columna::binario); }

Columnas con(const QVariant &initial, Columnas columns)
{
    for (Column &column : columns)
        column.initial = initial;
    return columns;
}

QString serie(const QString &stem, int from, int to, int digits)
{
    QStringList names;
    for (int i = from; i <= to; ++i)
        names.append(stem + QStringLiteral("%1").arg(i, digits, 10, QLatin1Char('0')));
    return names.join(u' ');
}

Index indice(const QString &columns) { return {columns.split(u' ', Qt::SkipEmptyParts), false}; }
Index unico(const QString &columns) { return {columns.split(u' ', Qt::SkipEmptyParts), true}; }
Index listado(const QString &columns) { return {columns.split(u' ', Qt::SkipEmptyParts), false, true}; }

Table tabla(const QString &name, const Columnas &columns, const QVector<Index> &indexes)
{
    Table table;
    table.name = name;
    table.columns = columns;
    table.indexes = indexes;
    return table;
}

Table lista(const QString &name, int size)
{
    return tabla(name, contador() + textos(size, "nombre") + con(0, largos("prioridad")));
}

Table registros(const QString &name, const Columnas &columns, const QVector<Index> &indexes)
{
    return tabla(name, contador() + largos("NroPaci") + columns, QVector<Index>{indice("NroPaci")} + indexes);
}

} // namespace db::declarar
