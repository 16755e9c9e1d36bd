#include "support/Falla.h"
#include "support/ServerTestEngine.h"

#include "base/Numeros.h"
#include "db/Connection.h"
#include "db/Error.h"
#include "db/SentenciasServidor.h"
#include "support/Prueba.h"

#include <QTemporaryDir>

using db::Dialect;

/// The engine that stands for the server in every other test: what it takes, what it refuses.
class SqlServidor : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void acepta_data();
    void acepta();
    void rechaza_data();
    void rechaza();
    void alCorrer();
    void valores_data();
    void valores();
    void importes();
    void busquedas();
    void ambosDialectos();
    void tablas();

private:
    static QString text(const db::Rows &rows) { return rows->toDelimited(u"|", u"\n").chopped(rows->rowCount() > 0); }
    QString rows(const QString &sql, const db::Params &params = {}) { return text(m_connection->query(sql, params)); }
    QTemporaryDir m_folder;
    std::unique_ptr<db::Connection> m_connection;
};

void SqlServidor::initTestCase()
{
    const QString path = m_folder.filePath(QStringLiteral("Datos.mdb"));
    db::createDatabaseFile(path, QStringLiteral("x"));
    m_connection
        = std::make_unique<db::Connection>(std::make_unique<soporte::ServerTestEngine>(path, QStringLiteral("x")));
    using namespace db::columna;
    m_connection->createTable(
        {QStringLiteral("Pacientes"),
         {contador(),
          largo(QStringLiteral("NroHC")),
          texto(QStringLiteral("Apellido")),
          texto(QStringLiteral("apellido2")),
          texto(QStringLiteral("DNI"), 20),
          fecha(QStringLiteral("FeNac")),
          bandera(QStringLiteral("Embarazo")),
          simple(QStringLiteral("costo")),
          memo(QStringLiteral("Notas"))},
         {}});
    m_connection->createTable(
        {QStringLiteral("Agenda Turnos"),
         {contador(), largo(QStringLiteral("NroHC")), fecha(QStringLiteral("Fecha"))},
         {}});
    for (const char *sql :
         {"INSERT INTO [Pacientes] (NroHC,Apellido,DNI,FeNac,Embarazo,costo) VALUES "
          "(10,N'Pérez','20111222','19800305',-1,1234.5)",
          "INSERT INTO [Pacientes] (NroHC,Apellido,apellido2,DNI,Embarazo) VALUES (11,N'Núñez','Paz','20260131',0)",
          "INSERT INTO [Agenda Turnos] (NroHC,Fecha) VALUES (10,'20260131 10:20')",
          "INSERT INTO [Agenda Turnos] (NroHC,Fecha) SELECT NroHC,'20260131 23:59:59' FROM Pacientes WHERE NroHC = 11"})
        QCOMPARE(m_connection->execute(QString::fromUtf8(sql)), 1);
}

void SqlServidor::acepta_data()
{
    QTest::addColumn<QString>("sql");
    QTest::addColumn<QString>("result");
    const auto row = [](const char *sql, const char *result) {
        QTest::newRow(sql) << QString::fromUtf8(sql) << QString::fromUtf8(result);
    };
    row("SELECT NroHC FROM [Pacientes] WHERE DNI = '20111222'", "10");
    row("SELECT Fecha FROM [Agenda Turnos] WHERE (Fecha >= '20260131 00:00:00' and Fecha <= '20260131 12:00') And "
        "NroHC <> "
        "-111",
        "2026-01-31 10:20:00");
    row("SELECT NroHC FROM [Agenda Turnos] WHERE Fecha = '20260131 10:20'", "10");
    row("SELECT NroHC FROM [Agenda Turnos] WHERE Fecha between '20260131 23:00' and '20260131 23:59:59'", "11");
    row("SELECT t.NroHC FROM [Agenda Turnos] AS t INNER JOIN Pacientes p ON t.NroHC = p.NroHC WHERE t.Fecha > "
        "'20260131 "
        "11:00' ORDER BY t.Fecha",
        "11");
    row("SELECT TOP 1 NroHC FROM Pacientes ORDER BY NroHC DESC", "11");
    row("SELECT TOP (1) Apellido + ' ' + isnull(apellido2,'') + N', x' AS n FROM Pacientes ORDER BY n", "Núñez Paz, x");
    row("SELECT CASE WHEN apellido2 is null THEN '' ELSE apellido2 END FROM Pacientes ORDER BY NroHC", "\nPaz");
    row("SELECT CASE NroHC WHEN 10 THEN 'diez' ELSE 'otro' END FROM Pacientes ORDER BY NroHC", "diez\notro");
    row("SELECT CASE WHEN NroHC<=10 THEN '' ELSE NroHC END FROM Pacientes ORDER BY NroHC", "0\n11");
    row("SELECT UPPER(Apellido), LOWER(N'Ñ') FROM Pacientes WHERE UPPER(Apellido) = N'PÉREZ'", "PÉREZ|ñ");
    row("SELECT NroHC FROM Pacientes WHERE DateDiff(yyyy, FeNac, '20260115') >= 46", "10");
    row("SELECT CONVERT(nvarchar(40),CAST(costo AS money),1) AS c FROM Pacientes WHERE Embarazo <> 0", "1,234.50");
    row("SELECT LEN('ab  '), SUBSTRING(N'ñandú',2,3), CHARINDEX('d',N'ñandú'), LEFT('ab',1)", "2|and|4|a");
    row("SELECT CAST(7 AS nvarchar(10)) + 'x', CONVERT(nvarchar(10), FeNac, 103), 7 / 2, 7 % 4 FROM Pacientes WHERE "
        "NroHC = "
        "10",
        "7x|05/03/1980|3|3");
    row("SELECT COALESCE(NULLIF(Apellido,N'pérez'),'nadie') FROM Pacientes ORDER BY NroHC", "nadie\nNúñez");
    row("SELECT YEAR(FeNac), DATEPART(mm,FeNac), ROUND(2.345,2), ABS(-1) FROM Pacientes WHERE NroHC = 10",
        "1980|3|2.35|1");
    row("SELECT NroHC, count(*) FROM [Agenda Turnos] GROUP BY NroHC HAVING count(*) > 0 ORDER BY NroHC", "10|1\n11|1");
    row("SELECT COLUMN_NAME FROM INFORMATION_SCHEMA.COLUMNS WHERE COLUMN_NAME = 'fenac' and TABLE_NAME = 'Pacientes'",
        "FeNac");
    row("SELECT TABLE_NAME FROM INFORMATION_SCHEMA.TABLES WHERE TABLE_NAME like 'Agenda%'", "Agenda Turnos");
    // A flag is 1 whatever was written, and sorts behind 0.
    row("SELECT Embarazo FROM Pacientes ORDER BY Embarazo DESC", "1\n0");
    row("SELECT NroHC FROM Pacientes WHERE Embarazo = 1", "10");
    row("SELECT (SELECT Apellido FROM Pacientes p WHERE p.NroHC = t.NroHC) AS a FROM [Agenda Turnos] t ORDER BY a",
        "Núñez\nPérez");
    row("SELECT (SELECT TOP 1 NroHC FROM Pacientes ORDER BY NroHC), (SELECT MAX(NroHC) FROM Pacientes)", "10|11");
    row("SELECT DISTINCT Apellido AS a, NroHC FROM Pacientes ORDER BY NroHC, a", "Pérez|10\nNúñez|11");
    row("SELECT NroHC + 0 AS n, SUM(costo) FROM Pacientes GROUP BY NroHC + 0 ORDER BY NroHC + 0", "10|1234.5\n11|");
    row("SELECT NroHC FROM Pacientes WHERE CAST(Notas AS nvarchar(max)) = 'x' or Notas like '%.%'", "");
    row("SELECT d.f FROM (SELECT Fecha AS f FROM [Agenda Turnos]) AS d WHERE d.f < '20260131 12:00'",
        "2026-01-31 10:20:00");
}

void SqlServidor::acepta()
{
    QFETCH(QString, sql);
    QFETCH(QString, result);
    QCOMPARE(rows(sql), result);
}

void SqlServidor::rechaza_data()
{
    QTest::addColumn<QString>("sql");
    const auto row = [](const char *sql) { QTest::newRow(sql) << QString::fromUtf8(sql); };
    row("SELECT iif(1=1,2,3)");
    row("SELECT ucase$(Apellido) FROM Pacientes");
    row("SELECT ucase(Apellido) FROM Pacientes");
    row("SELECT 'a' & 'b'");
    row("SELECT NroHC FROM [Agenda Turnos] WHERE Fecha = #01/31/2026#");
    row("SELECT NroHC FROM [Agenda Turnos] WHERE Fecha = '31/01/2026'");
    row("SELECT NroHC FROM [Agenda Turnos] WHERE Fecha = ''");
    row("SELECT NroHC FROM [Agenda Turnos] WHERE Fecha between '31/01/2026' and '20260131'");
    row("INSERT INTO [Agenda Turnos] (Fecha) VALUES ('31/01/2026')");
    row("INSERT INTO [Agenda Turnos] (Fecha) SELECT '31/01/2026' FROM Pacientes");
    row("UPDATE [Agenda Turnos] SET Fecha = '01/31/2026 10:20'");
    row("UPDATE Pacientes SET Embarazo = true");
    row("SELECT DISTINCTROW NroHC FROM Pacientes");
    row("SELECT DateDiff('yyyy', FeNac, '20260115') FROM Pacientes");
    // Of later versions.
    row("SELECT format(FeNac,'dd/MM/yyyy') FROM Pacientes");
    row("SELECT format(costo,'#,0.00','es-AR') FROM Pacientes");
    row("SELECT CONCAT(Apellido,'x') FROM Pacientes");
    row("SELECT TRY_CONVERT(int,DNI) FROM Pacientes");
    row("SELECT NroHC FROM Pacientes ORDER BY NroHC OFFSET 1 ROWS FETCH NEXT 1 ROWS ONLY");
    // Letters that its code page may not have, accents that it keeps apart.
    row("SELECT NroHC FROM Pacientes WHERE Apellido = 'Pérez'");
    row("SELECT NroHC FROM Pacientes WHERE Apellido like N'%perez%'");
    row("SELECT NroHC FROM Pacientes WHERE NroHC like '%1%'");
    row("SELECT NroHC FROM Pacientes WHERE Notas COLLATE Modern_Spanish_CI_AI like N'%perez%'");
    // A flag is 1 or 0.
    row("SELECT NroHC FROM Pacientes WHERE Embarazo = -1");
    row("SELECT SUM(Embarazo) FROM Pacientes");
    row("SELECT MAX(Embarazo) FROM Pacientes");
    row("SELECT NroHC FROM Pacientes WHERE -Embarazo = 1");
    // Text and number.
    row("SELECT NroHC FROM Pacientes WHERE DNI = 20111222");
    row("SELECT NroHC FROM Pacientes WHERE DNI in (20111222)");
    row("SELECT NroHC FROM Pacientes WHERE NroHC = DNI");
    row("UPDATE Pacientes SET NroHC = DNI");
    row("SELECT DNI FROM Pacientes UNION SELECT NroHC FROM Pacientes");
    row("SELECT AVG(NroHC) FROM Pacientes");
    row("SELECT CAST(costo AS nvarchar(20)) FROM Pacientes");
    row("SELECT isnull(DNI,'sin documento de identidad') FROM Pacientes");
    // Long texts may be "ntext".
    row("SELECT NroHC FROM Pacientes WHERE Notas = 'x'");
    row("SELECT DISTINCT Notas FROM Pacientes");
    row("SELECT NroHC FROM Pacientes ORDER BY Notas");
    row("SELECT LEN(Notas) FROM Pacientes");
    row("SELECT Notas + 'x' FROM Pacientes");
    // Names.
    row("SELECT NroHC AS key FROM Pacientes");
    row("SELECT NroHC FROM Pacientes user");
    row("SELECT * FROM (SELECT COUNT(*) FROM Pacientes) AS d");
    row("SELECT * FROM (SELECT NroHC, NroHC FROM Pacientes) AS d");
    // Order and groups.
    row("SELECT DISTINCT Apellido FROM Pacientes ORDER BY NroHC");
    row("SELECT Apellido FROM Pacientes ORDER BY Apellido, Apellido");
    row("SELECT Apellido, DNI AS Apellido FROM Pacientes ORDER BY Apellido");
    row("SELECT *, NroHC FROM Pacientes ORDER BY NroHC");
    row("SELECT Apellido AS a FROM Pacientes ORDER BY a + 'x'");
    row("SELECT NroHC FROM Pacientes GROUP BY NroHC ORDER BY Apellido");
    row("SELECT NroHC FROM Pacientes GROUP BY NroHC HAVING Apellido = 'x'");
    row("SELECT COUNT(*) FROM Pacientes GROUP BY 1 + 1");
    row("SELECT SUM((SELECT COUNT(*) FROM [Agenda Turnos])) FROM Pacientes");
    row("SELECT NroHC FROM Pacientes WHERE Embarazo = true");
    row("SELECT NroHC FROM Pacientes WHERE Embarazo");
    row("SELECT NroHC FROM Pacientes WHERE NOT Embarazo");
    row("SELECT Apellido = 'x' FROM Pacientes");
    row("SELECT \"x\"");
    row("SELECT isnull(apellido2) FROM Pacientes");
    row("SELECT nz(apellido2,'') FROM Pacientes");
    row("SELECT Apellido + NroHC FROM Pacientes");
    row("SELECT 'x' + 1");
    row("SELECT CASE WHEN 1=1 THEN 'no' ELSE NroHC END FROM Pacientes");
    row("SELECT NroHC FROM Pacientes WHERE NroHC = 'diez'");
    row("SELECT (SELECT Apellido FROM Pacientes ORDER BY Apellido)");
    row("SELECT NroHC, count(*) FROM Pacientes");
    row("SELECT Apellido, count(*) FROM Pacientes GROUP BY NroHC");
    row("SELECT now()");
    row("SELECT mid(Apellido,1,1) FROM Pacientes");
    row("SELECT 1 -- x");
    row("DELETE * FROM Pacientes");
    row("SELECT NroHC FROM Pacientes; SELECT 1");
    row("SELECT NroHC FROM Pacientes LIMIT 1");
    row("ALTER TABLE Pacientes ADD COLUMN x int");
    row("ALTER TABLE Pacientes ADD x YESNO");
    row("CREATE TABLE t (a TEXT(5))");
    row("IF EXISTS (SELECT * FROM Pacientes) DELETE FROM Pacientes");
    row("SELECT v_format(1,'0')");
    row("SELECT name FROM sqlite_master WHERE instr(name,'x') > 0");
}

void SqlServidor::rechaza()
{
    QFETCH(QString, sql);
    try {
        if (sql.startsWith(QLatin1String("SELECT")))
            (void)m_connection->query(sql);
        else
            m_connection->execute(sql);
    } catch (const db::Error &error) {
        QCOMPARE(int(error.kind()), int(db::Error::Kind::Syntax));
        return;
    }
    QFAIL("the server would refuse it");
}

/// What the server refuses only once it sees the rows.
void SqlServidor::alCorrer()
{
    QVERIFY(soporte::fallaDe([&] { (void)m_connection->query("SELECT (SELECT Apellido FROM Pacientes) AS a"); }));
    QVERIFY(soporte::fallaDe(
        [&] { (void)m_connection->query("SELECT NroHC FROM Pacientes WHERE NroHC = (SELECT NroHC FROM Pacientes)"); }));
    QVERIFY(soporte::fallaDe(
        [&] { (void)m_connection->query("SELECT CAST(costo * 1000000000000 AS money) FROM Pacientes"); }));
    QVERIFY(soporte::fallaDe([&] { (void)m_connection->query("SELECT Apellidos FROM Pacientes"); }));
    QVERIFY(soporte::fallaDe([&] { (void)m_connection->query("SELECT NroHC AS n FROM Pacientes WHERE n = 1"); }));
}

void SqlServidor::valores_data()
{
    QTest::addColumn<QString>("sql");
    QTest::addColumn<QVariant>("value");
    QTest::addColumn<bool>("taken");
    const auto row = [](const char *sql, const QVariant &value, bool taken) {
        QTest::addRow("%s %s", sql, qPrintable(value.toString())) << QString::fromUtf8(sql) << value << taken;
    };
    row("SELECT NroHC FROM Pacientes WHERE DNI = ?", QStringLiteral("20111222"), true);
    row("SELECT NroHC FROM Pacientes WHERE DNI = ?", 20111222, false);
    row("SELECT NroHC FROM Pacientes WHERE NroHC = ?", QStringLiteral("10"), true);
    row("SELECT NroHC FROM Pacientes WHERE NroHC in (?)", QStringLiteral("diez"), false);
    row("SELECT NroHC FROM Pacientes WHERE NroHC between ? and 20", QString(), false);
    row("SELECT NroHC FROM Pacientes WHERE FeNac >= ?", QDate(1753, 1, 1), true);
    row("SELECT NroHC FROM Pacientes WHERE FeNac >= ?", QDate(1752, 12, 31), false);
    row("SELECT NroHC FROM Pacientes WHERE FeNac >= ?", QStringLiteral("2020-01-01"), false);
    row("SELECT NroHC FROM Pacientes WHERE Embarazo = ?", true, false);
    row("UPDATE Pacientes SET DNI = ? WHERE NroHC = 99", 5, true);
    row("UPDATE Pacientes SET DNI = ? WHERE NroHC = 99", 1234567.5, false);
    row("UPDATE Pacientes SET Embarazo = ? WHERE NroHC = 99", true, true);
    row("UPDATE Pacientes SET FeNac = ? WHERE NroHC = 99", QVariant(), true);
}

void SqlServidor::valores()
{
    QFETCH(QString, sql);
    QFETCH(QVariant, value);
    QFETCH(bool, taken);
    QCOMPARE(
        soporte::fallaDe([&] {
            if (sql.startsWith(QLatin1String("SELECT")))
                (void)m_connection->query(sql, {value});
            else
                m_connection->execute(sql, {value});
        }).has_value(),
        !taken);
}

/// Amounts read alike from both back ends, and as the program writes them.
void SqlServidor::importes()
{
    const auto access = std::make_unique<db::Connection>(
        std::make_unique<db::EmbeddedEngine>(m_folder.filePath(QStringLiteral("Datos.mdb")), QStringLiteral("x")));
    for (const double amount :
         {0.0,
          0.004,
          0.005,
          -0.004,
          -0.005,
          0.145,
          1.0,
          -1234.5,
          1234.565,
          999.995,
          1000000.0,
          1234567.5,
          -0.5,
          123456789.12,
          99999999.99,
          0.1 + 0.2,
          double(0.145F),
          double(1234.56F),
          double(-45.675F)}) {
        QStringList texts{base::dinero(amount)};
        for (db::Connection *connection : {access.get(), m_connection.get()})
            texts << text(connection->query(QStringLiteral("SELECT %1 AS c FROM Pacientes WHERE NroHC = 10")
                                                .arg(connection->dialect().formatMoney(
                                                    QStringLiteral("(costo * 0 + %1)").arg(amount, 0, 'f', 12)))));
        QCOMPARE(texts, QStringList(3, texts.first()));
    }
    const auto written = [&](const QString &expression) {
        return text(m_connection->query(QStringLiteral("SELECT isnull(%1,'nada') FROM Pacientes WHERE NroHC = 10")
                                            .arg(m_connection->dialect().formatMoney(expression))));
    };
    QCOMPARE(written(QStringLiteral("NULLIF(NroHC,10)")), QStringLiteral("nada"));
    // What a card's bars would give, read into the wrong field, must not stop the whole list.
    QVERIFY(!written(QStringLiteral("costo * 100000000000000000")).isEmpty());
}

/// A search finds the same in both back ends.
void SqlServidor::busquedas()
{
    const auto access = std::make_unique<db::Connection>(
        std::make_unique<db::EmbeddedEngine>(m_folder.filePath(QStringLiteral("Datos.mdb")), QStringLiteral("x")));
    for (const auto &[sought, found] :
         {std::pair("perez", "10"),
          std::pair("PÉR", "10"),
          std::pair("nun", "11"),
          std::pair("NUÑ", "11"),
          std::pair("ñun", ""),
          std::pair("[n", ""),
          std::pair("_", ""),
          std::pair("%", "")})
        for (db::Connection *connection : {access.get(), m_connection.get()})
            QCOMPARE(
                text(connection->query(
                    QStringLiteral("SELECT NroHC FROM Pacientes WHERE ")
                    + connection->dialect().contains(QStringLiteral("Apellido"), QString::fromUtf8(sought)))),
                QString::fromLatin1(found));
}

void SqlServidor::ambosDialectos()
{
    // Each piece that Dialect gives, over the same rows in both dialects.
    const auto access = std::make_unique<db::Connection>(
        std::make_unique<db::EmbeddedEngine>(m_folder.filePath(QStringLiteral("Datos.mdb")), QStringLiteral("x")));
    QStringList results[2];
    int turn = 0;
    for (db::Connection *connection : {access.get(), m_connection.get()}) {
        const Dialect &d = connection->dialect();
        const QString patients = QStringLiteral(" FROM Pacientes WHERE NroHC = 10");
        const QDate birth(1980, 3, 5);
        for (const QString &sql : {
                 QStringLiteral("SELECT ")
                     + d.concat({QStringLiteral("Apellido"), d.text(u" "), QStringLiteral("apellido2")}) + patients,
                 QStringLiteral("SELECT ") + d.ifNull(QStringLiteral("apellido2"), d.text(u"-")) + patients,
                 QStringLiteral("SELECT ") + d.iif(QStringLiteral("Embarazo <> 0"), d.text(u"Sí"), d.text(u"No"))
                     + patients,
                 QStringLiteral("SELECT ") + d.upper(QStringLiteral("Apellido")) + patients,
                 QStringLiteral("SELECT ") + d.yearDiff(QStringLiteral("FeNac"), d.date({2026, 1, 1})) + patients,
                 QStringLiteral("SELECT ") + d.formatDate(QStringLiteral("FeNac")) + patients,
                 QStringLiteral("SELECT ") + d.formatDateTime(QStringLiteral("FeNac")) + patients,
                 QStringLiteral("SELECT ") + d.formatMoney(QStringLiteral("costo")) + patients,
                 QStringLiteral("SELECT NroHC FROM Pacientes WHERE ")
                     + d.contains(QStringLiteral("Apellido"), u"perez"),
                 QStringLiteral("SELECT NroHC FROM Pacientes WHERE ")
                     + d.dayRange(QStringLiteral("FeNac"), birth, birth),
                 QStringLiteral("SELECT NroHC FROM Pacientes WHERE ") + d.dayRange(QStringLiteral("FeNac"), {}, {}),
                 QStringLiteral("SELECT NroHC FROM Pacientes WHERE FeNac = ") + d.dateTime(birth.startOfDay()),
             })
            results[turn] << text(connection->query(sql));
        ++turn;
    }
    QCOMPARE(results[1], results[0]);
    QCOMPARE(
        results[0],
        (QStringList{
            "Pérez ", "-", "Sí", "PÉREZ", "46", "05/03/1980", "05/03/1980 00:00", "1.234,50", "10", "10", "10", "10"}));
}

void SqlServidor::tablas()
{
    const auto run = [this](const char *sql) { m_connection->execute(QString::fromUtf8(sql)); };
    const char *create
        = "IF NOT EXISTS (SELECT * FROM INFORMATION_SCHEMA.TABLES WHERE TABLE_NAME = N'Caja Vieja') BEGIN CREATE TABLE "
          "[Caja Vieja] (id int IDENTITY(6,1) PRIMARY KEY CLUSTERED, detalle nvarchar(50), memo nvarchar(max), "
          "importe real, cerrada BIT DEFAULT 0, fecha datetime, foto varbinary(max)) END";
    run(create);
    run(create);
    run("INSERT INTO [Caja Vieja] (detalle,fecha) VALUES ('x','20260131')");
    QCOMPARE(m_connection->insertedId(), 6);
    QCOMPARE(
        rows(QStringLiteral("SELECT id,cerrada,fecha FROM [Caja Vieja]")), QStringLiteral("6|0|2026-01-31 00:00:00"));
    const QVector<db::Column> columns = m_connection->columns(QStringLiteral("Caja Vieja"));
    QCOMPARE(columns.size(), 7);
    QCOMPARE(int(columns[0].type), int(db::Type::Counter));
    QCOMPARE(columns[1].size, 50);
    QCOMPARE(int(columns[5].type), int(db::Type::DateTime));

    const char *add
        = "IF NOT EXISTS (SELECT * FROM INFORMATION_SCHEMA.COLUMNS WHERE COLUMN_NAME = 'turno' and TABLE_NAME "
          "= 'Caja Vieja') BEGIN ALTER TABLE [Caja Vieja] ADD turno SMALLINT DEFAULT -1 END";
    run(add);
    run(add);
    run("INSERT INTO [Caja Vieja] (detalle) VALUES ('y')");
    // A default is for new rows only.
    QCOMPARE(rows(QStringLiteral("SELECT isnull(turno,5) FROM [Caja Vieja] ORDER BY id")), QStringLiteral("5\n-1"));
    const char *drop
        = "IF EXISTS (SELECT * FROM INFORMATION_SCHEMA.COLUMNS WHERE COLUMN_NAME = 'turno' and TABLE_NAME = 'Caja "
          "Vieja') BEGIN ALTER TABLE [Caja Vieja] DROP COLUMN turno; END";
    // Its default value holds it.
    QVERIFY(soporte::fallaDe([&] { run(drop); }));
    const QString held = rows(db::servidor::buscarRestriccion(QStringLiteral("Caja Vieja"), QStringLiteral("TURNO")));
    QVERIFY(!held.isEmpty());
    m_connection->execute(QStringLiteral("ALTER TABLE [Caja Vieja] DROP CONSTRAINT [%1]").arg(held));
    run(drop);
    QCOMPARE(m_connection->columns(QStringLiteral("Caja Vieja")).size(), 7);

    const char *index
        = "IF NOT EXISTS (SELECT * FROM sys.indexes WHERE object_id = OBJECT_ID(N'[Caja Vieja]') and name = "
          "N'detalle') BEGIN CREATE UNIQUE INDEX [detalle] ON [Caja Vieja](detalle) END";
    run(index);
    run(index);
    const auto repeated = soporte::fallaDe([&] { run("INSERT INTO [Caja Vieja] (detalle) VALUES ('X')"); });
    QVERIFY(repeated && repeated->kind() == db::Error::Kind::Constraint);
    run("DROP INDEX [detalle] ON [Caja Vieja]");
    run("DROP TABLE [Caja Vieja]");
    QVERIFY(!m_connection->tableExists(u"Caja Vieja"));
}

PRUEBA(SqlServidor)
#include "sqlServidor.moc"
