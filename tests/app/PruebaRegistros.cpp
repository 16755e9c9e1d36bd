#include "app/Ruta.h"
#include "app/Setup.h"
#include "db/Error.h"
#include "support/Prueba.h"

#include <QTemporaryDir>

using app::Destino;
using app::Ruta;
using app::Setup;

namespace {

QByteArray campo(const char *texto, int ancho) { return QByteArray(texto).leftJustified(ancho, ' '); }

/// A record written by hand, as the 472 bytes lie in the file.
QByteArray registroRuta(bool otra, const QByteArray &carpeta, bool servidor)
{
    return (otra ? QByteArray("\xff\xff", 2) : QByteArray(2, '\0')) + carpeta + QByteArray("\x01\x02\x03\x04", 4)
        + campo("reservado", 14) + (servidor ? QByteArray("\xff\xff", 2) : QByteArray(2, '\0')) + campo("SRV", 50)
        + campo("SQLEXPRESS", 50) + campo("sa", 50) + campo("secreto", 50);
}

void escribir(const QString &archivo, const QByteArray &bytes)
{
    QFile file(archivo);
    QVERIFY(file.open(QIODevice::WriteOnly));
    QCOMPARE(file.write(bytes), bytes.size());
}

QByteArray leer(const QString &archivo)
{
    QFile file(archivo);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

} // namespace

class PruebaRegistros : public QObject
{
    Q_OBJECT

private slots:
    void rutaByteForByte()
    {
        // "Ñandú" in Windows-1252, with the euro sign that Latin-1 does not have.
        const QByteArray bytes = registroRuta(
            true,
            campo(
                "C:\\\xd1"
                "and\xfa \x80\\",
                250),
            true);
        QCOMPARE(bytes.size(), 472);
        const Ruta ruta = Ruta::deRegistro(bytes);
        QVERIFY(ruta.otraCarpeta);
        QCOMPARE(ruta.carpeta, QStringLiteral("C:\\Ñandú €\\"));
        QVERIFY(ruta.modoServidor);
        QCOMPARE(ruta.servidor, QStringLiteral("SRV"));
        QCOMPARE(ruta.instancia, QStringLiteral("SQLEXPRESS"));
        QCOMPARE(ruta.usuario, QStringLiteral("sa"));
        QCOMPARE(ruta.clave, QStringLiteral("secreto"));
        QCOMPARE(ruta.aRegistro(), bytes);
    }

    void destinations_data()
    {
        QTest::addColumn<QByteArray>("registro");
        QTest::addColumn<QString>("archivo");
        QTest::addColumn<QString>("servidor");
        const QByteArray nada = campo("", 250);
        QTest::newRow("own folder") << registroRuta(false, campo("/otra", 250), false) << "/prog/Datos.mdb"
                                    << "";
        QTest::newRow("other folder") << registroRuta(true, campo("/otra", 250), false) << "/otra/Datos.mdb"
                                      << "";
        QTest::newRow("backslash") << registroRuta(true, campo("/otra\\", 250), false) << "/otra/Datos.mdb"
                                   << "";
        QTest::newRow("slash") << registroRuta(true, campo("/otra/", 250), false) << "/otra/Datos.mdb"
                               << "";
        QTest::newRow("blank folder") << registroRuta(true, nada, false) << "/prog/Datos.mdb"
                                      << "";
        QTest::newRow("zeros") << registroRuta(true, QByteArray(250, '\0'), false) << "/prog/Datos.mdb"
                               << "";
        QTest::newRow("zero first") << registroRuta(true, '\0' + campo("/vieja", 249), false) << "/prog/Datos.mdb"
                                    << "";
        QTest::newRow("server") << registroRuta(false, nada, true) << "/prog/Datos.mdb"
                                << "SRV\\SQLEXPRESS";
        QByteArray sinServidor = registroRuta(false, nada, true);
        sinServidor.replace(272, 50, campo("", 50));
        QTest::newRow("instance alone") << sinServidor << "/prog/Datos.mdb"
                                        << "";
        QByteArray sinInstancia = registroRuta(false, nada, true);
        sinInstancia.replace(322, 50, QByteArray(50, '\0'));
        QTest::newRow("no instance") << sinInstancia << "/prog/Datos.mdb"
                                     << "SRV";
        QTest::newRow("short") << registroRuta(true, campo("/otra", 250), false).left(100) << "/otra/Datos.mdb"
                               << "";
        QTest::newRow("empty") << QByteArray() << "/prog/Datos.mdb"
                               << "";
        QTest::newRow("one byte") << QByteArray("\xff", 1) << "/prog/Datos.mdb"
                                  << "";
        QTest::newRow("long") << registroRuta(true, campo("/otra", 250), false) + "cola"
                              << "/otra/Datos.mdb"
                              << "";
        QByteArray uno = registroRuta(true, campo("/otra", 250), false);
        uno[0] = 1, uno[1] = 0;
        QTest::newRow("flag 1 is not -1") << uno << "/prog/Datos.mdb"
                                          << "";
    }

    void destinations()
    {
        QFETCH(QByteArray, registro);
        const Destino destino = app::destinoDe(Ruta::deRegistro(registro), QStringLiteral("/prog"));
        QTEST(destino.archivo, "archivo");
        QTEST(destino.nombreServidor, "servidor");
    }

    void connectionStrings()
    {
        Destino destino = app::destinoDe({}, QStringLiteral("/prog"));
        QCOMPARE(
            destino.cadenaConexion(),
            QStringLiteral("Provider=Microsoft.Jet.OLEDB.4.0; Jet OLEDB:Database Password=kestrel428;"
                           "Data Source=/prog/Datos.mdb"));
        destino = app::destinoDe(Ruta::deRegistro(registroRuta(false, campo("", 250), true)), QStringLiteral("/prog"));
        QCOMPARE(
            destino.cadenaConexion(),
            QStringLiteral("Provider=SQLOLEDB; Initial Catalog=Datos; Data Source=SRV\\SQLEXPRESS; User Id=sa; "
                           "Password=secreto"));
    }

    void rutaRefusesWhatDoesNotFit()
    {
        Ruta ruta;
        ruta.carpeta = QString(251, u'x');
        QVERIFY_THROWS_EXCEPTION(db::Error, (void)ruta.aRegistro());
        ruta.carpeta = QStringLiteral("/データ");
        QVERIFY_THROWS_EXCEPTION(db::Error, (void)ruta.aRegistro());
    }

    void setupByteForByte()
    {
        QTemporaryDir carpeta;
        const QString archivo = carpeta.filePath(QStringLiteral("setup.dat"));
        Setup().guardar(archivo);
        QCOMPARE(leer(archivo), QByteArray(37, ' ') + QByteArray("\x14\0\0\0\x1e\0\x1e\0\0\0", 10));

        // What is not ours stays, in the record and behind it.
        const QByteArray extranio = QByteArray("\x01\xff reservado por otro programa \x7f").leftJustified(37, '#');
        escribir(archivo, extranio + QByteArray("\xfe\xff\xff\xff\x3c\0\x3d\0\x01\0", 10) + "cola");
        Setup setup = Setup::leer(archivo);
        QCOMPARE(setup.usuarioActual, -2);
        QCOMPARE(Setup::segundos(setup.refrescoAgenda), 60);
        QCOMPARE(Setup::segundos(setup.controlMensajes), 30); // 61 is not used
        QCOMPARE(Setup::segundos(0), 30);
        QCOMPARE(setup.modoTurno, qint16(1));
        setup.usuarioActual = 305419896;
        setup.guardar(archivo);
        QCOMPARE(leer(archivo), extranio + QByteArray("\x78\x56\x34\x12\x3c\0\x3d\0\x01\0", 10) + "cola");
    }

    void setupShort_data()
    {
        QTest::addColumn<int>("tamanio");
        QTest::addColumn<int>("usuario");
        QTest::newRow("empty") << 0 << 20;
        QTest::newRow("reserved only") << 30 << 20;
        QTest::newRow("half a number") << 39 << 20;
        QTest::newRow("user only") << 41 << 7;
    }

    void setupShort()
    {
        QFETCH(int, tamanio);
        Setup setup;
        setup.usuarioActual = 7;
        const Setup leido = Setup::deRegistro(setup.aRegistro().left(tamanio));
        QTEST(int(leido.usuarioActual), "usuario");
        QCOMPARE(leido.refrescoAgenda, qint16(30));
        QCOMPARE(leido.aRegistro().size(), 47);
    }

    /// Records of any bytes and length are read without harm, and a whole one keeps what it holds.
    void anyBytes()
    {
        QRandomGenerator azar(428);
        for (int i = 0; i < 5000; ++i) {
            QByteArray bytes(azar.bounded(600), Qt::Uninitialized);
            for (char &c : bytes)
                c = char(azar.bounded(256));
            (void)app::destinoDe(Ruta::deRegistro(bytes), QStringLiteral("/prog"));
            const Setup setup = Setup::deRegistro(bytes);
            if (bytes.size() >= Setup::bytes)
                QCOMPARE(setup.aRegistro(), bytes.left(Setup::bytes));
        }
    }
};

PRUEBA(PruebaRegistros)
#include "PruebaRegistros.moc"
