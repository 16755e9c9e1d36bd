#include "db/Error.h"
#include "db/Recordset.h"
#include "support/BaseDePrueba.h"
#include "support/Falla.h"
#include "support/Prueba.h"

using namespace Qt::StringLiterals;

/// Rows written and read back, in both dialects.
class PruebaRecordset : public QObject
{
    Q_OBJECT

private slots:
    void rowsKeepWhatTheyGet_data() { soporte::filasDeDialecto(); }
    void rowsKeepWhatTheyGet()
    {
        soporte::BaseDePrueba base(soporte::dialectoActual());
        const QString notas = u"O'Higgins\r\n\t\"100%\" [x]_*? 'y' ; -- ñÑ 👶"_s;
        db::Recordset nuevo(base.conexion(), u"SELECT * FROM [Pacientes] WHERE id = 0"_s);
        QVERIFY(nuevo.isEmpty() && nuevo.eof());
        nuevo.addNew();
        nuevo.set(u"nrohc", 7); // letter case does not matter
        nuevo.set(u"Apellido", u"00123"_s); // stays text
        nuevo.set(u"Notas", notas);
        nuevo.set(u"FeNac", QDate(1890, 2, 28));
        nuevo.set(u"pacienteinactivo", true);
        nuevo.set(u"Tel", QString(u""_s));
        nuevo.set(u"CP", QVariant());
        const qint64 id = nuevo.update();
        QVERIFY(id > 0);

        db::Recordset fila(base.conexion(), u"SELECT * FROM [Pacientes] WHERE id = ?"_s, {id});
        QCOMPARE(fila.recordCount(), 1);
        QCOMPARE(fila.text(u"Apellido"), u"00123"_s);
        QCOMPARE(fila.text(u"NOTAS"), notas);
        QCOMPARE(fila.date(u"FeNac"), QDate(1890, 2, 28));
        QCOMPARE(fila.value(u"pacienteinactivo"), QVariant(true));
        QVERIFY(!fila.isNull(u"Tel") && fila.text(u"Tel").isEmpty());
        QVERIFY(fila.isNull(u"CP") && fila.value(u"CP").isNull());
        QCOMPARE(fila.integer(u"idcobertura2"), -1); // a column's own beginning
        QVERIFY(base.valor(u"SELECT pacienteinactivo FROM [Pacientes]"_s) != u"0"_s);

        fila.set(u"FeNac", QDate(9999, 12, 31));
        fila.set(u"Apellido", u"D'Amico"_s);
        QCOMPARE(fila.update(), id);
        QCOMPARE(base.valor(u"SELECT Apellido FROM [Pacientes] WHERE FeNac > ?"_s, {QDate(9000, 1, 1)}), u"D'Amico"_s);
    }

    void valuesAreFitted_data() { soporte::filasDeDialecto(); }
    void valuesAreFitted()
    {
        soporte::BaseDePrueba base(soporte::dialectoActual());
        db::Recordset caja(base.conexion(), u"SELECT * FROM [Caja] WHERE id = 0"_s);
        caja.addNew();
        caja.set(u"importe", 0.1);
        caja.set(u"fecha", QDateTime(QDate(2026, 11, 22), QTime(10, 20)));
        const qint64 id = caja.update();
        db::Recordset leida(base.conexion(), u"SELECT * FROM [Caja] WHERE id = ?"_s, {id});
        QCOMPARE(leida.real(u"importe"), double(0.1f)); // single precision, as all money
        QCOMPARE(leida.text(u"importe"), u"0.1"_s);
        QCOMPARE(leida.dateTime(u"fecha"), QDateTime(QDate(2026, 11, 22), QTime(10, 20)));

        // What does not fit is refused before anything is written.
        QVERIFY_THROWS_EXCEPTION(db::Error, leida.set(u"modopago", 40000));
        QVERIFY_THROWS_EXCEPTION(db::Error, leida.set(u"doctor", 3e9));
        QVERIFY_THROWS_EXCEPTION(db::Error, leida.set(u"fecha", u"22/11/2026"_s));
        QVERIFY_THROWS_EXCEPTION(db::Error, leida.set(u"nohay", 1));
        db::Recordset paciente(base.conexion(), u"SELECT * FROM [Pacientes] WHERE id = 0"_s);
        paciente.addNew();
        QVERIFY_THROWS_EXCEPTION(db::Error, paciente.set(u"Apellido", QString(101, u'x')));
        paciente.set(u"Apellido", QString(100, u'ñ'));
    }

    void rowGone_data() { soporte::filasDeDialecto(); }
    void rowGone()
    {
        soporte::BaseDePrueba base(soporte::dialectoActual());
        db::Recordset fila(base.conexion(), u"SELECT * FROM [Lista Doctores] WHERE id = 20"_s);
        base.otraTerminal()->execute(u"DELETE FROM [Lista Doctores] WHERE id = 20"_s);
        fila.set(u"NomDoc", u"Nadie"_s);
        const auto falla = soporte::fallaDe([&] { fila.update(); });
        QVERIFY(falla && falla->kind() == db::Error::Kind::RowGone);
        QCOMPARE(base.valor(u"SELECT count(id) FROM [Lista Doctores]"_s), u"0"_s);
        // The counter goes on: the number of a row that is gone never comes back.
        base.conexion().execute(u"INSERT INTO [Lista Doctores] (NomDoc) VALUES ('Otra')"_s);
        QCOMPARE(base.conexion().insertedId(), 21);
    }

    void onlyOneTableIsUpdatable()
    {
        soporte::BaseDePrueba base;
        for (const QString &sql :
             {u"SELECT count(id) AS n FROM [Lista Doctores]"_s,
              u"SELECT d.id FROM [Lista Doctores] AS d, [Config]"_s,
              u"SELECT DISTINCT NomDoc FROM [Lista Doctores]"_s}) {
            db::Recordset filas(base.conexion(), sql);
            QVERIFY_THROWS_EXCEPTION(db::Error, filas.addNew());
            QVERIFY_THROWS_EXCEPTION(db::Error, filas.set(u"NomDoc", u"x"_s));
        }
    }

    void transactions_data() { soporte::filasDeDialecto(); }
    void transactions()
    {
        soporte::BaseDePrueba base(soporte::dialectoActual());
        db::Connection &conexion = base.conexion();
        const auto sumar = [&] { conexion.execute(u"UPDATE [Config] SET UltimoPaci = UltimoPaci + 1"_s); };
        const auto ultimo = [&] { return base.valor(u"SELECT UltimoPaci FROM [Config]"_s); };
        {
            db::Transaction transaccion(conexion);
            sumar();
        }
        QCOMPARE(ultimo(), u"0"_s);
        {
            db::Transaction afuera(conexion);
            sumar();
            db::Transaction adentro(conexion);
            sumar();
            adentro.commit();
            QCOMPARE(base.otraTerminal()->query(u"SELECT UltimoPaci FROM [Config]"_s)->integer(0, 0), 0);
            afuera.commit();
        }
        QCOMPARE(ultimo(), u"2"_s);
        {
            db::Transaction afuera(conexion);
            {
                db::Transaction adentro(conexion);
                sumar();
            }
            QVERIFY_THROWS_EXCEPTION(db::Error, afuera.commit());
        }
        QCOMPARE(ultimo(), u"2"_s);
        // A new one after a failed one is sound again.
        db::Transaction otra(conexion);
        sumar();
        otra.commit();
        QCOMPARE(ultimo(), u"3"_s);
    }

    /// Nothing in the file can be read without the password, and a failure names no value of a row.
    void nothingLeaks()
    {
        soporte::BaseDePrueba base;
        base.conexion().execute(u"INSERT INTO [Pacientes] (NroHC,Apellido) VALUES (1,?)"_s, {u"Secretísimo"_s});
        QFile archivo(base.archivo());
        QVERIFY(archivo.open(QIODevice::ReadOnly));
        const QByteArray bytes = archivo.readAll();
        for (const char *visible : {"SQLite format 3", "Secret", "Pacientes", "CREATE TABLE", "kestrel"})
            QVERIFY2(!bytes.contains(visible), visible);
        const auto repetido = soporte::fallaDe([&] {
            base.conexion().execute(u"INSERT INTO [Pacientes] (NroHC,Apellido) VALUES (1,?)"_s, {u"Reservadísimo"_s});
        });
        QVERIFY(repetido && repetido->kind() == db::Error::Kind::Constraint);
        QVERIFY(!repetido->description().contains(u"Reservad"_s));
    }
};

PRUEBA(PruebaRecordset)
#include "PruebaRecordset.moc"
