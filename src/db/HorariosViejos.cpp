#include "db/HorariosViejos.h"

#include <QDate>

namespace db::horariosviejos {

namespace {

// The spelling in the table; empty when it is not there.
QString spelled(const QStringList &present, const QString &name)
{
    for (const QString &candidate : present)
        if (candidate.compare(name, Qt::CaseInsensitive) == 0)
            return candidate;
    return {};
}

} // namespace

const QStringList &columnas()
{
    static const QStringList names = [] {
        QStringList list;
        for (const char *day : {"Do", "Lu", "Ma", "Mi", "Ju", "Vi", "Sa"})
            for (const char *half : {"MaDesde", "MaHasta", "TaDesde", "TaHasta"})
                list << QLatin1String(day) + QLatin1String(half);
        return list;
    }();
    return names;
}

QStringList presentes(const QStringList &present)
{
    QStringList found;
    for (const QString &name : columnas())
        if (const QString column = spelled(present, name); !column.isEmpty())
            found << column;
    return found;
}

QString sentenciaMover(const Dialect &dialect, const QStringList &present, bool tableIsNew)
{
    QStringList into{QStringLiteral("iddoctor"), QStringLiteral("fechadesde"), QStringLiteral("fechahasta")};
    QStringList values{QStringLiteral("id"), dialect.date(QDate(1900, 1, 1)), dialect.date(QDate(2100, 12, 31))};

    for (int day = 1; day <= 7; ++day) {
        // Sunday's length had no number.
        const QString old = spelled(present, day == 1 ? QStringLiteral("durtur") : QStringLiteral("durtur%1").arg(day));
        into << QStringLiteral("durtur%1").arg(day);
        values
            << (old.isEmpty() ? QStringLiteral("20")
                              : dialect.iif(old + QLatin1String(" > 0"), old, QStringLiteral("20")));
    }
    const QString limit = spelled(present, QStringLiteral("cantidadsobreturnos"));
    into << QStringLiteral("cantidadsobreturnos");
    values << (limit.isEmpty() ? QStringLiteral("-1") : dialect.ifNull(limit, QStringLiteral("-1")));

    QStringList wanted;
    for (const QString &hour : presentes(present)) {
        into << hour;
        values << hour;
        wanted << hour + QLatin1String(" IS NOT NULL");
    }
    if (tableIsNew) {
        // A secretary gets a template only when there are hours to keep.
        const QString kind = spelled(present, QStringLiteral("tipo"));
        if (kind.isEmpty())
            wanted.clear();
        else
            wanted << kind + QLatin1String(" = 0") << kind + QLatin1String(" IS NULL");
    }

    QString sql
        = QStringLiteral("INSERT INTO [Agenda Turnos Horarios] (%1) SELECT %2 FROM [Lista Doctores] "
                         "WHERE id NOT IN (SELECT iddoctor FROM [Agenda Turnos Horarios] WHERE iddoctor IS NOT NULL)")
              .arg(into.join(u','), values.join(u','));
    if (!wanted.isEmpty())
        sql += QStringLiteral(" AND (%1)").arg(wanted.join(QLatin1String(" OR ")));
    return sql;
}

QString sentenciaQuitar(const QString &column)
{
    return QStringLiteral("ALTER TABLE [Lista Doctores] DROP COLUMN ") + column;
}

} // namespace db::horariosviejos
