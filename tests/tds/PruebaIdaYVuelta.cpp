#include "app/Esquema.h"
#include "db/Connection.h"
#include "db/migracion/Migracion.h"
#include "demo/Archivo.h"
#include "support/BaseDePrueba.h"
#include "support/Prueba.h"
#include "support/ServidorTds.h"

using namespace Qt::StringLiterals;
using Tipo = db::migracion::Desenlace::Tipo;

/// A practice moves to a server and leaves it again, through the real driver and a network.
class PruebaIdaYVuelta : public QObject
{
    Q_OBJECT

private slots:
    void idaYVuelta()
    {
        const QTemporaryDir local, remota;
        const QString archivo = local.filePath(u"Datos.mdb"_s), otro = local.filePath(u"Vuelta.mdb"_s);
        // More of them to measure it: the practice keeps its proportions.
        const int pacientes = qMax(40, qEnvironmentVariableIntValue("VASTELO_PACIENTES"));
        const demo::Medida medida{
            .pacientes = pacientes,
            .turnos = pacientes * 5,
            .ordenes = pacientes,
            .consultas = pacientes * 2,
            .acciones = pacientes,
            .hoy = {2026, 11, 22}};
        QVERIFY(demo::crearArchivo(soporte::plantilla(), archivo, medida));
        {
            const auto base = db::Connection::open(soporte::cadenaAccess(archivo), db::Engines::standard());
            base->execute(
                u"UPDATE [Pacientes] SET Apellido = ?, Notas = ? WHERE id = 1"_s,
                {u"O'Higgins ≥ Ñáñez"_s, u"línea 😀\r\n\\\r\n'fin' ;--"_s.repeated(20) + QString(60'000, u'ñ')});
            // As a program left it that took a name with all the room it had been given for it.
            base->execute(u"UPDATE [Pacientes] SET Nombres = ? WHERE id = 2"_s, {u"Ana"_s + QChar(0)});
            QCOMPARE(base->query(u"SELECT Nombres FROM [Pacientes] WHERE id = 2"_s)->text(0, 0).size(), 4);
        }
        soporte::ServidorTds servidor(remota.path());
        db::migracion::Seguimiento seguimiento;
        const db::migracion::PedidoAlServidor ida{
            .cadenaOrigen = soporte::cadenaAccess(archivo),
            .servidor = {servidor.servidor(), servidor.usuario(), servidor.clave()},
            .esquema = app::esquemaCompleto(),
            .motores = db::Engines::standard()};
        QElapsedTimer reloj;
        reloj.start();
        const auto fue = db::migracion::alServidor(ida, seguimiento);
        QVERIFY2(fue.tipo == Tipo::Hecha, qPrintable(fue.motivo));
        QCOMPARE(
            fue.avisos,
            QStringList{
                u"Tabla 'Pacientes', columna 'Nombres': textos con un carácter nulo, que el servidor no admite: 1. "
                "Quedaron allí sin él."_s});
        QVERIFY(fue.filas() > 14'000);
        for (const auto &tabla : fue.tablas)
            QVERIFY2(tabla.igual(), qPrintable(tabla.tabla));
        qInfo("there: %lld rows in %lld s", static_cast<long long>(fue.filas()), reloj.restart() / 1000);
        // It is there now, so it is not made over.
        QCOMPARE(int(db::migracion::alServidor(ida, seguimiento).tipo), int(Tipo::Rechazada));

        const auto volvio = db::migracion::alArchivo(
            {.cadenaOrigen = servidor.cadena(),
             .destino = {otro, u"kestrel428"_s},
             .apartar = {},
             .esquema = app::esquemaCompleto(),
             .motores = db::Engines::standard()},
            seguimiento);
        QVERIFY2(volvio.tipo == Tipo::Hecha, qPrintable(volvio.motivo));
        qInfo("back: %lld rows in %lld s", static_cast<long long>(volvio.filas()), reloj.elapsed() / 1000);
        const auto antes = db::Connection::open(soporte::cadenaAccess(archivo), db::Engines::standard());
        const auto despues = db::Connection::open(soporte::cadenaAccess(otro), db::Engines::standard());
        for (const auto &tabla : volvio.tablas) {
            QVERIFY2(tabla.igual(), qPrintable(tabla.tabla));
            const QString cuenta = u"SELECT count(*) FROM [%1]"_s.arg(tabla.tabla);
            QCOMPARE(despues->query(cuenta)->text(0, 0), antes->query(cuenta)->text(0, 0));
        }
        QCOMPARE(despues->query(u"SELECT Nombres FROM [Pacientes] WHERE id = 2"_s)->text(0, 0), u"Ana"_s);
        const QString fila = u"SELECT * FROM [Pacientes] WHERE id = 1"_s;
        QCOMPARE(despues->query(fila)->toDelimited(u"|", u""), antes->query(fila)->toDelimited(u"|", u""));
    }
};

PRUEBA(PruebaIdaYVuelta)
#include "PruebaIdaYVuelta.moc"
