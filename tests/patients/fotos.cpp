#include "patients/Foto.h"
#include "patients/NuevoPaciente.h"
#include "support/BaseDePrueba.h"
#include "support/Prueba.h"

#include <QDir>
#include <QImageReader>

using namespace Qt::StringLiterals;
using patients::PacienteAbierto;

/// The photograph of a patient: what is taken for one, where it lies, and that it is only his.
class PruebaFotos : public QObject
{
    Q_OBJECT

    static PacienteAbierto paciente(soporte::BaseDePrueba &base)
    {
        const int nrohc
            = patients::insertarPaciente(base.conexion(), {{u"Apellido"_s, u"A"_s}, {u"Nombres"_s, u"B"_s}}).nrohc;
        return *PacienteAbierto::abrir(base.conexion(), nrohc);
    }
    static QString archivo(const soporte::BaseDePrueba &base, const QString &nombre, const QByteArray &datos)
    {
        const QString ruta = base.carpetaDatos() + u'/' + nombre;
        QDir().mkpath(QFileInfo(ruta).path());
        QFile nuevo(ruta);
        if (!nuevo.open(QIODevice::WriteOnly) || nuevo.write(datos) != datos.size())
            qFatal("no file");
        return ruta;
    }
    static QByteArray imagen(QSize tamano, const char *formato)
    {
        QImage nueva(tamano, QImage::Format_ARGB32);
        nueva.fill(QColor(200, 30, 30, 0)); // nothing shows
        QByteArray datos;
        QBuffer buffer(&datos);
        if (!nueva.save(&buffer, formato))
            qFatal("no picture");
        return datos;
    }

private slots:
    void loQueNoEsFoto_data()
    {
        QTest::addColumn<QByteArray>("datos");
        QTest::addColumn<QString>("texto");
        const QString noEs = u"El archivo elegido no es una imagen que se pueda leer."_s;
        QTest::newRow("texto") << QByteArray("no soy una foto") << noEs;
        QTest::newRow("vacío") << QByteArray() << noEs;
        QTest::newRow("cortada") << imagen({3000, 2000}, "JPEG").left(100) << noEs;
        QTest::newRow("50 MB") << QByteArray(50 * 1024 * 1024, 'x')
                               << u"El archivo elegido es demasiado grande para ser una foto (hasta 25 MB)."_s;
        // A bitmap's header that promises 60000 x 60000 dots.
        QByteArray mentira = imagen({2, 2}, "BMP");
        mentira[18] = 0x60, mentira[19] = char(0xEA), mentira[22] = 0x60, mentira[23] = char(0xEA);
        QTest::newRow("desmesurada") << mentira << noEs;
    }
    void loQueNoEsFoto()
    {
        QFETCH(QByteArray, datos);
        soporte::BaseDePrueba base;
        const auto foto = patients::elegirFoto(archivo(base, u"a.jpg"_s, datos));
        QVERIFY(!foto);
        QTEST(foto.rechazo().texto, "texto");
    }

    void guardaYReemplaza()
    {
        soporte::BaseDePrueba base;
        const PacienteAbierto suyo = paciente(base);
        // By its content, whatever its ending says.
        const auto elegida = patients::elegirFoto(archivo(base, u"foto.jpg"_s, imagen({4000, 1000}, "PNG")));
        QVERIFY(elegida);
        QVERIFY(!patients::guardarFoto(base, suyo, *elegida));
        const QString destino = base.carpetaDatos() + u"/Imagenes/Fotos/Foto1"_s;
        QCOMPARE(patients::archivosDeFoto(base.carpetaDatos(), 1), QStringList{destino});
        QCOMPARE(QImageReader(destino).format(), QByteArray("jpeg"));
        const QImage guardada = patients::leerFoto(destino);
        QCOMPARE(guardada.size(), QSize(1200, 300));
        QVERIFY(qGray(guardada.pixel(5, 5)) > 250); // nothing is white, not black

        // Files of an older installation are found, and give way to the new one; another patient's are not his.
        QFile::remove(destino);
        const QString otra = archivo(base, u"Imagenes/Fotos/Foto12.jpg"_s, imagen({8, 8}, "JPEG"));
        const QString vieja = archivo(base, u"Imagenes/Fotos/Foto1.JPG"_s, imagen({8, 8}, "JPEG"));
        archivo(base, u"Imagenes/Fotos/Foto1.txt"_s, "nada");
        QCOMPARE(patients::archivosDeFoto(base.carpetaDatos(), 1), QStringList{vieja});
        QVERIFY(!patients::guardarFoto(base, suyo, QImage(10, 20, QImage::Format_RGB32)));
        QCOMPARE(patients::archivosDeFoto(base.carpetaDatos(), 1), QStringList{destino});

        const QString pregunta = u"¿Seguro que desea Eliminar la Foto de Perfil actual?"_s;
        base.guion.esperarPregunta(u"Confirmación..."_s, pregunta, false);
        QVERIFY(!*patients::eliminarFoto(base, suyo));
        QVERIFY(QFile::exists(destino));
        base.guion.esperarPregunta(u"Confirmación..."_s, pregunta, true);
        QVERIFY(*patients::eliminarFoto(base, suyo));
        QVERIFY(!QFile::exists(destino) && QFile::exists(otra));
        QVERIFY(!*patients::eliminarFoto(base, suyo)); // nothing to ask any more
        QVERIFY(base.guion.terminar());
    }

    void sinDerechoOSinLugar()
    {
        soporte::BaseDePrueba base;
        const PacienteAbierto suyo = paciente(base);
        const QImage foto(10, 10, QImage::Format_RGB32);
        archivo(base, u"Imagenes"_s, "un archivo donde debe haber una carpeta");
        QVERIFY(patients::guardarFoto(base, suyo, foto)->texto.startsWith(u"No se pudo guardar la foto"_s));
        base.conexion().execute(u"DELETE FROM [Pacientes]"_s);
        QCOMPARE(
            patients::guardarFoto(base, suyo, foto)->texto,
            u"Este paciente no Existe, probablemente a sido eliminado."_s);
        base.conexion().execute(u"UPDATE [Lista Doctores] SET accesomodificarpaciente = 0"_s);
        QVERIFY(patients::guardarFoto(base, suyo, foto)->texto.startsWith(u"No tiene permiso"_s));
        QVERIFY(patients::eliminarFoto(base, suyo).rechazo().texto.startsWith(u"No tiene permiso"_s));
    }
};

PRUEBA(PruebaFotos)
#include "fotos.moc"
