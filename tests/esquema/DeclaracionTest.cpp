#include "support/Prueba.h"

#include "app/Esquema.h"
#include "db/SentenciasServidor.h"

#include <QRegularExpression>
#include <QSet>

class DeclaracionTest : public QObject
{
    Q_OBJECT

private slots:
    void eachTableStandsOnItself();
    void holdsEveryTable();
    void startingValues_data();
    void startingValues();
    void followUpsCopyFromTheThirdColumnOn();
};

void DeclaracionTest::eachTableStandsOnItself()
{
    QSet<QString> names, indexNames;
    for (const db::Table &table : app::esquemaCompleto().tables) {
        const QString lower = table.name.toLower();
        QVERIFY2(!names.contains(lower), qPrintable(table.name));
        names.insert(lower);
        QVERIFY2(table.name.size() <= 64 && !table.name.contains(u']'), qPrintable(table.name));

        QSet<QString> columns;
        int counters = 0;
        for (const db::Column &column : table.columns) {
            const QString where = table.name + u'.' + column.name;
            QVERIFY2(!columns.contains(column.name.toLower()), qPrintable(where));
            columns.insert(column.name.toLower());
            QVERIFY2(column.type != db::Type::Text || (column.size > 0 && column.size <= 255), qPrintable(where));
            counters += column.type == db::Type::Counter;
        }
        QVERIFY2(counters <= 1 && (counters == 0 || table.key.isEmpty()), qPrintable(table.name));
        for (const QString &key : table.key)
            QVERIFY2(columns.contains(key.toLower()), qPrintable(table.name + u'.' + key));
        for (const db::Index &index : table.indexes) {
            QVERIFY(!index.columns.isEmpty());
            const QString name = lower + u' ' + index.columns.join(u' ').toLower();
            QVERIFY2(!indexNames.contains(name), qPrintable(name));
            indexNames.insert(name);
            for (const QString &column : index.columns) {
                const db::Column *declared = table.column(column);
                QVERIFY2(declared, qPrintable(name));
                // Other programs compare letters with accents in another way: an index over words would look damaged,
                // unless it goes by their bytes.
                const bool isCode = index.ofList || declared->type != db::Type::Text || declared->size <= 50;
                QVERIFY2(isCode && declared->type != db::Type::Memo, qPrintable(name));
            }
        }
    }
}

void DeclaracionTest::holdsEveryTable()
{
    // Everything that hangs on a patient, and the tables that the other work of the system names.
    const QStringList expected
        = QStringLiteral(
              "Config|Lista Doctores|Historial|Imprimir|Imprimir2|Pacientes|Lista Coberturas|"
              "Lista Tipo de documento|Lista Ocupacion|Lista Relacion con el paciente|Lista Estado civil|"
              "Lista Etnia|Lista Ciudad|Lista Provincia|Lista Pais|Lista Estatus en el pais|"
              "Antecedentes Familiares|Antecedentes Generales|Antecedentes Gineco - Obstetricos|"
              "Antecedentes Perinatologicos|Antecedentes Perso - Fami - Medicamentos|"
              "Antecedentes Perso - Fami - Patologias|Consulta - Cardiopulmonar|Consulta - Digestivo|"
              "Consulta - Endocrino|Consulta - Estado General|Consulta - Ginecologico|"
              "Consulta - Musculoesqueletico|Consulta - Neurologico|Consulta - ORL|Consulta - Salud Mental|"
              "Consulta - Salud Sexual|Consulta - Urinario|Consulta Exa - Abdominal|"
              "Consulta Exa - Cardio Vascular|Consulta Exa - Dermatologico|Consulta Exa - Fisico General|"
              "Consulta Exa - Genitourinario|Consulta Exa - Ginecologico|Consulta Exa - Mamario|"
              "Consulta Exa - Mental|Consulta Exa - Neurologico|Consulta Exa - Oftalmologico|"
              "Consulta Exa - ORL|Consulta Exa - Respiratorio|Consulta - Muscu Ficha Kinesica|"
              "Consulta - Muscu Medicion Articular|Consulta - Muscu Equilibrio Muscular Extre Sup|"
              "Consulta - Muscu Equilibrio Muscular Extre Inf|Consultas|Consultas Items|CIE10|"
              "Plantillas Consulta|Lista Motivos Consulta|Lista Estudios|Pacientes Alimentacion|"
              "Pacientes Analisis|Pacientes Control Feto|Pacientes Control Materno|"
              "Pacientes Controles Antropometricos|Pacientes Embarazos|Pacientes Embarazos Finalizados|"
              "Pacientes Enfermedades Ginecologicas|Pacientes Esquema Ginecologico|Pacientes Estudios|"
              "Pacientes Estudios Imagenes|Pacientes Lesiones Vulva|Pacientes Operaciones Ginecologicas|"
              "Pacientes Pautas|Pacientes Vacunas|Pacientes Ultrasonografia Pelvica|"
              "Pacientes Ultrasonografia Primer|Pacientes Ultrasonografia Tercer|Pacientes Biomicroscopia|"
              "Pacientes Fondo de Ojo|Pacientes Nervio Optico|Pacientes Cirugias|Pacientes Odontogramas|"
              "Pacientes Ordenes|Pacientes Pagos|Pacientes Sesiones|Pacientes Presupuestos|"
              "Pacientes Presupuestos General|Lista Vacunas|Certificados|Certificados Historial|Agenda Turnos|"
              "Agenda Turnos Horarios|Agenda Turnos No Se Atiende|Lista Nomenclador|Lista Derivadores|"
              "Lista Precios|Caja|Lista Productos|Lista Stock|Lista Usos")
              .split(u'|');
    const db::Schema schema = app::esquemaCompleto();
    for (const QString &name : expected)
        QVERIFY2(schema.table(name), qPrintable(name));

    // A patient's tables are emptied, and consultations' sections deleted, through these columns.
    for (const db::Table &table : schema.tables) {
        if (table.name.startsWith(QLatin1String("Consulta ")))
            for (const char *column : {"idconsulta", "nropaci", "fecha", "iddoctor", "examennormal", "comentarios"})
                QVERIFY2(table.column(QString::fromUtf8(column)), qPrintable(table.name));
        if (table.name.startsWith(QLatin1String("Pacientes ")) || table.name.startsWith(QLatin1String("Antecedentes ")))
            QVERIFY2(table.column(u"NroPaci"), qPrintable(table.name));
        if (table.name.startsWith(QLatin1String("Lista ")) && table.column(u"nombre")
            && table.name != QLatin1String("Lista Nomenclador"))
            QVERIFY2(table.column(u"prioridad"), qPrintable(table.name));
    }
}

void DeclaracionTest::startingValues_data()
{
    QTest::addColumn<QString>("table");
    QTest::addColumn<QString>("columns");
    QTest::addColumn<QString>("value"); // "-": none

    const auto row = [](const char *table, const char *columns, const char *value) {
        QTest::addRow("%s %.20s", table, columns)
            << QString::fromUtf8(table) << QString::fromUtf8(columns) << QString::fromUtf8(value);
    };
    row("Config", "sumfpp", "280");
    row("Config", "prefijohc numerohc reemplazoid", "-");
    row("Lista Doctores",
        "tipo administrador accesoparcialpaciente aplicaraturnos moduloweb accesodirecto01 "
        "accesodirecto10",
        "0");
    row("Lista Doctores", "accesocrearpaciente accesocambiarusuario accesored accesobackup accesolistaordenes", "-1");
    row("Pacientes", "idcobertura2", "-1");
    row("Pacientes", "nuafiliado2 nusiniestro", "-");
    row("Pacientes Embarazos Finalizados", "percef", "0");
    row("Pacientes Sesiones", "liquidadas autorizadafuerafecha", "0");
    row("Pacientes Pagos", "libros", "0");
    row("Agenda Turnos", "idcaja", "0");
    row("Agenda Turnos", "observacionestur usuarioasigtur", "-");
    row("Caja", "modopago", "0");
    row("Agenda Turnos Horarios", "cantidadsobreturnoshora", "-1");
    row("Agenda Turnos Horarios", "sobreturnoshoraresaltar solosobreturnoshoraplanilla", "0");
    row("Pacientes Ordenes", "pagaiva tipoasistencia", "0");
    row("Consultas", "detallemotivo detallediagnos detalletrata detalleestusoli detalleestureali", "-");
    row("Consulta Exa - Mamario", "iddoctor", "0");
    row("Consulta - Muscu Ficha Kinesica", "idmuscu iddoctor", "0");
}

void DeclaracionTest::startingValues()
{
    QFETCH(QString, table);
    QFETCH(QString, columns);
    QFETCH(QString, value);
    const db::Schema schema = app::esquemaCompleto();
    for (const QString &name : columns.split(u' ', Qt::SkipEmptyParts)) {
        const db::Column *column = schema.table(table)->column(name);
        QVERIFY2(column, qPrintable(name));
        const QString update = value == QLatin1String("-")
            ? QString()
            : QStringLiteral("UPDATE [%1] SET %2 = %3").arg(table, name, value);
        QCOMPARE(db::sentenciaValorInicial(table, *column), update);
    }

    // Every right is granted but for the four that must be given.
    static const QSet<QString> withheld{"accesoparcialpaciente"};
    int rights = 0;
    for (const db::Column &column : schema.table(u"Lista Doctores")->columns) {
        if (!column.name.startsWith(QLatin1String("acceso")) || column.name.startsWith(QLatin1String("accesodirecto")))
            continue;
        ++rights;
        QCOMPARE(column.initial->toInt(), withheld.contains(column.name) ? 0 : -1);
    }
    QCOMPARE(rights, 30);
}

void DeclaracionTest::followUpsCopyFromTheThirdColumnOn()
{
    for (const db::Table &table : app::esquemaCompleto().tables)
        if (table.name.startsWith(QLatin1String("Consulta "))) {
            QCOMPARE(table.columns.at(0).name, QStringLiteral("id"));
            QCOMPARE(table.columns.at(1).name, QStringLiteral("idconsulta"));
        }
}

PRUEBA(DeclaracionTest)
#include "DeclaracionTest.moc"
