#include "Comun.h"
#include "app/Arranque.h"
#include "app/Modulo.h"
#include "app/forms/AvanceImportacion.h"
#include "base/Mensajes.h"

#include <QLockFile>
#include <QProgressDialog>

#include <array>
#include <numeric>

using namespace Qt::StringLiterals;

namespace {

const auto incompatible
    = u"La Base de Datos es incompatible con el programa, asigne una ruta válida en el menú 'Red' del programa."_qs;
const auto tituloPregunta = u"Convertir la Base de Datos"_qs;

/// Answers by table and remembers what was said.
class Persona final : public base::Mensajes
{
public:
    QStringList dichos;
    QStringList claves; ///< typed one after another; then she gives up
    bool acepta = true;
    std::function<void()> alPreguntar;

    void mensaje(const QString &titulo, const QString &texto, base::Icono) override { dichos << titulo + u'|' + texto; }
    bool pregunta(const QString &titulo, const QString &texto, bool) override
    {
        dichos << titulo + u'?' + texto;
        if (alPreguntar)
            alPreguntar();
        return acepta;
    }
    std::optional<QString> pedirTexto(const QString &, const QString &, const QString &) override { return {}; }
    std::optional<QString> pedirClave(const QString &titulo, const QString &texto) override
    {
        dichos << titulo + u'?' + texto;
        return claves.isEmpty() ? std::nullopt : std::optional(claves.takeFirst());
    }
    std::optional<QString> elegirArchivo(const QString &, const QString &, const QString &) override { return {}; }
    std::optional<QString> elegirDestino(const QString &, const QString &, const QString &) override { return {}; }
    std::optional<QString> elegirCarpeta(const QString &, const QString &) override { return {}; }

    /// What was said since this was last asked.
    QStringList tomar() { return std::exchange(dichos, {}); }
};

/// A station whose folder holds one of the samples.
struct Estacion {
    prueba::Carpeta carpeta;
    Persona persona;
    soporte::RelojFijo reloj;
    app::Modulo modulo;

    explicit Estacion(const QString &nombre, const QString &programa = {})
        : carpeta(nombre)
        , modulo(programa.isEmpty() ? carpeta.dir.path() : programa, persona, reloj, db::Engines::standard())
    {
        modulo.setFuenteImportacion(prueba::fuente);
    }
    bool iniciar()
    {
        (void)app::Arranque(modulo, [](const QString &) {}).iniciar();
        return modulo.baseLista();
    }
    [[nodiscard]] bool intacta() const
    {
        return prueba::leer(carpeta.archivo()) == carpeta.antes && !QFile::exists(carpeta.original());
    }
};

/// The header of the sample with another password.
QByteArray conClave(QByteArray bytes, const QString &clave)
{
    const QString antes = u"kestrel428"_qs;
    for (int i = 0; i < antes.size(); ++i) {
        const ushort cambio = antes[i].unicode() ^ (i < clave.size() ? clave[i].unicode() : 0);
        bytes[0x42 + i * 2] = char(bytes[0x42 + i * 2] ^ char(cambio & 0xFF));
        bytes[0x43 + i * 2] = char(bytes[0x43 + i * 2] ^ char(cambio >> 8));
    }
    return bytes;
}

/// RC4, under which Access puts the pages of a file that is kept "encoded".
void cifrar(QByteArray &bytes, qsizetype desde, qsizetype largo, quint32 llave)
{
    std::array<quint8, 256> s{};
    std::iota(s.begin(), s.end(), quint8(0));
    for (unsigned i = 0, j = 0; i < 256; ++i) {
        j = (j + s[i] + (llave >> (8 * (i % 4)))) & 0xFF;
        std::swap(s[i], s[j]);
    }
    for (qsizetype n = 0, i = 0, j = 0; n < largo; ++n) {
        i = (i + 1) & 0xFF;
        j = (j + s[size_t(i)]) & 0xFF;
        std::swap(s[size_t(i)], s[size_t(j)]);
        bytes[desde + n] = char(quint8(bytes[desde + n]) ^ s[(s[size_t(i)] + s[size_t(j)]) & 0xFF]);
    }
}

} // namespace

/// What the person is told and asked when her Datos.mdb is an old Access file.
class PruebaOfrecimiento : public QObject
{
    Q_OBJECT

private slots:
    void convertsAtStartup()
    {
        Estacion pc(u"Datos_antigua.mdb"_qs);
        QVERIFY(pc.iniciar());
        QStringList dichos = pc.persona.tomar();
        QCOMPARE(dichos.size(), 2); // the question and the outcome: nothing about upgrades or sample professionals
        QVERIFY(dichos[0].startsWith(tituloPregunta + u"?La Base de Datos es un archivo de Access"_qs));
        QVERIFY2(dichos[1].contains(u"3.207 registros en 37 tablas"_qs), qPrintable(dichos[1]));
        QVERIFY(dichos[1].contains(u"No pasaron: Usuarios, Estadisticas."_qs));
        QCOMPARE(prueba::leer(pc.carpeta.original()), pc.carpeta.antes);
        const db::Rows historial
            = pc.modulo.conexion().query(u"SELECT accion FROM [Historial] WHERE ventana = 'Importación de Access'"_qs);
        QCOMPARE(historial->rowCount(), 1);
        QVERIFY(historial->text(0, 0).startsWith(u"Se convirtió la base de datos de Access: 3.207 registros"_qs));
        // It is a database like any other now.
        QVERIFY(pc.modulo.verificarBase());
        pc.modulo.desconectar();
        QVERIFY(pc.iniciar());
        QVERIFY(pc.persona.tomar().isEmpty());
    }

    void refusedIsNotAskedAgain()
    {
        Estacion pc(u"ConClave.mdb"_qs);
        pc.persona.acepta = false;
        QVERIFY(!pc.iniciar());
        QCOMPARE(pc.persona.tomar().size(), 1);
        // A button tells why nothing opens, without asking.
        QVERIFY(!pc.modulo.verificarBase());
        QStringList dichos = pc.persona.tomar();
        QCOMPARE(dichos.size(), 1);
        QVERIFY(dichos[0].startsWith(u"Error...|La Base de Datos es un archivo de Access"_qs));
        QVERIFY(pc.intacta());
        // 'Red' looks, tells, and asks anew.
        QVERIFY(pc.modulo.examinarRuta({}).texto.endsWith(u"el programa ofrecerá convertirlo."_qs));
        pc.persona.acepta = true;
        QVERIFY(pc.modulo.cambiarRuta({}));
        dichos = pc.persona.tomar();
        QVERIFY(dichos[0].startsWith(tituloPregunta));
        QVERIFY(pc.modulo.baseLista());
    }

    void inAnotherFolder()
    {
        const QTemporaryDir programa;
        Estacion pc(u"ConClave.mdb"_qs, programa.path());
        app::Ruta ruta;
        ruta.otraCarpeta = true;
        ruta.carpeta = pc.carpeta.dir.path();
        ruta.guardar(programa.filePath(u"ruta.dat"_qs));
        QVERIFY(pc.iniciar());
        QVERIFY(QFile::exists(pc.carpeta.original()));
    }

    void foreignIsIncompatible()
    {
        Estacion pc(u"Ajena.mdb"_qs);
        QVERIFY(!pc.iniciar());
        QVERIFY(!pc.modulo.verificarBase());
        const QString dicho = u"Error...|"_qs + incompatible;
        QCOMPARE(pc.persona.tomar(), (QStringList{dicho, dicho})); // at every check, as for any foreign file
        QVERIFY(pc.intacta());
    }

    void passwords_data()
    {
        QTest::addColumn<QString>("clave");
        QTest::addColumn<QStringList>("escritas");
        QTest::addColumn<bool>("convierte");
        QTest::addColumn<int>("pedidas");
        QTest::newRow("known") << u"kestrel428"_qs << QStringList() << true << 0;
        QTest::newRow("none") << QString() << QStringList() << true << 0;
        QTest::newRow("typed") << u"Ñandú7"_qs << QStringList{u"Ñandú7"_qs} << true << 1;
        QTest::newRow("wrong first") << u"otra"_qs << QStringList{u"kestrel428"_qs, u"Otra"_qs, u"otra"_qs} << true
                                     << 3;
        QTest::newRow("given up") << u"otra"_qs << QStringList{u"mala"_qs} << false << 2;
    }
    void passwords()
    {
        QFETCH(QString, clave);
        QFETCH(QStringList, escritas);
        QFETCH(bool, convierte);
        Estacion pc(u"ConClave.mdb"_qs);
        pc.carpeta.antes = conClave(pc.carpeta.antes, clave);
        prueba::escribir(pc.carpeta.archivo(), pc.carpeta.antes);
        pc.persona.claves = escritas;
        QCOMPARE(pc.iniciar(), convierte);
        const auto pedidas = pc.persona.tomar().filter(u"Clave de la base de datos?"_qs);
        QTEST(int(pedidas.size()), "pedidas");
        QCOMPARE(pc.intacta(), !convierte);
        if (convierte)
            QCOMPARE(
                pc.modulo.conexion().query(u"SELECT Apellido FROM [Pacientes] WHERE NroHC = 1"_qs)->text(0, 0),
                u"Ñáñez"_qs);
    }

    void refusals_data()
    {
        QTest::addColumn<QString>("caso");
        QTest::addColumn<QString>("dicho");
        QTest::newRow("open elsewhere") << u"ldb"_qs << u"está el archivo 'DATOS.LDB'"_qs;
        QTest::newRow("being converted") << u"turno"_qs << u"Otra computadora está convirtiendo"_qs;
        QTest::newRow("written meanwhile") << u"cambio"_qs << u"¿está en uso?"_qs;
        QTest::newRow("nowhere to write") << u"carpeta"_qs << u"No se pudo convertir la Base de Datos"_qs;
        QTest::newRow("Access 2007") << u"nuevo"_qs << u"Access 2007 o posterior"_qs;
        QTest::newRow("damaged") << u"roto"_qs << u"El archivo está dañado y no se pudo leer"_qs;
    }
    void refusals()
    {
        QFETCH(QString, caso);
        QFETCH(QString, dicho);
        Estacion pc(u"ConClave.mdb"_qs);
        QLockFile turno(pc.carpeta.archivo() + u".conversion"_qs);
        if (caso == u"ldb") {
            prueba::escribir(pc.carpeta.ruta(u"DATOS.LDB"_qs), "x");
        } else if (caso == u"turno") {
            QVERIFY(turno.tryLock());
        } else if (caso == u"carpeta") {
            QVERIFY(QDir(pc.carpeta.dir.path()).mkdir(u"Datos.mdb.convirtiendo"_qs));
        } else if (caso == u"cambio") {
            // Another program writes to it between the two readings.
            pc.modulo.setFuenteImportacion([&pc, veces = 0](const QString &archivo) mutable {
                if (++veces == 3) {
                    pc.carpeta.antes += QByteArray(4096, '\0');
                    prueba::escribir(archivo, pc.carpeta.antes);
                }
                return prueba::fuente(archivo);
            });
        } else {
            if (caso == u"nuevo")
                pc.carpeta.antes[0x14] = 2;
            else
                pc.carpeta.antes.truncate(20'000);
            prueba::escribir(pc.carpeta.archivo(), pc.carpeta.antes);
        }
        QVERIFY(!pc.iniciar());
        const QStringList dichos = pc.persona.tomar();
        QVERIFY2(dichos.last().startsWith(u"Error...|"_qs) && dichos.last().contains(dicho), qPrintable(dichos.last()));
        QVERIFY(pc.intacta());
    }

    void encodedPages()
    {
        Estacion pc(u"ConClave.mdb"_qs);
        constexpr quint32 llave = 0x12345678;
        for (int i = 0; i < 4; ++i)
            pc.carpeta.antes[0x3E + i] = char(quint8(pc.carpeta.antes[0x3E + i]) ^ (llave >> (8 * i) & 0xFF));
        for (qsizetype pagina = 1; (pagina + 1) * 4096 <= pc.carpeta.antes.size(); ++pagina)
            cifrar(pc.carpeta.antes, pagina * 4096, 4096, llave ^ quint32(pagina));
        prueba::escribir(pc.carpeta.archivo(), pc.carpeta.antes);
        QVERIFY(pc.iniciar());
        QCOMPARE(pc.modulo.conexion().query(u"SELECT id FROM [Pacientes]"_qs)->rowCount(), 4);
        QCOMPARE(prueba::leer(pc.carpeta.original()), pc.carpeta.antes);
    }

    void littleRoom()
    {
        prueba::Carpeta carpeta(u"ConClave.mdb"_qs);
        db::access::Pedido pedido = carpeta.pedido();
        pedido.lugarLibre = [](const QString &) { return qint64(1) << 20; };
        prueba::Seguimiento seguimiento;
        QVERIFY(
            db::access::convertir(pedido, seguimiento).motivo.startsWith(u"No hay lugar en el disco: hacen falta"_qs));
        QCOMPARE(carpeta.nombres(), QStringList{u"Datos.mdb"_qs});
    }

    // A hot journal left beside it must not be played back into the old file.
    void journalBesideIt()
    {
        Estacion pc(u"ConClave.mdb"_qs);
        pc.persona.acepta = false;
        QByteArray diario = QByteArray::fromHex("d9d505f920a163d7") + QByteArray(4096 * 3, '\1');
        prueba::escribir(pc.carpeta.archivo() + u"-journal"_qs, diario);
        QVERIFY(!pc.iniciar());
        QVERIFY(pc.intacta());
        QCOMPARE(prueba::leer(pc.carpeta.archivo() + u"-journal"_qs), diario);
    }

    void progressWindow()
    {
        app::AvanceImportacion avance;
        auto *caja = qobject_cast<QProgressDialog *>(avance.ventana());
        QVERIFY(caja->isVisible() && caja->isModal());
        QVERIFY(avance.avanzar(u"Pasando los datos: Pacientes"_qs, 250, 1000));
        QCOMPARE(caja->labelText(), u"Pasando los datos: Pacientes\n250 de 1.000 registros"_qs);
        QCOMPARE(caja->value() * 100 / caja->maximum(), 25);
        QVERIFY(avance.avanzar(u"Leyendo"_qs, 0, 0));
        caja->cancel();
        QVERIFY(!avance.avanzar(u"Leyendo"_qs, 0, 0));
    }
};

PRUEBA(PruebaOfrecimiento)
#include "PruebaOfrecimiento.moc"
