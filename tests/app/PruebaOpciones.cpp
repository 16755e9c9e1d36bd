#include "app/Carpetas.h"
#include "app/Opciones.h"
#include "support/Prueba.h"

#include <QTemporaryDir>

using namespace Qt::StringLiterals;

namespace {

app::Opciones leer(QByteArrayList argumentos)
{
    argumentos.prepend("vastelo");
    std::vector<char *> argv;
    for (QByteArray &argumento : argumentos)
        argv.push_back(argumento.data());
    return app::leerOpciones(int(argv.size()), argv.data());
}

void escribir(const QString &archivo, const QByteArray &bytes)
{
    QFile file(archivo);
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(bytes);
}

QByteArray contenido(const QString &archivo)
{
    QFile file(archivo);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

} // namespace

/// The command line, and the folder that the program works in.
class PruebaOpciones : public QObject
{
    Q_OBJECT

private slots:
    void commandLine()
    {
        QVERIFY(leer({}).salida.isEmpty());
        QCOMPARE(leer({"--carpeta", "/d/é"}).carpeta, u"/d/é"_s);
        QCOMPARE(leer({"--carpeta=/d"}).carpeta, u"/d"_s);
        QVERIFY(leer({"--demo", "-platform", "offscreen"}).demo);
        QVERIFY(leer({"--version"}).salida.contains(u"1.60.8"_s));
        const app::Opciones ayuda = leer({"--help"});
        QVERIFY(!ayuda.error && ayuda.salida.contains(u"--carpeta DIR"_s) && ayuda.salida.contains(u"--demo"_s));
        QVERIFY(leer({"--nada"}).error);
        QVERIFY(leer({"--carpeta"}).error); // without its folder
    }

    void folders()
    {
        QTemporaryDir ejecutable, datos;
        const QString plantilla = u"/Datos_Vacio.mdb"_s;
        escribir(ejecutable.path() + plantilla, "plantilla");

        // Asked for: made when missing, and given the template once.
        app::Opciones opciones;
        opciones.carpeta = datos.path() + u"/a/b"_s;
        const auto pedida = app::carpetaDePrograma(opciones, ejecutable.path());
        QVERIFY(pedida);
        QCOMPARE(*pedida, opciones.carpeta);
        QCOMPARE(contenido(*pedida + plantilla), QByteArray("plantilla"));
        escribir(*pedida + plantilla, "otra");
        QVERIFY(app::carpetaDePrograma(opciones, ejecutable.path()));
        QCOMPARE(contenido(*pedida + plantilla), QByteArray("otra"));

        // Not asked for: beside the executable; a demo never shares a folder with the practice.
        QCOMPARE(*app::carpetaDePrograma({}, ejecutable.path()), ejecutable.path());
        app::Opciones demo;
        demo.demo = true;
        QCOMPARE(*app::carpetaDePrograma(demo, ejecutable.path()), ejecutable.path() + u"/demo"_s);
        // Where the executable's folder cannot be written (here: does not exist), the user's data directory.
        QStandardPaths::setTestModeEnabled(true);
        QCOMPARE(
            *app::carpetaDePrograma({}, u"/no/existe"_s),
            QStandardPaths::writableLocation(QStandardPaths::AppDataLocation));

        escribir(datos.path() + u"/archivo"_s, "x");
        opciones.carpeta = datos.path() + u"/archivo/adentro"_s;
        QVERIFY(!app::carpetaDePrograma(opciones, ejecutable.path()));
    }
};

PRUEBA(PruebaOpciones)
#include "PruebaOpciones.moc"
