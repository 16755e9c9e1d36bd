#include "db/Connection.h"
#include "db/Error.h"
#include "db/odbc/OdbcEngine.h"
#include "odbc/Postgres.h"
#include "support/Falla.h"
#include "support/Prueba.h"

#include <thread>

using namespace Qt::StringLiterals;
using db::Error;
using db::odbc::Passing;
using soporte::fallaDe;

Q_DECLARE_METATYPE(db::odbc::Passing)

/// The plumbing, on a real server: what is passed and read, several results, transactions, a server that goes away.
class PruebaMotor : public QObject
{
    Q_OBJECT

    std::unique_ptr<Postgres> server;

    [[nodiscard]] std::unique_ptr<db::Connection> connect(Passing passing = Passing::Written) const
    {
        return std::make_unique<db::Connection>(std::make_unique<db::OdbcEngine>(server->target(passing)));
    }
    [[nodiscard]] static qint64 count(db::Connection &connection)
    {
        return connection.query(u"SELECT count(*) FROM cosas"_s)->integer(0, 0);
    }
    static int process(db::Connection &connection)
    {
        return int(connection.query(u"SELECT pg_backend_pid()"_s)->integer(0, 0));
    }
    void kill(int backend) const
    {
        const auto other = connect();
        QVERIFY(other->query(u"SELECT pg_terminate_backend(?, 5000)"_s, {backend})->flag(0, 0));
    }

private slots:
    void initTestCase() { server = std::make_unique<Postgres>(); }
    void cleanupTestCase() { server.reset(); }

    void init()
    {
        const auto connection = connect();
        connection->execute(u"DROP TABLE IF EXISTS cosas CASCADE"_s);
        connection->execute(
            u"CREATE TABLE cosas (id serial PRIMARY KEY, ancho varchar(255) DEFAULT 'x', memo text, fecha timestamp, "
            "simple real, doble double precision, numero integer DEFAULT -1, bytes bytea)"_s);
    }

    void valuesSurvive_data()
    {
        QTest::addColumn<Passing>("passing");
        QTest::newRow("bound") << Passing::Bound;
        QTest::newRow("written") << Passing::Written;
    }

    void valuesSurvive()
    {
        QFETCH(Passing, passing);
        const auto connection = connect(passing);
        QString memo;
        for (int i = 0; memo.size() < 100000; ++i)
            memo += QString::number(i) + u" ≥ 5 «ñ» 😀 𝄞 O'Higgins \\\r\n"_s;
        QByteArray bytes;
        for (int i = 0; i < 300000; ++i)
            bytes += char(i * 7 % 256);
        const auto moment = [](int y, int m, int d, int h = 0, int n = 0, int s = 0) {
            return QDateTime(QDate(y, m, d), QTime(h, n, s));
        };
        const std::vector<db::Params> rows{
            {QString(255, u'ñ'), memo, moment(1753, 1, 1), 0.1f, 0.1, 1, bytes},
            {u"≥"_s,
             QString(1024, u'≥'),
             moment(1899, 12, 30, 10, 20, 5),
             16777216.0f,
             12.300000000000002,
             -2147483647,
             QByteArray("\0", 1)},
            {u"¿Va? [x] -- /* '' \"a\" @P1 ;"_s,
             QString(511, u'a') + u"😀b"_s,
             moment(8888, 12, 31),
             -0.01f,
             -1e-300,
             0,
             QByteArray(1024, '\0')},
            {u"  a  "_s,
             u"\t\r\n"_s,
             moment(9999, 12, 31, 23, 59, 59),
             3.4028235e38f,
             1.7976931348623157e308,
             -1,
             QByteArray("")},
            {u""_s, u""_s, moment(2024, 2, 29), 0.0f, 5e-324, 2147483647, QByteArray("a")},
            db::Params(7),
        };
        for (const db::Params &row : rows)
            QCOMPARE(
                connection->execute(
                    u"INSERT INTO cosas (ancho,memo,fecha,simple,doble,numero,bytes) VALUES (?,?,?,?,?,?,?)"_s, row),
                1);
        QCOMPARE(connection->insertedId(), qint64(rows.size()));

        const db::Rows read
            = connection->query(u"SELECT ancho,memo,fecha,simple,doble,numero,bytes FROM cosas ORDER BY id"_s);
        QCOMPARE(read->rowCount(), int(rows.size()));
        for (int r = 0; r < read->rowCount(); ++r) {
            for (int c = 0; c < 7; ++c) {
                const QVariant &written = rows[size_t(r)][c];
                const QByteArray where
                    = QStringLiteral("row %1, column %2: %3").arg(r).arg(c).arg(read->text(r, c).left(80)).toUtf8();
                QVERIFY2(read->isNull(r, c) == !written.isValid(), where.constData());
                if (!written.isValid())
                    continue;
                const bool same = written.typeId() == QMetaType::Float ? float(read->real(r, c)) == written.toFloat()
                    : written.typeId() == QMetaType::Double            ? read->real(r, c) == written.toDouble()
                                                                       : read->value(r, c) == written;
                QVERIFY2(same, where.constData());
            }
            // Found by what was written, the empty text apart from Null.
            if (rows[size_t(r)][0].isValid())
                QCOMPARE(
                    connection
                        ->query(
                            u"SELECT id FROM cosas WHERE ancho = ? AND numero = ? AND fecha = ?"_s,
                            {rows[size_t(r)][0], rows[size_t(r)][5], rows[size_t(r)][2]})
                        ->rowCount(),
                    1);
        }
        QVERIFY(connection->query(u"SELECT true"_s)->flag(0, 0));
        QCOMPARE(connection->query(u"SELECT true"_s)->integer(0, 0), -1);
        // What cannot travel is replaced, never cut off.
        QCOMPARE(
            connection->query(u"SELECT ?"_s, {u"a"_s + QChar(0) + u"b"_s + QChar(0xD83D) + u"c"_s})->text(0, 0),
            u"ab\uFFFDc"_s);
        QVERIFY(fallaDe([&] { connection->execute(u"UPDATE cosas SET numero = ?"_s, {}); }));
    }

    void resultsStandBesideEachOther()
    {
        const auto connection = connect();
        connection->executeBatch(u"INSERT INTO cosas (numero) VALUES (?)"_s, {{1}, {2}, {3}});
        const db::Rows one = connection->query(u"SELECT numero FROM cosas ORDER BY id"_s);
        const db::Rows other = connection->query(u"SELECT numero FROM cosas ORDER BY id DESC"_s);
        connection->execute(u"DELETE FROM cosas"_s);
        QCOMPARE(one->integer(0, 0) + 10 * other->integer(0, 0), 31);
        // A batch yields its rows wherever they come, and its failure wherever it comes.
        QCOMPARE(connection->query(u"UPDATE cosas SET numero = 0; SELECT 7"_s)->integer(0, 0), 7);
        QVERIFY(fallaDe([&] { connection->execute(u"UPDATE cosas SET numero = 0; SELECT 1/0"_s); }));
        QVERIFY(fallaDe([&] { (void)connection->query(u"DELETE FROM cosas"_s); }));
        QCOMPARE(connection->query(u"SELECT 8"_s)->integer(0, 0), 8);
    }

    void manyRowsAtOnce()
    {
        const auto connection = connect();
        std::vector<db::Params> rows;
        for (int i = 0; i < 10000; ++i)
            rows.push_back({i, i % 7 == 0 ? QVariant() : u"Peña; O'Higgins ? %1"_s.arg(i), u"ñ"_s.repeated(i % 90)});
        const QString insert = u"INSERT INTO cosas (numero,ancho,memo) VALUES (?,?,?)"_s;
        QCOMPARE(connection->executeBatch(insert, rows), 10000);
        const db::Rows read = connection->query(u"SELECT numero,ancho,memo FROM cosas ORDER BY id"_s);
        QCOMPARE(read->rowCount(), 10000);
        for (int r = 0; r < 10000; ++r)
            for (int c = 0; c < 3; ++c)
                QVERIFY(
                    read->isNull(r, c) ? rows[size_t(r)][c].isNull()
                                       : read->text(r, c) == rows[size_t(r)][c].toString());

        // One that does not fit, far from the first: none is stored.
        rows[8000][1] = QString(256, u'x');
        const auto failure = fallaDe([&] {
            db::Transaction transaction(*connection);
            connection->executeBatch(insert, rows);
            transaction.commit();
        });
        QVERIFY(failure && !failure->description().contains(u"xxx"));
        QCOMPARE(count(*connection), 10000);
    }

    void transactions()
    {
        const auto connection = connect();
        const QString insert = u"INSERT INTO cosas (id,ancho) VALUES (?,?)"_s;
        {
            db::Transaction outer(*connection);
            {
                db::Transaction inner(*connection);
                connection->execute(insert, {1, u"a"_s});
                inner.commit();
            }
            outer.commit();
        }
        QCOMPARE(count(*connection), 1);
        {
            const db::Transaction forgotten(*connection);
            connection->execute(insert, {2, u"b"_s});
        }
        QCOMPARE(count(*connection), 1);

        // A failure that ends the transaction on the server: nothing that follows is stored by itself.
        {
            db::Transaction cut(*connection);
            connection->execute(insert, {3, u"c"_s});
            const auto failure = fallaDe([&] { connection->execute(insert, {1, u"Pérez"_s}); });
            QVERIFY(failure);
            QCOMPARE(failure->kind(), Error::Kind::Constraint);
            QVERIFY(!failure->description().contains(u"Pérez"_s) && !failure->description().contains(u"(1)"_s));
            QVERIFY(fallaDe([&] { connection->execute(insert, {4, u"d"_s}); }));
            QVERIFY(fallaDe([&] { cut.commit(); }));
        }
        QCOMPARE(count(*connection), 1);

        // Only one transaction may write: another waits for its turn, as long as it was told to.
        const auto second = connect();
        const db::Transaction writing(*connection);
        const db::ShortWait shortWait(*second, 200);
        const auto busy = fallaDe([&] { const db::Transaction waiting(*second); });
        QVERIFY(busy);
        QCOMPARE(busy->kind(), Error::Kind::Busy);
        QVERIFY(!second->inTransaction());
    }

    /// Each way in which the connection can be cut: told once, and the next action finds the server again.
    void serverGoesAway_data()
    {
        QTest::addColumn<QString>("when");
        for (const char *when : {"reading", "changing", "inTransaction", "idle"})
            QTest::newRow(when) << QString::fromLatin1(when);
    }

    void serverGoesAway()
    {
        QFETCH(QString, when);
        auto engine = std::make_unique<db::OdbcEngine>(server->target(Passing::Written));
        if (when == u"idle")
            engine->setIdleCheck(0);
        db::Connection connection(std::move(engine));
        connection.execute(u"INSERT INTO cosas (numero) VALUES (1)"_s);
        const QString change = u"UPDATE cosas SET numero = 2"_s;

        std::optional<Error> failure;
        if (when == u"inTransaction") {
            db::Transaction cut(connection);
            connection.execute(change);
            kill(process(connection));
            failure = fallaDe([&] { connection.execute(u"UPDATE cosas SET numero = 3"_s); });
            // What follows must not be stored on a new connection, and its end does not pretend.
            for (int i = 0; i < 2; ++i) {
                const auto after = fallaDe([&] { connection.execute(u"UPDATE cosas SET numero = 4"_s); });
                QVERIFY(after && after->kind() == Error::Kind::Lost);
            }
            const auto end = fallaDe([&] { cut.commit(); });
            QVERIFY(end && end->kind() == Error::Kind::Lost);
            QVERIFY(failure && failure->description().contains(u"no se guardó"_s));
        } else {
            kill(process(connection));
            failure = fallaDe([&] {
                if (when == u"changing")
                    connection.execute(change);
                else
                    (void)connection.query(u"SELECT 1"_s);
            });
        }
        if (when == u"idle")
            QVERIFY(!failure);
        else
            QVERIFY(failure && failure->kind() == Error::Kind::Lost);
        QCOMPARE(connection.query(u"SELECT numero FROM cosas"_s)->integer(0, 0), 1);
        db::Transaction after(connection);
        connection.execute(change);
        after.commit();
        QCOMPARE(connection.query(u"SELECT numero FROM cosas"_s)->integer(0, 0), 2);
    }

    /// Killed while it commits: whether it was stored is not known, and that is what is said.
    void serverGoesAwayWhileCommitting()
    {
        const auto connection = connect();
        connection->execute(u"CREATE OR REPLACE FUNCTION tarda() RETURNS trigger LANGUAGE plpgsql AS "
                            "'BEGIN PERFORM pg_sleep(20); RETURN NULL; END'"_s);
        connection->execute(u"CREATE CONSTRAINT TRIGGER tarda AFTER INSERT ON cosas DEFERRABLE INITIALLY DEFERRED "
                            "FOR EACH ROW EXECUTE FUNCTION tarda()"_s);
        const int backend = process(*connection);
        std::thread other;
        const auto failure = fallaDe([&] {
            db::Transaction transaction(*connection);
            connection->execute(u"INSERT INTO cosas (numero) VALUES (1)"_s);
            other = std::thread([&] {
                QThread::msleep(500);
                kill(backend);
            });
            transaction.commit();
        });
        other.join();
        QVERIFY(failure);
        QCOMPARE(failure->kind(), Error::Kind::Lost);
        QVERIFY(failure->description().contains(u"no se sabe si quedó guardado"_s));
        QVERIFY(!connection->inTransaction());
        QCOMPARE(count(*connection), 0);
    }

    void serverStopped()
    {
        const auto connection = connect();
        server->stop();
        // Told as lost by the action that meets it, as unreachable by those that follow.
        for (const Error::Kind kind : {Error::Kind::Lost, Error::Kind::CannotOpen, Error::Kind::CannotOpen}) {
            QElapsedTimer took;
            took.start();
            const auto failure = fallaDe([&] { (void)connection->query(u"SELECT 1"_s); });
            QVERIFY(failure && took.elapsed() < 8000);
            QCOMPARE(failure->kind(), kind);
            QVERIFY(!failure->description().contains(Postgres::clave()));
        }
        {
            // What nobody asked for does not even try.
            const db::ShortWait quiet(*connection);
            const auto failure = fallaDe([&] { (void)connection->query(u"SELECT 1"_s); });
            QVERIFY(failure && failure->kind() == Error::Kind::Lost);
        }
        server->start();
        QCOMPARE(count(*connection), 0);
    }

    void notLetIn()
    {
        for (const auto &[password, database] :
             {std::pair(u"otra;clave"_s, u"postgres"_s), {Postgres::clave(), u"no_existe"_s}}) {
            const auto failure = fallaDe([&] { db::OdbcEngine(server->target(Passing::Bound, password, database)); });
            QVERIFY(failure);
            QCOMPARE(failure->kind(), Error::Kind::CannotOpen);
            for (const QString &secret : {password, QStringLiteral("psqlodbc"), QStringLiteral("PWD")})
                QVERIFY(!failure->description().contains(secret, Qt::CaseInsensitive));
        }
        db::odbc::Target missing = server->target(Passing::Bound);
        missing.text.replace(u"psqlodbcw.so"_s, u"no-hay.so"_s);
        auto failure = fallaDe([&] { db::OdbcEngine engine(missing); });
        QVERIFY(failure && failure->description() == db::odbc::missingDriverText());

        // A way to the server on which texts change is refused: they would be stored so.
        connect()->execute(u"CREATE DATABASE pobre ENCODING 'LATIN1' TEMPLATE template0 LC_COLLATE 'C' LC_CTYPE 'C'"_s);
        failure
            = fallaDe([&] { db::OdbcEngine engine(server->target(Passing::Bound, Postgres::clave(), u"pobre"_s)); });
        QVERIFY(failure && failure->description().contains(u"altera los textos"_s));
    }

    void catalogue()
    {
        const auto connection = connect();
        QVERIFY(connection->tableExists(u"COSAS"));
        QVERIFY(connection->columns(u"otras"_s).isEmpty());
        const QVector<db::Column> columns = connection->columns(u"cosas"_s);
        const std::vector<std::pair<db::Type, QVariant>> expected{
            {db::Type::Counter, {}},
            {db::Type::Text, u"x"_s},
            {db::Type::Memo, {}},
            {db::Type::DateTime, {}},
            {db::Type::Single, {}},
            {db::Type::Double, {}},
            {db::Type::Long, -1},
            {db::Type::Binary, {}}};
        QCOMPARE(columns.size(), qsizetype(expected.size()));
        for (size_t i = 0; i < expected.size(); ++i) {
            QCOMPARE(int(columns[int(i)].type), int(expected[i].first));
            QCOMPARE(columns[int(i)].initial.value_or(QVariant()), expected[i].second);
        }
        QCOMPARE(columns[1].size, 255);
        // A column that comes while the program runs is seen.
        connection->execute(u"ALTER TABLE cosas ADD COLUMN nueva smallint"_s);
        QCOMPARE(connection->columns(u"cosas"_s).size(), columns.size() + 1);
        for (const auto &[sql, kind] :
             {std::pair(u"SELECT * FROM otras"_s, Error::Kind::NoSuchTable),
              {u"SELECT otra FROM cosas"_s, Error::Kind::NoSuchColumn},
              {u"SELEKT 1"_s, Error::Kind::Syntax}}) {
            const auto failure = fallaDe([&] { (void)connection->query(sql); });
            QVERIFY(failure);
            QCOMPARE(failure->kind(), kind);
        }
    }
};

PRUEBA(PruebaMotor)
#include "PruebaMotor.moc"
