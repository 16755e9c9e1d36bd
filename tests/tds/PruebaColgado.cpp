#include "app/Esquema.h"
#include "db/Connection.h"
#include "db/Error.h"
#include "db/engine/EmbeddedEngine.h"
#include "db/migracion/Migracion.h"
#include "db/odbc/OdbcEngine.h"
#include "support/BaseDePrueba.h"
#include "support/Falla.h"
#include "support/Prueba.h"
#include "support/ServidorTds.h"

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;
using db::Error;
using Tipo = db::migracion::Desenlace::Tipo;
using soporte::fallaDe;

namespace {

/// The program's engines, which give a server up sooner than a person would want.
db::Engines motores(std::chrono::seconds respuesta = 3s)
{
    db::Engines todos;
    todos.add(u"SQLOLEDB"_s, [respuesta](const db::ConnectionString &texto) {
        return db::OdbcEngine::open(texto, {.first = 300ms, .between = 100ms, .answer = respuesta, .silences = 1});
    });
    todos.add(u"Microsoft.Jet.OLEDB.4.0"_s, [](const db::ConnectionString &texto) {
        return std::make_unique<db::EmbeddedEngine>(
            texto.value(u"Data Source"), texto.value(u"Jet OLEDB:Database Password"));
    });
    return todos;
}

} // namespace

/// A server that hangs: its machine stopped, the cable out. Nothing comes back, and nothing says so.
class PruebaColgado : public QObject
{
    Q_OBJECT

private slots:
    void seDiceYSeSigue_data()
    {
        QTest::addColumn<QString>("cuando");
        QTest::addColumn<QString>("dicho");
        QTest::newRow("leyendo") << u"leyendo"_s << u"volverá a conectarse con la próxima acción"_s;
        QTest::newRow("guardando") << u"guardando"_s << u"no se sabe si el último cambio quedó guardado"_s;
        QTest::newRow("en transacción") << u"transaccion"_s << u"no se guardó; vuelva a intentarlo"_s;
        QTest::newRow("al confirmar") << u"confirmar"_s << u"justo al terminar de guardar"_s;
        QTest::newRow("al entrar") << u"entrar"_s << u"No se puede conectar"_s;
    }
    void seDiceYSeSigue()
    {
        QFETCH(QString, cuando);
        QFETCH(QString, dicho);
        const QTemporaryDir carpeta;
        const soporte::ServidorTds servidor(carpeta.path());
        const QString maestra = servidor.cadena(u"master"_s);
        const auto conexion = db::Connection::open(maestra, motores());
        conexion->execute(u"CREATE TABLE [Cosas] (id int IDENTITY(1,1) PRIMARY KEY, texto nvarchar(20))"_s);
        conexion->execute(u"INSERT INTO [Cosas] (texto) VALUES (?)"_s, {u"ñ"_s});
        const QString cambio = u"UPDATE [Cosas] SET texto = N'otro'"_s;

        QElapsedTimer reloj;
        std::optional<Error> falla;
        const auto detener = [&] {
            servidor.detener();
            reloj.start();
        };
        if (cuando == u"transaccion" || cuando == u"confirmar") {
            db::Transaction transaccion(*conexion);
            conexion->execute(cambio);
            detener();
            falla = fallaDe([&] {
                if (cuando == u"transaccion")
                    conexion->execute(cambio);
                transaccion.commit();
            });
        } else {
            detener();
            falla = fallaDe([&] {
                if (cuando == u"entrar")
                    (void)db::Connection::open(maestra, motores());
                else if (cuando == u"guardando")
                    conexion->execute(cambio);
                else
                    (void)conexion->query(u"SELECT * FROM [Cosas]"_s);
            });
        }
        QVERIFY(falla);
        QVERIFY2(falla->description().contains(dicho), qPrintable(falla->description()));
        QCOMPARE(falla->kind(), cuando == u"entrar" ? Error::Kind::CannotOpen : Error::Kind::Lost);
        QVERIFY2(reloj.elapsed() < 14000, qPrintable(QString::number(reloj.elapsed())));
        if (cuando == u"leyendo") {
            // Still hanging: the next action is told that the server is not there, and does not wait for ever either.
            reloj.start();
            falla = fallaDe([&] { (void)conexion->query(u"SELECT 1"_s); });
            QVERIFY(falla && falla->kind() == Error::Kind::CannotOpen && reloj.elapsed() < 14000);
        }
        servidor.seguir();
        // What was under way in a transaction is undone when its connection goes, and holds up nobody.
        if (cuando == u"leyendo" || cuando == u"transaccion")
            QTRY_COMPARE_WITH_TIMEOUT(conexion->query(u"SELECT texto FROM [Cosas]"_s)->text(0, 0), u"ñ"_s, 5000);
        QTRY_VERIFY_WITH_TIMEOUT(!fallaDe([&] { conexion->execute(cambio); }), 5000);
        QCOMPARE(conexion->query(u"SELECT texto FROM [Cosas]"_s)->text(0, 0), u"otro"_s);
    }

    /// A server that takes its time is not one that hangs: whatever it does is waited for.
    void loLentoSeEspera()
    {
        const QTemporaryDir carpeta;
        const soporte::ServidorTds servidor(carpeta.path());
        const auto conexion = db::Connection::open(servidor.cadena(u"master"_s), motores(30s));
        QElapsedTimer reloj;
        reloj.start();
        QCOMPARE(conexion->query(u"WAITFOR DELAY '00:00:03'; SELECT 1"_s)->integer(0, 0), 1);
        QVERIFY(reloj.elapsed() >= 3000);
    }

    /// A move that meets it ends, says what happened and what is left over, and the source is as it was.
    void trasladoCortado_data()
    {
        QTest::addColumn<bool>("vuelta");
        QTest::newRow("al servidor") << false;
        QTest::newRow("al archivo") << true;
    }
    void trasladoCortado()
    {
        QFETCH(bool, vuelta);
        const QTemporaryDir carpeta, remota;
        const QString archivo = carpeta.filePath(u"Datos.mdb"_s), otro = carpeta.filePath(u"Vuelta.mdb"_s);
        QFile::copy(soporte::plantilla(), archivo);
        QFile::setPermissions(archivo, QFile::ReadOwner | QFile::WriteOwner);
        const soporte::ServidorTds servidor(remota.path());
        db::migracion::Seguimiento seguimiento;
        const db::migracion::PedidoAlServidor ida{
            .cadenaOrigen = soporte::cadenaAccess(archivo),
            .servidor = {servidor.servidor(), servidor.usuario(), servidor.clave()},
            .esquema = app::esquemaCompleto(),
            .motores = motores()};
        const db::migracion::Pasos pasos{
            .alAvanzar = [&, detenido = false](const db::migracion::Estado &estado) mutable {
                if (!detenido && estado.que == u"Copiando" && estado.numero == 20) {
                    detenido = true;
                    servidor.detener();
                }
            }};
        db::migracion::Desenlace fin;
        if (vuelta) {
            QCOMPARE(int(db::migracion::alServidor(ida, seguimiento).tipo), int(Tipo::Hecha));
            fin = db::migracion::alArchivo(
                {.cadenaOrigen = servidor.cadena(),
                 .destino = {otro, u"kestrel428"_s},
                 .apartar = {},
                 .esquema = app::esquemaCompleto(),
                 .motores = motores()},
                seguimiento,
                pasos);
        } else {
            fin = db::migracion::alServidor(ida, seguimiento, pasos);
        }
        servidor.seguir();
        QCOMPARE(int(fin.tipo), int(Tipo::Fallada));
        QVERIFY2(fin.motivo.contains(u"Se perdió la conexión con el servidor"), qPrintable(fin.motivo));
        QCOMPARE(fin.motivo.contains(u"quedó a medio hacer"), !vuelta);
        QCOMPARE(QDir(carpeta.path()).entryList(QDir::Files), QStringList{u"Datos.mdb"_s});
        const auto base = db::Connection::open(soporte::cadenaAccess(archivo), motores());
        QVERIFY(base->query(u"SELECT count(*) FROM [CIE10]"_s)->integer(0, 0) > 0);
        base->execute(u"UPDATE [Config] SET UltimoPaci = 1"_s); // nobody holds it any more
        // What is left over there is told as such, not taken for a database.
        if (!vuelta)
            QCOMPARE(int(db::migracion::alServidor(ida, seguimiento).tipo), int(Tipo::Rechazada));
    }
};

PRUEBA(PruebaColgado)
#include "PruebaColgado.moc"
