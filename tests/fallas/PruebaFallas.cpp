#include "agenda/Plantilla.h"
#include "db/Connection.h"
#include "db/Error.h"
#include "db/engine/EmbeddedEngine.h"
#include "patients/NuevoPaciente.h"
#include "support/BaseDePrueba.h"
#include "support/Prueba.h"

#include <QProcess>

#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace {

/// A station started as a process of its own.
std::unique_ptr<QProcess>
iniciarTerminal(const soporte::BaseDePrueba &base, int nrohc, const QDate &desde, int reservas)
{
    auto proceso = std::make_unique<QProcess>();
    proceso->start(
        QStringLiteral(VASTELO_TERMINAL),
        {base.carpetaPrograma(),
         QString::number(nrohc),
         QString::number(base.usuario),
         desde.toString(Qt::ISODate),
         QString::number(reservas)});
    return proceso;
}

/// The ids that a station said were saved, booking by booking. A line cut off by a kill counts as not said.
QVector<QVector<qint64>> guardados(QProcess &proceso)
{
    QVector<QVector<qint64>> reservas;
    const QByteArray salida = proceso.readAllStandardOutput();
    const QList<QByteArray> lineas = salida.left(salida.lastIndexOf('\n') + 1).split('\n');
    for (const QByteArray &linea : lineas) {
        QVector<qint64> ids;
        const QList<QByteArray> partes = linea.split(' ');
        for (int i = 1; i < partes.size(); ++i)
            ids << partes[i].toLongLong();
        if (!ids.isEmpty())
            reservas << ids;
    }
    return reservas;
}

int crearPaciente(soporte::BaseDePrueba &base, const QString &apellido)
{
    patients::DatosReducidos datos;
    datos.apellido = apellido;
    datos.nombres = u"Ana"_qs;
    const auto alta = patients::guardarReducido(base, datos);
    return alta && *alta ? (*alta)->nrohc : 0;
}

void permitirTodo(db::Connection &conexion, int doctor)
{
    conexion.execute(
        u"INSERT INTO [Agenda Turnos Horarios] (iddoctor,fechadesde,fechahasta,cantidadsobreturnos,"
        "cantidadsobreturnoshora) VALUES (?,#01/01/1900#,#12/31/2100#,-1,-1)"_qs,
        {doctor});
}

} // namespace

/// Power cuts, killed programs and stations that write at the same moment.
class PruebaFallas : public QObject
{
    Q_OBJECT

private slots:
    /// A station is killed again and again in the middle of its bookings: each start finds a whole database, every
    /// booking that was told as saved is there, and none is there in part.
    void killedWhileBooking()
    {
        soporte::BaseDePrueba base;
        permitirTodo(base.conexion(), base.usuario);
        const int nrohc = crearPaciente(base, u"O'Higgins"_qs);
        QVERIFY(nrohc > 0);

        QRandomGenerator azar(7);
        QDate desde(2027, 1, 1);
        int dichas = 0;
        for (int vuelta = 0; vuelta < 12; ++vuelta, desde = desde.addYears(5)) {
            // More bookings than any computer saves in that time.
            const auto terminal = iniciarTerminal(base, nrohc, desde, 1800);
            QVERIFY(terminal->waitForStarted());
            // From before the file is open to well within the bookings.
            QTest::qWait(azar.bounded(60, 900));
            terminal->kill();
            QVERIFY(terminal->waitForFinished());

            const auto conexion = base.otraTerminal();
            QCOMPARE(conexion->query(u"SELECT * FROM [CIE10] WHERE id = 2"_qs)->rowCount(), 1);
            const auto reservas = guardados(*terminal);
            dichas += int(reservas.size());
            for (const auto &ids : reservas)
                for (const qint64 id : ids)
                    QCOMPARE(conexion->query(u"SELECT id FROM [Agenda Turnos] WHERE id = ?"_qs, {id})->rowCount(), 1);
            const db::Rows partes = conexion->query(
                u"SELECT count(id) FROM [Agenda Turnos] GROUP BY format(Fecha,'yyyymmdd') HAVING count(id) <> 3"_qs);
            QCOMPARE(partes->rowCount(), 0);
        }
        QVERIFY2(dichas > 20, "the stations were killed before they booked anything");
    }

    /// Two stations book on one file at once: every booking that each told as saved is there, nothing else is.
    void twoStationsAtOnce()
    {
        soporte::BaseDePrueba base;
        permitirTodo(base.conexion(), base.usuario);
        const int una = crearPaciente(base, u"Núñez"_qs), otra = crearPaciente(base, u"Pérez"_qs);
        const auto a = iniciarTerminal(base, una, QDate(2027, 1, 1), 60);
        const auto b = iniciarTerminal(base, otra, QDate(2027, 1, 1), 60);
        QVERIFY(a->waitForFinished(120000) && b->waitForFinished(120000));
        QVERIFY2(a->exitCode() == 0, a->readAllStandardError().constData());
        QVERIFY2(b->exitCode() == 0, b->readAllStandardError().constData());
        QCOMPARE(guardados(*a).size(), 60);
        QCOMPARE(guardados(*b).size(), 60);
        for (const int paciente : {una, otra})
            QCOMPARE(base.valor(u"SELECT count(id) FROM [Agenda Turnos] WHERE NroHC = ?"_qs, {paciente}), u"180"_qs);
        QCOMPARE(base.valor(u"SELECT count(id) FROM [Agenda Turnos]"_qs), u"360"_qs);
    }

    /// The limit of one extra hour a day holds although two stations ask at the same moment, on 60 days.
    void limitHoldsBetweenStations()
    {
        soporte::BaseDePrueba base;
        // Without hours no time is a slot: each one is an extra hour, and the day allows three.
        base.conexion().execute(
            u"INSERT INTO [Agenda Turnos Horarios] (iddoctor,fechadesde,fechahasta,cantidadsobreturnos,"
            "cantidadsobreturnoshora) VALUES (?,#01/01/1900#,#12/31/2100#,3,0)"_qs,
            {base.usuario});
        const int una = crearPaciente(base, u"Núñez"_qs), otra = crearPaciente(base, u"Pérez"_qs);
        const auto a = iniciarTerminal(base, una, QDate(2027, 1, 1), 60);
        const auto b = iniciarTerminal(base, otra, QDate(2027, 1, 1), 60);
        QVERIFY(a->waitForFinished(120000) && b->waitForFinished(120000));
        QCOMPARE(a->exitCode() + b->exitCode(), 0);
        QCOMPARE(base.valor(u"SELECT count(id) FROM [Agenda Turnos]"_qs), u"180"_qs);
    }

    /// Both stations give the same start times, which allow one appointment each: each goes to one of them, whoever
    /// came first, and every one that a station told as saved is there.
    void startTimesHoldBetweenStations()
    {
        soporte::BaseDePrueba base;
        agenda::Plantilla plantilla;
        plantilla.iddoctor = base.usuario;
        plantilla.dias.fill({QTime(10, 0), QTime(11, 0), {}, {}, 20});
        plantilla.sobreturnos.cantidadsobreturnoshora = 0;
        QVERIFY(agenda::guardarPlantilla(base.conexion(), plantilla, u"1/1/2027"_qs, u"31/12/2027"_qs));
        const int una = crearPaciente(base, u"Núñez"_qs), otra = crearPaciente(base, u"Pérez"_qs);
        const auto a = iniciarTerminal(base, una, QDate(2027, 1, 1), 60);
        const auto b = iniciarTerminal(base, otra, QDate(2027, 1, 1), 60);
        QVERIFY(a->waitForFinished(120000) && b->waitForFinished(120000));
        QCOMPARE(a->exitCode() + b->exitCode(), 0);
        int dichos = 0;
        for (const auto &[proceso, paciente] : {std::pair(a.get(), una), std::pair(b.get(), otra)})
            for (const auto &ids : guardados(*proceso))
                for (const qint64 id : ids) {
                    ++dichos;
                    QCOMPARE(
                        base.valor(u"SELECT NroHC FROM [Agenda Turnos] WHERE id = ?"_qs, {id}),
                        QString::number(paciente));
                }
        QCOMPARE(dichos, 180);
        QCOMPARE(base.conexion().query(u"SELECT Fecha FROM [Agenda Turnos] GROUP BY Fecha"_qs)->rowCount(), 180);
        QCOMPARE(base.valor(u"SELECT count(id) FROM [Agenda Turnos]"_qs), u"180"_qs);
    }

    /// The program opens its file a second time (an automatic copy, 'Probar' of the window 'Red') in the middle of a
    /// save: for the other stations it stays locked. On Unix, closing a file drops what the process has locked in it.
    void secondOpeningKeepsTheLock()
    {
        soporte::BaseDePrueba base;
        db::Transaction transaccion(base.conexion());
        (void)base.otraTerminal();
        const pid_t otra = fork();
        if (otra == 0) {
            struct flock candado = {};
            candado.l_type = F_WRLCK;
            candado.l_start = 0x40000001; // where the engine locks for a writer
            candado.l_len = 1;
            const int archivo = open(QFile::encodeName(base.archivo()).constData(), O_RDWR);
            _exit(fcntl(archivo, F_GETLK, &candado) == 0 && candado.l_type != F_UNLCK ? 0 : 1);
        }
        int estado = 1;
        QCOMPARE(waitpid(otra, &estado, 0), otra);
        QCOMPARE(estado, 0);
    }

    /// A write that fails half way leaves nothing of it.
    void diskFull()
    {
        soporte::BaseDePrueba base;
        base.conexion().execute(u"UPDATE [Config] SET UltimoPaci = 41"_qs);
        auto *motor = dynamic_cast<db::EmbeddedEngine *>(&base.conexion().engine());
        QVERIFY(motor);
        const QByteArray paginas = motor->queryNative("PRAGMA page_count", {})->text(0, 0).toLatin1();
        (void)motor->queryNative("PRAGMA max_page_count=" + paginas, {});
        try {
            db::Transaction transaccion(base.conexion());
            base.conexion().execute(u"UPDATE [Config] SET UltimoPaci = 42"_qs);
            for (int i = 0; i < 2000; ++i)
                base.conexion().execute(
                    u"INSERT INTO [Historial] (iddoctor,accion) VALUES (1,?)"_qs, {QString(200, u'x')});
            transaccion.commit();
            QFAIL("the disk was full");
        } catch (const db::Error &error) {
            QCOMPARE(error.kind(), db::Error::Kind::Full);
        }
        QCOMPARE(base.valor(u"SELECT UltimoPaci FROM [Config]"_qs), u"41"_qs);
        QCOMPARE(base.valor(u"SELECT count(iddoctor) FROM [Historial]"_qs), u"0"_qs);
    }
};

PRUEBA(PruebaFallas)
#include "PruebaFallas.moc"
