#include "Base.h"

#include "app/Esquema.h"
#include "db/Declarar.h"
#include "db/Error.h"
#include "db/HorariosViejos.h"
#include "db/ProfesionalInicial.h"
#include "db/Recordset.h"
#include "db/Upgrade.h"
#include "support/MensajesGuionados.h"
#include "support/Prueba.h"

using namespace db::declarar;

namespace {

const QString aviso
    = QStringLiteral("El sistema actualizó la base de datos a una versión más reciente, verifique en la ventana "
                     "CONFIGURACIÓN si debe configurar alguna opción nueva.");

/// The professionals of an old database, in the letter case it had.
db::Table doctoresViejos()
{
    QString hours = db::horariosviejos::columnas().join(u' ');
    hours.replace("LuMaDesde", "lumadesde").replace("SaTaHasta", "SATAHASTA");
    return tabla(
        "Lista Doctores",
        contador() + textos(50, "nomdoc Especialidad") + enteros("Prioridad")
            + enteros("DurTur Durtur2 durtur3 Durtur4 Durtur5 Durtur6 Durtur7 cantidadsobreturnos") + fechas(hours));
}

QVariant hora(const char *text)
{
    return QDateTime(QDate(1899, 12, 30), QTime::fromString(QString::fromLatin1(text), "hh:mm"));
}

} // namespace

class ActualizacionTest : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void oldDatabaseIsCompleted();
    void letterCaseDoesNotMatter();
    void hoursReachTheirTable();
    void hoursOfAnInterruptedUpgrade();
    void hoursStayWhenTheyCannotBeMoved();
    void oneBadColumnIsSkipped();
    void firstProfessional();

private:
    bool actualizar()
    {
        return db::actualizarAccess(
            app::esquemaPorRutinas(), [this] { return m_base->abrir(); }, m_mensajes);
    }
    void agregarDoctor(
        db::Connection &connection,
        const QString &name,
        const QVector<QVariant> &lengths,
        const QVector<QPair<QString, QVariant>> &hours);

    std::unique_ptr<Base> m_base;
    soporte::MensajesGuionados m_mensajes;
};

void ActualizacionTest::init() { m_base = std::make_unique<Base>(); }

void ActualizacionTest::cleanup() { QVERIFY(m_mensajes.terminar()); }

void ActualizacionTest::agregarDoctor(
    db::Connection &connection,
    const QString &name,
    const QVector<QVariant> &lengths,
    const QVector<QPair<QString, QVariant>> &hours)
{
    QStringList columns{
        "nomdoc", "DurTur", "Durtur2", "durtur3", "Durtur4", "Durtur5", "Durtur6", "Durtur7", "cantidadsobreturnos"};
    db::Params values{name};
    values += db::Params(lengths);
    for (const auto &[column, value] : hours) {
        columns << column;
        values << value;
    }
    connection.execute(
        QStringLiteral("INSERT INTO [Lista Doctores] (%1) VALUES (%2)")
            .arg(columns.join(u','), QStringList(columns.size(), "?").join(u',')),
        values);
}

void ActualizacionTest::oldDatabaseIsCompleted()
{
    {
        const auto connection = m_base->abrir();
        connection->createTable(tabla("Config", textos(50, "nomdoc") + largos("ultimopaci")));
        connection->execute("INSERT INTO [Config] (nomdoc,ultimopaci) VALUES ('primera',1)");
        connection->execute("INSERT INTO [Config] (nomdoc,ultimopaci) VALUES ('«Ñandú»',347)");
        connection->createTable(tabla("Pacientes", contador() + largos("NROHC") + textos(50, "apellido NOMBRES")));
        connection->execute("INSERT INTO [Pacientes] (NROHC,apellido) VALUES (5,'O''Higgins')");
        connection->createTable(tabla("Caja", contador() + fechas("fecha") + simples("Importe")));
        connection->execute("INSERT INTO [Caja] (Importe) VALUES (-0.1)");
        connection->createTable(doctoresViejos());
        agregarDoctor(*connection, "Dr. Ramón O'Donnell", QVector<QVariant>(8, 15), {});
    }

    m_mensajes.esperarMensaje("Atención", aviso, base::Icono::Informacion);
    QVERIFY(actualizar());

    const auto connection = m_base->abrir();
    for (const db::Table &table : app::esquemaCompleto().tables) {
        const QVector<db::Column> present = connection->columns(table.name);
        for (const db::Column &column : table.columns)
            QVERIFY2(
                std::any_of(
                    present.begin(),
                    present.end(),
                    [&](const db::Column &c) { return c.name.compare(column.name, Qt::CaseInsensitive) == 0; }),
                qPrintable(table.name + u'.' + column.name));
    }
    const db::Rows patient
        = connection->query("SELECT apellido,idcobertura2,pacienteinactivo,nusiniestro FROM [Pacientes]");
    QCOMPARE(patient->text(0, 0), QString("O'Higgins"));
    QCOMPARE(patient->integer(0, 1), -1);
    QVERIFY(!patient->isNull(0, 2) && !patient->flag(0, 2));
    QVERIFY(patient->isNull(0, 3));
    QCOMPARE(connection->query("SELECT count(*) FROM [Config] WHERE sumfpp = 280")->integer(0, 0), 2);
    QCOMPARE(connection->query("SELECT modopago FROM [Caja]")->integer(0, 0), 0);
    const db::Rows doctor = connection->query(
        "SELECT tipo,administrador,accesoparcialpaciente,aplicaraturnos,moduloweb,accesored,accesodirecto05,nomdoc "
        "FROM [Lista Doctores]");
    for (int c = 0; c < 5; ++c)
        QVERIFY(!doctor->isNull(0, c) && doctor->integer(0, c) == 0);
    QCOMPARE(doctor->integer(0, 5), -1);
    QCOMPARE(doctor->integer(0, 6), 0);
    QCOMPARE(doctor->text(0, 7), QString("Dr. Ramón O'Donnell"));

    // New rows begin with the same values.
    db::Recordset added(*connection, "SELECT * FROM [Lista Doctores] WHERE id = 0");
    added.addNew();
    added.set(u"NomDoc", "Dra. Nueva");
    const qint64 id = added.update();
    QCOMPARE(connection->query("SELECT accesored FROM [Lista Doctores] WHERE id = ?", {id})->integer(0, 0), -1);

    // Nobody is told twice.
    QVERIFY(!actualizar());
}

void ActualizacionTest::letterCaseDoesNotMatter()
{
    {
        const auto connection = m_base->abrir();
        for (db::Table table : app::esquemaCompleto().tables) {
            table.indexes.clear();
            table.name = table.name.toUpper();
            for (db::Column &column : table.columns)
                column.name = column.name.toUpper();
            for (QString &key : table.key)
                key = key.toUpper();
            connection->createTable(table);
        }
    }
    QVERIFY(!actualizar());
}

void ActualizacionTest::hoursReachTheirTable()
{
    using Hours = QVector<QPair<QString, QVariant>>;
    {
        const auto connection = m_base->abrir();
        connection->createTable(doctoresViejos());
        agregarDoctor(
            *connection,
            "Dra. María José Ibáñez",
            {20, 20, 15, 20, 30, 20, 20, -1},
            Hours{
                {"lumadesde", hora("08:00")},
                {"LuMaHasta", hora("12:00")},
                {"LuTaDesde", hora("16:00")},
                {"LuTaHasta", hora("19:00")}});
        agregarDoctor(
            *connection,
            "Dr. Ángel O'Núñez",
            QVector<QVariant>(8),
            Hours{{"MaTaDesde", hora("15:00")}, {"MaTaHasta", hora("18:30")}});
        agregarDoctor(*connection, "Dra. Zulma Peña", {20, 20, 20, 20, 20, 20, 20, -1}, {});
        agregarDoctor(
            *connection,
            "Guardia",
            {60, 20, 20, 20, 20, 20, 60, 32767},
            Hours{{"DoMaDesde", hora("00:00")}, {"DoMaHasta", hora("06:00")}, {"SATAHASTA", hora("23:59")}});
        agregarDoctor(
            *connection,
            "Dr. Íñigo Müller Ñancupil",
            {0, 10, 25, 10, 10, 10, 35, 2},
            Hours{{"MaTaHasta", hora("19:00")}, {"SaMaDesde", hora("09:10")}});
    }
    m_mensajes.esperarMensaje("Atención", aviso, base::Icono::Informacion);
    QVERIFY(actualizar());

    const auto connection = m_base->abrir();
    db::Recordset rows(*connection, "SELECT * FROM [Agenda Turnos Horarios] ORDER BY iddoctor");
    QCOMPARE(rows.recordCount(), 5);
    const auto lengths = [&] {
        QStringList list;
        for (int day = 1; day <= 7; ++day)
            list << QString::number(rows.integer(QStringLiteral("durtur%1").arg(day)));
        list << QString::number(rows.integer(u"cantidadsobreturnos"))
             << QString::number(rows.integer(u"cantidadsobreturnoshora"));
        return list.join(u' ');
    };
    const auto hours = [&] {
        QStringList list;
        for (const QString &column : db::horariosviejos::columnas())
            if (!rows.isNull(column))
                list << column + u' ' + rows.dateTime(column).toString("hh:mm");
        return list.join(", ");
    };
    const char *const expected[][2] = {
        {"20 20 15 20 30 20 20 -1 -1", "LuMaDesde 08:00, LuMaHasta 12:00, LuTaDesde 16:00, LuTaHasta 19:00"},
        {"20 20 20 20 20 20 20 -1 -1", "MaTaDesde 15:00, MaTaHasta 18:30"},
        {"20 20 20 20 20 20 20 -1 -1", ""},
        {"60 20 20 20 20 20 60 32767 -1", "DoMaDesde 00:00, DoMaHasta 06:00, SaTaHasta 23:59"},
        {"20 10 25 10 10 10 35 2 -1", "MaTaHasta 19:00, SaMaDesde 09:10"},
    };
    for (int i = 0; i < 5; ++i, rows.moveNext()) {
        QCOMPARE(rows.integer(u"iddoctor"), i + 1);
        QCOMPARE(rows.date(u"fechadesde"), QDate(1900, 1, 1));
        QCOMPARE(rows.date(u"fechahasta"), QDate(2100, 12, 31));
        QCOMPARE(lengths(), QString::fromUtf8(expected[i][0]));
        QCOMPARE(hours(), QString::fromUtf8(expected[i][1]));
    }
    QStringList left;
    for (const db::Column &column : connection->columns("Lista Doctores"))
        left << column.name;
    QVERIFY(db::horariosviejos::presentes(left).isEmpty());
    QVERIFY(!actualizar());
}

void ActualizacionTest::hoursOfAnInterruptedUpgrade()
{
    // The new table is there, the old columns too: who has no template yet gets hers, nobody a second one.
    m_mensajes.esperarMensaje("Atención", aviso, base::Icono::Informacion);
    QVERIFY(actualizar());
    {
        const auto connection = m_base->abrir();
        connection->execute("DROP TABLE [Lista Doctores]");
        connection->createTable(doctoresViejos());
        for (const char *name : {"Con plantilla", "Sin plantilla", "Sin horas"})
            agregarDoctor(*connection, QString::fromUtf8(name), QVector<QVariant>(8, 30), {});
        connection->execute("UPDATE [Lista Doctores] SET ViMaDesde = ? WHERE id < 3", {hora("07:30")});
        connection->execute("INSERT INTO [Agenda Turnos Horarios] (iddoctor) VALUES (1)");
    }
    m_mensajes.esperarMensaje("Atención", aviso, base::Icono::Informacion); // for the columns of Lista Doctores
    QVERIFY(actualizar());

    const auto connection = m_base->abrir();
    db::Recordset rows(*connection, "SELECT * FROM [Agenda Turnos Horarios] ORDER BY id");
    QCOMPARE(rows.recordCount(), 2);
    rows.moveLast();
    QCOMPARE(rows.integer(u"iddoctor"), 2);
    QCOMPARE(rows.dateTime(u"ViMaDesde").time(), QTime(7, 30));
    QCOMPARE(rows.integer(u"durtur1"), 30);
    QVERIFY(connection->columns("Lista Doctores").size() > 40);
    QVERIFY_THROWS_EXCEPTION(db::Error, (void)connection->query("SELECT ViMaDesde FROM [Lista Doctores]"));
}

void ActualizacionTest::hoursStayWhenTheyCannotBeMoved()
{
    {
        const auto connection = m_base->abrir();
        connection->createTable(doctoresViejos());
        agregarDoctor(*connection, "Dra. Peña", QVector<QVariant>(8, 20), {{"JuTaDesde", hora("14:10")}});
        // A table of that name in which the hours find no place.
        connection->createTable(tabla("Agenda Turnos Horarios", contador() + largos("iddoctor")));
        connection->engine().execute("INSERT INTO [Agenda Turnos Horarios] (iddoctor) VALUES (77)", {});
    }
    // The hours that fail to move: the table refuses every further row.
    {
        const auto connection = m_base->abrir();
        auto &engine = dynamic_cast<db::EmbeddedEngine &>(connection->engine());
        engine.executeNative(
            "CREATE TRIGGER llena BEFORE INSERT ON \"Agenda Turnos Horarios\" "
            "BEGIN SELECT RAISE(ABORT, 'llena'); END",
            {});
    }
    m_mensajes.esperarMensaje("Atención", aviso, base::Icono::Informacion);
    QVERIFY(actualizar());
    {
        const auto connection = m_base->abrir();
        QCOMPARE(connection->query("SELECT JuTaDesde FROM [Lista Doctores]")->dateTime(0, 0).time(), QTime(14, 10));
        dynamic_cast<db::EmbeddedEngine &>(connection->engine()).executeNative("DROP TRIGGER llena", {});
    }
    // The next start moves them.
    QVERIFY(!actualizar());
    const auto connection = m_base->abrir();
    QCOMPARE(
        connection->query("SELECT JuTaDesde FROM [Agenda Turnos Horarios] WHERE iddoctor = 1")->dateTime(0, 0).time(),
        QTime(14, 10));
    QVERIFY_THROWS_EXCEPTION(db::Error, (void)connection->query("SELECT JuTaDesde FROM [Lista Doctores]"));
}

void ActualizacionTest::oneBadColumnIsSkipped()
{
    {
        const auto connection = m_base->abrir();
        connection->createTable(tabla("Caja", contador() + fechas("fecha")));
        connection->execute("INSERT INTO [Caja] (fecha) VALUES (#01/31/2009#)");
        // The rows refuse the starting value of one column.
        dynamic_cast<db::EmbeddedEngine &>(connection->engine())
            .executeNative("CREATE TRIGGER fija BEFORE UPDATE ON Caja BEGIN SELECT RAISE(ABORT, 'fija'); END", {});
    }
    m_mensajes.esperarMensaje("Atención", aviso, base::Icono::Informacion);
    QVERIFY(actualizar());
    const auto connection = m_base->abrir();
    QStringList columns;
    for (const db::Column &column : connection->columns("Caja"))
        columns << column.name;
    // "doctor" and "modopago" begin with 0; the others have nothing to write.
    QCOMPARE(columns, QStringList({"id", "fecha", "detalle", "importe", "detallepago"}));
}

void ActualizacionTest::firstProfessional()
{
    m_mensajes.esperarMensaje("Atención", aviso, base::Icono::Informacion);
    QVERIFY(actualizar());
    const auto connection = m_base->abrir();
    connection->execute("INSERT INTO [Lista Doctores] (NomDoc,tipo) VALUES ('Secretaria',1)");
    m_mensajes.esperarMensaje(
        "Atención",
        "Como el sistema detectó que No existe ningún Médico cargado, se procedió a crear uno de "
        "prueba. Al iniciar el sistema diríjase a la ventana 'Configuración', opción 'Médicos y "
        "Usuarios', para cargar los datos del Médico real.",
        base::Icono::Informacion);
    const std::optional<int> id = db::asegurarProfesional(*connection, m_mensajes);
    QCOMPARE(id, std::optional<int>(21));
    const db::Rows row = connection->query("SELECT NomDoc,tipo,accesored FROM [Lista Doctores] WHERE id = 21");
    QCOMPARE(row->text(0, 0), QString("Juan Pérez"));
    QCOMPARE(row->integer(0, 2), -1);
    QVERIFY(!db::asegurarProfesional(*connection, m_mensajes));
}

PRUEBA(ActualizacionTest)
#include "ActualizacionTest.moc"
