#include "app/Arranque.h"
#include "app/Modulo.h"
#include "db/Connection.h"
#include "db/Error.h"
#include "db/engine/EmbeddedEngine.h"
#include "support/BaseDePrueba.h"
#include "support/Prueba.h"

using app::RutaCambiada;
using namespace Qt::StringLiterals;

namespace {

const auto noSeEncuentra
    = u"No se encuentra la Base de Datos, asigne una ruta válida en el menú 'Red' del programa."_qs;

app::Ruta enCarpeta(const QString &carpeta)
{
    app::Ruta ruta;
    ruta.otraCarpeta = true;
    ruta.carpeta = carpeta;
    return ruta;
}

app::Ruta enServidor(const QString &servidor)
{
    app::Ruta ruta;
    ruta.modoServidor = true;
    ruta.servidor = servidor;
    return ruta;
}

QByteArray leer(const QString &archivo)
{
    QFile file(archivo);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

} // namespace

/// From one database to another while the program runs.
class PruebaRed : public QObject
{
    Q_OBJECT

    std::unique_ptr<QTemporaryDir> carpeta;
    std::unique_ptr<soporte::MensajesGuionados> guion;
    std::unique_ptr<app::Modulo> modulo;
    soporte::RelojFijo reloj;

    /// A practice with one patient more than the others, called as its folder.
    QString practica(const QString &nombre)
    {
        const QString suya = carpeta->filePath(nombre);
        if (!QDir().mkpath(suya) || !QFile::copy(soporte::plantilla(), suya + u"/Datos.mdb"_qs))
            qFatal("no template");
        QFile::setPermissions(suya + u"/Datos.mdb"_qs, QFile::ReadOwner | QFile::WriteOwner);
        db::EmbeddedEngine motor(suya + u"/Datos.mdb"_qs, u"kestrel428"_qs);
        motor.execute(u"INSERT INTO [Lista Doctores] (NomDoc,tipo) VALUES (?,0)"_qs, {nombre});
        return suya;
    }
    [[nodiscard]] QString usuario()
    {
        return db::Connection::open(soporte::cadenaAccess(modulo->destino().archivo), db::Engines::standard())
            ->query(u"SELECT NomDoc FROM [Lista Doctores]"_qs)
            ->text(0, 0);
    }

private slots:
    void init()
    {
        carpeta = std::make_unique<QTemporaryDir>();
        guion = std::make_unique<soporte::MensajesGuionados>();
        modulo = std::make_unique<app::Modulo>(practica(u"aqui"_qs), *guion, reloj, db::Engines::standard());
        (void)app::Arranque(*modulo, [](const QString &) {}).iniciar();
        QVERIFY(modulo->baseLista());
    }
    void cleanup() { QVERIFY(guion->terminar()); }

    void controles_data()
    {
        QTest::addColumn<app::Ruta>("ruta");
        QTest::addColumn<QString>("campo"); // of the refusal
        QTest::newRow("aquí") << app::Ruta() << "";
        QTest::newRow("otra") << enCarpeta(u"/mnt/consultorio de O'Higgins"_qs) << "";
        QTest::newRow("sin carpeta") << enCarpeta({}) << "carpeta";
        QTest::newRow("a medias") << enCarpeta(u"consultorio"_qs) << "carpeta";
        QTest::newRow("la propia") << enCarpeta(u"%1/../aqui/"_qs) << "carpeta";
        QTest::newRow("larga") << enCarpeta(u'/' + QString(250, u'x')) << "carpeta";
        QTest::newRow("justa") << enCarpeta(u'/' + QString(249, u'ñ')) << "";
        QTest::newRow("otro alfabeto") << enCarpeta(u"/mnt/κλινική"_qs) << "carpeta";
        QTest::newRow("servidor") << enServidor(u"SRV"_qs) << "";
        QTest::newRow("sin servidor") << enServidor({}) << "servidor";
        app::Ruta clave = enServidor(u"SRV"_qs);
        clave.clave = u" secreta"_qs;
        QTest::newRow("clave con espacio") << clave << "clave";
        clave.clave = QString(51, u'x');
        QTest::newRow("clave larga") << clave << "clave";
    }
    void controles()
    {
        QFETCH(app::Ruta, ruta);
        QFETCH(QString, campo);
        if (ruta.carpeta.contains(u"%1"_qs))
            ruta.carpeta = ruta.carpeta.arg(modulo->carpetaPrograma());
        const base::Control control = app::controlarRuta(ruta, modulo->carpetaPrograma());
        QCOMPARE(control ? control->campo : QString(), campo);
    }

    void cambia()
    {
        // the reserved bytes are another program's
        app::Ruta nueva = enCarpeta(practica(u"lejos"_qs));
        nueva.reservado = QByteArray(18, 'r');
        int avisos = 0;
        modulo->setAlCambiarBase([&] { ++avisos; });
        const auto hecho = app::guardarRuta(*modulo, *modulo, nueva);
        QVERIFY(hecho && *hecho == RutaCambiada::Usada);
        QVERIFY(modulo->baseLista() && modulo->esClienteDeRed());
        QCOMPARE(avisos, 1);
        QCOMPARE(usuario(), u"lejos"_qs);
        QCOMPARE(leer(modulo->archivoRuta()).mid(252, 18), QByteArray(18, 'r'));
        const db::Rows entradas = modulo->conexion().query(u"SELECT ventana, accion FROM [Historial]"_qs);
        QCOMPARE(entradas->rowCount(), 1);
        QCOMPARE(entradas->text(0, 0), u"Red (Modo de Acceso - Ubicación de la Base de Datos)"_qs);
        QCOMPARE(
            entradas->text(0, 1),
            u"Se cambió la ubicación de la Base de Datos: carpeta '%1'."_qs.arg(carpeta->filePath(u"lejos"_qs)));
        // saved again as it is, it is no change
        QVERIFY(app::guardarRuta(*modulo, *modulo, nueva));
        QCOMPARE(modulo->conexion().query(u"SELECT ventana FROM [Historial]"_qs)->rowCount(), 1);
    }

    /// What cannot be used is told by the check, and the way back is offered.
    void noSirve_data()
    {
        QTest::addColumn<bool>("servidor");
        QTest::addColumn<bool>("vuelve");
        for (const bool servidor : {false, true})
            for (const bool vuelve : {false, true})
                QTest::addRow("%s, %s", servidor ? "servidor" : "sin base", vuelve ? "vuelve" : "queda")
                    << servidor << vuelve;
    }
    void noSirve()
    {
        QFETCH(bool, servidor);
        QFETCH(bool, vuelve);
        app::Ruta antes;
        antes.reservado = QByteArray(18, 'r');
        antes.guardar(modulo->archivoRuta());
        const app::Ruta nueva = servidor ? enServidor(u"127.0.0.1,1"_qs) : enCarpeta(carpeta->path());
        if (servidor)
            guion->esperarMensaje(
                u"Error..."_qs,
                u"ERROR... LA BASE DE DATOS ESTÁ DAÑADA!!!\n\nDescripción del Error: (20009) No se puede conectar con "
                u"el "
                "servidor de base de datos. Verifique que esté encendido, que la red funcione y que el nombre del "
                "servidor y de la instancia sean los del menú 'Red'.\n\nPRIMERA SOLUCIÓN: Intente repararla desde la "
                "opción "
                "'Compactar Base de Datos' de la ventana 'Back-up' del menú principal.\n\nSEGUNDA SOLUCIÓN: Si luego "
                "de "
                "compactarla el error continúa, entonces desde la misma ventana 'Back-up' restaure la copia de "
                "respaldo "
                "más reciente que hizo el programa, para ello seleccione el primer respaldo de la lista de la derecha "
                "de "
                "la ventana y luego presione el botón inferior 'Restaurar Copia Seleccionada', a continuación debe "
                "indicar que Sí al mensaje de advertencia y por último reincie el programa."_qs);
        else
            guion->esperarMensaje(u"Error..."_qs, noSeEncuentra);
        guion->esperarPregunta(
            base::titulo::atencion,
            u"La base de datos indicada no se puede usar.\n¿Desea volver a la ubicación anterior (carpeta '%1')?"_qs
                .arg(modulo->carpetaPrograma()),
            vuelve);
        const auto hecho = app::guardarRuta(*modulo, *modulo, nueva);
        QVERIFY(hecho && *hecho == (vuelve ? RutaCambiada::Restaurada : RutaCambiada::SinBase));
        QCOMPARE(modulo->baseLista(), vuelve);
        QCOMPARE(leer(modulo->archivoRuta()), (vuelve ? antes : nueva).aRegistro());
        if (vuelve) {
            QCOMPARE(usuario(), u"aqui"_qs);
            return;
        }
        // without a database nobody's right is asked for: it is from here that it gets one again
        const auto arreglo = app::guardarRuta(*modulo, *modulo, enCarpeta(practica(u"lejos"_qs)));
        QVERIFY(arreglo && *arreglo == RutaCambiada::Usada);
        QCOMPARE(usuario(), u"lejos"_qs);
    }

    void noSeEscribe()
    {
        const app::Ruta nueva = enCarpeta(practica(u"lejos"_qs));
        modulo->conexion().execute(u"UPDATE [Lista Doctores] SET accesored = 0"_qs);
        const auto rechazo = app::guardarRuta(*modulo, *modulo, nueva);
        QVERIFY(!rechazo && rechazo.rechazo().texto.startsWith(u"No tiene permiso"_qs));
        QVERIFY(!QFileInfo::exists(modulo->archivoRuta()));

        modulo->conexion().execute(u"UPDATE [Lista Doctores] SET accesored = -1"_qs);
        QVERIFY(QDir().mkpath(modulo->archivoRuta())); // a folder where the file should be
        QVERIFY_THROWS_EXCEPTION(db::Error, (void)app::guardarRuta(*modulo, *modulo, nueva));
        QVERIFY(modulo->baseLista());
        QCOMPARE(usuario(), u"aqui"_qs);
    }

    void examina_data()
    {
        QTest::addColumn<QString>("que");
        QTest::addColumn<QString>("texto"); // how it begins
        QTest::newRow("buena") << "buena"
                               << "Hay una base de datos válida, con 0 pacientes (";
        QTest::newRow("nada") << "nada"
                              << "No está el archivo Datos.mdb en esa carpeta.";
        QTest::newRow("otra cosa") << "ajena"
                                   << "El archivo no es una base de datos de este programa, tiene otra clave";
        QTest::newRow("sin catálogo") << "sinCatalogo"
                                      << "El archivo no es una base de datos de este programa.";
        QTest::newRow("servidor") << "servidor"
                                  << "No se puede conectar con el servidor de base de datos.";
    }
    void examina()
    {
        QFETCH(QString, que);
        QFETCH(QString, texto);
        const QString lejos = practica(u"lejos"_qs), datos = lejos + u"/Datos.mdb"_qs;
        if (que == u"nada"_qs)
            QFile::remove(datos);
        if (que == u"ajena"_qs) {
            QFile file(datos);
            QVERIFY(file.open(QIODevice::WriteOnly));
            file.write(QByteArray(8192, 'x'));
        }
        if (que == u"sinCatalogo"_qs)
            db::EmbeddedEngine(datos, u"kestrel428"_qs).executeNative("DROP TABLE CIE10", {});
        const auto hallazgo
            = modulo->examinarRuta(que == u"servidor"_qs ? enServidor(u"127.0.0.1,1"_qs) : enCarpeta(lejos));
        QCOMPARE(hallazgo.valida, que == u"buena"_qs);
        QVERIFY2(hallazgo.texto.startsWith(texto), qPrintable(hallazgo.texto));
        QCOMPARE(usuario(), u"aqui"_qs); // nothing changed
    }

    void examinaEnElServidor()
    {
        soporte::BaseDePrueba base(db::Dialect::Kind::SqlServer);
        QVERIFY(app::examinarBase(base.conexion()).valida);
    }
};

PRUEBA(PruebaRed)
#include "PruebaRed.moc"
