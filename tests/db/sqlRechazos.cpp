#include "sqlMemoria.h"

#include "db/Dialect.h"
#include "support/Prueba.h"

#include <random>

/// What the translator must not let through, and what it does with text that nobody meant as a statement.
class SqlRechazos : public QObject
{
    Q_OBJECT

private slots:
    void rechazo_data();
    void rechazo();
    void azar();
    void textosDeUsuario();
};

void SqlRechazos::rechazo_data()
{
    QTest::addColumn<QString>("sql");
    const auto row = [](const char *sql) { QTest::newRow(sql) << QString::fromUtf8(sql); };
    row("");
    row(";");
    row("SELECT");
    row("SELECT a FROM");
    row("SELECT a b c FROM t");
    row("SELECT a FROM t WHERE");
    row("SELECT a FROM t; DROP TABLE t");
    row("SELECT a FROM t;;");
    row("SELECT 1 /* x */");
    row("SELECT a FROM t -- x");
    row("SELECT 'a");
    row("SELECT [a FROM t");
    row("SELECT [] FROM t");
    row("SELECT (1");
    row("SELECT 1)");
    row("SELECT #13/13/2026#");
    row("SELECT #02/30/2026#");
    row("SELECT #hoy#");
    row("SELECT 12abc");
    row("SELECT 1.2.3");
    row("SELECT load_extension('x')");
    row("SELECT v_format(1)");
    row("SELECT random()");
    row("SELECT printf('%d',1)");
    row("SELECT first(a) FROM t");
    row("SELECT ucase('a','b')");
    row("SELECT iif(1,2)");
    row("SELECT min(a,b) FROM t");
    row("SELECT sum(count(a)) FROM t");
    row("SELECT datediff('x',a,b) FROM t");
    row("SELECT datediff(yyyy,a,b) FROM t");
    row("SELECT format(a,'#,0.00;(0)') FROM t");
    row("SELECT format(a,b) FROM t");
    row("SELECT a || b FROM t");
    row("SELECT a != b FROM t");
    row("SELECT a == b FROM t");
    row("SELECT a % b FROM t");
    row("SELECT a FROM t WHERE a IS 5");
    row("SELECT a FROM t WHERE a GLOB 'x'");
    row("SELECT a FROM t WHERE a IN ()");
    row("SELECT a FROM t WHERE a > true");
    row("SELECT a FROM t LIMIT 1");
    row("SELECT TOP 5 PERCENT a FROM t");
    row("SELECT TOP a FROM t");
    row("SELECT a INTO u FROM t");
    row("SELECT a FROM t FULL JOIN u ON 1=1");
    row("SELECT a FROM t JOIN u ON 1=1");
    row("SELECT a FROM t INNER JOIN u");
    row("SELECT a FROM t UNION SELECT a,b FROM t");
    row("SELECT (SELECT a,b FROM t)");
    row("SELECT a, count(*) FROM t");
    row("SELECT a, b FROM t GROUP BY a");
    row("SELECT *, count(*) FROM t");
    row("SELECT CASE WHEN 1=1 THEN 2 END");
    row("SELECT where FROM t");
    row("SELECT CAST(a AS TEXT) FROM t");
    row("SELECT a COLLATE BINARY FROM t");
    row("INSERT INTO t (a,b) VALUES (1)");
    row("INSERT INTO t (a) VALUES (1),(2)");
    row("INSERT INTO t (a) SELECT a,b FROM u");
    row("INSERT OR REPLACE INTO t (a) VALUES (1)");
    row("UPDATE t SET a = 1, ");
    row("UPDATE t SET u.a = 1");
    row("UPDATE t INNER JOIN u ON t.a = u.a SET a = 1");
    row("DELETE t");
    row("DELETE FROM t LIMIT 1");
    row("DELETE FROM t RETURNING a");
    row("DROP VIEW x");
    row("ALTER TABLE t RENAME TO u");
    row("ALTER TABLE t ADD a GEOMETRY");
    row("CREATE TABLE t (a TEXT)");
    row("CREATE INDEX i ON t (a) WHERE a > 1");
    row("PRAGMA key = 'x'");
    row("ATTACH DATABASE 'x' AS y");
    row("VACUUM");
    row("EXPLAIN SELECT 1");
    row("WITH x AS (SELECT 1) SELECT * FROM x");
    row("SELECT \\");
    row("SELECT @a");
    row("SELECT :a");
    row("SELECT `a` FROM t");
    row("SELECT x'00'");
    const QString deep = QString(400, u'(') + u'1' + QString(400, u')');
    QTest::newRow("400 parentheses") << QStringLiteral("SELECT ") + deep;
    QTest::newRow("10000 signs") << QStringLiteral("SELECT ") + QString(10000, u'-') + u'1';
    QTest::newRow("10000 nots") << QStringLiteral("SELECT ") + QStringLiteral("not ").repeated(10000) + u'1';
    QTest::newRow("NUL") << QStringLiteral("SELECT 'a") + QChar() + QStringLiteral("b'");
}

void SqlRechazos::rechazo()
{
    QFETCH(QString, sql);
    try {
        const db::sql::Translated passed = db::sql::fromAccess(sql);
        QFAIL(("passed as " + passed.text).constData());
    } catch (const db::Error &error) {
        QCOMPARE(int(error.kind()), int(db::Error::Kind::Syntax));
        QVERIFY(error.description().contains(QStringLiteral("posición")));
    }
}

void SqlRechazos::azar()
{
    static const QStringList seeds{
        "SELECT id,NomDoc FROM [Lista Doctores] WHERE tipo = 0 ORDER BY prioridad DESC,NomDoc",
        "SELECT TOP 1 a,(SELECT b FROM u WHERE u.id = t.id) AS c FROM t WHERE (Fecha >= #01/31/2026 10:20# and b <> "
        "'x''y')",
        "SELECT DISTINCTROW 0,format(a,'dd/mm/yyyy hh:nn') & ', ' & null FROM ((t INNER JOIN u ON t.id = u.id) LEFT "
        "JOIN w "
        "ON u.id = w.id) WHERE a like '%x[%]%' or b between 1 and -2",
        "INSERT INTO [t] (a,b) SELECT iif(isnull(a),0,a),datediff('yyyy',a,#1/1/26#) FROM t UNION ALL SELECT 1,2",
        "UPDATE t SET a = a + 1.5e3 \\ 2, b = true WHERE NOT a IN (1,2,?) AND b IS NOT NULL;",
        "DELETE * FROM t WHERE a = ucase$(\"x\") mod 3 ^ 2",
        "CREATE UNIQUE INDEX i ON t (a, b DESC)",
        "ALTER TABLE t ADD COLUMN z TEXT(20) DEFAULT 'a'",
        "SELECT a, sum(b) FROM t GROUP BY a HAVING count(*) > 1 ORDER BY 1",
    };
    static const QStringList words{"SELECT", "FROM",  "(",    ")",   "'",    "\"",  "[",   "]",     "#",       ";",
                                   "--",     "/*",    "*",    ",",   "NOT ", "-",   "?",   "UNION", "x",       "''",
                                   "\\",     "ORDER", " BY ", "iif", "TOP ", " & ", "1e9", "null",  " EXISTS", "{"};
    SqlMemoria engine;
    for (const char *sql :
         {"CREATE TABLE t (id, a, b, Fecha)",
          "CREATE TABLE u (id, b)",
          "CREATE TABLE w (id)",
          "CREATE TABLE [Lista Doctores] (id, NomDoc, tipo, prioridad)"})
        engine.native(sql);

    std::mt19937 random(20260131);
    const auto below
        = [&random](qsizetype limit) { return qsizetype(random() % quint32(std::max<qsizetype>(1, limit))); };
    int refused = 0, prepared = 0;
    for (int round = 0; round < 20000; ++round) {
        QString sql = seeds[below(seeds.size())];
        for (qsizetype i = below(3); i > 0; --i) {
            const qsizetype at = below(sql.size());
            switch (below(6)) {
            case 0:
                sql[at] = QChar(char16_t(
                    below(9) == 0       ? below(0x3000)
                        : below(2) == 0 ? 32 + below(95)
                                        : u'a' + below(26)));
                break;
            case 1: sql.remove(at, 1 + below(8)); break;
            case 2: sql.insert(at, words[below(words.size())]); break;
            case 3: sql += sql.mid(at, below(40)); break;
            case 4: {
                QStringList parts = sql.split(u' ');
                parts.swapItemsAt(below(parts.size()), below(parts.size()));
                sql = parts.join(u' ');
                break;
            }
            default: sql.insert(at, QString(below(250), u'(') + words[below(words.size())]);
            }
        }
        QByteArray text;
        try {
            text = db::sql::fromAccess(sql).text;
        } catch (const db::Error &error) {
            QCOMPARE(int(error.kind()), int(db::Error::Kind::Syntax));
            ++refused;
            continue;
        }
        sqlite3_stmt *statement = nullptr;
        const char *tail = nullptr;
        const int code = sqlite3_prepare_v2(engine.handle(), text.constData(), -1, &statement, &tail);
        sqlite3_finalize(statement);
        const QByteArray message = code == SQLITE_OK ? QByteArray() : QByteArray(sqlite3_errmsg(engine.handle()));
        // What was understood must be the engine's grammar: only names and meanings may be wrong.
        QVERIFY2(
            !message.contains("syntax error") && !message.contains("unrecognized"),
            (sql.toUtf8() + " -> " + text + ": " + message).constData());
        if (code == SQLITE_OK) {
            QVERIFY2(tail == text.constData() + text.size(), text.constData());
            ++prepared;
        }
    }
    // The mutations must reach both sides for this to say anything.
    QVERIFY2(refused > 5000 && prepared > 5000, qPrintable(QStringLiteral("%1 %2").arg(refused).arg(prepared)));
}

void SqlRechazos::textosDeUsuario()
{
    static const QString alphabet = QStringLiteral("ab'\"%_[]#;-*?&()=\\/\n\t ñÑáÉ€|{}<>$@!`^,.0");
    const db::Dialect dialect(db::Dialect::Kind::Access);
    SqlMemoria engine;
    engine.native("CREATE TABLE t (a TEXT COLLATE NOCASE)");
    std::mt19937 random(7);
    for (int round = 0; round < 1500; ++round) {
        QString text;
        for (int i = int(random() % 12); i > 0; --i)
            text += alphabet[qsizetype(random() % quint32(alphabet.size()))];
        QCOMPARE(engine.run(QStringLiteral("SELECT ") + dialect.text(text)), QStringList{text});
        engine.native("DELETE FROM t");
        engine.run(QStringLiteral("INSERT INTO t (a) VALUES (") + dialect.text(u'<' + text + u'>') + u')');
        const QStringList found
            = engine.run(QStringLiteral("SELECT 1 FROM t WHERE ") + dialect.contains(QStringLiteral("a"), text));
        QVERIFY2(found == QStringList{"1"}, qPrintable(text));
        const QStringList none = engine.run(
            QStringLiteral("SELECT 1 FROM t WHERE ")
            + dialect.contains(QStringLiteral("a"), text + QStringLiteral("#z#")));
        QVERIFY2(none.isEmpty(), qPrintable(text));
    }
}

PRUEBA(SqlRechazos)
#include "sqlRechazos.moc"
