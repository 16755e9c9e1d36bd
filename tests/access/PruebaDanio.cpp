#include "Comun.h"
#include "db/access/Cabecera.h"

#include <QElapsedTimer>
#include <QProcess>
#include <QRandomGenerator>

using namespace Qt::StringLiterals;
using db::access::Desenlace;

/// Damaged files, readers that die, hang or lie, and conversions cut off in the middle: the program goes on, the old
/// file is whole.
class PruebaDanio : public QObject
{
    Q_OBJECT

    /// A reader that is a shell script.
    [[nodiscard]] QString lector(const QString &cuerpo)
    {
        const QString archivo = m_dir.filePath(u"lector"_qs);
        prueba::escribir(archivo, "#!/bin/sh\n" + cuerpo.toUtf8() + '\n');
        QFile::setPermissions(archivo, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
        return archivo;
    }
    QTemporaryDir m_dir;

private slots:
    void randomDamage_data()
    {
        QTest::addColumn<QString>("nombre");
        QTest::addColumn<int>("semilla");
        for (int i = 0; i < 30; ++i)
            QTest::addRow("small, %d", i) << u"ConClave.mdb"_qs << i;
        for (int i = 0; i < 15; ++i)
            QTest::addRow("big, %d", i) << u"Datos_antigua.mdb"_qs << i;
    }
    /// Whatever the bytes: an answer in reasonable time, and a reader that ended.
    void randomDamage()
    {
        QFETCH(QString, nombre);
        QFETCH(int, semilla);
        QByteArray bytes = prueba::leer(prueba::muestra(nombre));
        QRandomGenerator azar{quint32(semilla)};
        if (semilla % 5 == 0)
            bytes.truncate(azar.bounded(int(bytes.size())));
        for (int daños = 1 << (semilla % 10); daños > 0; --daños)
            bytes[azar.bounded(int(bytes.size() - 24)) + 24] = char(azar.bounded(256));
        const QString archivo = m_dir.filePath(u"roto.mdb"_qs);
        prueba::escribir(archivo, bytes);
        QElapsedTimer reloj;
        reloj.start();
        const QString falla = prueba::fallaAlLeer(*prueba::fuente(archivo));
        QVERIFY(reloj.elapsed() < 20'000);
        if (!falla.isEmpty())
            QVERIFY2(falla.startsWith(u"El archivo está dañado y no se pudo leer entero: "_qs), qPrintable(falla));
    }

    // Damage that is told as what it is, instead of leading the reader astray.
    void damagedStructures_data()
    {
        QTest::addColumn<int>("lugar");
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<QString>("falla");
        QTest::newRow("list of pages of two bytes") << 25 * 4096 + 14 << "\xFE\x0F"_qba << u"lista de páginas"_qs;
        QTest::newRow("two names of one table") << 14 * 4096 + 0x91A + 2 << "\x1C"_qba << u"lista de tablas"_qs;
    }
    void damagedStructures()
    {
        QFETCH(int, lugar);
        QFETCH(QByteArray, bytes);
        QFETCH(QString, falla);
        QByteArray roto = prueba::leer(prueba::muestra(u"ConClave.mdb"_qs));
        roto.replace(lugar, bytes.size(), bytes);
        const QString archivo = m_dir.filePath(u"roto.mdb"_qs);
        prueba::escribir(archivo, roto);
        const QString dicha = prueba::fallaAlLeer(*prueba::fuente(archivo));
        QVERIFY2(dicha.contains(falla), qPrintable(dicha));
    }

    void truncatedFilesAreToldAndKept_data()
    {
        QTest::addColumn<int>("largo");
        for (const int largo : {300, 4096, 40'960, 300'000, 1'000'000, 1'500'000})
            QTest::addRow("%d bytes", largo) << largo;
    }
    void truncatedFilesAreToldAndKept()
    {
        QFETCH(int, largo);
        prueba::Carpeta carpeta(u"Datos_antigua.mdb"_qs);
        carpeta.antes.truncate(largo);
        prueba::escribir(carpeta.archivo(), carpeta.antes);
        prueba::Seguimiento seguimiento;
        const Desenlace desenlace = db::access::convertir(carpeta.pedido(), seguimiento);
        QCOMPARE(desenlace.tipo, Desenlace::Tipo::Fallada);
        QVERIFY2(!desenlace.motivo.isEmpty(), qPrintable(desenlace.motivo));
        QCOMPARE(prueba::leer(carpeta.archivo()), carpeta.antes);
        QCOMPARE(carpeta.nombres(), QStringList{u"Datos.mdb"_qs});
    }

    void badReaders_data()
    {
        QTest::addColumn<QString>("cuerpo");
        QTest::addColumn<QString>("falla");
        const auto caso = [](const char *nombre, const char *cuerpo, const char *falla) {
            QTest::newRow(nombre) << QString::fromUtf8(cuerpo) << QString::fromUtf8(falla);
        };
        // Frames: length, letter, body.
        const auto saludo = "printf '\\005\\0\\0\\0S\\002\\0\\0\\0'; ";
        const auto tabla = "printf '\\041\\0\\0\\0T\\001\\0\\0\\0a\\0\\0\\0\\0\\0\\0\\0\\0\\001\\0\\0\\0\\001\\0\\0\\0b"
                           "\\004\\004\\0\\0\\0\\0\\0\\0\\0\\0'; ";
        caso("dies", "kill -SEGV $$", "la lectura se cortó");
        caso("says nothing", "exit 0", "la lectura se cortó");
        caso("hangs", "exec sleep 60", "la lectura no avanza");
        caso("stops half way", (QByteArray(saludo) + tabla).constData(), "la lectura se cortó");
        caso("talks rubbish", "yes basura", "sentido");
        caso("endless frame", "printf '\\377\\377\\377\\177R'; cat /dev/zero", "sentido");
        caso("rows without a table", (QByteArray(saludo) + "printf '\\002\\0\\0\\0R\\0'").constData(), "sentido");
        caso("unknown kind", (QByteArray(saludo) + tabla + "printf '\\002\\0\\0\\0R\\077'").constData(), "sentido");
        caso("says why", (QByteArray(saludo) + "printf '\\012\\0\\0\\0D\\0\\004\\0\\0\\0nada'").constData(), "nada");
        caso("cut cell", (QByteArray(saludo) + tabla + "printf '\\003\\0\\0\\0R\\001\\0'").constData(), "sentido");
        caso(
            "impossible date",
            (QByteArray(saludo) + tabla + "printf '\\012\\0\\0\\0R\\007\\377\\377\\377\\377\\377\\377\\377\\177'")
                .constData(),
            "sentido");
        caso(
            "name that is none",
            (QByteArray(saludo) + QByteArray(tabla).replace("a\\0", "\\001\\0")).constData(),
            "sentido");
        caso(
            "wide number",
            (QByteArray(saludo) + tabla + "printf '\\012\\0\\0\\0R\\001\\0\\0\\0\\0\\0\\0\\0\\177'").constData(),
            "sentido");
        const auto finTabla = "printf '\\005\\0\\0\\0F\\0\\0\\0\\0'; ";
        caso("same table again", (QByteArray(saludo) + tabla + finTabla + tabla).constData(), "sentido");
        caso(
            "miscounted",
            (QByteArray(saludo) + tabla + "printf '\\005\\0\\0\\0F\\003\\0\\0\\0'").constData(),
            "sentido");
    }
    void badReaders()
    {
        QFETCH(QString, cuerpo);
        QFETCH(QString, falla);
        db::access::LectorProceso lectura(prueba::muestra(u"ConClave.mdb"_qs), lector(cuerpo), 1);
        const QString dicha = prueba::fallaAlLeer(lectura);
        QVERIFY2(dicha.contains(falla), qPrintable(dicha));
    }

    void noReader()
    {
        db::access::LectorProceso sin(prueba::muestra(u"ConClave.mdb"_qs), QString());
        QVERIFY(prueba::fallaAlLeer(sin).contains(u"no tiene el lector"_qs));
    }

    void cancelledAtAnyMoment()
    {
        prueba::Carpeta carpeta(u"ConClave.mdb"_qs);
        prueba::Seguimiento entero;
        int momento = 0;
        for (;; ++momento) {
            prueba::Seguimiento seguimiento;
            seguimiento.hasta = momento;
            const Desenlace desenlace = db::access::convertir(carpeta.pedido(), seguimiento);
            if (desenlace.tipo == Desenlace::Tipo::Hecha)
                break;
            QVERIFY2(desenlace.tipo == Desenlace::Tipo::Cancelada, qPrintable(desenlace.motivo));
            QCOMPARE(prueba::leer(carpeta.archivo()), carpeta.antes);
            QCOMPARE(carpeta.nombres(), QStringList{u"Datos.mdb"_qs});
            momento += momento / 4; // every one at first, then fewer
        }
        QVERIFY(momento > 5);
    }

    void killedAtAnyMoment()
    {
        prueba::Carpeta carpeta(u"Datos_antigua.mdb"_qs);
        int cortes = 0;
        for (int momento = 0;; momento = momento * 2 + 1, ++cortes) {
            const int salida
                = QProcess::execute(QStringLiteral(VASTELO_CONVERSOR), {carpeta.archivo(), QString::number(momento)});
            if (salida == 0)
                break;
            QCOMPARE(salida, 9);
            QCOMPARE(prueba::leer(carpeta.archivo()), carpeta.antes);
        }
        QVERIFY(cortes > 4);
        // The run that was left in peace took over the lock and the rests of the dead.
        QCOMPARE(prueba::leer(carpeta.original()), carpeta.antes);
        db::EmbeddedEngine motor(carpeta.archivo(), prueba::clave);
        QCOMPARE(motor.queryNative("SELECT count(*) FROM Pacientes", {})->integer(0, 0), 300);
        QCOMPARE(carpeta.nombres().size(), 3);
    }

    // Cut off between giving the original its second name and putting the new file in its place.
    void finishesAnInterruptedSwap()
    {
        prueba::Carpeta carpeta(u"ConClave.mdb"_qs);
        QCOMPARE(QProcess::execute(u"ln"_qs, {carpeta.archivo(), carpeta.original()}), 0);
        const QFile::Permissions permisos = QFile::ReadOwner | QFile::ReadUser | QFile::ReadGroup | QFile::WriteGroup;
        QVERIFY(QFile::setPermissions(carpeta.archivo(), permisos));
        prueba::Seguimiento seguimiento;
        QCOMPARE(db::access::convertir(carpeta.pedido(), seguimiento).informe.original, carpeta.original());
        QVERIFY(QFile::permissions(carpeta.archivo()).testFlags(permisos | QFile::WriteOwner));
        QCOMPARE(prueba::leer(carpeta.original()), carpeta.antes);

        // Another original of former times is not overwritten.
        prueba::escribir(carpeta.archivo(), carpeta.antes);
        const Desenlace otra = db::access::convertir(carpeta.pedido(), seguimiento);
        QCOMPARE(otra.informe.original, carpeta.ruta(u"Datos (Access original 2).mdb"_qs));
        QCOMPARE(prueba::leer(carpeta.original()), carpeta.antes);
        // And what is converted is no Access file any more.
        QCOMPARE(db::access::convertir(carpeta.pedido(), seguimiento).tipo, Desenlace::Tipo::Fallada);
    }

    // The definition of a table says how many rows it has: fewer that can be read are told, and asked about.
    void missingRowsAreAskedAbout()
    {
        prueba::Carpeta carpeta(u"ConClave.mdb"_qs);
        QByteArray menos = carpeta.antes;
        for (qsizetype pagina = 0; pagina + 4096 <= menos.size(); pagina += 4096)
            if (menos[pagina] == 2 && menos[pagina + 16] == 6) // the six rows of CIE10
                menos[pagina + 16] = 7;
        QVERIFY(menos != carpeta.antes);
        prueba::escribir(carpeta.archivo(), menos);
        prueba::Seguimiento seguimiento;
        db::access::Pedido pedido = carpeta.pedido();
        const Desenlace sinPreguntar = db::access::convertir(pedido, seguimiento);
        QVERIFY2(
            sinPreguntar.motivo.contains(u"'CIE10' dice tener 7 filas y se leyeron 6"_qs),
            qPrintable(sinPreguntar.motivo));
        pedido.continuarConDiferencias = [](const QString &) { return true; };
        const Desenlace hecha = db::access::convertir(pedido, seguimiento);
        QCOMPARE(hecha.tipo, Desenlace::Tipo::Hecha);
        QVERIFY(hecha.informe.avisos.join(u' ').contains(u"'CIE10'"_qs));
    }
};

PRUEBA(PruebaDanio)
#include "PruebaDanio.moc"
