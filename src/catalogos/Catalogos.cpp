#include "catalogos/Catalogos.h"

#include "catalogos/Csv.h"
#include "db/Connection.h"

namespace catalogos {

namespace {

/// Inserts row after row through one prepared statement.
class Insercion
{
public:
    Insercion(db::Connection &connection, const QString &table, const QStringList &columns)
        : m_connection(connection)
    {
        QStringList names, marks;
        for (const QString &column : columns) {
            names << connection.dialect().identifier(column);
            marks << QStringLiteral("?");
        }
        m_sql = QStringLiteral("INSERT INTO %1 (%2) VALUES (%3)")
                    .arg(connection.dialect().identifier(table), names.join(u','), marks.join(u','));
    }

    void agregar(const db::Params &values) { m_connection.execute(m_sql, values); }

private:
    db::Connection &m_connection;
    QString m_sql;
};

QVariant numeroONulo(const QString &cell) { return cell.isEmpty() ? QVariant() : QVariant(cell.toInt()); }

void diagnosticos(db::Connection &connection, const QString &folder)
{
    // In the file's order, parents before children: the counter gives the second row the id that tells a database of
    // this system.
    const Csv csv = leerArchivoCsv(folder + QStringLiteral("/cie10.csv"));
    const int code = csv.column(u"codigo"), text = csv.column(u"descripcion"), parent = csv.column(u"padre");
    Insercion insercion(connection, "CIE10", {"iddiagnostico", "diagnostico", "nivel"});
    for (const QStringList &row : csv.rows)
        insercion.agregar({row[code], row[text], row[parent]});
}

void coberturas(db::Connection &connection, const QString &folder)
{
    const Csv csv = leerArchivoCsv(folder + QStringLiteral("/coberturas.csv"));
    const int name = csv.column(u"nombre"), initials = csv.column(u"sigla"), kind = csv.column(u"tipo");
    Insercion insercion(connection, "Lista Coberturas", {"nombre", "prioridad"});
    for (const QStringList &row : csv.rows) {
        const QString &sigla = row[initials];
        const bool known = sigla.isEmpty() || sigla.compare(row[name], Qt::CaseInsensitive) == 0;
        insercion.agregar(
            {known ? row[name] : sigla + QStringLiteral(" - ") + row[name],
             row[kind] == QLatin1String("particular") ? 1000 : 0});
    }
}

/// A list whose names are one column of a file.
void nombres(
    db::Connection &connection,
    const QString &folder,
    const QString &file,
    const QString &csvColumn,
    const QString &table,
    const QString &column = QStringLiteral("nombre"))
{
    const Csv csv = leerArchivoCsv(folder + u'/' + file);
    const int name = csv.column(csvColumn);
    Insercion insercion(connection, table, {column});
    for (const QStringList &row : csv.rows)
        insercion.agregar({row[name]});
}

void provincias(db::Connection &connection, const QString &folder)
{
    const Csv csv = leerArchivoCsv(folder + QStringLiteral("/provincias.csv"));
    const int name = csv.column(u"nombre"), capital = csv.column(u"capital");
    Insercion provincia(connection, "Lista Provincia", {"nombre"});
    Insercion ciudad(connection, "Lista Ciudad", {"nombre"});
    for (const QStringList &row : csv.rows) {
        provincia.agregar({row[name]});
        ciudad.agregar({row[capital]});
    }
}

void vacunas(db::Connection &connection, const QString &folder)
{
    const Csv csv = leerArchivoCsv(folder + QStringLiteral("/vacunas.csv"));
    const int name = csv.column(u"vacuna"), kind = csv.column(u"tipo"), doses = csv.column(u"dosis");
    const int firstAge = csv.column(u"edad1_meses");
    Insercion insercion(
        connection,
        "Lista Vacunas",
        {"Vacuna", "Tipo", "prioridad", "NroDosis", "Edad1", "Edad2", "Edad3", "Edad4", "Edad5"});
    // The official calendar is read from birth on: priorities keep the file's order.
    int priority = int(csv.rows.size());
    for (const QStringList &row : csv.rows) {
        const int tipo = row[kind] == QLatin1String("oficial") ? 1 : row[kind] == QLatin1String("especial") ? 2 : 3;
        db::Params values{row[name], tipo, priority--, row[doses].isEmpty() ? 1 : row[doses].toInt()};
        for (int age = 0; age < 5; ++age)
            values << numeroONulo(row[firstAge + age]);
        insercion.agregar(values);
    }
}

void medicamentos(db::Connection &connection, const QString &folder)
{
    const Csv csv = leerArchivoCsv(folder + QStringLiteral("/medicamentos.csv"));
    const int name = csv.column(u"generico"), form = csv.column(u"presentacion"), group = csv.column(u"grupo");
    Insercion insercion(connection, "Lista Medicamentos", {"nombre", "presentacion", "grupo"});
    for (const QStringList &row : csv.rows)
        insercion.agregar({row[name], row[form], row[group]});
}

void nomenclador(db::Connection &connection, const QString &folder)
{
    const Csv csv = leerArchivoCsv(folder + QStringLiteral("/nomenclador_medico.csv"));
    const int code = csv.column(u"codigo"), name = csv.column(u"practica");
    Insercion insercion(connection, "Lista Nomenclador", {"codigo", "nombre"});
    for (const QStringList &row : csv.rows)
        insercion.agregar({row[code], row[name]});
}

void listas(db::Connection &connection, const QString &folder)
{
    const Csv csv = leerArchivoCsv(folder + QStringLiteral("/listas.csv"));
    const int table = csv.column(u"tabla"), name = csv.column(u"nombre"), priority = csv.column(u"prioridad");
    for (const QStringList &row : csv.rows)
        Insercion(connection, row[table], {"nombre", "prioridad"}).agregar({row[name], row[priority].toInt()});
}

} // namespace

void cargar(db::Connection &connection, const QString &folder)
{
    db::Transaction transaction(connection);
    diagnosticos(connection, folder);
    coberturas(connection, folder);
    nombres(connection, folder, "ocupaciones.csv", "ocupacion", "Lista Ocupacion");
    nombres(connection, folder, "motivos_consulta.csv", "motivo", "Lista Motivos Consulta", "Motivo");
    nombres(connection, folder, "estudios.csv", "estudio", "Lista Estudios");
    nombres(connection, folder, "especialidades.csv", "especialidad", "Lista Especialidades");
    provincias(connection, folder);
    vacunas(connection, folder);
    medicamentos(connection, folder);
    nomenclador(connection, folder);
    listas(connection, folder);
    // The columns not named take their starting values.
    Insercion(connection, "Config", {"encabezadogeneral", "encabezadopaciente"}).agregar({QString(""), QString("")});
    QStringList plantillas;
    for (const db::Column &column : connection.columns(QStringLiteral("Plantillas Consulta")))
        plantillas << column.name;
    Insercion(connection, "Plantillas Consulta", plantillas).agregar(db::Params(plantillas.size(), QString("")));
    transaction.commit();
}

} // namespace catalogos
