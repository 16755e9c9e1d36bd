#include "app/Arranque.h"
#include "app/Modulo.h"
#include "app/Setup.h"
#include "db/Connection.h"
#include "db/Error.h"
#include "db/ListaDoctores.h"
#include "db/engine/EmbeddedEngine.h"
#include "support/BaseDePrueba.h"
#include "support/Falla.h"
#include "support/Prueba.h"

using app::Arranque;
using app::Modulo;
using base::Icono;
using namespace Qt::StringLiterals;

namespace {

const auto clave = QStringLiteral("kestrel428");

/// A program folder of its own and the program's shared state over it.
struct Computadora {
    QTemporaryDir carpeta;
    soporte::MensajesGuionados guion;
    soporte::RelojFijo reloj;
    QStringList lanzados;
    std::unique_ptr<Modulo> modulo;

    [[nodiscard]] QString archivo(const char *nombre) const { return carpeta.filePath(QString::fromLatin1(nombre)); }
    void ponerPlantilla() const { QVERIFY(QFile::copy(soporte::plantilla(), archivo("Datos_Vacio.mdb"))); }

    Arranque::Destino iniciar()
    {
        modulo = std::make_unique<Modulo>(carpeta.path(), guion, reloj, db::Engines::standard());
        return Arranque(*modulo, [this](const QString &programa) { lanzados << programa; }).iniciar();
    }
    void esperarMedicoDePrueba()
    {
        guion.esperarMensaje(
            u"Atención"_qs,
            u"Como el sistema detectó que No existe ningún Médico cargado, se procedió a crear uno de prueba. Al "
            u"iniciar el "
            "sistema diríjase a la ventana 'Configuración', opción 'Médicos y Usuarios', para cargar los datos del "
            "Médico "
            "real."_qs,
            Icono::Informacion);
    }
    void esperarAusente()
    {
        guion.esperarMensaje(
            u"Error..."_qs,
            u"No se encuentra la Base de Datos, asigne una ruta válida en el menú 'Red' del programa."_qs);
    }
    void esperarIncompatible()
    {
        guion.esperarMensaje(
            u"Error..."_qs,
            u"La Base de Datos es incompatible con el programa, asigne una ruta válida en el menú 'Red' del programa."_qs);
    }
};

void escribir(const QString &archivo, const QByteArray &bytes)
{
    QFile file(archivo);
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(bytes);
}

/// The whole damage message around a description.
bool esDanio(const QString &dicho, const QString &descripcion)
{
    return dicho.startsWith(u"Error...|ERROR... LA BASE DE DATOS ESTÁ DAÑADA!!!\n\nDescripción del Error: ("_qs)
        && dicho.contains(
            descripcion
            + u"\n\nPRIMERA SOLUCIÓN: Intente repararla desde la opción "
              "'Compactar Base de Datos' de la ventana 'Back-up' del menú "
              "principal.\n\nSEGUNDA SOLUCIÓN: "_qs)
        && dicho.endsWith(u"por último reincie el programa."_qs);
}

/// Lets any message through and remembers it.
class MensajesAnotados final : public base::Mensajes
{
public:
    QStringList dichos;
    void mensaje(const QString &titulo, const QString &texto, Icono) override { dichos << titulo + u'|' + texto; }
    bool pregunta(const QString &, const QString &, bool) override { return false; }
    std::optional<QString> pedirTexto(const QString &, const QString &, const QString &) override { return {}; }
    std::optional<QString> pedirClave(const QString &, const QString &) override { return {}; }
    std::optional<QString> elegirArchivo(const QString &, const QString &, const QString &) override { return {}; }
    std::optional<QString> elegirDestino(const QString &, const QString &, const QString &) override { return {}; }
    std::optional<QString> elegirCarpeta(const QString &, const QString &) override { return {}; }
};

} // namespace

class PruebaArranque : public QObject
{
    Q_OBJECT

private slots:
    void firstStart()
    {
        Computadora pc;
        pc.ponerPlantilla();
        pc.esperarMedicoDePrueba();
        QCOMPARE(pc.iniciar(), Arranque::Destino::Sistema);
        QVERIFY(pc.modulo->baseLista());
        QCOMPARE(QFileInfo(pc.archivo("setup.dat")).size(), 47);
        QCOMPARE(pc.modulo->usuarioActual(), 20);
        QCOMPARE(db::nombreUsuarioActual(*pc.modulo), u"Juan Pérez"_qs);
        QVERIFY(!db::controlarDerecho(*pc.modulo, u"accesoagendas"));
        QVERIFY(db::controlarDerecho(*pc.modulo, u"aplicaraturnos").has_value());
        QVERIFY(pc.lanzados.isEmpty());
        QVERIFY(pc.guion.terminar());

        // The second start finds everything, adds nothing and says nothing.
        pc.modulo->conexion().execute(u"UPDATE [Lista Doctores] SET moduloweb = -1"_qs);
        pc.modulo.reset();
        QCOMPARE(pc.iniciar(), Arranque::Destino::Sistema);
        QVERIFY(pc.modulo->baseLista());
        QCOMPARE(pc.modulo->conexion().query(u"SELECT id FROM [Lista Doctores]"_qs)->rowCount(), 1);
        QCOMPARE(pc.lanzados, QStringList{pc.modulo->carpetaPrograma() + u"/Turnex.exe"_qs});
        QVERIFY(pc.guion.terminar());
    }

    void existingDatabaseIsKept()
    {
        Computadora pc;
        pc.ponerPlantilla();
        db::createDatabaseFile(pc.archivo("Datos.mdb"), clave);
        pc.esperarIncompatible();
        QCOMPARE(pc.iniciar(), Arranque::Destino::Sistema);
        QVERIFY(!pc.modulo->baseLista());
        QVERIFY(pc.guion.terminar());
    }

    void networkClientStartsNoCompanion()
    {
        Computadora pc, servidor;
        servidor.ponerPlantilla();
        servidor.esperarMedicoDePrueba();
        (void)servidor.iniciar();
        servidor.modulo->conexion().execute(u"UPDATE [Lista Doctores] SET moduloweb = -1"_qs);
        app::Ruta ruta;
        ruta.otraCarpeta = true;
        ruta.carpeta = servidor.carpeta.path() + u'/';
        ruta.guardar(pc.archivo("ruta.dat"));
        (void)pc.iniciar();
        QVERIFY(pc.modulo->baseLista());
        QVERIFY(pc.modulo->esClienteDeRed());
        QVERIFY(pc.lanzados.isEmpty());
        QVERIFY(!QFileInfo::exists(pc.archivo("Datos.mdb")));
        QVERIFY(servidor.guion.terminar() && pc.guion.terminar());
    }

    void loginPending()
    {
        Computadora pc;
        pc.ponerPlantilla();
        pc.esperarMedicoDePrueba();
        (void)pc.iniciar();
        pc.modulo->conexion().execute(u"UPDATE [Config] SET selecusuario = -1"_qs);
        QCOMPARE(pc.iniciar(), Arranque::Destino::Acceso);
        QVERIFY(pc.guion.terminar());
    }

    void missing_data()
    {
        QTest::addColumn<bool>("conRuta");
        QTest::newRow("no template") << false;
        QTest::newRow("folder of ruta.dat does not exist") << true;
    }

    void missing()
    {
        QFETCH(bool, conRuta);
        Computadora pc;
        if (conRuta) {
            pc.ponerPlantilla();
            app::Ruta ruta;
            ruta.otraCarpeta = true;
            ruta.carpeta = u"/no/existe"_qs;
            ruta.guardar(pc.archivo("ruta.dat"));
        }
        pc.esperarAusente();
        QCOMPARE(pc.iniciar(), Arranque::Destino::Sistema);
        QVERIFY(!pc.modulo->baseLista());
        QVERIFY_THROWS_EXCEPTION(db::Error, (void)pc.modulo->conexion());
        QVERIFY(pc.guion.terminar());
    }

    void foreign_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QByteArray plantilla;
        QFile file(soporte::plantilla());
        QVERIFY(file.open(QIODevice::ReadOnly));
        plantilla = file.readAll();
        QTest::newRow("empty") << QByteArray();
        QTest::newRow("text") << QByteArray("Estimado doctor:\r\n").repeated(500);
        QTest::newRow("truncated in the header") << plantilla.left(100);
        QTest::newRow("truncated") << plantilla.left(plantilla.size() / 2 + 77);
        QTest::newRow("noise") << QByteArray("\x5a\xa5\x00\xff", 4).repeated(9000);
    }

    void foreign()
    {
        QFETCH(QByteArray, bytes);
        QTemporaryDir carpeta;
        escribir(carpeta.filePath(u"Datos.mdb"_qs), bytes);
        MensajesAnotados mensajes;
        soporte::RelojFijo reloj;
        Modulo modulo(carpeta.path(), mensajes, reloj, db::Engines::standard());
        QCOMPARE(Arranque(modulo, {}).iniciar(), Arranque::Destino::Sistema);
        QVERIFY(!modulo.baseLista());
        QVERIFY2(mensajes.dichos.size() == 1, qPrintable(mensajes.dichos.join(u"\n----\n"_qs)));
        QVERIFY2(esDanio(mensajes.dichos[0], {}), qPrintable(mensajes.dichos[0]));
        // Looked at, not touched.
        QFile file(carpeta.filePath(u"Datos.mdb"_qs));
        QVERIFY(file.open(QIODevice::ReadOnly));
        QCOMPARE(file.readAll(), bytes);
    }

    /// Every page of the file in turn is overwritten: the program starts, and what it cannot read it calls damaged.
    void overwrittenPages()
    {
        QFile file(soporte::plantilla());
        QVERIFY(file.open(QIODevice::ReadOnly));
        const QByteArray plantilla = file.readAll();
        constexpr int pagina = 4096;
        int daniadas = 0;
        for (int n = 0; n < 40; ++n) {
            QByteArray bytes = plantilla;
            bytes.replace(n * pagina + 300, 200, QByteArray(200, 'x'));
            QTemporaryDir carpeta;
            escribir(carpeta.filePath(u"Datos.mdb"_qs), bytes);
            MensajesAnotados mensajes;
            soporte::RelojFijo reloj;
            Modulo modulo(carpeta.path(), mensajes, reloj, db::Engines::standard());
            QCOMPARE(Arranque(modulo, {}).iniciar(), Arranque::Destino::Sistema);
            QVERIFY(!mensajes.dichos.isEmpty());
            if (modulo.baseLista())
                continue;
            ++daniadas;
            QVERIFY2(esDanio(mensajes.dichos.last(), {}), qPrintable(mensajes.dichos.last()));
        }
        QVERIFY(daniadas > 3);
    }

    void otherPassword()
    {
        QTemporaryDir carpeta;
        const QString archivo = carpeta.filePath(u"Datos.mdb"_qs);
        db::createDatabaseFile(archivo, u"otra"_qs);
        db::EmbeddedEngine(archivo, u"otra"_qs).executeNative("CREATE TABLE CIE10 (id INTEGER PRIMARY KEY)", {});
        MensajesAnotados mensajes;
        soporte::RelojFijo reloj;
        Modulo modulo(carpeta.path(), mensajes, reloj, db::Engines::standard());
        (void)Arranque(modulo, {}).iniciar();
        QVERIFY(!modulo.baseLista());
        QCOMPARE(mensajes.dichos.size(), 1);
        QVERIFY(esDanio(
            mensajes.dichos[0],
            u"El archivo no es una base de datos de este programa, tiene otra clave o está dañado."_qs));
    }

    void incompatible_data()
    {
        QTest::addColumn<QByteArray>("crear");
        QTest::newRow("no CIE10") << QByteArray("CREATE TABLE Clientes (id INTEGER)");
        QTest::newRow("no row 2") << QByteArray("CREATE TABLE CIE10 AS SELECT 1 AS id");
        QTest::newRow("two rows 2") << QByteArray("CREATE TABLE CIE10 AS SELECT 2 AS id UNION ALL SELECT 2");
        QTest::newRow("CIE10 without id") << QByteArray("CREATE TABLE CIE10 AS SELECT 2 AS codigo");
    }

    void incompatible()
    {
        QFETCH(QByteArray, crear);
        Computadora pc;
        db::createDatabaseFile(pc.archivo("Datos.mdb"), clave);
        db::EmbeddedEngine(pc.archivo("Datos.mdb"), clave).executeNative(crear, {});
        pc.esperarIncompatible();
        (void)pc.iniciar();
        QVERIFY(!pc.modulo->baseLista());
        QVERIFY(pc.guion.terminar());
    }

    void fileRemovedAndBack()
    {
        Computadora pc;
        pc.ponerPlantilla();
        pc.esperarMedicoDePrueba();
        (void)pc.iniciar();
        QVERIFY(pc.modulo->verificarBase());
        const QString base = pc.archivo("Datos.mdb"), guardada = pc.archivo("guardada.mdb");
        QVERIFY(QFile::copy(base, guardada));
        QVERIFY(QFile::remove(base));

        // What would be written to a file that nobody will find again is refused.
        QVERIFY_THROWS_EXCEPTION(
            db::Error, (void)pc.modulo->conexion().execute(u"UPDATE [Config] SET UltimoPaci = 9"_qs));
        pc.esperarAusente();
        QVERIFY(!pc.modulo->verificarBase());
        QVERIFY(!pc.modulo->baseLista());

        QVERIFY(QFile::rename(guardada, base));
        QVERIFY(pc.modulo->verificarBase());
        QVERIFY(pc.modulo->baseLista());
        pc.modulo->conexion().execute(u"UPDATE [Config] SET UltimoPaci = 9"_qs);
        QCOMPARE(db::nombreUsuarioActual(*pc.modulo), u"Juan Pérez"_qs);
        QVERIFY(pc.guion.terminar());
    }

    /// A database without a first professional that comes while the program runs is prepared before it counts.
    void databaseComesLater()
    {
        Computadora pc;
        pc.esperarAusente();
        (void)pc.iniciar();
        QVERIFY(!pc.modulo->baseLista());
        QVERIFY(QFile::copy(soporte::plantilla(), pc.archivo("Datos.mdb")));
        pc.esperarMedicoDePrueba();
        QVERIFY(pc.modulo->verificarBase());
        QVERIFY(pc.modulo->baseLista());
        QVERIFY(pc.guion.terminar());
    }

    void readOnly()
    {
        Computadora pc;
        pc.ponerPlantilla();
        pc.esperarMedicoDePrueba();
        (void)pc.iniciar();
        pc.modulo.reset();

        // Opened as the system opens a file without write permission: the tests may run as root, who always has it.
        db::Engines motores;
        motores.add(u"Microsoft.Jet.OLEDB.4.0"_qs, [](const db::ConnectionString &texto) {
            return std::make_unique<db::EmbeddedEngine>(
                texto.value(u"Data Source"),
                texto.value(u"Jet OLEDB:Database Password"),
                db::EmbeddedEngine::Opening::ReadOnly);
        });
        pc.guion.esperarMensaje(
            u"Error..."_qs,
            u"La Base de Datos es de sólo lectura: podrá consultarla, pero no guardar cambios. Verifique los permisos "
            u"del "
            "archivo Datos.mdb y de su carpeta."_qs);
        Modulo modulo(pc.carpeta.path(), pc.guion, pc.reloj, motores);
        QCOMPARE(Arranque(modulo, {}).iniciar(), Arranque::Destino::Sistema);
        QVERIFY(modulo.baseLista());
        QCOMPARE(db::nombreUsuarioActual(modulo), u"Juan Pérez"_qs);
        const auto falla
            = soporte::fallaDe([&] { modulo.conexion().execute(u"UPDATE [Config] SET UltimoPaci = 9"_qs); });
        QVERIFY(falla && falla->kind() == db::Error::Kind::ReadOnly);
        QVERIFY(pc.guion.terminar());
    }
};

PRUEBA(PruebaArranque)
#include "PruebaArranque.moc"
