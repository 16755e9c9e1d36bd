#include "db/Error.h"
#include "db/Recordset.h"
#include "db/Upgrade.h"
#include "patients/Esquema.h"
#include "patients/ListaPacientes.h"
#include "support/BaseDePrueba.h"
#include "support/Prueba.h"

#include <QElapsedTimer>
#include <QRandomGenerator>

#include <sqlite3.h>

using namespace Qt::StringLiterals;
using patients::FiltroPacientes;

/// What the engine keeps ready for the chooser answers as the plain statement does, whoever wrote.
class busquedaPorIndice : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        m_base = std::make_unique<soporte::BaseDePrueba>();
        m_azar.seed(428);
        m_conIndice = true;
        db::Transaction transaccion(m_base->conexion());
        agregar(1, 400);
        transaccion.commit();
    }
    void cleanup() { m_base.reset(); }

    void contestaComoLaSentencia_data()
    {
        QTest::addColumn<bool>("rehecho");
        QTest::newRow("todo en los cambios") << false;
        QTest::newRow("todo en las columnas") << true;
    }

    void contestaComoLaSentencia()
    {
        QFETCH(bool, rehecho);
        if (rehecho)
            rehacer();
        for (int i = 0; i < 300; ++i)
            comparar(alAzar());
        comparar({.reducido = true});
        for (const char16_t *termino :
             {u"%",
              u"_",
              u"[",
              u"]",
              u"'",
              u"ñ",
              u"n",
              u"N\u0303",
              u"ü",
              u"é",
              u"😀",
              u" ",
              u"''",
              u"[a-z]",
              u"\\",
              u"\x01"})
            comparar({.reducido = true, .apellido = QString::fromUtf16(termino)});
    }

    void quienEscribeSeNota_data()
    {
        QTest::addColumn<std::function<void(busquedaPorIndice &)>>("escribir");
        const auto fila = [](const char *nombre, const std::function<void(busquedaPorIndice &)> &escribir) {
            QTest::newRow(nombre) << escribir;
        };
        fila("resultado actualizable", [](auto &t) {
            db::Recordset uno(t.m_base->conexion(), u"SELECT * FROM [Pacientes] WHERE NroHC = 7"_s);
            uno.set(u"Apellido", u"Ábalos"_s);
            uno.set(u"NroHC", 9007);
            uno.update();
        });
        fila("sentencia", [](auto &t) {
            QCOMPARE(t.m_base->conexion().execute(u"UPDATE [Pacientes] SET Nombres = 'Zoe' WHERE NroHC < 30"_s), 29);
            t.m_base->conexion().execute(u"DELETE FROM [Pacientes] WHERE NroHC > 380"_s);
        });
        fila("otra terminal", [](auto &t) {
            const auto otra = t.m_base->otraTerminal();
            otra->execute(u"UPDATE [Pacientes] SET pacienteinactivo = NOT pacienteinactivo"_s);
            otra->execute(u"INSERT INTO [Pacientes] (NroHC,Apellido,Nombres) VALUES (9001,'ÑANDÚ','A')"_s);
        });
        fila("otra terminal rehace el índice", [](auto &t) {
            t.rehacer();
            t.comparar(t.alAzar());
            t.m_base->conexion().execute(u"UPDATE [Pacientes] SET Apellido = 'Otro' WHERE NroHC = 5"_s);
            t.rehacer();
        });
        fila("herramienta ajena", [](auto &t) {
            t.ajena("UPDATE Pacientes SET Apellido = 'Zzyzx' WHERE NroHC % 3 = 0;"
                    "DELETE FROM Pacientes WHERE NroHC = 8;"
                    "INSERT OR REPLACE INTO Pacientes (NroHC, Apellido, Nombres) VALUES (9, 'Nuevo', 'Uno');"
                    "VACUUM");
        });
        fila("una copia anterior, repuesta", [](auto &t) {
            t.ajena("CREATE TABLE Antes AS SELECT NroHC, Apellido FROM Pacientes WHERE NroHC = 5");
            t.m_base->conexion().execute(u"UPDATE [Pacientes] SET Apellido = 'Zzy' WHERE NroHC = 5"_s);
            t.comparar({.reducido = true});
            t.ajena("UPDATE Pacientes SET Apellido = (SELECT Apellido FROM Antes) WHERE NroHC = 5;"
                    "DELETE FROM motor_busqueda_cambios");
        });
        fila("herramienta ajena sin los disparadores", [](auto &t) {
            t.ajena("DROP TRIGGER \"motor_busqueda Pacientes cambio\";"
                    "UPDATE Pacientes SET Apellido = 'Zzyzx' WHERE NroHC % 3 = 0");
            t.m_conIndice = false;
        });
        fila("transacción abierta, y deshecha", [](auto &t) {
            t.m_conIndice = false;
            {
                db::Transaction abierta(t.m_base->conexion());
                t.m_base->conexion().execute(u"UPDATE [Pacientes] SET Apellido = 'Zzyzx' WHERE NroHC < 9"_s);
                t.comparar({.reducido = true, .apellido = u"zzy"_s});
            }
            t.m_conIndice = true;
        });
    }

    void quienEscribeSeNota()
    {
        QFETCH(std::function<void(busquedaPorIndice &)>, escribir);
        rehacer();
        comparar({.reducido = true});
        escribir(*this);
        comparar({.reducido = true});
        comparar({.reducido = true, .apellido = u"zzy"_s});
        for (int i = 0; i < 40; ++i)
            comparar(alAzar());
        // The next start mends whatever was taken away.
        rehacer();
        m_conIndice = true;
        comparar({.reducido = true});
    }

    void unaBaseViejaLoRecibe()
    {
        ajena("DROP TRIGGER \"motor_busqueda Pacientes alta\"; DROP TRIGGER \"motor_busqueda Pacientes baja\";"
              "DROP TRIGGER \"motor_busqueda Pacientes cambio\"; DROP TABLE motor_busqueda;"
              "DROP TABLE motor_busqueda_tramos; DROP TABLE motor_busqueda_cambios");
        m_conIndice = false;
        comparar({.reducido = true, .apellido = u"e"_s});
        rehacer();
        m_conIndice = true;
        comparar({.reducido = true, .apellido = u"e"_s});
        QVERIFY(!m_base->conexion().tableExists(u"motor_busqueda"));
    }

    void laListaLeeLoQueSeMira()
    {
        patients::ListaPacientes lista(*m_base);
        QVERIFY(!lista.buscar({}));
        QCOMPARE(lista.cantidad(), 400);
        QCOMPARE(lista.filas()->columnCount(), 1);
        const auto entera = *patients::buscarPacientes(*m_base, {});
        for (const int fila : {0, 63, 64, 399})
            for (const auto columna : {patients::ColIdentificacion, patients::ColDni, patients::ColNroOs})
                QCOMPARE(lista.texto(fila, columna), entera->text(fila, columna));
        m_base->conexion().execute(
            u"DELETE FROM [Pacientes] WHERE NroHC = ?"_s, {lista.filas()->integer(200, patients::ColNroHC)});
        QCOMPARE(lista.texto(200, patients::ColNombre), QString());
        // One failure is told, not one per cell.
        m_base->conexion().execute(u"DROP TABLE [Pacientes Pagos]"_s);
        QVERIFY_THROWS_EXCEPTION(db::Error, (void)lista.texto(0, patients::ColSaldo));
        QVERIFY_THROWS_EXCEPTION(db::Error, (void)lista.texto(0, patients::ColDni));
    }

private:
    int entre(int desde, int hasta) { return m_azar.bounded(desde, hasta + 1); }

    QString palabra(int letras)
    {
        static const QStringList piezas{u"a"_s, u"e"_s, u"o"_s,       u"g"_s, u"m"_s, u"z"_s, u"n"_s, u"ñ"_s,
                                        u"Ñ"_s, u"á"_s, u"É"_s,       u"ü"_s, u"'"_s, u"%"_s, u"_"_s, u"["_s,
                                        u" "_s, u"😀"_s, u"e\u0301"_s, u"R"_s, u"ß"_s, u"Ł"_s};
        QString texto;
        for (int i = 0; i < letras; ++i)
            texto += piezas[entre(0, int(piezas.size()) - 1)];
        return texto;
    }

    void agregar(int desde, int hasta)
    {
        for (int n = desde; n <= hasta; ++n)
            m_base->conexion().execute(
                u"INSERT INTO [Pacientes] (NroHC,Apellido,apellido2,Nombres,DNI,Tel,NroOS,numehistoria,FeNac,sexo,"
                "pacienteinactivo,cobertura,idcobertura,idciudad,idprovincia) VALUES (?,?,?,?,?,?,?,?,?,?,?,?,?,?,?)"_s,
                {n,
                 n == 100 ? palabra(100).left(100) : palabra(entre(0, 7)),
                 entre(0, 2) ? QVariant() : QVariant(palabra(entre(0, 3))),
                 palabra(entre(1, 9)),
                 entre(0, 1) ? QString::number(entre(1, 99999)) : u"20.111.%1"_s.arg(n),
                 entre(0, 1) ? u"+54 341 %1"_s.arg(entre(1, 999)) : QString(),
                 QString::number(entre(1, 999)) + u"/0"_s,
                 u"HC-%1"_s.arg(n),
                 entre(0, 5) ? QVariant(QDate(entre(1890, 2027), entre(1, 12), entre(1, 28)))
                             : QVariant(QDate(9999, 12, 31)),
                 entre(0, 1),
                 entre(0, 5) == 0,
                 entre(0, 2),
                 entre(-1, 4),
                 entre(0, 3) ? QVariant(entre(0, 4)) : QVariant(),
                 entre(0, 4)});
    }

    FiltroPacientes alAzar()
    {
        const auto aVeces = [this](const QString &texto) { return entre(0, 4) == 0 ? texto : QString(); };
        FiltroPacientes f{.reducido = entre(0, 2) == 0};
        f.apellido = entre(0, 1) ? palabra(entre(1, 3)) : QString();
        f.nombres = aVeces(palabra(entre(1, 2)));
        f.actividad = FiltroPacientes::Actividad(entre(0, 2));
        f.apellido2 = aVeces(palabra(1));
        f.numehistoria = aVeces(QString::number(entre(1, 400)));
        f.dni = aVeces(entre(0, 1) ? QString::number(entre(0, 99)) : u"20.1"_s);
        f.telefono = aVeces(u"41"_s);
        f.nroos = aVeces(u"7"_s);
        f.fecnac = aVeces(entre(0, 1) ? u"31/12/9999"_s : u"29/02/1904"_s);
        if (entre(0, 4) == 0)
            f.sexo = entre(0, 1);
        f.cobertura = FiltroPacientes::Cobertura(entre(0, 3));
        f.idcobertura = entre(0, 2);
        f.idciudad = entre(0, 4) == 0 ? entre(1, 4) : 0;
        f.idprovincia = entre(0, 4) == 0 ? entre(1, 4) : 0;
        if (entre(0, 3) == 0)
            f.edadDesde = entre(0, 90);
        if (entre(0, 3) == 0)
            f.edadHasta = entre(0, 140);
        return f;
    }

    void comparar(const FiltroPacientes &filtro)
    {
        if (QTest::currentTestFailed())
            return;
        const db::Rows porIndice = *patients::buscarNumeros(*m_base, filtro);
        QCOMPARE(bool(porIndice), m_conIndice);
        if (!m_conIndice)
            return;
        const QString condiciones = db::clauses(*patients::condiciones(*m_base, filtro));
        const auto sentencia = m_base->conexion().query(
            u"SELECT NroHC FROM [Pacientes] WHERE NroHC <> 0"_s + condiciones
            + u" ORDER BY Apellido,apellido2,Nombres,NroHC"_s);
        QList<qint64> uno, otro;
        for (int i = 0; i < porIndice->rowCount(); ++i)
            uno << porIndice->integer(i, 0);
        for (int i = 0; i < sentencia->rowCount(); ++i)
            otro << sentencia->integer(i, 0);
        if (uno != otro)
            qWarning() << condiciones;
        QCOMPARE(uno, otro);
    }

    // As the program does when it starts.
    void rehacer()
    {
        agregarYQuitar(600);
        soporte::MensajesGuionados callados;
        QVERIFY(!db::actualizarAccess(
            {patients::esquema()}, [this] { return m_base->otraTerminal(); }, callados));
        QCOMPARE(m_base->otraTerminal()->query(u"SELECT id FROM [Pacientes] WHERE NroHC = 5000"_s)->rowCount(), 0);
        sqlite3_int64 pendientes = -1;
        ajena("SELECT count(*) FROM motor_busqueda_cambios", &pendientes);
        QCOMPARE(pendientes, 0);
    }

    // Enough changes for the columns to be written anew.
    void agregarYQuitar(int veces)
    {
        const auto otra = m_base->otraTerminal();
        db::Transaction transaccion(*otra);
        for (int i = 0; i < veces; ++i) {
            otra->execute(u"INSERT INTO [Pacientes] (NroHC,Apellido) VALUES (5000,'X')"_s);
            otra->execute(u"DELETE FROM [Pacientes] WHERE NroHC = 5000"_s);
        }
        transaccion.commit();
    }

    // With nothing but what any tool has that opens the file with its password.
    void ajena(const char *sql, sqlite3_int64 *primero = nullptr)
    {
        sqlite3 *base = nullptr;
        QCOMPARE(sqlite3_open(m_base->archivo().toUtf8().constData(), &base), SQLITE_OK);
        QCOMPARE(
            sqlite3_exec(
                base, "PRAGMA cipher='sqlcipher'; PRAGMA legacy=4; PRAGMA key='kestrel428'", nullptr, nullptr, nullptr),
            SQLITE_OK);
        const auto leer = [](void *donde, int, char **celdas, char **) {
            if (donde)
                *static_cast<sqlite3_int64 *>(donde) = QByteArray(celdas[0]).toLongLong();
            return 0;
        };
        char *falla = nullptr;
        const int codigo = sqlite3_exec(base, sql, leer, primero, &falla);
        QVERIFY2(codigo == SQLITE_OK, falla);
        sqlite3_close(base);
    }

    std::unique_ptr<soporte::BaseDePrueba> m_base;
    QRandomGenerator m_azar;
    bool m_conIndice = true;
};

PRUEBA(busquedaPorIndice)
#include "busquedaPorIndice.moc"
