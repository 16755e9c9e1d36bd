#include "support/Prueba.h"

#include "app/Esquema.h"
#include "catalogos/Catalogos.h"
#include "db/Config.h"
#include "db/Error.h"
#include "db/Recordset.h"
#include "db/Upgrade.h"
#include "db/engine/EmbeddedEngine.h"
#include "support/MensajesGuionados.h"

#include <QElapsedTimer>
#include <QSet>
#include <QTemporaryDir>

class PlantillaTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void cleanupTestCase() { m_connection.reset(); }
    void hasEveryTableWhole();
    void needsNoUpgrade();
    void diagnosesFormOneTree();
    void listsAreFilled_data();
    void listsAreFilled();
    void settingsBeginWithTheirValues();
    void firstProfessionalIsTwenty();
    void failureLeavesNoFile();

private:
    [[nodiscard]] int count(const QString &sql) { return int(m_connection->query(sql)->integer(0, 0)); }

    QTemporaryDir m_folder;
    std::unique_ptr<db::Connection> m_connection;
};

void PlantillaTest::initTestCase()
{
    const QString path = m_folder.filePath("Datos_Vacio.mdb");
    QElapsedTimer timer;
    timer.start();
    catalogos::crearPlantilla(path, "kestrel428", app::esquemaCompleto(), CATALOGOS);
    qInfo("made in %lld ms", timer.elapsed());
    QCOMPARE(QDir(m_folder.path()).entryList(QDir::Files), QStringList("Datos_Vacio.mdb"));
    m_connection = std::make_unique<db::Connection>(std::make_unique<db::EmbeddedEngine>(path, "kestrel428"));
}

void PlantillaTest::hasEveryTableWhole()
{
    for (const db::Table &table : app::esquemaCompleto().tables) {
        const QVector<db::Column> columns = m_connection->columns(table.name);
        QCOMPARE(columns.size(), table.columns.size());
        for (int i = 0; i < columns.size(); ++i) {
            QCOMPARE(columns[i].name, table.columns[i].name);
            QVERIFY2(columns[i].type == table.columns[i].type, qPrintable(table.name + u'.' + columns[i].name));
        }
    }
}

void PlantillaTest::needsNoUpgrade()
{
    soporte::MensajesGuionados silent;
    QElapsedTimer timer;
    timer.start();
    QVERIFY(!db::actualizarAccess(
        app::esquemaPorRutinas(),
        [this] {
            return std::make_unique<db::Connection>(
                std::make_unique<db::EmbeddedEngine>(m_folder.filePath("Datos_Vacio.mdb"), "kestrel428"));
        },
        silent));
    qInfo("looked through in %lld ms", timer.elapsed());
    QVERIFY(silent.terminar());
}

void PlantillaTest::diagnosesFormOneTree()
{
    const db::Rows rows = m_connection->query("SELECT id,iddiagnostico,nivel FROM [CIE10] ORDER BY id");
    QVERIFY(rows->rowCount() > 14000);
    QSet<QString> codes;
    for (int r = 0; r < rows->rowCount(); ++r)
        codes.insert(rows->text(r, 1));
    QCOMPARE(codes.size(), rows->rowCount());
    int roots = 0, withoutPoint = 0;
    for (int r = 0; r < rows->rowCount(); ++r) {
        const QString level = rows->text(r, 2);
        roots += level == QLatin1String("*0");
        QVERIFY2(level == QLatin1String("*0") || codes.contains(level), qPrintable(rows->text(r, 1)));
        // A subcategory hangs on the category of its first three characters.
        const QString code = rows->text(r, 1);
        if (code.contains(u'.'))
            QCOMPARE(level, code.left(3));
        else
            ++withoutPoint;
    }
    QCOMPARE(roots, 22);
    QVERIFY(withoutPoint < rows->rowCount() / 4);
    QCOMPARE(count("SELECT count(*) FROM [CIE10] WHERE id = 2"), 1);
}

void PlantillaTest::listsAreFilled_data()
{
    QTest::addColumn<QString>("table");
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("first"); // by priority and name; empty: not told

    QTest::newRow("coverages") << "Lista Coberturas"
                               << "nombre"
                               << "PARTICULAR";
    QTest::newRow("documents") << "Lista Tipo de documento"
                               << "nombre"
                               << "DNI";
    QTest::newRow("countries") << "Lista Pais"
                               << "nombre"
                               << "Argentina";
    QTest::newRow("provinces") << "Lista Provincia"
                               << "nombre"
                               << "Buenos Aires";
    QTest::newRow("cities") << "Lista Ciudad"
                            << "nombre"
                            << "";
    QTest::newRow("occupations") << "Lista Ocupacion"
                                 << "nombre"
                                 << "Abogado/a";
    QTest::newRow("reasons") << "Lista Motivos Consulta"
                             << "Motivo"
                             << "";
    QTest::newRow("studies") << "Lista Estudios"
                             << "nombre"
                             << "";
    QTest::newRow("specialties") << "Lista Especialidades"
                                 << "nombre"
                                 << "";
    QTest::newRow("vaccines") << "Lista Vacunas"
                              << "Vacuna"
                              << "BCG";
    QTest::newRow("smear results") << "Lista Resultados de PAP"
                                   << "nombre"
                                   << "";
    for (const char *table :
         {"Lista Estado civil",
          "Lista Relacion con el paciente",
          "Lista Etnia",
          "Lista Estatus en el pais",
          "Lista Tratamientos",
          "Lista Medicamentos",
          "Lista Tabaco",
          "Lista Alcohol",
          "Lista Otras Drogas",
          "Lista Enfermedades Ginecologicas",
          "Lista Operaciones Gineco - Obstetrica",
          "Lista Metodos Anticonceptivos",
          "Lista Motivos No Anticoncepcion",
          "Lista Proteccion ITS",
          "Lista Problemas Mamarios",
          "Lista Autoexamen Mamario",
          "Lista Resultados Mamografia",
          "Lista Resultados Densitometria"})
        QTest::newRow(table) << table << "nombre"
                             << "";
}

void PlantillaTest::listsAreFilled()
{
    QFETCH(QString, table);
    QFETCH(QString, name);
    QFETCH(QString, first);
    const db::Rows rows = m_connection->query(
        QStringLiteral("SELECT id,%2,prioridad FROM [%1] ORDER BY prioridad DESC, %2").arg(table, name));
    QVERIFY(rows->rowCount() >= 3);
    if (!first.isEmpty())
        QCOMPARE(rows->text(0, 1), first);
    QSet<QString> names;
    for (int r = 0; r < rows->rowCount(); ++r) {
        QVERIFY(!rows->text(r, 1).trimmed().isEmpty());
        QVERIFY(!rows->isNull(r, 2));
        // A medicine has several presentations.
        if (table != QLatin1String("Lista Medicamentos"))
            QVERIFY2(!names.contains(rows->text(r, 1)), qPrintable(rows->text(r, 1)));
        names.insert(rows->text(r, 1));
    }
}

void PlantillaTest::settingsBeginWithTheirValues()
{
    QCOMPARE(count("SELECT count(*) FROM [Config]"), 1);
    const db::Config config(*m_connection);
    QCOMPARE(config.numero(u"sumfpp"), 280);
    QCOMPARE(config.numero(u"UltimoPaci", -1), 0);
    QCOMPARE(config.numero(u"forzarguardarpaci", -1), 0);
    QVERIFY(!config.bandera(u"selecusuario", true));
    QCOMPARE(count("SELECT count(*) FROM [Plantillas Consulta]"), 1);
    QCOMPARE(count("SELECT count(*) FROM [Lista Derivadores]"), 0);
    QCOMPARE(count("SELECT count(*) FROM [Lista Nomenclador] WHERE codigo = '420101'"), 1);
    QCOMPARE(
        count("SELECT count(*) FROM [Lista Vacunas] WHERE Tipo < 1 Or Tipo > 3 Or NroDosis < 1 Or NroDosis > 5"), 0);
}

void PlantillaTest::firstProfessionalIsTwenty()
{
    QCOMPARE(count("SELECT count(*) FROM [Lista Doctores]"), 0);
    db::Transaction undone(*m_connection);
    db::Recordset doctors(*m_connection, "SELECT * FROM [Lista Doctores] WHERE id = 0");
    doctors.addNew();
    doctors.set(u"NomDoc", "Dr. Ramón O'Donnell");
    QCOMPARE(doctors.update(), 20);
}

void PlantillaTest::failureLeavesNoFile()
{
    QTemporaryDir empty;
    QVERIFY_THROWS_EXCEPTION(
        db::Error,
        catalogos::crearPlantilla(
            empty.filePath("Datos_Vacio.mdb"), "kestrel428", app::esquemaCompleto(), empty.path()));
    QVERIFY(!QFile::exists(empty.filePath("Datos_Vacio.mdb")));
}

PRUEBA(PlantillaTest)
#include "PlantillaTest.moc"
