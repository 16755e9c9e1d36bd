#include "Practica.h"
#include "db/Error.h"
#include "db/Upgrade.h"
#include "support/Prueba.h"

using db::migracion::Estado;
using Tipo = db::migracion::Desenlace::Tipo;
using namespace Qt::StringLiterals;

/// From the embedded file to the server.
class PruebaAlServidor : public QObject
{
    Q_OBJECT

    static QByteArray leer(const QString &archivo)
    {
        QFile file(archivo);
        return file.open(QFile::ReadOnly) ? file.readAll() : QByteArray();
    }

private slots:
    void todoLlega()
    {
        Practica practica;
        const auto hecho = practica.alServidor();
        QVERIFY2(hecho.tipo == Tipo::Hecha, qPrintable(hecho.motivo));
        const auto local = practica.local(), remota = practica.remota();
        QStringList esperadas = local->tableNames(), hay = remota->tableNames();
        QVERIFY(esperadas.removeAll(u"Usuarios"_qs) == 1 && esperadas.removeAll(u"Estadisticas"_qs) == 1);
        esperadas.sort();
        hay.sort();
        QCOMPARE(hay, esperadas);
        QCOMPARE(hecho.tablas.size(), esperadas.size());
        for (const auto &tabla : hecho.tablas)
            QVERIFY2(tabla.igual(), qPrintable(tabla.tabla));
        QVERIFY(hecho.filas() > 15'000);
        // what the server cannot hold as it is, is told
        QCOMPARE(
            hecho.avisos,
            QStringList(
                {u"Tabla 'Tabla de O'Higgins': la columna 'plan' tiene textos de 16 caracteres; se creó más ancha."_qs,
                 u"Tabla 'Tabla de O'Higgins': la columna 'chico' tiene números que no entran en su tipo; se creó más grande."_qs,
                 u"Tabla 'Tabla de O'Higgins', columna 'cuándo': fechas anteriores a 1753, que el servidor no admite: 1. Quedaron allí como 31/12/8888 (sin fecha)."_qs}));

        const db::Rows filas = remota->query(u"SELECT * FROM [Tabla de O'Higgins] ORDER BY [Número]"_qs);
        QCOMPARE(filas->text(0, 1), u"O'Neil"_qs);
        QCOMPARE(filas->text(0, 2), u"año 😀 \r\n\"x\""_qs);
        QCOMPARE(filas->utf8(0, 7).toByteArray(), "2008-10-19 00:00:00");
        QCOMPARE(filas->utf8(0, 8).toByteArray(), QByteArray("\0\1\0\0\xff", 5));
        QCOMPARE(filas->text(1, 2), QString(100'000, u'ñ'));
        QVERIFY(!filas->isNull(1, 8) && filas->utf8(1, 8).isEmpty());
        QVERIFY(!filas->isNull(2, 1) && filas->isNull(3, 1) && filas->isNull(2, 8));
        QCOMPARE(filas->utf8(3, 7).toByteArray(), "8888-12-31 00:00:00");
        // the counter goes on behind the row that was removed, and the defaults are there
        remota->execute(u"INSERT INTO [Tabla de O'Higgins] (importe) VALUES (1)"_qs);
        QCOMPARE(remota->insertedId(), 6);
        QCOMPARE(
            remota->query(u"SELECT [plan], chico FROM [Tabla de O'Higgins] WHERE [Número] = 6"_qs)
                ->toDelimited(u"|", u""),
            u"d'accord|-1"_qs);

        // the file is as it was, but for the dates that are clamped in it as well
        const db::Rows suyas = local->query(u"SELECT FeNac, UltimaCons FROM [Pacientes] WHERE id = 1"_qs);
        QCOMPARE(suyas->toDelimited(u"|", u""), u"8888-12-31 00:00:00|8888-12-31 00:00:00"_qs);
        QCOMPARE(
            local->query(u"SELECT [cuándo] FROM [Tabla de O'Higgins] WHERE [Número] = 4"_qs)->utf8(0, 0).toByteArray(),
            "1492-10-12 00:00:00");
        local->execute(u"UPDATE [Pacientes] SET Apellido = 'x' WHERE id = 1"_qs); // let go

        // a start finds nothing left to do
        soporte::MensajesGuionados guion;
        QVERIFY(!db::actualizarServidor(app::esquemaCompleto(), *remota, guion));
    }

    void sentencias()
    {
        Practica practica;
        QVERIFY(practica.alServidor().tipo == Tipo::Hecha);
        const QStringList dichas = practica.servidor.sentencias();
        for (const QString &esperada :
             {u"CREATE DATABASE Datos"_qs,
              u"ALTER DATABASE Datos SET RECOVERY SIMPLE"_qs,
              u"ALTER DATABASE Datos SET READ_COMMITTED_SNAPSHOT ON WITH ROLLBACK IMMEDIATE"_qs,
              u"ALTER DATABASE Datos COLLATE Modern_Spanish_CI_AS"_qs,
              u"SET IDENTITY_INSERT [Pacientes] ON"_qs,
              u"SET IDENTITY_INSERT [Pacientes] OFF"_qs,
              u"DBCC CHECKIDENT ('[Tabla de O''Higgins]', RESEED, 5)"_qs,
              u"ALTER TABLE [Pacientes] ADD CONSTRAINT aPacientes_id PRIMARY KEY CLUSTERED (id)"_qs,
              u"ALTER TABLE [Agenda Turnos] ADD CONSTRAINT [aAgenda Turnos_id] PRIMARY KEY CLUSTERED (id)"_qs,
              u"CREATE UNIQUE INDEX nrohc ON [Pacientes](nrohc)"_qs,
              u"CREATE INDEX nrohc ON [Agenda Turnos](nrohc)"_qs,
              // clustered by its id already
              u"CREATE INDEX nrohc ON [Imprimir](nrohc)"_qs,
              u"CREATE CLUSTERED INDEX nropaci ON [Pacientes Embarazos](nropaci)"_qs,
              u"CREATE INDEX nropaci ON [Consultas](nropaci)"_qs,
              u"CREATE CLUSTERED INDEX NomDoc ON [Config](NomDoc)"_qs,
              u"CREATE INDEX Doctor ON [Agenda Turnos](Doctor)"_qs,
              u"CREATE INDEX Fecha ON [Agenda Turnos](Fecha)"_qs,
              u"CREATE INDEX Doctor_Fecha ON [Agenda Turnos](Doctor,Fecha)"_qs,
              u"CREATE UNIQUE INDEX plan_chico ON [Tabla de O'Higgins]([plan],chico)"_qs})
            QVERIFY2(dichas.count(esperada) == 1, qPrintable(esperada));
        // a default each way, in names that are all different
        static const QRegularExpression restriccion(
            u"^ALTER TABLE \\[(.*)\\] ADD CONSTRAINT (a\\d+_\\w+) DEFAULT (.*) FOR (.*)$"_qs);
        QSet<QString> nombres;
        QStringList valores;
        for (const QString &dicha : dichas)
            if (const auto hallada = restriccion.match(dicha); hallada.hasMatch()) {
                QVERIFY(!nombres.contains(hallada.captured(2)));
                nombres.insert(hallada.captured(2));
                valores << hallada.captured(1) + u'.' + hallada.captured(4) + u'=' + hallada.captured(3);
            }
        for (const QString &esperado :
             {u"Pacientes.idcobertura2=-1"_qs,
              u"Lista Doctores.administrador=0"_qs,
              u"Config.sumfpp='280'"_qs,
              u"Tabla de O'Higgins.[plan]='d''accord'"_qs})
            QVERIFY2(valores.contains(esperado), qPrintable(esperado));
        for (const auto &fecha : db::migracion::fechasLimitadas())
            QVERIFY2(practica.local()->columns(fecha.tabla).size() > 0, qPrintable(fecha.tabla));
        QCOMPARE(
            db::migracion::fechasLimitadas().constFirst().sentencia(),
            u"UPDATE [Pacientes] SET FeNac = #31/12/8888# WHERE FeNac < #01/01/1753#"_qs);
        // whoever looks in meanwhile finds no whole database
        const auto creada = [&](const QString &tabla) {
            return dichas.indexOf(QRegularExpression(u"CREATE TABLE \\[%1\\].*"_qs.arg(tabla)));
        };
        QVERIFY(creada(u"CIE10"_qs) > creada(u"Tabla de O'Higgins"_qs));
    }

    void plantillaVacia()
    {
        Practica practica;
        const QByteArray antes = leer(soporte::plantilla());
        const auto hecho = practica.alServidor(false);
        QVERIFY2(hecho.tipo == Tipo::Hecha, qPrintable(hecho.motivo));
        const auto remota = practica.remota();
        remota->execute(u"INSERT INTO [Lista Doctores] (NomDoc,tipo) VALUES (?,0)"_qs, {u"Juan Pérez"_qs});
        QCOMPARE(remota->insertedId(), 20);
        QCOMPARE(remota->query(u"SELECT id FROM [CIE10] WHERE id = 2"_qs)->rowCount(), 1);
        QCOMPARE(leer(soporte::plantilla()), antes);
    }

    void noEmpieza_data()
    {
        QTest::addColumn<QString>("caso");
        QTest::addColumn<int>("tipo");
        QTest::addColumn<QString>("dice");
        QTest::newRow("existe") << "existe" << int(Tipo::Rechazada) << "ya existe una base de datos 'Datos'";
        QTest::newRow("clave") << "clave" << int(Tipo::Fallada) << "No se pudo entrar al servidor";
        QTest::newRow("apagado") << "apagado" << int(Tipo::Fallada) << "El servidor no responde";
        QTest::newRow("sin permiso") << "permiso" << int(Tipo::Fallada) << "permiso para crear bases de datos";
        QTest::newRow("creada por otro") << "otro" << int(Tipo::Rechazada) << "ya existe una base de datos 'Datos'";
        QTest::newRow("sin controlador") << "motor" << int(Tipo::Rechazada) << "todavía no se conecta";
        QTest::newRow("otra guarda") << "guarda" << int(Tipo::Rechazada) << "Otra computadora está guardando";
        QTest::newRow("sin archivo") << "archivo" << int(Tipo::Fallada) << "No se puede abrir";
        QTest::newRow("texto en número") << "texto" << int(Tipo::Fallada)
                                         << "La columna 'UltimoPaci' de la tabla 'Config'";
        QTest::newRow("no es fecha") << "fecha" << int(Tipo::Fallada) << "tiene valores que no son fechas";
    }
    void noEmpieza()
    {
        QFETCH(QString, caso);
        QFETCH(int, tipo);
        QFETCH(QString, dice);
        Practica practica(true);
        auto pedido = practica.ida();
        std::unique_ptr<db::Connection> otra;
        std::optional<db::Transaction> escribe;
        if (caso == u"existe")
            db::createDatabaseFile(practica.servidor.archivo(u"Datos"_qs), u"kestrel428"_qs);
        else if (caso == u"clave")
            pedido.servidor.clave = u"Dificil99"_qs;
        else if (caso == u"apagado")
            pedido.servidor.nombre = u"OTRO"_qs;
        else if (caso == u"permiso" || caso == u"otro")
            practica.servidor.antes = [&](const QString &sentencia) {
                if (sentencia.startsWith(u"CREATE DATABASE"))
                    throw db::Error(
                        db::Error::Kind::General, caso == u"otro" ? 1801 : 262, u"CREATE DATABASE denied"_qs);
            };
        else if (caso == u"motor")
            pedido.motores = {};
        else if (caso == u"archivo")
            pedido.cadenaOrigen = soporte::cadenaAccess(practica.carpeta() + u"/no.mdb"_qs);
        else {
            otra = practica.local();
            if (caso == u"texto")
                otra->execute(u"UPDATE [Config] SET UltimoPaci = 'x'"_qs);
            else if (caso == u"fecha")
                otra->execute(u"INSERT INTO [Historial] (fecha) VALUES ('ayer')"_qs);
            else
                escribe.emplace(*otra);
        }
        const auto hecho = db::migracion::alServidor(pedido, practica.seguimiento);
        QCOMPARE(int(hecho.tipo), tipo);
        QVERIFY2(hecho.motivo.contains(dice), qPrintable(hecho.motivo));
        QVERIFY(
            !hecho.motivo.contains(u"Dificil99"_qs) && !hecho.motivo.contains(QLatin1String(practica.servidor.clave)));
        // nothing was made, and nothing removed that another has made
        QCOMPARE(practica.servidor.tiene(u"Datos"_qs), caso == u"existe");
    }

    void cancelar()
    {
        Practica practica(true);
        // at every stage, at some tables of each; the first run counts them
        QStringList momentos;
        practica.pasos.alAvanzar = [&](const Estado &e) {
            const QString momento = e.que + u'|' + (e.numero % 40 == 1 ? e.tabla : QString());
            if (!momentos.contains(momento))
                momentos << momento;
        };
        QVERIFY(practica.alServidor().tipo == Tipo::Hecha);
        QVERIFY(QFile::remove(practica.servidor.archivo(u"Datos"_qs)));
        QVERIFY(momentos.size() > 12);
        for (const QString &momento : std::as_const(momentos)) {
            db::migracion::Seguimiento seguimiento;
            practica.pasos.alAvanzar = [&](const Estado &e) {
                if (e.que + u'|' + (e.numero % 40 == 1 ? e.tabla : QString()) == momento)
                    seguimiento.cancelar();
            };
            const auto hecho = db::migracion::alServidor(practica.ida(), seguimiento, practica.pasos);
            QVERIFY2(hecho.tipo == Tipo::Cancelada && hecho.motivo.isEmpty(), qPrintable(momento));
            QVERIFY2(!practica.servidor.tiene(u"Datos"_qs), qPrintable(momento));
        }
        // and then as if nothing had been
        practica.pasos = {};
        QVERIFY(practica.alServidor().tipo == Tipo::Hecha);
    }

    void fallaEnElMedio_data()
    {
        QTest::addColumn<QString>("cuando");
        QTest::addColumn<bool>("vuelve"); // the server is there again when the rest is to be removed
        for (const char *cuando :
             {"CREATE TABLE [Pacientes]",
              "INSERT INTO [Consultas]",
              "SET IDENTITY_INSERT [Caja] OFF",
              "DBCC CHECKIDENT",
              "ALTER TABLE [Config]",
              "CREATE INDEX nropaci",
              "SELECT TOP",
              "ALTER DATABASE Datos COLLATE",
              "SELECT TABLE_NAME"})
            QTest::newRow(cuando) << QString::fromLatin1(cuando) << true;
        QTest::newRow("se apaga") << u"INSERT INTO [Consultas]"_qs << false;
    }
    void fallaEnElMedio()
    {
        QFETCH(QString, cuando);
        QFETCH(bool, vuelve);
        Practica practica;
        if (cuando.contains(u"COLLATE"_qs))
            practica.servidor.setIntercalacion(u"Latin1_General_CS_AS"_qs);
        bool caido = false;
        practica.servidor.antes = [&](const QString &sentencia) {
            if ((!caido || !vuelve) && (caido || sentencia.startsWith(cuando))) {
                caido = true;
                throw db::Error(
                    db::Error::Kind::Lost,
                    10054,
                    u"El servidor %1 se fue con %2."_qs.arg(
                        QLatin1String(practica.servidor.nombre), QLatin1String(practica.servidor.clave)));
            }
        };
        const auto hecho = practica.alServidor();
        QVERIFY(caido && hecho.tipo == Tipo::Fallada);
        QVERIFY2(hecho.motivo.contains(u"se fue con ***"_qs), qPrintable(hecho.motivo));
        QCOMPARE(hecho.motivo.contains(u"No se pudo eliminar del servidor"_qs), !vuelve);
        QCOMPARE(practica.servidor.tiene(u"Datos"_qs), !vuelve);
        // whatever happened there, the practice goes on
        practica.local()->execute(u"UPDATE [Pacientes] SET Apellido = 'x' WHERE id = 1"_qs);
    }

    void noCoincide_data()
    {
        QTest::addColumn<QString>("cambio");
        QTest::addColumn<QString>("motivo");
        QTest::newRow("un valor") << u"UPDATE [Caja] SET importe = importe + 1 WHERE id = 1"_qs
                                  << u"La tabla 'Caja' tiene registros con otro contenido."_qs;
        QTest::newRow("una fila menos") << u"DELETE FROM [Caja] WHERE id = 1"_qs << u"La tabla 'Caja' tiene "_qs;
        QTest::newRow("vacío por nulo") << u"UPDATE [Tabla de O'Higgins] SET plan = '' WHERE [Número] = 4"_qs
                                        << u"La tabla 'Tabla de O'Higgins' tiene registros con otro contenido."_qs;
    }
    void noCoincide()
    {
        QFETCH(QString, cambio);
        QFETCH(QString, motivo);
        Practica practica;
        bool cambiada = false;
        practica.pasos.alAvanzar = [&](const Estado &e) {
            if (e.que != u"Comprobando" || std::exchange(cambiada, true))
                return;
            QCOMPARE(Practica::abrir(practica.servidor.archivo(u"Datos"_qs))->execute(cambio), 1);
        };
        const auto hecho = practica.alServidor();
        QVERIFY(cambiada && hecho.tipo == Tipo::NoCoincide);
        QVERIFY2(hecho.motivo.startsWith(motivo) && !hecho.motivo.contains(u'\n'), qPrintable(hecho.motivo));
        QVERIFY(!practica.servidor.tiene(u"Datos"_qs));
    }

    void intercalacion_data()
    {
        QTest::addColumn<QString>("servidor");
        QTest::addColumn<bool>("deja"); // the server lets it be changed
        QTest::addColumn<int>("tipo");
        QTest::addColumn<QString>("queda");
        const int hecha = int(Tipo::Hecha), fallada = int(Tipo::Fallada);
        QTest::newRow("la buena") << "Modern_Spanish_CI_AS" << true << hecha << "";
        QTest::newRow("otra española") << "Modern_Spanish_100_CI_AS_SC" << true << hecha << "";
        QTest::newRow("otra lengua") << "SQL_Latin1_General_CP1_CI_AS" << true << hecha << "Modern_Spanish_CI_AS";
        QTest::newRow("otra lengua, fija") << "SQL_Latin1_General_CP1_CI_AS" << false << hecha << "";
        QTest::newRow("en minúsculas") << "bbf_unicode_cp1_ci_as" << false << hecha << "";
        QTest::newRow("sin acentos") << "Modern_Spanish_CI_AI" << true << hecha << "Modern_Spanish_CI_AS";
        QTest::newRow("mayúsculas, fija") << "Modern_Spanish_CS_AS" << false << fallada << "";
    }
    void intercalacion()
    {
        QFETCH(QString, servidor);
        QFETCH(bool, deja);
        QFETCH(int, tipo);
        QFETCH(QString, queda);
        Practica practica(true);
        practica.servidor.setIntercalacion(servidor);
        practica.servidor.antes = [&](const QString &sentencia) {
            if (!deja && sentencia.startsWith(u"ALTER DATABASE"_qs))
                throw db::Error(db::Error::Kind::General, 5030, u"no"_qs);
        };
        const auto hecho = practica.alServidor();
        QCOMPARE(int(hecho.tipo), tipo);
        QCOMPARE(practica.servidor.intercalacion(u"Datos"_qs), queda);
        QCOMPARE(hecho.avisos.join(u'\n').contains(u"la Ñ puede"_qs), tipo == int(Tipo::Hecha) && !deja);
    }

    /// What another station saved behind the copy's back would be lost: it may read, and not write.
    void lasDemasEsperan()
    {
        Practica practica(true);
        const auto otra = practica.local();
        int escrituras = 0, lecturas = 0;
        practica.pasos.alAvanzar = [&](const Estado &e) {
            if (e.numero != 40 || e.que != u"Copiando")
                return;
            lecturas += otra->query(u"SELECT id FROM [CIE10] WHERE id = 2"_qs)->rowCount();
            const db::ShortWait breve(*otra, 1);
            try {
                otra->execute(u"INSERT INTO [Lista Doctores] (NomDoc) VALUES ('x')"_qs);
                ++escrituras;
            } catch (const db::Error &error) {
                QCOMPARE(error.kind(), db::Error::Kind::Busy);
            }
        };
        QVERIFY(practica.alServidor().tipo == Tipo::Hecha);
        QVERIFY(escrituras == 0 && lecturas > 0);
        otra->execute(u"INSERT INTO [Lista Doctores] (NomDoc) VALUES ('x')"_qs);
    }
};

PRUEBA(PruebaAlServidor)
#include "PruebaAlServidor.moc"
