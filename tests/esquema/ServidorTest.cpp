#include "app/Esquema.h"
#include "db/Declarar.h"
#include "db/Error.h"
#include "db/SentenciasServidor.h"
#include "db/Upgrade.h"
#include "support/BaseDePrueba.h"
#include "support/MensajesGuionados.h"
#include "support/Prueba.h"
#include "support/ServerTestEngine.h"

#include <QTemporaryDir>

using namespace db::declarar;

namespace {

/// A server that only keeps its catalog: it answers the questions about tables and columns, writes down every statement
/// and can be told to refuse some.
class ServidorDePapel final : public db::Engine
{
public:
    QVector<QPair<QString, QString>> columnas;
    QStringList sentencias;
    QString rechaza;
    std::function<void()> alEmpezar = [] {}; ///< what another station does before it is this one's turn

    db::Dialect::Kind dialect() const override { return db::Dialect::Kind::SqlServer; }
    db::Rows query(const QString &sql, const db::Params &) override
    {
        db::ResultSet::Builder builder({{"TABLE_NAME"}, {"COLUMN_NAME"}});
        const bool all = !sql.contains("WHERE");
        if (!all)
            sentencias << sql;
        for (const auto &[table, column] : columnas) {
            if (!all && !sql.contains(QStringLiteral("COLUMN_NAME = '%1' and TABLE_NAME = '%2'").arg(column, table)))
                continue;
            builder.addText(table.toUtf8());
            builder.addText(column.toUtf8());
            builder.endRow();
        }
        return builder.finish();
    }
    int execute(const QString &sql, const db::Params &) override
    {
        if (!rechaza.isEmpty() && sql.contains(rechaza))
            throw db::Error(db::Error::Kind::General, 1, "rechazada");
        sentencias << sql;
        return 0;
    }
    qint64 insertedId() override { return 0; }
    void begin() override
    {
        alEmpezar();
        m_before = int(sentencias.size());
    }
    void commit() override { }
    void rollback() override { sentencias.resize(m_before); }
    QString singleTable(const QString &) override { return {}; }
    QStringList tableNames() override { return {}; }
    QVector<db::Column> columns(const QString &) override { return {}; }
    void createTable(const db::Table &) override { }
    void addColumn(const QString &, const db::Column &) override { }

    void declarar(const db::Schema &schema)
    {
        for (const db::Table &table : schema.tables)
            for (const db::Column &column : table.columns)
                columnas.append({table.name, column.name});
    }
    void quitar(const QString &table, const QString &column = {})
    {
        columnas.removeIf(
            [&](const auto &pair) { return pair.first == table && (column.isEmpty() || pair.second == column); });
    }

private:
    int m_before = 0;
};

} // namespace

class ServidorTest : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void statementsAreGuarded();
    void completeDatabaseIsLeftAlone();
    void missingColumnsAreAdded();
    void anotherStationWasFirst();
    void hoursAreMovedBeforeTheyAreDropped();
    void hoursStayWhenTheyCannotBeMoved();
    void wholeSchemaIsTaken();
    void oldDatabaseIsBroughtUpToDate();

private:
    bool actualizar() { return db::actualizarServidor(app::esquemaCompleto(), *m_connection, m_mensajes); }
    void esperarAviso()
    {
        m_mensajes.esperarMensaje(
            "Atención",
            "El sistema actualizó la base de datos a una versión más reciente, verifique en la "
            "ventana CONFIGURACIÓN si debe configurar alguna opción nueva.",
            base::Icono::Informacion);
    }

    ServidorDePapel *m_server = nullptr;
    std::unique_ptr<db::Connection> m_connection;
    soporte::MensajesGuionados m_mensajes;
};

void ServidorTest::init()
{
    auto server = std::make_unique<ServidorDePapel>();
    m_server = server.get();
    m_server->declarar(app::esquemaCompleto());
    m_connection = std::make_unique<db::Connection>(std::move(server));
}

void ServidorTest::cleanup() { QVERIFY(m_mensajes.terminar()); }

void ServidorTest::statementsAreGuarded()
{
    const db::Schema schema = app::esquemaCompleto();
    const auto column = [&](const char *table, const char *name) {
        return *schema.table(QString::fromUtf8(table))->column(QString::fromUtf8(name));
    };
    QCOMPARE(
        db::servidor::agregarColumna("Consultas", column("Consultas", "detallediagnos")),
        QString("IF NOT EXISTS (SELECT * FROM INFORMATION_SCHEMA.COLUMNS WHERE COLUMN_NAME = 'detallediagnos' and "
                "TABLE_NAME = 'Consultas') BEGIN ALTER TABLE [Consultas] ADD detallediagnos nvarchar(250) END"));
    QCOMPARE(
        db::servidor::agregarColumna("Lista Doctores", column("Lista Doctores", "accesodirecto10")),
        QString("IF NOT EXISTS (SELECT * FROM INFORMATION_SCHEMA.COLUMNS WHERE COLUMN_NAME = 'accesodirecto10' and "
                "TABLE_NAME = 'Lista Doctores') BEGIN ALTER TABLE [Lista Doctores] ADD accesodirecto10 SMALLINT "
                "DEFAULT 0 END"));
    QCOMPARE(
        db::servidor::quitarColumna("Lista Doctores", "LuMaDesde"),
        QString("IF EXISTS (SELECT * FROM INFORMATION_SCHEMA.COLUMNS WHERE COLUMN_NAME = 'LuMaDesde' and "
                "TABLE_NAME = 'Lista Doctores') BEGIN ALTER TABLE [Lista Doctores] DROP COLUMN LuMaDesde END"));
    QVERIFY(db::servidor::agregarColumna("Plantillas Consulta", column("Plantillas Consulta", "revi-ong"))
                .endsWith("ALTER TABLE [Plantillas Consulta] ADD [revi-ong] nvarchar(max) END"));

    QCOMPARE(
        db::servidor::crearTabla(tabla(
            "Lista O'Higgins",
            contador() + textos(20, "codigo") + con(-1, banderas("activo")) + simples("costo") + fechas("fecha"),
            {unico("codigo"), indice("codigo fecha")})),
        QStringList(
            {"IF NOT EXISTS (SELECT * FROM INFORMATION_SCHEMA.TABLES WHERE TABLE_NAME = "
             "'Lista O''Higgins') BEGIN CREATE TABLE [Lista O'Higgins] (id int IDENTITY(1,1) PRIMARY KEY "
             "CLUSTERED, codigo nvarchar(20), activo BIT DEFAULT -1, costo real, fecha datetime) END",
             "IF NOT EXISTS (SELECT * FROM sys.indexes WHERE object_id = OBJECT_ID('[Lista O''Higgins]') "
             "and name = 'codigo') BEGIN CREATE UNIQUE INDEX [codigo] ON [Lista O'Higgins](codigo) END",
             "IF NOT EXISTS (SELECT * FROM sys.indexes WHERE object_id = OBJECT_ID('[Lista O''Higgins]') "
             "and name = 'codigo_fecha') BEGIN CREATE INDEX [codigo_fecha] ON "
             "[Lista O'Higgins](codigo,fecha) END"}));
    QVERIFY(db::servidor::crearTabla(*schema.table(u"Lista Doctores")).first().contains("id int IDENTITY(20,1)"));
    QVERIFY(
        db::servidor::crearTabla(*schema.table(u"Pacientes Embarazos")).first().contains("NroEmba SMALLINT NOT NULL"));
}

void ServidorTest::completeDatabaseIsLeftAlone()
{
    for (auto &[table, column] : m_server->columnas)
        column = column.toUpper();
    QVERIFY(!actualizar());
    QCOMPARE(m_server->sentencias, QStringList());
}

void ServidorTest::missingColumnsAreAdded()
{
    m_server->quitar("Pacientes", "idcobertura2");
    m_server->quitar("Consultas", "detallemotivo");
    m_server->quitar("Lista Doctores", "moduloweb");
    m_server->quitar("Lista Usos");
    esperarAviso();
    QVERIFY(actualizar());

    const QStringList &done = m_server->sentencias;
    QCOMPARE(done.filter("ALTER TABLE").size(), 3);
    const qsizetype asked = done.indexOf("SELECT * FROM INFORMATION_SCHEMA.COLUMNS WHERE COLUMN_NAME = 'moduloweb' and "
                                         "TABLE_NAME = 'Lista Doctores'");
    QVERIFY(asked >= 0);
    QCOMPARE(done.value(asked + 1), QString("ALTER TABLE [Lista Doctores] ADD moduloweb BIT DEFAULT 0"));
    QCOMPARE(done.value(asked + 2), QString("UPDATE [Lista Doctores] SET moduloweb = 0"));
    QVERIFY(done.contains("UPDATE [Pacientes] SET idcobertura2 = -1"));
    QCOMPARE(done.filter("UPDATE [Consultas]").size(), 0);
    QCOMPARE(done.filter("CREATE TABLE").size(), 1);
}

/// Two stations start with a new version: what was saved after the first one's upgrade is not undone by the second's.
void ServidorTest::anotherStationWasFirst()
{
    m_server->quitar("Pacientes", "idcobertura2");
    m_server->alEmpezar = [this] { m_server->columnas.emplaceBack("Pacientes", "idcobertura2"); };
    esperarAviso();
    QVERIFY(actualizar());
    QCOMPARE(m_server->sentencias.filter("UPDATE"), QStringList());
    QCOMPARE(m_server->sentencias.filter("ALTER TABLE"), QStringList());
}

void ServidorTest::hoursAreMovedBeforeTheyAreDropped()
{
    m_server->columnas
        += {{"Lista Doctores", "lumadesde"}, {"Lista Doctores", "SATAHASTA"}, {"Lista Doctores", "DurTur"}};
    m_server->quitar("Agenda Turnos Horarios");
    esperarAviso();
    QVERIFY(actualizar());

    const QStringList &done = m_server->sentencias;
    const QString moved
        = "INSERT INTO [Agenda Turnos Horarios] "
          "(iddoctor,fechadesde,fechahasta,durtur1,durtur2,durtur3,durtur4,durtur5,"
          "durtur6,durtur7,cantidadsobreturnos,lumadesde,SATAHASTA) SELECT id,'19000101','21001231',CASE WHEN DurTur > "
          "0 "
          "THEN DurTur ELSE 20 END,20,20,20,20,20,20,-1,lumadesde,SATAHASTA FROM [Lista Doctores] WHERE id NOT IN "
          "(SELECT iddoctor FROM [Agenda Turnos Horarios] WHERE iddoctor IS NOT NULL) AND (lumadesde IS NOT NULL OR "
          "SATAHASTA IS NOT NULL OR tipo = 0 OR tipo IS NULL)";
    QCOMPARE(done.filter("INSERT"), QStringList(moved));
    const QStringList dropped = done.filter("DROP COLUMN");
    QCOMPARE(dropped.size(), 2);
    QVERIFY(dropped.first().endsWith("BEGIN ALTER TABLE [Lista Doctores] DROP COLUMN lumadesde END"));
    QVERIFY(done.indexOf(moved) < done.indexOf(dropped.first()));
}

void ServidorTest::hoursStayWhenTheyCannotBeMoved()
{
    m_server->columnas.emplaceBack("Lista Doctores", "ViTaDesde");
    m_server->quitar("Agenda Turnos Horarios");
    m_server->rechaza = "INSERT INTO";
    esperarAviso();
    QVERIFY(actualizar());
    QCOMPARE(m_server->sentencias.filter("DROP COLUMN"), QStringList());
    QCOMPARE(m_server->sentencias.filter("CREATE TABLE").size(), 1);
}

/// No name is a word of the server, no index is on what it cannot sort.
void ServidorTest::wholeSchemaIsTaken()
{
    const QTemporaryDir folder;
    db::createDatabaseFile(folder.filePath("Datos.mdb"), "x");
    db::Connection server(std::make_unique<soporte::ServerTestEngine>(folder.filePath("Datos.mdb"), "x"));
    for (const db::Table &table : app::esquemaCompleto().tables) {
        for (const QString &statement : db::servidor::crearTabla(table))
            server.execute(statement);
        for (const db::Index &index : table.indexes) {
            int bytes = 0;
            for (const QString &name : index.columns) {
                const db::Column &column = *table.column(name);
                QVERIFY2(index.ofList || column.type != db::Type::Memo, qPrintable(table.name + ' ' + name));
                bytes += column.type == db::Type::Text ? column.size * 2 : 8;
            }
            QVERIFY2(index.ofList || bytes <= 900, qPrintable(table.name));
        }
    }
    QCOMPARE(server.tableNames().size(), app::esquemaCompleto().tables.size());
}

/// The statements themselves, over a database as an older program left it, with the default values that a column must
/// lose before it goes; and once more, which changes nothing.
void ServidorTest::oldDatabaseIsBroughtUpToDate()
{
    soporte::BaseDePrueba base(db::Dialect::Kind::SqlServer);
    db::Connection &server = base.conexion();
    for (const char *sql :
         {"ALTER TABLE [Lista Doctores] ADD LUMADESDE datetime, SaTaHasta datetime DEFAULT '19000101', durtur int",
          "UPDATE [Lista Doctores] SET LUMADESDE = '18991230 08:30', durtur = 15",
          "DROP TABLE [Agenda Turnos Horarios]",
          "DROP TABLE [Lista Usos]"})
        server.execute(sql);
    for (const char *column : {"moduloweb", "accesodirecto01"}) {
        const db::Rows held = server.query(db::servidor::buscarRestriccion("Lista Doctores", column));
        QCOMPARE(held->rowCount(), 1);
        server.execute(db::servidor::quitarRestriccion("Lista Doctores", held->text(0, 0)));
        server.execute(db::servidor::quitarColumna("Lista Doctores", column));
    }

    esperarAviso();
    QVERIFY(db::actualizarServidor(app::esquemaCompleto(), server, m_mensajes));
    QCOMPARE(base.valor("SELECT durtur1 FROM [Agenda Turnos Horarios]"), QString("15"));
    QVERIFY(base.valor("SELECT LuMaDesde FROM [Agenda Turnos Horarios]").endsWith("08:30:00"));
    QCOMPARE(base.valor("SELECT moduloweb FROM [Lista Doctores]"), QString("0"));
    QStringList left;
    for (const db::Column &column : server.columns("Lista Doctores"))
        left << column.name.toLower();
    QVERIFY(!left.contains("lumadesde") && !left.contains("satahasta") && left.contains("accesodirecto01"));
    QVERIFY(server.tableExists(u"Lista Usos"));

    QVERIFY(!db::actualizarServidor(app::esquemaCompleto(), server, m_mensajes));
    QCOMPARE(base.valor("SELECT COUNT(*) FROM [Agenda Turnos Horarios]"), QString("1"));
}

PRUEBA(ServidorTest)
#include "ServidorTest.moc"
