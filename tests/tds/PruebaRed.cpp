#include "app/Arranque.h"
#include "app/Modulo.h"
#include "db/Connection.h"
#include "db/Error.h"
#include "db/Recordset.h"
#include "patients/NuevoPaciente.h"
#include "support/BaseDePrueba.h"
#include "support/Falla.h"
#include "support/Prueba.h"
#include "support/ServidorTds.h"

#include <QProcess>

using namespace Qt::StringLiterals;

namespace {

/// A server with the practice's database, and stations that lead to it.
struct Red {
    Red()
        : servidor(carpeta.path())
    {
        QFile::copy(soporte::plantilla(), base());
        QFile::setPermissions(base(), QFile::ReadOwner | QFile::WriteOwner);
    }

    [[nodiscard]] QString base() const { return carpeta.filePath(u"Datos.mdb"_s); }

    /// A program folder whose ruta.dat names the server.
    [[nodiscard]] QString estacion(int numero) const
    {
        const QString suya = estaciones.filePath(QString::number(numero));
        QDir().mkpath(suya);
        app::Ruta ruta;
        ruta.modoServidor = true;
        ruta.servidor = servidor.servidor();
        ruta.usuario = soporte::ServidorTds::usuario();
        ruta.clave = soporte::ServidorTds::clave();
        ruta.guardar(suya + u"/ruta.dat"_s);
        return suya;
    }

    [[nodiscard]] std::unique_ptr<db::Connection> conectar() const
    {
        return db::Connection::open(servidor.cadena(), db::Engines::standard());
    }

    [[nodiscard]] std::unique_ptr<QProcess>
    reservar(int numero, int nrohc, int doctor, const QDate &desde, int reservas) const
    {
        auto proceso = std::make_unique<QProcess>();
        proceso->start(
            QStringLiteral(VASTELO_TERMINAL),
            {estacion(numero),
             QString::number(nrohc),
             QString::number(doctor),
             desde.toString(Qt::ISODate),
             QString::number(reservas)});
        return proceso;
    }

    QTemporaryDir carpeta;
    QTemporaryDir estaciones;
    soporte::ServidorTds servidor;
};

qint64 contar(db::Connection &conexion, const QString &resto)
{
    return conexion.query(u"SELECT count(*) FROM "_s + resto)->integer(0, 0);
}

/// Ids that a station printed as saved; a line cut off by a kill counts as not said.
QVector<qint64> guardados(QProcess &proceso)
{
    QVector<qint64> ids;
    const QByteArray salida = proceso.readAllStandardOutput();
    for (const QByteArray &linea : salida.left(salida.lastIndexOf('\n') + 1).split('\n')) {
        const QList<QByteArray> partes = linea.split(' ');
        for (int i = 1; i < partes.size(); ++i)
            ids << partes[i].toLongLong();
    }
    return ids;
}

int medico(db::Connection &conexion)
{
    conexion.execute(u"INSERT INTO [Lista Doctores] (NomDoc,tipo) VALUES (?,0)"_s, {u"Íñigo O'Farrell"_s});
    return int(conexion.insertedId());
}

void permitir(db::Connection &conexion, int doctor, int porDia)
{
    conexion.execute(
        u"INSERT INTO [Agenda Turnos Horarios] (iddoctor,fechadesde,fechahasta,cantidadsobreturnos,"
        "cantidadsobreturnoshora) VALUES (?,'19000101','21001231',?,-1)"_s,
        {doctor, porDia});
}

} // namespace

/// The server mode as a practice has it: the real driver, a network between, stations that are processes.
class PruebaRed : public QObject
{
    Q_OBJECT

private slots:
    /// What goes through the driver comes back the same, whatever the width of its column.
    void everyValueSurvives()
    {
        const Red red;
        const auto conexion = red.conectar();
        conexion->execute(
            u"CREATE TABLE [Cosas] (id int IDENTITY(1,1) PRIMARY KEY, corto nvarchar(20), ancho nvarchar(255), "
            "memo nvarchar(max), fecha datetime, simple real, doble float, si bit, bytes varbinary(max))"_s);
        const QString largo = QString(255, u'ñ'), memo = u"≥ 😀 𝄞 «幸福» "_s.repeated(9000);
        const QVector<QVariantList> filas{
            {u"ññññññññññññññññññññ"_s,
             largo,
             memo,
             QDateTime({2026, 11, 23}, {10, 20}),
             0.1f,
             0.1,
             true,
             QByteArray("\0a\0", 3)},
            {u"€€€€€€€€€€€€€€€€€€€€"_s,
             QString(255, u'幸'),
             u""_s,
             QDateTime({1753, 1, 1}, {0, 0}),
             16777216.0f,
             12.300000000000002,
             false,
             QByteArray(100000, '\0')},
            {u""_s,
             u"O'Higgins ? [x] -- /* @P1"_s,
             u"a\r\nb\tc   "_s,
             QDateTime({9999, 12, 31}, {23, 59, 59}),
             -0.01f,
             -1e-300,
             QVariant(),
             QByteArray("")},
            {QVariant(), QVariant(), QVariant(), QVariant(), QVariant(), QVariant(), QVariant(), QVariant()},
        };
        for (const QVariantList &fila : filas)
            QCOMPARE(
                conexion->execute(
                    u"INSERT INTO [Cosas] (corto,ancho,memo,fecha,simple,doble,si,bytes) VALUES (?,?,?,?,?,?,?,?)"_s,
                    fila),
                1);
        QCOMPARE(conexion->insertedId(), 4);
        const db::Rows leidas = conexion->query(u"SELECT * FROM [Cosas] ORDER BY id"_s);
        QCOMPARE(leidas->rowCount(), filas.size());
        for (int f = 0; f < filas.size(); ++f)
            for (int c = 0; c < filas[f].size(); ++c) {
                const QVariant leido = leidas->value(f, c + 1), &escrito = filas[f][c];
                const auto donde = QStringLiteral("row %1, column %2").arg(f).arg(c + 1).toUtf8();
                QVERIFY2(leidas->isNull(f, c + 1) == !escrito.isValid(), donde.constData());
                if (!escrito.isValid())
                    continue;
                if (escrito.typeId() == QMetaType::Float)
                    QVERIFY2(float(leidas->real(f, c + 1)) == escrito.toFloat(), donde.constData());
                else if (escrito.typeId() == QMetaType::Double)
                    QVERIFY2(leidas->real(f, c + 1) == escrito.toDouble(), donde.constData());
                else
                    QVERIFY2(leido == escrito, donde.constData());
            }
        // Found again by what was written.
        for (const auto &[columna, texto] : {std::pair(u"corto"_s, filas[0][0]), {u"ancho"_s, filas[1][1]}})
            QCOMPARE(conexion->query(u"SELECT id FROM [Cosas] WHERE %1 = ?"_s.arg(columna), {texto})->rowCount(), 1);
        // A row changed through a recordset, while another result is open.
        db::Recordset rs(*conexion, u"SELECT * FROM [Cosas] WHERE id = ?"_s, {2});
        const db::Rows otro = conexion->query(u"SELECT id FROM [Cosas]"_s);
        rs.set(u"corto"_s, u"≥ 5 «ñ»"_s);
        rs.update();
        QCOMPARE(otro->rowCount(), 4);
        QCOMPARE(conexion->query(u"SELECT corto FROM [Cosas] WHERE id = 2"_s)->text(0, 0), u"≥ 5 «ñ»"_s);
    }

    /// A backslash at the end of a line takes the line's end away in a statement: not in what is stored.
    void backslashesAtTheEndOfALine()
    {
        const Red red;
        const auto conexion = red.conectar();
        // Without anything to keep them apart they are lost here too, as there.
        QCOMPARE(conexion->query(u"SELECT N'a\\\r\nb\\\nc'"_s)->text(0, 0), u"abc"_s);
        conexion->execute(u"CREATE TABLE [Cosas] (id int IDENTITY(1,1) PRIMARY KEY, memo nvarchar(max))"_s);
        const QStringList piezas{u"\\"_s, u"\n"_s, u"\r"_s, u"|"_s, u"'"_s, u"😀"_s};
        QStringList textos{QString()};
        for (qsizetype desde = 0, hasta = 1, largo = 0; largo < 4; ++largo, desde = hasta, hasta = textos.size())
            for (qsizetype i = desde; i < hasta; ++i)
                for (const QString &pieza : piezas)
                    textos << textos[i] + pieza;
        // Every text of up to four of the pieces, and then long ones.
        QCOMPARE(textos.size(), 1 + 6 + 36 + 216 + 1296);
        textos << u"\\\n"_s.repeated(100'000) << u"||\\\r\n𝄞"_s.repeated(100'000)
               << QString(5000, u'ñ') + u"\\\r\n|\\"_s << u"\\\r"_s + QString(3999, u'|') + u"\\\n"_s;
        std::vector<db::Params> filas;
        for (const QString &texto : std::as_const(textos))
            filas.push_back({texto});
        conexion->executeBatch(u"INSERT INTO [Cosas] (memo) VALUES (?)"_s, filas);
        const db::Rows leidas = conexion->query(u"SELECT memo FROM [Cosas] ORDER BY id"_s);
        QCOMPARE(leidas->rowCount(), textos.size());
        for (int f = 0; f < leidas->rowCount(); ++f)
            QVERIFY2(leidas->text(f, 0) == textos[f], qPrintable(textos[f].left(20)));
        conexion->execute(u"UPDATE [Cosas] SET memo = ? WHERE id = 1"_s, {textos.last()});
        QCOMPARE(conexion->query(u"SELECT memo FROM [Cosas] WHERE id = 1"_s)->text(0, 0), textos.last());
    }

    /// A station starts on the server: checked, upgraded, ready; the second start adds nothing and says nothing.
    void stationStarts()
    {
        const Red red;
        soporte::MensajesGuionados guion;
        const soporte::RelojFijo reloj;
        for (const bool primera : {true, false}) {
            if (primera)
                guion.esperarMensaje(
                    u"Atención"_s,
                    u"Como el sistema detectó que No existe ningún Médico cargado, se procedió a crear uno de prueba. "
                    "Al iniciar el sistema diríjase a la ventana 'Configuración', opción 'Médicos y Usuarios', para "
                    "cargar los datos del Médico real."_s,
                    base::Icono::Informacion);
            app::Modulo modulo(red.estacion(1), guion, reloj, db::Engines::standard());
            (void)app::Arranque(modulo, [](const QString &) {}).iniciar();
            QVERIFY(modulo.baseLista());
            QVERIFY(modulo.verificarBase());
            QVERIFY(guion.terminar());
        }
    }

    /// Four stations book at once on one server: every booking that was told as saved is there, nothing else is, and
    /// the limit of a day holds among them.
    void fourStationsAtOnce()
    {
        const Red red;
        const auto conexion = red.conectar();
        const int doctor = medico(*conexion);
        // Without hours each time is an extra one: a day allows three of them, whoever asks.
        permitir(*conexion, doctor, 3);
        std::vector<std::unique_ptr<QProcess>> estaciones;
        for (int i = 0; i < 4; ++i) {
            conexion->execute(
                u"INSERT INTO [Pacientes] (NroHC,Apellido,Nombres) VALUES (?,?,?)"_s, {100 + i, u"Núñez"_s, u"Ana"_s});
            estaciones.push_back(red.reservar(i, 100 + i, doctor, QDate(2027, 1, 1), 25));
        }
        int dichos = 0;
        for (const auto &estacion : estaciones) {
            QVERIFY(estacion->waitForFinished(120000));
            QVERIFY2(estacion->exitCode() == 0, estacion->readAllStandardError().constData());
            for (const qint64 id : guardados(*estacion)) {
                ++dichos;
                QCOMPARE(contar(*conexion, u"[Agenda Turnos] WHERE id = %1"_s.arg(id)), 1);
            }
        }
        QCOMPARE(dichos, 75);
        QCOMPARE(contar(*conexion, u"[Agenda Turnos]"_s), 75);
    }

    /// The server dies in the middle of the day: what was told as saved is there afterwards, no booking in part, and a
    /// station that stayed open is told once and goes on when the server is back.
    void serverKilled()
    {
        Red red;
        const auto conexion = red.conectar();
        const int doctor = medico(*conexion);
        permitir(*conexion, doctor, -1);
        conexion->execute(
            u"INSERT INTO [Pacientes] (NroHC,Apellido,Nombres) VALUES (?,?,?)"_s, {7, u"O'Higgins"_s, u"Begoña"_s});
        soporte::MensajesGuionados guion;
        const soporte::RelojFijo reloj;
        app::Modulo modulo(red.estacion(9), guion, reloj, db::Engines::standard());
        (void)app::Arranque(modulo, [](const QString &) {}).iniciar();

        QVector<qint64> dichos;
        QDate desde(2027, 1, 1);
        for (int vuelta = 0; vuelta < 3; ++vuelta, desde = desde.addYears(5)) {
            const auto a = red.reservar(1, 7, doctor, desde, 1000), b = red.reservar(2, 7, doctor, desde, 1000);
            QVERIFY(a->waitForReadyRead(20000) && b->waitForReadyRead(20000));
            QTest::qWait(50 + 100 * vuelta);
            red.servidor.matar();
            QVERIFY(a->waitForFinished(60000) && b->waitForFinished(60000));
            QCOMPARE(a->exitCode(), 4);
            dichos += guardados(*a) + guardados(*b);

            // Inside a transaction: undone, and known to be.
            const auto falla = soporte::fallaDe([&] {
                db::Transaction transaccion(modulo.conexion());
                modulo.conexion().execute(u"UPDATE [Pacientes] SET Nombres = 'X' WHERE NroHC = 7"_s);
                transaccion.commit();
            });
            QVERIFY(falla && falla->kind() == db::Error::Kind::Lost);
            QVERIFY(!falla->description().contains(soporte::ServidorTds::clave()));
            red.servidor.arrancar();
            QVERIFY(modulo.verificarBase());
            QCOMPARE(
                modulo.conexion().query(u"SELECT Nombres FROM [Pacientes] WHERE NroHC = 7"_s)->text(0, 0), u"Begoña"_s);
        }
        QVERIFY(dichos.size() > 6);
        const auto despues = red.conectar();
        for (const qint64 id : std::as_const(dichos))
            QCOMPARE(contar(*despues, u"[Agenda Turnos] WHERE id = %1"_s.arg(id)), 1);
        QCOMPARE(contar(*despues, u"[Agenda Turnos] WHERE NroHC = 7"_s) % 3, 0);
    }
};

PRUEBA(PruebaRed)
#include "PruebaRed.moc"
