#include "Pdf.h"
#include "db/Config.h"
#include "db/Error.h"
#include "db/engine/EmbeddedEngine.h"
#include "printing/Armar.h"
#include "printing/ImagenEncabezado.h"
#include "support/BaseDePrueba.h"
#include "support/Prueba.h"
#include "support/ServerTestEngine.h"
#include "texto/TextoRico.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

using namespace Qt::StringLiterals;
using namespace printing;

namespace {

const QString sinPermiso
    = u"No tiene permiso para ejecutar esta acción. Consulte con el Administrador del sistema para definir sus "
      "permisos de accesos."_s;

/// The same practice with its file opened for reading only.
class BaseDeLectura final : public soporte::BaseDePrueba
{
public:
    using BaseDePrueba::BaseDePrueba;
    void cerrarEscritura()
    {
        const auto solo = db::EmbeddedEngine::Opening::ReadOnly;
        std::unique_ptr<db::Engine> motor;
        if (soporte::dialectoActual() == db::Dialect::Kind::Access)
            motor = std::make_unique<db::EmbeddedEngine>(archivo(), u"kestrel428"_s, solo);
        else
            motor = std::make_unique<soporte::ServerTestEngine>(archivo(), u"kestrel428"_s, solo);
        m_lectura = std::make_unique<db::Connection>(std::move(motor));
    }
    db::Connection &conexion() override { return m_lectura ? *m_lectura : BaseDePrueba::conexion(); }

private:
    std::unique_ptr<db::Connection> m_lectura;
};

} // namespace

/// The practice's headers: kept, filled, and put on what is printed, in both dialects.
class PruebaEncabezados : public QObject
{
    Q_OBJECT

    std::unique_ptr<soporte::BaseDePrueba> base;

    static QString foto(const QTemporaryDir &carpeta, const char *formato, QColor color, int ancho = 40)
    {
        QImage imagen(ancho, 10, QImage::Format_RGB32);
        imagen.fill(color);
        const QString archivo = carpeta.filePath(u"foto."_s + QLatin1String(formato));
        return imagen.save(archivo, formato) ? archivo : QString();
    }
    QString general(const QString &plantilla) { return texto::comoPlano(encabezadoGeneral(*base, plantilla)); }

private slots:
    void init() { base = std::make_unique<soporte::BaseDePrueba>(soporte::dialectoActual()); }
    void cleanup() { QVERIFY(base->guion.terminar()); }

    void guarda_data() { soporte::filasDeDialecto(); }
    void guarda()
    {
        QCOMPARE(leerPlantillas(base->conexion()), PlantillasEncabezado());
        const PlantillasEncabezado nuevas{true, u"<p>Dr. O'Higgins</p>"_s, u""_s};
        QVERIFY(!guardarPlantillas(*base, nuevas));
        QCOMPARE(leerPlantillas(base->conexion()), nuevas);
        QCOMPARE(base->valor(u"SELECT ventana FROM [Historial]"_s), u"Encabezados"_s);
        QCOMPARE(base->valor(u"SELECT accion FROM [Historial]"_s), u"Se presionó el botón Guardar."_s);

        base->conexion().execute(u"UPDATE [Lista Doctores] SET accesoconfiguracion = 0"_s);
        QCOMPARE(guardarPlantillas(*base, {})->texto, sinPermiso);
        const QTemporaryDir carpeta;
        QCOMPARE(ponerImagen(*base, foto(carpeta, "bmp", Qt::red))->texto, sinPermiso);
        QCOMPARE(quitarImagen(*base).rechazo().texto, sinPermiso);
        base->usuario = 9999;
        QVERIFY(guardarPlantillas(*base, {})->texto.startsWith(u"Defina un Usuario Activo"_s));
        QCOMPARE(leerPlantillas(base->conexion()), nuevas);
        // The administrator's password opened the configuration.
        QVERIFY(guardarPlantillas(*base, {}, 20).has_value());
        base->usuario = 20;
        base->conexion().execute(u"UPDATE [Lista Doctores] SET administrador = -1"_s);
        QVERIFY(!guardarPlantillas(*base, {}, 20));
        QCOMPARE(leerPlantillas(base->conexion()), PlantillasEncabezado());
    }

    void llenaElGeneral_data() { soporte::filasDeDialecto(); }
    void llenaElGeneral()
    {
        const QString plantilla = u"<medico>, <medico> (<especialidad>) <matricula>."_s;
        QCOMPARE(general(plantilla), u"Juan Pérez, Juan Pérez () ."_s);
        base->conexion().execute(
            u"UPDATE [Lista Doctores] SET NomDoc = ?, Especialidad = ?, Matricula = '12'"_s,
            {u"Dr. O'Higgins <b>"_s, u"Clínica & <medico>"_s});
        QCOMPARE(general(plantilla), u"Dr. O'Higgins <b>, Dr. O'Higgins <b> (Clínica & <medico>) 12."_s);
        // A secretary prints for her professional; for nobody, nothing is filled in.
        base->conexion().execute(
            u"INSERT INTO [Lista Doctores] (NomDoc,tipo,medisecre) VALUES ('Ana',1,?)"_s, {base->usuario});
        base->usuario = int(base->conexion().insertedId());
        QVERIFY(general(plantilla).startsWith(u"Dr. O'Higgins <b>,"_s));
        base->conexion().execute(u"UPDATE [Lista Doctores] SET medisecre = 0 WHERE tipo = 1"_s);
        QCOMPARE(general(plantilla), u",  () ."_s);
        QCOMPARE(encabezadoGeneral(*base, u""_s), QString());
    }

    void llenaElDelPaciente_data() { soporte::filasDeDialecto(); }
    void llenaElDelPaciente()
    {
        base->conexion().execute(
            u"INSERT INTO [Pacientes] (NroHC,Apellido,apellido2,Nombres,sexo,DNI,FeNac,numehistoria) VALUES (?,?,?,?,?,?,?,?)"_s,
            {7, u"O'Higgins"_s, u"<dni>"_s, u"Eva"_s, 0, u"1234"_s, QDate(1980, 3, 5), u"HC-7"_s});
        base->conexion().execute(
            u"INSERT INTO [Pacientes] (NroHC,Apellido,Nombres,sexo,FeNac) VALUES (8,'Paz','Leo',1,?)"_s,
            {QDate(9999, 12, 31)});
        const QString plantilla = u"<p>&lt;apellido&gt;|&lt;nombre&gt;|&lt;sexo&gt;|&lt;dni&gt;|&lt;fechanac&gt;|"
                                  "&lt;id&gt;|&lt;hc&gt;|&lt;hc&gt;</p>"_s;
        const auto llena = [&](int nrohc) {
            return texto::comoPlano(encabezadoPaciente(*leerDatosPaciente(base->conexion(), nrohc), plantilla));
        };
        QCOMPARE(llena(7), u"O'Higgins <dni>|Eva|Femenino|1234|05/03/1980|7|HC-7|HC-7"_s);
        QCOMPARE(llena(8), u"Paz|Leo|Masculino|||8||"_s);
        QVERIFY(!leerDatosPaciente(base->conexion(), 9));
    }

    void armaPorLaTablaDeImpresion_data() { soporte::filasDeDialecto(); }
    void armaPorLaTablaDeImpresion()
    {
        const QTemporaryDir carpeta;
        QVERIFY(!ponerImagen(*base, foto(carpeta, "jpg", Qt::blue)));
        QVERIFY(!guardarPlantillas(*base, {true, u"Dr. <medico>"_s, u"Pac. <apellido>"_s}));
        base->conexion().execute(u"INSERT INTO [Imprimir] (nrohc,impri1) VALUES (-99,'de otra vez')"_s);
        base->conexion().execute(u"INSERT INTO [Imprimir] (nrohc,impri1) VALUES (5,'ajena')"_s);
        // What was in the table while it was there.
        auto *motor = dynamic_cast<db::EmbeddedEngine *>(&base->conexion().engine());
        motor->executeNative("CREATE TEMP TABLE testigo (texto)", {});
        motor->executeNative(
            "CREATE TEMP TRIGGER testigo AFTER INSERT ON [Imprimir] BEGIN INSERT INTO testigo VALUES (NEW.nrohc || '|' "
            "|| NEW.impri1 || '|' || NEW.imprihc || '|' || (NEW.impriencabezadogeneral LIKE '%Juan P%') || '|' || "
            "(NEW.impriencabezadopaciente LIKE '%Pac. Ñu<%') || '|' || (length(NEW.imagenenca) > 100)); END",
            {});

        DatosPaciente paciente;
        paciente.apellido = u"Ñu"_s;
        const Documento documento
            = armar(*base, {.titulo = u"LISTA DE CONSULTAS"_s, .paciente = paciente, .html = u"<b>Fecha:</b> 'hoy'"_s});
        QCOMPARE(
            motor->queryNative("SELECT texto FROM testigo", {})->text(0, 0),
            u"-99|LISTA DE CONSULTAS|<b>Fecha:</b> 'hoy'|1|1|1"_s);
        // Nothing of it stays, so that no timer and no other station can take it away.
        QCOMPARE(base->valor(u"SELECT count(id) FROM [Imprimir] WHERE nrohc = -99"_s), u"0"_s);
        QCOMPARE(base->valor(u"SELECT impri1 FROM [Imprimir]"_s), u"ajena"_s);
        QCOMPARE(documento.encabezado.imagen.size(), QSize(40, 10));
        QCOMPARE(documento.fecha, base->reloj.now());
        const QStringList paginas = textoImpreso(documento);
        QCOMPARE(paginas.size(), 1);
        for (const QString &palabra : {u"Dr. Juan Pérez"_s, u"Pac. Ñu"_s, u"LISTA DE CONSULTAS"_s, u"Fecha: 'hoy'"_s})
            QVERIFY2(paginas[0].contains(palabra), qPrintable(paginas[0]));
        // Without a patient there is no patient header, without the setting no picture.
        db::Config(base->conexion()).guardar(u"encabezadoimagen", false);
        const Documento otro = armar(*base, {.titulo = u"CAJA"_s});
        QVERIFY(otro.encabezado.imagen.isNull() && otro.encabezado.paciente.isEmpty());
        QVERIFY(otro.cuerpo.isEmpty());
    }

    void listaDeImprimir2_data() { soporte::filasDeDialecto(); }
    void listaDeImprimir2()
    {
        base->conexion().execute(u"INSERT INTO [Imprimir2] (nrohc,impri1) VALUES (0,'de otra vez')"_s);
        const auto agregar = [this](const QString &detalle, double importe) {
            base->conexion().execute(
                u"INSERT INTO [Imprimir2] (nrohc,impri1,imprinume1) VALUES (0,?,?)"_s, {detalle, importe});
        };
        const auto llenar = [&] {
            agregar(u"Ñandú 'b'"_s, -100);
            agregar(u"árbol"_s, 1234.5);
        };
        const std::vector<ColumnaImpresa> columnas{
            {u"impri1"_s, {u"Detalle"_s}}, {u"imprinume1"_s, {u"Importe"_s, Qt::AlignRight}, true}};
        Tabla tabla = tablaDe(*porImprimir2(base->conexion(), llenar), columnas);
        QCOMPARE(tabla.filas.size(), 2);
        QCOMPARE(tabla.filas[0].celdas, QStringList({u"Ñandú 'b'"_s, u"-100,00"_s}));
        tabla = tablaDe(*porImprimir2(base->conexion(), llenar, u"impri1"_s), columnas);
        QCOMPARE(tabla.filas[0].celdas, QStringList({u"árbol"_s, u"1.234,50"_s}));
        QCOMPARE(tabla.columnas[1].alineacion, Qt::AlignRight);
        QCOMPARE(base->valor(u"SELECT count(id) FROM [Imprimir2]"_s), u"0"_s);
        // A list that could not be filled leaves nothing, and nothing missing.
        base->conexion().execute(u"INSERT INTO [Imprimir2] (nrohc) VALUES (0)"_s);
        const auto fallar = [] { throw db::Error(db::Error::Kind::General, 0, {}); };
        QVERIFY_THROWS_EXCEPTION(db::Error, (void)porImprimir2(base->conexion(), fallar));
        QCOMPARE(base->valor(u"SELECT count(id) FROM [Imprimir2]"_s), u"1"_s);
    }

    void imprimeSinPoderEscribir_data() { soporte::filasDeDialecto(); }
    void imprimeSinPoderEscribir()
    {
        BaseDeLectura lectura(soporte::dialectoActual());
        QVERIFY(!guardarPlantillas(lectura, {false, u"Dr. <medico>"_s, {}}));
        lectura.cerrarEscritura();
        QVERIFY(lectura.conexion().readOnly());
        const Documento documento = armar(lectura, {.titulo = u"Título"_s, .html = u"cuerpo"_s});
        QVERIFY(textoImpreso(documento)[0].contains(u"Dr. Juan Pérez"_s));
        QCOMPARE(documento.cuerpo.size(), 1);
    }

    void imagenDeEncabezado_data() { soporte::filasDeDialecto(); }
    void imagenDeEncabezado()
    {
        const QTemporaryDir carpeta;
        QVERIFY(leerImagen(*base).isEmpty());
        QVERIFY(!ponerImagen(*base, foto(carpeta, "jpg", Qt::red)));
        const QByteArray roja = leerImagen(*base);
        QCOMPARE(imagenDe(roja).size(), QSize(40, 10));
        QCOMPARE(archivoImagen(*base), base->carpetaPrograma() + u"/Imagenes/encabezado"_s);

        // What is no picture, or too much of one, leaves the former.
        const auto rechaza = [&](const QString &archivo, const QString &principio) {
            const auto rechazo = ponerImagen(*base, archivo);
            QVERIFY(rechazo && rechazo->texto.startsWith(principio));
            QCOMPARE(leerImagen(*base), roja);
        };
        QFile falsa(carpeta.filePath(u"falsa.jpg"_s));
        QVERIFY(falsa.open(QIODevice::WriteOnly) && falsa.write("BM no es una imagen") > 0);
        falsa.close();
        rechaza(falsa.fileName(), u"El archivo elegido no es una imagen"_s);
        rechaza(carpeta.filePath(u"ausente.bmp"_s), u"El archivo elegido no es una imagen"_s);
        rechaza(foto(carpeta, "png", Qt::red, 9000), u"El archivo elegido no es una imagen"_s);
        QVERIFY(falsa.open(QIODevice::WriteOnly) && falsa.resize(5'000'000));
        falsa.close();
        rechaza(falsa.fileName(), u"La imagen es demasiado grande"_s);

        QVERIFY(!ponerImagen(*base, foto(carpeta, "bmp", Qt::green)));
        QCOMPARE(imagenDe(leerImagen(*base)).pixelColor(3, 3), QColor(Qt::green));
        QCOMPARE(QDir(base->carpetaPrograma() + u"/Imagenes"_s).entryList(QDir::Files), QStringList(u"encabezado"_s));
        const QString pregunta = u"¿Seguro que desea Eliminar la imagen usada como Encabezado de las impresiones?"_s;
        base->guion.esperarPregunta(u"Atención..."_s, pregunta, false);
        QCOMPARE(*quitarImagen(*base), false);
        QVERIFY(QFile::exists(archivoImagen(*base)));
        base->guion.esperarPregunta(u"Atención..."_s, pregunta, true);
        QCOMPARE(*quitarImagen(*base), true);
        QVERIFY(!QFile::exists(archivoImagen(*base)));
    }
};

PRUEBA(PruebaEncabezados)
#include "PruebaEncabezados.moc"
