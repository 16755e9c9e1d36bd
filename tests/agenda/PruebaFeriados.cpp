#include "Consultorio.h"
#include "agenda/DiasNoLaborables.h"
#include "agenda/Feriados.h"
#include "db/Error.h"
#include "db/engine/EmbeddedEngine.h"
#include "support/Prueba.h"

using namespace agenda;

/// National holidays, computed and stored as days off.
class PruebaFeriados : public QObject
{
    Q_OBJECT

    static std::set<QDate> fechasDe(int anio)
    {
        std::set<QDate> fechas;
        for (const Feriado &feriado : feriadosNacionales(anio))
            fechas.insert(feriado.fecha);
        return fechas;
    }

private slots:
    void calcula_la_pascua()
    {
        // Published dates, the earliest and the latest possible among them.
        for (const QDate &pascua :
             {QDate(1818, 3, 22),
              QDate(1943, 4, 25),
              QDate(2000, 4, 23),
              QDate(2024, 3, 31),
              QDate(2025, 4, 20),
              QDate(2038, 4, 25),
              QDate(2049, 4, 18)})
            QCOMPARE(domingoDePascua(pascua.year()), pascua);
    }

    void los_de_un_anio_data()
    {
        QTest::addColumn<int>("anio");
        QTest::addColumn<QString>("dias"); // as the official calendars of those years have them, bridge days left out
        QTest::newRow("2023") << 2023
                              << "01/01 20/02 21/02 24/03 02/04 07/04 01/05 25/05 17/06 20/06 09/07 21/08 16/10 20/11"
                                 " 08/12 25/12";
        QTest::newRow("2024") << 2024
                              << "01/01 12/02 13/02 24/03 29/03 02/04 01/05 25/05 17/06 20/06 09/07 17/08 12/10 18/11"
                                 " 08/12 25/12";
        QTest::newRow("2025") << 2025
                              << "01/01 03/03 04/03 24/03 02/04 18/04 01/05 25/05 16/06 20/06 09/07 17/08 12/10 24/11"
                                 " 08/12 25/12";
        // Good Friday falls on 2 April.
        QTest::newRow("2021") << 2021
                              << "01/01 15/02 16/02 24/03 02/04 02/04 01/05 25/05 20/06 21/06 09/07 16/08 11/10 20/11"
                                 " 08/12 25/12";
        QTest::newRow("antes de la ley") << 2017 << "";
    }
    void los_de_un_anio()
    {
        QFETCH(int, anio);
        QStringList dias;
        for (const Feriado &feriado : feriadosNacionales(anio))
            dias << feriado.fecha.toString("dd/MM");
        QTEST(dias.join(' '), "dias");
    }

    void se_agregan_los_que_faltan_data() { soporte::filasDeDialecto(); }
    void se_agregan_los_que_faltan()
    {
        Consultorio base(soporte::dialectoActual());
        db::Connection &c = base.conexion();
        const int otro = int(base.fila("Lista Doctores", {{"NomDoc", "O'Higgins"}, {"tipo", 0}}));
        const QVector<int> ambos{base.usuario, otro};
        QVERIFY(!agregarDiasNoLaborables(c, base.usuario, {{0, 25, 12, 0}, {0, 2, 4, 2021}}));

        const auto propuestas = proponerFeriados(c, ambos, 2021);
        QCOMPARE(propuestas.size(), 15); // two on one date
        const auto &viernes = propuestas.at(4);
        QCOMPARE(viernes.fecha, QDate(2021, 4, 2));
        QVERIFY(viernes.nombre.contains("Malvinas") && viernes.nombre.contains("Viernes Santo"));
        QCOMPARE(viernes.yaEstan, 1);
        QCOMPARE(propuestas.at(8).clase, QString("Trasladado del 17/06"));
        QCOMPARE(propuestas.last().yaEstan, 1); // by the row of each year

        const auto nada = agregarFeriados(base, ambos, 2021, {});
        QCOMPARE(nada.rechazo().texto, QString("Debe seleccionar la/s fecha/s que no se atenderá."));
        QCOMPARE(*agregarFeriados(base, ambos, 2021, fechasDe(2021)), 2 * 15 - 2);
        QCOMPARE(*agregarFeriados(base, ambos, 2021, fechasDe(2021)), 0);
        QVERIFY(esNoLaborable(c, otro, {2021, 6, 21}));
        QVERIFY(!esNoLaborable(c, otro, {2022, 6, 21}));
        QCOMPARE(base.valor("SELECT COUNT(*) FROM [Historial]"), QString("1"));
        QCOMPARE(
            base.valor("SELECT accion FROM [Historial]"),
            QString("Se agregaron feriados nacionales del año 2021 (15 fechas) a los días en que no atiende:"
                    " todos los profesionales."));

        base.quitarDerecho("accesoagendas");
        QCOMPARE(agregarFeriados(base, ambos, 2025, fechasDe(2025)).rechazo().texto, sinPermiso);
        base.usuario = 9999;
        QVERIFY(!agregarFeriados(base, ambos, 2025, fechasDe(2025)));
    }

    void todos_o_ninguno()
    {
        Consultorio base;
        // The second professional's rows fail after the first one's were written.
        dynamic_cast<db::EmbeddedEngine &>(base.conexion().engine())
            .executeNative(
                "CREATE TRIGGER falla BEFORE INSERT ON \"Agenda Turnos No Se Atiende\" WHEN NEW.iddoctor = 77"
                " BEGIN SELECT RAISE(ABORT, 'no'); END",
                {});
        QVERIFY_THROWS_EXCEPTION(
            db::Error, (void)agregarFeriados(base, QVector<int>{base.usuario, 77}, 2025, fechasDe(2025)));
        QVERIFY(listarDiasNoLaborables(base.conexion(), base.usuario).isEmpty());
        QCOMPARE(base.valor("SELECT COUNT(*) FROM [Historial]"), QString("0"));
    }
};

PRUEBA(PruebaFeriados)
#include "PruebaFeriados.moc"
