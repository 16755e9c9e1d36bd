#include "db/Config.h"
#include "db/engine/OnlineCopy.h"
#include "maintenance/RespaldoAutomatico.h"
#include "support/BaseDePrueba.h"
#include "support/Prueba.h"

#include <QSignalSpy>

#include <csignal>
#include <sys/wait.h>
#include <unistd.h>

using namespace maintenance;
using namespace Qt::StringLiterals;
using Tipo = DesenlaceRespaldo::Tipo;

namespace {

const QDateTime ahora(QDate(2026, 11, 22), QTime(9, 0));
const auto primera = u"Backup Datos (202611220900).mdb"_qs;

QStringList archivosDe(const QString &carpeta)
{
    return QDir(carpeta).entryList(QDir::Files | QDir::Hidden, QDir::Name);
}

void escribir(const QString &archivo, const QByteArray &bytes = "x")
{
    QFile file(archivo);
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(bytes);
}

void agregarEntrada(db::Connection &conexion)
{
    conexion.execute(u"INSERT INTO [Historial] (iddoctor,accion) VALUES (1,'O''Higgins')"_qs);
}

} // namespace

/// The automatic copy: what may count as one, and what becomes of it when the world does not cooperate.
class PruebaRespaldo : public QObject
{
    Q_OBJECT

    std::unique_ptr<soporte::BaseDePrueba> base;
    QString carpeta;

    void preparar(db::Dialect::Kind dialecto = db::Dialect::Kind::Access)
    {
        base = std::make_unique<soporte::BaseDePrueba>(dialecto);
        carpeta = base->carpetaPrograma() + u"/Backup"_qs;
        db::Config(base->conexion()).guardar(u"hacerbackupautomatico", true);
    }
    DesenlaceRespaldo hacer(const PasosRespaldo &pasos = {}, int cantidad = 14)
    {
        SeguimientoRespaldo seguimiento;
        return hacerRespaldo(
            {{base->archivo(), u"kestrel428"_qs}, carpeta, cantidad, 4, base->reloj.now()}, seguimiento, pasos);
    }
    int filas(const QString &archivo, const QString &tabla = u"Historial"_qs)
    {
        const auto copia = db::Connection::open(soporte::cadenaAccess(archivo), db::Engines::standard());
        return int(copia->query(u"SELECT COUNT(*) FROM [%1]"_qs.arg(tabla))->integer(0, 0));
    }
    QStringList entradas()
    {
        const db::Rows rows = base->conexion().query(
            u"SELECT accion FROM [Historial] WHERE ventana = 'Back-up (Copia de Seguridad)'"_qs);
        QStringList textos;
        for (int i = 0; i < rows->rowCount(); ++i)
            textos << rows->text(i, 0);
        return textos;
    }
    void correr(RespaldoAutomatico &respaldo)
    {
        respaldo.tic();
        QTRY_VERIFY_WITH_TIMEOUT(!respaldo.enMarcha(), 20'000);
    }

private slots:
    void cleanup() { base.reset(); }

    void nombres_data()
    {
        QTest::addColumn<QString>("nombre");
        QTest::addColumn<QDateTime>("cuando");
        QTest::newRow("la copia") << primera << ahora;
        QTest::newRow("sin terminar") << primera + u".parcial"_qs << QDateTime();
        QTest::newRow("hora imposible") << u"Backup Datos (202611222561).mdb"_qs << QDateTime();
        QTest::newRow("sin hora") << u"Backup Datos ().mdb"_qs << QDateTime();
        QTest::newRow("otra cosa") << u"Datos.mdb"_qs << QDateTime();
    }
    void nombres()
    {
        QFETCH(QString, nombre);
        QFETCH(QDateTime, cuando);
        QCOMPARE(fechaDeCopia(nombre).value_or(QDateTime()), cuando);
        if (cuando.isValid())
            QCOMPARE(nombreCopia(cuando), nombre);
    }

    void ajustes_data() { soporte::filasDeDialecto(); }
    void ajustes()
    {
        base = std::make_unique<soporte::BaseDePrueba>(soporte::dialectoActual());
        QCOMPARE(leerAjustes(base->conexion()), AjustesRespaldo());
        QCOMPARE(carpetaRespaldo({}, u"/programa"_qs), u"/programa/Backup"_qs);
        const AjustesRespaldo otros{true, u"/mnt/disco de O'Higgins"_qs, 30, 12};
        db::Config config(base->conexion());
        config.guardar(u"hacerbackupautomatico", true);
        config.guardar(u"backupcarpeta", otros.carpeta);
        config.guardar(u"backupcantidad", otros.cantidad);
        config.guardar(u"backuphoras", otros.horas);
        QCOMPARE(leerAjustes(base->conexion()), otros);
        // what another program left there
        db::Config(base->conexion()).guardar(u"backupcantidad", 0);
        db::Config(base->conexion()).guardar(u"backuphoras", {});
        QCOMPARE(leerAjustes(base->conexion()).cantidad, 14);
        QCOMPARE(leerAjustes(base->conexion()).horas, 4);
    }

    void sobran_data()
    {
        QTest::addColumn<QString>("hay");
        QTest::addColumn<int>("cantidad");
        QTest::addColumn<QString>("van");
        // day and hour of November 2026; now is 22, 09:00
        QTest::newRow("alcanza") << "2209 2109" << 2 << "";
        QTest::newRow("la más vieja") << "2209 2109 2009 1909" << 3 << "1909";
        QTest::newRow("antes, la que otra del día siguió") << "2209 2118 2112 2018 2012 1909" << 4 << "2012 2112";
        QTest::newRow("las de hoy no se ralean") << "2209 2207 2206 2109" << 3 << "2109";
        QTest::newRow("nunca la última") << "2209 2109" << 0 << "2109";
        QTest::newRow("del futuro, primero") << "2312 2209 2109" << 2 << "2312";
    }
    void sobran()
    {
        QFETCH(QString, hay);
        QFETCH(int, cantidad);
        QFETCH(QString, van);
        QVector<CopiaAutomatica> copias;
        for (const QString &hora : hay.split(u' '))
            copias.prepend({hora, QDateTime(QDate(2026, 11, hora.left(2).toInt()), QTime(hora.mid(2).toInt(), 0))});
        QCOMPARE(sobrantes(copias, cantidad, ahora).join(u' '), van);
    }

    /// Made beside the person's work, proved, logged, and not again before its time.
    void seHaceMientrasSeTrabaja()
    {
        preparar();
        RespaldoAutomatico respaldo(*base);
        QSignalSpy avances(&respaldo, &RespaldoAutomatico::avanzado);
        respaldo.tic();
        QVERIFY(respaldo.enMarcha());
        int escritas = 0;
        const auto otra = base->otraTerminal();
        while (respaldo.enMarcha()) {
            if (escritas < 40) { // later the practice rests
                agregarEntrada(base->conexion());
                agregarEntrada(*otra);
                escritas += 2;
            }
            QTest::qWait(10);
        }
        QCOMPARE(respaldo.falla(), QString());
        QCOMPARE(archivosDe(carpeta), QStringList{primera});
        QVERIFY(avances.size() > 1);
        for (const auto &avance : std::as_const(avances))
            QVERIFY(
                avance[0].toString().isEmpty()
                || avance[0].toString().startsWith(u"Realizando backup automático..."_qs));
        QVERIFY(avances.constLast()[0].toString().isEmpty());
        QCOMPARE(entradas(), QStringList{u"Se hizo un backup automático en '%1/%2'."_qs.arg(carpeta, primera)});
        QCOMPARE(filas(carpeta + u'/' + primera), escritas);
        QCOMPARE(filas(base->archivo()), escritas + 1);

        base->reloj.set(ahora.addSecs(3 * 3600));
        respaldo.tic();
        QVERIFY(!respaldo.enMarcha());
        base->reloj.set(ahora.addSecs(4 * 3600));
        correr(respaldo);
        QCOMPARE(archivosDe(carpeta).size(), 2);
        // another run of the program finds the copies that are there
        RespaldoAutomatico siguiente(*base);
        base->reloj.set(ahora.addSecs(7 * 3600));
        correr(siguiente);
        QCOMPARE(archivosDe(carpeta).size(), 2);
        // a clock set back makes no copy impossible
        base->reloj.set(ahora.addDays(-30));
        correr(siguiente);
        QCOMPARE(archivosDe(carpeta).size(), 3);
    }

    void noLeToca_data()
    {
        QTest::addColumn<bool>("activo");
        QTest::addColumn<bool>("cliente");
        QTest::addColumn<db::Dialect::Kind>("dialecto");
        QTest::newRow("no se pidió") << false << false << db::Dialect::Kind::Access;
        QTest::newRow("terminal") << true << true << db::Dialect::Kind::Access;
        QTest::newRow("servidor") << true << false << db::Dialect::Kind::SqlServer;
    }
    void noLeToca()
    {
        QFETCH(bool, activo);
        QFETCH(bool, cliente);
        preparar(soporte::dialectoActual());
        db::Config(base->conexion()).guardar(u"hacerbackupautomatico", activo);
        base->clienteDeRed = cliente;
        RespaldoAutomatico respaldo(*base);
        respaldo.tic();
        QVERIFY(!respaldo.enMarcha());
        QVERIFY(!QFileInfo::exists(carpeta));
    }

    /// Other stations write between the steps: the copy is of one moment, or there is none.
    void escribenEnElMedio()
    {
        preparar();
        const auto otra = base->otraTerminal();
        int pasos = 0;
        const auto hecho = hacer({.entrePasos = [&] {
            if (++pasos == 20 || pasos == 90)
                agregarEntrada(*otra);
        }});
        QCOMPARE(hecho.tipo, Tipo::Hecho);
        QCOMPARE(filas(hecho.archivo), 2);

        base->reloj.set(ahora.addDays(1));
        QCOMPARE(hacer({.entrePasos = [&] { agregarEntrada(*otra); }}).tipo, Tipo::Ocupado);
        QCOMPARE(archivosDe(carpeta), QStringList{primera});
    }

    /// What is damaged, in its bytes or in its rows, is thrown away, and the former copies stay.
    void probada_data()
    {
        QTest::addColumn<int>("lugar"); // byte, or -1 to remove a row
        QTest::newRow("un byte en el medio") << 1'000'000;
        QTest::newRow("la sal") << 3;
        QTest::newRow("una fila menos") << -1;
    }
    void probada()
    {
        QFETCH(int, lugar);
        preparar();
        QCOMPARE(hacer().tipo, Tipo::Hecho);
        base->reloj.set(ahora.addDays(1));
        const auto hecho = hacer(
            {.antesDeProbar =
                 [&](const QString &parcial) {
                     if (lugar < 0) {
                         db::EmbeddedEngine(parcial, u"kestrel428"_qs)
                             .execute(u"DELETE FROM [CIE10] WHERE id = 7"_qs, {});
                         return;
                     }
                     QFile file(parcial);
                     QVERIFY(file.open(QIODevice::ReadWrite) && file.size() > lugar);
                     char byte = 0;
                     QVERIFY(file.seek(lugar) && file.getChar(&byte) && file.seek(lugar) && file.putChar(char(~byte)));
                 }},
            1);
        QCOMPARE(hecho.tipo, Tipo::Fallado);
        QVERIFY2(hecho.motivo.startsWith(u"La copia no pasó la prueba y se descartó ("_qs), qPrintable(hecho.motivo));
        QCOMPARE(archivosDe(carpeta), QStringList{primera});
        QCOMPARE(hecho.ultimo, ahora);
    }

    /// Killed in the middle: what is left does no harm, and the next run removes it.
    void muertoEnElMedio()
    {
        preparar();
        const pid_t hijo = fork();
        if (hijo == 0) {
            int pasos = 0;
            (void)hacer({.entrePasos = [&] {
                if (++pasos == 80)
                    ::kill(getpid(), SIGKILL);
            }});
            _exit(1);
        }
        int estado = 0;
        QCOMPARE(waitpid(hijo, &estado, 0), hijo);
        QVERIFY(WIFSIGNALED(estado));
        QVERIFY(archivosDe(carpeta).contains(primera + u".parcial"_qs));
        QVERIFY(copiasEn(carpeta).isEmpty());

        QCOMPARE(hacer().tipo, Tipo::Hecho);
        QCOMPARE(archivosDe(carpeta), QStringList{primera});
    }

    void discoLleno_data()
    {
        QTest::addColumn<bool>("seSabe");
        QTest::newRow("se ve antes") << true;
        QTest::newRow("en el medio") << false;
    }
    void discoLleno()
    {
        QFETCH(bool, seSabe);
        preparar();
        PasosRespaldo pasos;
        if (seSabe)
            pasos.lugarLibre = [](const QString &) { return 5LL << 20; };
        else
            pasos.alEmpezar
                = [](db::OnlineCopy &copia) { (void)copia.destination().queryNative("PRAGMA max_page_count=100", {}); };
        const auto hecho = hacer(pasos);
        QCOMPARE(hecho.tipo, Tipo::Fallado);
        QVERIFY2(
            hecho.motivo.startsWith(
                seSabe ? u"No hay lugar en el disco de la carpeta '"_qs : u"El disco está lleno"_qs),
            qPrintable(hecho.motivo));
        QVERIFY(!seSabe || hecho.motivo.endsWith(u"y quedan 5,0 MB."_qs));
        QCOMPARE(archivosDe(carpeta), QStringList());
    }

    /// A failure is told and logged once, until a success or other settings.
    void fallaDichaUnaVez_data()
    {
        QTest::addColumn<QString>("donde");
        QTest::addColumn<QString>("motivo");
        QTest::newRow("no se puede crear") << u"%1/archivo/Backup"_qs << u"No se puede crear la carpeta '%1'."_qs;
        QTest::newRow("no se puede escribir") << u"/proc"_qs << u"No se puede escribir en la carpeta '%1'."_qs;
    }
    void fallaDichaUnaVez()
    {
        QFETCH(QString, donde);
        QFETCH(QString, motivo);
        preparar();
        if (donde.contains(u"%1"_qs))
            donde = donde.arg(base->carpetaPrograma());
        motivo = motivo.arg(donde);
        escribir(base->carpetaPrograma() + u"/archivo"_qs);
        db::Config config(base->conexion());
        config.guardar(u"backupcarpeta", donde);
        RespaldoAutomatico respaldo(*base);
        const auto unaVez = [&](int veces) {
            for (int i = 0; i < 3; ++i) {
                correr(respaldo);
                QCOMPARE(respaldo.falla(), motivo);
                QCOMPARE(
                    respaldo.tomarAviso(),
                    i > 0 ? QString()
                          : u"No se pudo hacer el backup automático: "_qs + motivo
                            + u"\n\nTodavía no hay ningún backup en esa carpeta. El programa seguirá intentándolo; "
                              u"este aviso no se "
                              "repite."_qs);
                QCOMPARE(entradas(), QStringList(veces, u"No se pudo hacer el backup automático: "_qs + motivo));
                base->reloj.set(base->reloj.now().addSecs(3600));
            }
        };
        unaVez(1);
        config.guardar(u"backuphoras", 2);
        unaVez(2);
        config.guardar(u"backupcarpeta", QString());
        correr(respaldo);
        QCOMPARE(respaldo.falla(), QString());
        QCOMPARE(archivosDe(carpeta).size(), 1);
        QCOMPARE(entradas().size(), 3);
    }

    /// Cut off by the end of the program, or by a settings change: nothing stays behind.
    void detenido()
    {
        preparar();
        RespaldoAutomatico respaldo(*base);
        std::atomic<int> pasos = 0;
        respaldo.setPasos({.entrePasos = [&] {
            ++pasos;
            QThread::msleep(20);
        }});
        respaldo.tic();
        QTRY_VERIFY(pasos > 5);
        QVERIFY(!archivosDe(carpeta).isEmpty());
        respaldo.detener();
        QVERIFY(!respaldo.enMarcha());
        QCOMPARE(archivosDe(carpeta), QStringList());
        QCOMPARE(entradas(), QStringList());
        respaldo.tic();
        db::Config(base->conexion()).guardar(u"hacerbackupautomatico", false);
        respaldo.tic();
        QVERIFY(!respaldo.enMarcha());
        QCOMPARE(archivosDe(carpeta), QStringList());
    }

    void cantidad()
    {
        preparar();
        QVERIFY(QDir().mkpath(carpeta));
        for (int dia = 10; dia < 20; ++dia)
            escribir(carpeta + u"/Backup Datos (202611"_qs + QString::number(dia) + u"0900).mdb"_qs);
        escribir(carpeta + u"/de la secretaria.mdb"_qs);
        QCOMPARE(hacer({}, 3).tipo, Tipo::Hecho);
        QCOMPARE(
            archivosDe(carpeta),
            QStringList(
                {u"Backup Datos (202611180900).mdb"_qs,
                 u"Backup Datos (202611190900).mdb"_qs,
                 primera,
                 u"de la secretaria.mdb"_qs}));
    }
};

PRUEBA(PruebaRespaldo)
#include "PruebaRespaldo.moc"
