#include "db/Config.h"
#include "db/Historial.h"
#include "db/ListaDoctores.h"
#include "db/Recordset.h"
#include "db/Verificacion.h"
#include "db/engine/EmbeddedEngine.h"
#include "support/BaseDePrueba.h"
#include "support/Prueba.h"

using namespace Qt::StringLiterals;

/// Settings, users and the activity log, in both dialects.
class PruebaNucleo : public QObject
{
    Q_OBJECT

private slots:
    void settings_data() { soporte::filasDeDialecto(); }
    void settings()
    {
        soporte::BaseDePrueba base(soporte::dialectoActual());
        db::Config config(base.conexion());
        QCOMPARE(config.numero(u"sumfpp"), 280);
        QCOMPARE(config.texto(u"reemplazoid", u"Nº ID"_s), u"Nº ID"_s); // Null: the reader's default
        QCOMPARE(config.bandera(u"nuidhc"), false);
        QCOMPARE(config.numero(u"nohay", 7), 7);

        // The last row counts, for reading and for writing.
        base.conexion().execute(u"INSERT INTO [Config] (prefijohc,numerohc,sumfpp) VALUES (?,'abc',0)"_s, {u"Ñ-"_s});
        QCOMPARE(config.texto(u"prefijohc"), u"Ñ-"_s);
        QCOMPARE(config.numero(u"sumfpp"), 0);
        QCOMPARE(config.numero(u"numerohc", 3), 3); // not a number
        config.guardar(u"reemplazoid", u"Nº d'identidad"_s);
        config.guardar(u"nuidhc", true);
        QCOMPARE(config.texto(u"reemplazoid"), u"Nº d'identidad"_s);
        QVERIFY(config.bandera(u"nuidhc"));
        QCOMPARE(base.valor(u"SELECT count(sumfpp) FROM [Config] WHERE nuidhc <> 0"_s), u"1"_s);

        // Without any row the defaults hold, and writing makes one.
        base.conexion().execute(u"DELETE FROM [Config]"_s);
        QCOMPARE(config.texto(u"prefijohc", u"-"_s), u"-"_s);
        config.guardar(u"UltimoPaci", 41);
        QCOMPARE(config.numero(u"UltimoPaci"), 41);
    }

    void users_data() { soporte::filasDeDialecto(); }
    void users()
    {
        soporte::BaseDePrueba base(soporte::dialectoActual());
        QCOMPARE(db::nombreUsuarioActual(base), u"Juan Pérez"_s);
        QCOMPARE(db::profesionalActivo(base), 20);

        const auto agregar = [&](const QString &nombre, int tipo, int prioridad) {
            base.conexion().execute(
                u"INSERT INTO [Lista Doctores] (NomDoc,tipo,Prioridad,medisecre) VALUES (?,?,?,20)"_s,
                {nombre, tipo, prioridad});
            return int(base.conexion().insertedId());
        };
        const int secretaria = agregar(u"Ñata O'Brien"_s, 1, 0);
        const int primera = agregar(u"Zulma"_s, 0, 5);
        agregar(u"álvarez"_s, 0, 0);
        QStringList nombres;
        for (const db::Doctor &doctor : db::usuarios(base.conexion()))
            nombres << doctor.nombre;
        QCOMPARE(nombres, (QStringList{u"Zulma"_s, u"álvarez"_s, u"Juan Pérez"_s, u"Ñata O'Brien"_s}));
        QCOMPARE(db::profesionales(base.conexion()).size(), 3);
        QCOMPARE(db::profesionales(base.conexion()).first(), (db::Doctor{primera, u"Zulma"_s}));

        base.usuario = secretaria;
        QCOMPARE(db::profesionalActivo(base), 20);
        QCOMPARE(db::opcionUsuario(base, u"tipo").toInt(), 1);
    }

    void rights_data() { soporte::filasDeDialecto(); }
    void rights()
    {
        soporte::BaseDePrueba base(soporte::dialectoActual());
        const base::Rechazo sinPermiso{
            u"Atención..."_s,
            u"No tiene permiso para ejecutar esta acción. Consulte con el Administrador del sistema para definir sus "
            "permisos de accesos."_s};
        QVERIFY(!db::controlarDerecho(base));
        for (const char16_t *alPrincipio : {u"accesocrearpaciente", u"accesoagendas", u"accesocambiarusuario"})
            QVERIFY(!db::controlarDerecho(base, alPrincipio));
        for (const char16_t *negado : {u"administrador", u"accesoparcialpaciente", u"aplicaraturnos", u"moduloweb"})
            QCOMPARE(db::controlarDerecho(base, negado), sinPermiso);
        base.conexion().execute(u"UPDATE [Lista Doctores] SET accesoagendas = 0"_s);
        QCOMPARE(db::controlarDerecho(base, u"accesoagendas"), sinPermiso);

        base.conexion().execute(u"DELETE FROM [Lista Doctores]"_s);
        const base::Rechazo sinUsuario{
            u"Atención..."_s, u"Defina un Usuario Activo válido desde la ventana Configuración."_s};
        QCOMPARE(db::controlarDerecho(base), sinUsuario);
        QCOMPARE(db::controlarDerecho(base, u"accesoagendas"), sinUsuario);
        QCOMPARE(db::nombreUsuarioActual(base), QString());
        QCOMPARE(db::profesionalActivo(base), 0);
    }

    void activityLog_data() { soporte::filasDeDialecto(); }
    void activityLog()
    {
        soporte::BaseDePrueba base(soporte::dialectoActual());
        base.reloj.set({QDate(2026, 2, 1), QTime(23, 59, 58)});
        const QString accion = u"Se eliminó el paciente 'O'Higgins, \"Begoña\"'. 100% [x] -- ; 👶"_s;
        db::registrarHistorial(base, u"Elección d'el Paciente"_s, u"  "_s + accion + u"\n "_s);
        db::Recordset fila(base.conexion(), u"SELECT * FROM [Historial]"_s);
        QCOMPARE(fila.recordCount(), 1);
        QCOMPARE(fila.dateTime(u"fecha"), QDateTime(QDate(2026, 2, 1), QTime(23, 59)));
        QCOMPARE(fila.text(u"equipo"), u"PC-PRUEBA"_s);
        QCOMPARE(fila.integer(u"iddoctor"), 20);
        QCOMPARE(fila.text(u"ventana"), u"Elección d'el Paciente"_s);
        QCOMPARE(fila.text(u"accion"), accion);
    }

    /// On a server the count of the probe is not tested, in a file it is.
    // More statements than the engine keeps prepared, run while another one is being read.
    void statementsWithinAReading()
    {
        soporte::BaseDePrueba base;
        auto &engine = dynamic_cast<db::EmbeddedEngine &>(base.conexion().engine());
        int read = 0;
        engine.walkNative("SELECT 1 UNION ALL SELECT 2 UNION ALL SELECT 3", {}, [&](sqlite3_stmt *) {
            for (int i = 0; i < 300; ++i)
                (void)engine.queryNative("SELECT " + QByteArray::number(read * 300 + i), {});
            ++read;
        });
        QCOMPARE(read, 3);
    }

    void probe_data() { soporte::filasDeDialecto(); }
    void probe()
    {
        const auto dialecto = soporte::dialectoActual();
        soporte::BaseDePrueba base(dialecto);
        QVERIFY(db::verificarCatalogo(base.conexion(), base.guion));
        base.conexion().execute(u"DELETE FROM [CIE10] WHERE id = 2"_s);
        const bool esArchivo = dialecto == db::Dialect::Kind::Access;
        if (esArchivo)
            base.guion.esperarMensaje(
                u"Error..."_s,
                u"La Base de Datos es incompatible con el programa, asigne una ruta válida en el menú 'Red' del "
                "programa."_s);
        QCOMPARE(db::verificarCatalogo(base.conexion(), base.guion), !esArchivo);
        QVERIFY(base.guion.terminar());
    }
};

PRUEBA(PruebaNucleo)
#include "PruebaNucleo.moc"
