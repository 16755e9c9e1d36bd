#include "db/odbc/Catalog.h"

namespace db::odbc {

namespace {

struct Named {
    const char *name;
    Type type;
};

constexpr Named types[] = {
    {"bit", Type::Flag},
    {"boolean", Type::Flag},
    {"tinyint", Type::Integer},
    {"smallint", Type::Integer},
    {"int", Type::Long},
    {"integer", Type::Long},
    {"bigint", Type::Long},
    {"real", Type::Single},
    {"float", Type::Double},
    {"double precision", Type::Double},
    {"decimal", Type::Double},
    {"numeric", Type::Double},
    {"money", Type::Double},
    {"smallmoney", Type::Double},
    {"date", Type::DateTime},
    {"datetime", Type::DateTime},
    {"datetime2", Type::DateTime},
    {"smalldatetime", Type::DateTime},
    {"timestamp without time zone", Type::DateTime},
    {"binary", Type::Binary},
    {"varbinary", Type::Binary},
    {"image", Type::Binary},
    {"timestamp", Type::Binary},
    {"bytea", Type::Binary},
};

/// "((-1))", "(N'x')", "'x'::character varying": the value; none for an expression.
std::optional<QVariant> initialOf(QString text, Type type)
{
    while (text.startsWith(u'(') && text.endsWith(u')'))
        text = text.mid(1, text.size() - 2);
    if (text.startsWith(QLatin1String("N'")))
        text.remove(0, 1);
    if (text.startsWith(u'\'')) {
        const qsizetype end = text.lastIndexOf(u'\'');
        if (end == 0)
            return {};
        return text.mid(1, end - 1).replace(QLatin1String("''"), QLatin1String("'"));
    }
    bool number = false;
    const double value = text.toDouble(&number);
    if (!number)
        return {};
    if (type == Type::Flag)
        return value != 0;
    return type == Type::Single || type == Type::Double ? QVariant(value) : QVariant(int(value));
}

} // namespace

QVector<Column> columnsOf(const ResultSet &rows)
{
    QVector<Column> columns;
    for (int r = 0; r < rows.rowCount(); ++r) {
        Column column;
        column.name = rows.text(r, 0);
        const QString name = rows.text(r, 1).toLower();
        const auto *known = std::find_if(
            std::begin(types), std::end(types), [&name](const Named &t) { return name == QLatin1String(t.name); });
        if (known != std::end(types)) {
            column.type = known->type;
        } else {
            const qint64 size = rows.integer(r, 2);
            const bool isLong = size <= 0 || size > 4000;
            column.type = isLong ? Type::Memo : Type::Text;
            column.size = isLong ? 0 : int(size);
            if (name == u"uniqueidentifier") {
                column.type = Type::Text;
                column.size = 36;
            }
        }
        if (rows.integer(r, 4) == 1)
            column.type = Type::Counter;
        else if (!rows.isNull(r, 3))
            column.initial = initialOf(rows.text(r, 3), column.type);
        columns << column;
    }
    return columns;
}

} // namespace db::odbc
