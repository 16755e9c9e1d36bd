#include "db/Borradores.h"
#include "db/Error.h"
#include "support/BaseDePrueba.h"
#include "support/Prueba.h"

using namespace Qt::StringLiterals;

/// What was typed and not saved: whose it is, and when it goes.
class PruebaBorradores : public QObject
{
    Q_OBJECT

private slots:
    void deCadaQuien_data() { soporte::filasDeDialecto(); }
    void deCadaQuien()
    {
        soporte::BaseDePrueba base(soporte::dialectoActual());
        base.conexion().execute(u"INSERT INTO [Pacientes] (NroHC,Apellido) VALUES (7,'Paz')"_s);
        db::Borradores borradores(base);
        db::Borrador uno{.ventana = u"pacientes"_s, .registro = 7, .nropaci = 7, .titulo = u"O'Higgins 🙂"_s};
        uno.datos = {{u"Notas"_s, u"D'Angelo % _ [x] ñ 🙂"_s}};
        uno.id = borradores.guardar(uno);
        base.reloj.set(base.reloj.now().addSecs(61));
        QCOMPARE(borradores.guardar(uno), uno.id); // over itself
        const auto leido = borradores.leer(u"pacientes"_s, 7);
        QVERIFY(leido);
        QCOMPARE(leido->id, uno.id);
        QCOMPARE(leido->datos, uno.datos);
        QCOMPARE(leido->titulo, uno.titulo);
        QCOMPARE(leido->fecha, base.reloj.now());
        QVERIFY(!borradores.leer(u"pacientes"_s, 8) && !borradores.leer(u"histoclinica"_s, 7));
        QVERIFY(!borradores.leer(u"pacientes"_s, 7, uno.id));

        // Of the same record the last one written; nobody else's.
        const qint64 otro = borradores.guardar({.ventana = u"pacientes"_s, .registro = 7, .nropaci = 7});
        QCOMPARE(borradores.leer(u"pacientes"_s, 7)->id, otro);
        QCOMPARE(borradores.pendientes().size(), 2);
        base.usuario = 21;
        QVERIFY(!borradores.leer(u"pacientes"_s, 7));
        QVERIFY(borradores.pendientes().isEmpty());
        base.usuario = 20;
        base.conexion().execute(u"UPDATE [Borradores] SET equipo = 'OTRA' WHERE id = ?"_s, {otro});
        QCOMPARE(borradores.leer(u"pacientes"_s, 7)->id, uno.id);

        // They go with their patient; one of nobody stays.
        const qint64 nuevo = borradores.guardar({.ventana = u"pacientes"_s});
        base.conexion().execute(u"DELETE FROM [Pacientes]"_s);
        const QVector<db::Borrador> quedan = borradores.pendientes();
        QCOMPARE(quedan.size(), 1);
        QCOMPARE(quedan[0].id, nuevo);
        QVERIFY(!borradores.leer(u"pacientes"_s, 7));
        borradores.borrar(nuevo);
        QVERIFY(borradores.pendientes().isEmpty());
    }

    void otraTerminalEscribiendoNoDetiene()
    {
        soporte::BaseDePrueba base;
        const auto otra = base.otraTerminal();
        db::Transaction escribe(*otra);
        QElapsedTimer reloj;
        reloj.start();
        {
            const db::ShortWait breve(base.conexion());
            QVERIFY_THROWS_EXCEPTION(db::Error, (void)db::Borradores(base).guardar({.ventana = u"pacientes"_s}));
        }
        QVERIFY2(reloj.elapsed() < 3000, qPrintable(QString::number(reloj.elapsed())));
    }
};

PRUEBA(PruebaBorradores)
#include "PruebaBorradores.moc"
