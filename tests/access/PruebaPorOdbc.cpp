#include "Comun.h"
#include "db/access/FuenteSobreCopia.h"

using namespace Qt::StringLiterals;
using db::access::Desenlace;

/// The reading process of those systems that have a driver for Access, here with one that knows the tables and the
/// numbers but loses some texts and dates: every step from the file to the new database is the same.
class PruebaPorOdbc : public QObject
{
    Q_OBJECT

    static std::unique_ptr<db::access::Fuente> porOdbc(const QString &archivo)
    {
        return std::make_unique<db::access::LectorProceso>(archivo, QStringLiteral(VASTELO_LECTOR_ODBC));
    }

private slots:
    void wholeConversion_data()
    {
        QTest::addColumn<QString>("nombre");
        QTest::newRow("with a password") << u"ConClave"_qs;
        QTest::newRow("a practice") << u"Datos_antigua"_qs;
    }
    void wholeConversion()
    {
        QFETCH(QString, nombre);
        prueba::Carpeta carpeta(nombre + u".mdb"_qs);
        db::access::Pedido pedido = carpeta.pedido();
        QStringList leidos;
        pedido.abrir = [&leidos](const QString &archivo) {
            return std::make_unique<db::access::FuenteSobreCopia>(archivo, [&leidos](const QString &copia) {
                leidos << copia;
                return porOdbc(copia);
            });
        };
        prueba::Seguimiento seguimiento;
        const Desenlace desenlace = db::access::convertir(pedido, seguimiento);
        QVERIFY2(desenlace.tipo == Desenlace::Tipo::Hecha, qPrintable(desenlace.motivo));
        QCOMPARE(prueba::leer(carpeta.original()), carpeta.antes);
        QCOMPARE(leidos.size(), 2);
        for (const QString &copia : leidos)
            QVERIFY(copia != carpeta.archivo() && !QFileInfo::exists(QFileInfo(copia).path()));

        db::EmbeddedEngine motor(carpeta.archivo(), prueba::clave);
        int tablas = 0;
        for (const QStringList &fila : prueba::filasDe(u"totales.tsv"_qs)) {
            if (fila[0] != nombre || fila[1] == u"Usuarios" || fila[1] == u"Estadisticas")
                continue;
            const QString tabla = u'"' + fila[1] + u'"';
            const auto filas = motor.queryNative("SELECT count(*) FROM " + tabla.toUtf8(), {});
            QVERIFY2(filas->text(0, 0) == fila[2], qPrintable(fila[1] + u": "_qs + filas->text(0, 0)));
            if (!fila[6].isEmpty()) {
                const auto ids = motor.queryNative("SELECT min(id), max(id), sum(id) FROM " + tabla.toUtf8(), {});
                for (int c = 0; c < 3; ++c)
                    QVERIFY2(ids->text(0, c) == fila[4 + c], qPrintable(fila[1] + u": "_qs + ids->text(0, c)));
            }
            ++tablas;
        }
        QVERIFY(tablas > 2);
    }

    void nothingToRead_data()
    {
        QTest::addColumn<QString>("archivo");
        QTest::addColumn<QString>("dicho");
        QTest::newRow("no file") << u"/no/existe/Datos.mdb"_qs << u"No se pudo copiar la base de datos"_qs;
        QTest::newRow("no database") << QStringLiteral(__FILE__) << u"El archivo está dañado"_qs;
    }
    void nothingToRead()
    {
        QFETCH(QString, archivo);
        QFETCH(QString, dicho);
        db::access::FuenteSobreCopia fuente(archivo, porOdbc);
        const QString falla = prueba::fallaAlLeer(fuente);
        QVERIFY2(falla.startsWith(dicho), qPrintable(falla));
        QVERIFY2(!falla.contains(u"kestrel"_qs) && !falla.contains(QDir::tempPath()), qPrintable(falla));
    }
};

PRUEBA(PruebaPorOdbc)
#include "PruebaPorOdbc.moc"
