#include "db/Engine.h"
#include "db/Error.h"
#include "db/odbc/Failure.h"
#include "db/odbc/Flavour.h"
#include "db/odbc/Literals.h"
#include "db/odbc/SingleTable.h"
#include "db/odbc/Target.h"
#include "support/Prueba.h"

using namespace Qt::StringLiterals;
using namespace db::odbc;
using Kind = db::Error::Kind;

/// What is made of texts before anything is connected: the driver's choice and its string, values in statements, the
/// words for a failure.
class PruebaTextos : public QObject
{
    Q_OBJECT

    const QString described = u"Provider=SQLOLEDB; Initial Catalog=Datos; Data Source=%1; User Id=%2; Password=%3"_s;

private slots:
    void choosesDriver_data()
    {
        QTest::addColumn<QStringList>("installed");
        QTest::addColumn<QStringList>("libraries");
        QTest::addColumn<QString>("chosen");
        const QStringList none;
        const QString old = u"SQL Server"_s, native = u"SQL Server Native Client 11.0"_s;
        const auto odbc = [](int n) { return u"ODBC Driver %1 for SQL Server"_s.arg(n); };
        QTest::newRow("none") << QStringList{u"PostgreSQL Unicode"_s, u"SQLite3"_s} << none << "";
        QTest::newRow("Windows alone") << QStringList{u"Microsoft Access Driver"_s, old} << none << old;
        QTest::newRow("newer") << QStringList{native, old} << none << native;
        QTest::newRow("newest") << QStringList{odbc(17), native, odbc(18), old, odbc(13)} << none << odbc(18);
        QTest::newRow("by name") << QStringList{u"FreeTDS"_s} << QStringList{u"/x/libtdsodbc.so"_s} << "FreeTDS";
        QTest::newRow("by library") << none << QStringList{u"/x/libtdsodbc.so"_s} << "/x/libtdsodbc.so";
    }
    void choosesDriver()
    {
        QFETCH(QStringList, installed);
        QFETCH(QStringList, libraries);
        QFETCH(QString, chosen);
        const auto driver = chooseDriver(installed, libraries);
        QCOMPARE(driver ? driver->name : QString(), chosen);
        QVERIFY(!driver || driver->freeTds == chosen.contains(u"tds"_s, Qt::CaseInsensitive));
    }

    void driverString_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<bool>("freeTds");
        QTest::addColumn<QString>("expected"); // in part; empty where it is refused
        const QString tds = u"TDS_Version=7.4;ClientCharset=UTF-8;"_s;
        const auto from = [this](const QString &server, const QString &user, const QString &password) {
            return described.arg(server, user, password);
        };
        QTest::newRow("plain") << from(u"SRV"_s, u"sa"_s, u"x"_s) << true
                               << u"DRIVER={D};Server=SRV;Port=1433;"_s + tds;
        QTest::newRow("instance") << from(u"SRV\\SQLEXPRESS"_s, u"sa"_s, u"x"_s) << true
                                  << u"Server=SRV\\SQLEXPRESS;TDS_Version"_s;
        QTest::newRow("port") << from(u"SRV,14330"_s, u"sa"_s, u"x"_s) << true << u"Server=SRV;Port=14330;"_s;
        QTest::newRow("instance and port")
            << from(u"tcp:SRV\\A, 99"_s, u"sa"_s, u"x"_s) << true << u"Server=SRV;Port=99;"_s;
        QTest::newRow("here") << from(u".\\SQLEXPRESS"_s, u"sa"_s, u"x"_s) << false
                              << u"Server=localhost\\SQLEXPRESS;"_s;
        QTest::newRow("Windows, port") << from(u"SRV\\A,99"_s, u"sa"_s, u"x"_s) << false << u"Server=SRV,99;"_s;
        QTest::newRow("master") << u"Provider=SQLOLEDB; Initial Catalog=master; Data Source=S; UID=u; PWD=p"_s << false
                                << u"Database=master;UID=u;PWD=p;"_s;
        QTest::newRow("FreeTDS password")
            << from(u"SRV"_s, u"a b"_s, u"a;b}c={d}"_s) << true << u"UID=a b;PWD={a;b}c={d}};APP"_s;
        QTest::newRow("Microsoft password")
            << from(u"SRV"_s, u"sa"_s, u"a;b}c={d}"_s) << false << u"PWD={a;b}}c={d}}};"_s;
        QTest::newRow("no server") << from({}, u"sa"_s, u"x"_s) << true << "";
        QTest::newRow("password that FreeTDS does not take") << from(u"SRV"_s, u"sa"_s, u"a};b"_s) << true << "";
        QTest::newRow("server that is more") << from(u"SRV{;PWD"_s, u"sa"_s, u"x"_s) << true << "";
        QTest::newRow("port that is none") << from(u"SRV,x"_s, u"sa"_s, u"x"_s) << false << "";
    }
    void driverString()
    {
        QFETCH(QString, text);
        QFETCH(bool, freeTds);
        QFETCH(QString, expected);
        try {
            const Target target = targetOf(db::ConnectionString(text), {u"D"_s, freeTds});
            QVERIFY2(!expected.isEmpty() && target.text.contains(expected), qPrintable(target.text));
            QVERIFY(target.text.endsWith(u';'));
            QVERIFY(target.passing == (freeTds ? Passing::Written : Passing::Bound));
        } catch (const db::Error &error) {
            QVERIFY(expected.isEmpty());
            QCOMPARE(error.kind(), Kind::CannotOpen);
        }
    }

    void values_data()
    {
        QTest::addColumn<QVariant>("value");
        QTest::addColumn<QString>("written");
        QTest::newRow("null") << QVariant() << "NULL";
        QTest::newRow("empty") << QVariant(u""_s) << "N''";
        QTest::newRow("quote") << QVariant(u"O'Higgins ≥ 😀"_s) << u"N'O''Higgins ≥ 😀'"_s;
        // A backslash before a line break would take the break away.
        QTest::newRow("broken line") << QVariant(u"a\\\r\nb\\\nc\\"_s)
                                     << u"REPLACE(N'a\\|\r\nb\\|\nc\\' COLLATE Latin1_General_BIN2,N'|',N'')"_s;
        QTest::newRow("marks in the text")
            << QVariant(u"||'\\\r|"_s) << u"REPLACE(N'||''\\|||\r|' COLLATE Latin1_General_BIN2,N'|||',N'')"_s;
        QTest::newRow("NUL") << QVariant(u"a"_s + QChar(0) + u"b"_s) << "N'ab'";
        QTest::newRow("half a pair") << QVariant(QString(QChar(0xD83D)) + u"a"_s) << u"N'\uFFFDa'"_s;
        QTest::newRow("flag") << QVariant(true) << "1";
        QTest::newRow("number") << QVariant(7) << "7";
        QTest::newRow("below") << QVariant(-7) << "(-7)";
        QTest::newRow("fraction") << QVariant(0.1) << "(1.0000000000000001e-01)";
        QTest::newRow("day") << QVariant(QDate(1980, 3, 5)) << "CAST('19800305 00:00:00' AS datetime)";
        QTest::newRow("time") << QVariant(QTime(9, 5)) << "CAST('18991230 09:05:00' AS datetime)";
        QTest::newRow("bytes") << QVariant(QByteArray("\0'\xFF", 3)) << "0x0027ff";
        QTest::newRow("no bytes") << QVariant(QByteArray("")) << "0x";
    }
    void values()
    {
        QFETCH(QVariant, value);
        QFETCH(QString, written);
        QCOMPARE(literal(value, sqlServer()), written);
    }

    void placesOfValues()
    {
        const QString sql = u"SELECT '?''?', [a?]]?], \"?\", ? /* ? */ -- ?\n FROM t WHERE x = ?"_s;
        QCOMPARE(outlineOf(sql).parameters, 2);
        QCOMPARE(
            replaceParameters(sql, [](int i) { return u"<%1>"_s.arg(i); }),
            u"SELECT '?''?', [a?]]?], \"?\", <0> /* ? */ -- ?\n FROM t WHERE x = <1>"_s);
        QVERIFY(outlineOf(u" insert INTO [t] (a) Values (?)").values);
        QVERIFY(!outlineOf(u"INSERT INTO t (a) SELECT 'values' FROM [values]").values);
        QCOMPARE(outlineOf(u"/* INSERT */ update t SET a = 1").verb, u"UPDATE"_s);
    }

    void oneTable_data()
    {
        QTest::addColumn<QString>("sql");
        QTest::addColumn<QString>("table");
        for (const auto &[sql, table] : std::initializer_list<std::pair<QString, QString>>{
                 {u"SELECT * FROM [Lista Doctores] WHERE id = 0"_s, u"Lista Doctores"_s},
                 {u"SELECT TOP 1 a, isnull(b,N'FROM x') FROM dbo.Caja ORDER BY id"_s, u"Caja"_s},
                 {u"SELECT a, (SELECT count(*) FROM u) FROM [t] AS x WHERE a IN (SELECT a FROM w GROUP BY a)"_s,
                  u"t"_s},
                 {u"SELECT * FROM a, b"_s, {}},
                 {u"SELECT * FROM a INNER JOIN b ON a.x = b.x"_s, {}},
                 {u"SELECT DISTINCT a FROM t"_s, {}},
                 {u"SELECT isnull(sum(a),0) FROM t"_s, {}},
                 {u"SELECT a FROM t GROUP BY a"_s, {}},
                 {u"SELECT a FROM t UNION SELECT a FROM u"_s, {}},
                 {u"SELECT a FROM (SELECT a FROM t) x"_s, {}},
                 {u"UPDATE t SET a = 1"_s, {}},
                 {u"SELECT 1"_s, {}}})
            QTest::newRow(qPrintable(sql)) << sql << table;
    }
    void oneTable()
    {
        QFETCH(QString, sql);
        QFETCH(QString, table);
        QCOMPARE(singleTable(sql), table);
    }

    /// No words of the driver reach the person: they may hold a patient's data or the password.
    void failures_data()
    {
        QTest::addColumn<QString>("state");
        QTest::addColumn<int>("number");
        QTest::addColumn<QString>("text");
        QTest::addColumn<int>("kind");
        QTest::addColumn<bool>("lost");
        const auto row = [](const char *state, int number, const QString &text, Kind kind, bool lost = false) {
            QTest::addRow("%s %d", state, number) << QString::fromLatin1(state) << number << text << int(kind) << lost;
        };
        row("23000", 2627, u"Violation of UNIQUE KEY. The duplicate key value is (Pérez, 1234)."_s, Kind::Constraint);
        row("23000", 515, u"Cannot insert the value NULL into column 'a'"_s, Kind::Constraint);
        row("42S02", 208, u"Invalid object name 'Lista Usos'."_s, Kind::NoSuchTable);
        row("42S22", 207, u"El nombre de columna 'moduloweb' no es válido."_s, Kind::NoSuchColumn);
        row("22001", 2628, u"String would be truncated. Truncated value: 'Pérez'."_s, Kind::General);
        row("22018", 245, u"Conversion failed when converting 'Pérez' to int."_s, Kind::General);
        row("40001", 1205, u"deadlock victim"_s, Kind::Busy);
        row("HYT00", 1222, u"Lock request time out period exceeded."_s, Kind::Busy);
        row("HYT00", 0, u"Timeout expired"_s, Kind::Busy);
        row("42000", 102, u"Incorrect syntax near 'Pérez'."_s, Kind::Syntax);
        row("42000", 229, u"The SELECT permission was denied on 'Caja'"_s, Kind::General);
        row("42000", 3906, u"read-only"_s, Kind::ReadOnly);
        row("42000", 1105, u"PRIMARY filegroup is full"_s, Kind::Full);
        row("08S01", 20006, u"Write to the server failed"_s, Kind::General, true);
        row("HY000", 20047, u"DBPROCESS is dead or not enabled"_s, Kind::General, true);
        row("HY000", 0, u"PWD=secreto"_s, Kind::General);
    }
    void failures()
    {
        QFETCH(QString, state);
        QFETCH(int, number);
        QFETCH(QString, text);
        QFETCH(int, kind);
        QFETCH(bool, lost);
        const Diagnostics report{{u"01000"_s, number, u"statement terminated"_s}, {state, number, text}};
        const db::Error error = errorOf(report, During::Statement);
        QCOMPARE(int(error.kind()), kind);
        QCOMPARE(error.number(), number);
        QCOMPARE(tellsLost(report), lost);
        for (const QString &secret : {u"Pérez"_s, u"1234"_s, u"secreto"_s, u"PWD"_s, u"DBPROCESS"_s})
            QVERIFY2(!error.description().contains(secret), qPrintable(error.description()));
        const bool names = error.kind() == Kind::NoSuchTable || error.kind() == Kind::NoSuchColumn;
        QCOMPARE(error.description().contains(names ? text.section(u'\'', 1, 1) : u"'"_s), names);
        QCOMPARE(errorOf(report, During::Opening).kind(), Kind::CannotOpen);
    }
};

PRUEBA(PruebaTextos)
#include "PruebaTextos.moc"
