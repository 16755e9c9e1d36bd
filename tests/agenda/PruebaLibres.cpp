#include "Consultorio.h"
#include "agenda/DiasNoLaborables.h"
#include "agenda/ProximoLibre.h"
#include "db/ListaDoctores.h"
#include "support/Prueba.h"

using namespace agenda;

/// The next days with openings.
class PruebaLibres : public QObject
{
    Q_OBJECT

    static int plantilla(
        Consultorio &base,
        const Jornada &jornada,
        const char *desde = "1/1/2026",
        const char *hasta = "31/12/2028",
        int doctor = 20)
    {
        Plantilla p;
        p.iddoctor = doctor;
        p.dias.fill(jornada);
        const auto id = guardarPlantilla(base.conexion(), p, QLatin1String(desde), QLatin1String(hasta));
        return id ? *id : 0;
    }
    /// "24/11 09:00 2" of each day, with the professional's name where there are several.
    static QStringList buscar(Consultorio &base, const QDateTime &ahora, int cuantos = 3, bool deTodos = false)
    {
        QVector<db::Doctor> quienes{{20, "Pérez"}};
        if (deTodos)
            quienes.append({21, "Gómez"});
        QStringList textos;
        for (const DiaConLugar &dia : proximosLibres(base.conexion(), quienes, ahora, cuantos))
            textos << (deTodos ? dia.profesional + u' ' : QString()) + dia.fecha.toString("dd/MM ")
                    + horaTexto(dia.primera) + u' ' + QString::number(dia.libres);
        return textos;
    }
    static const Jornada &corta()
    {
        static const Jornada dos{QTime(9, 0), QTime(9, 40), {}, {}, 20};
        return dos;
    }

private slots:
    void encuentra_lo_que_queda_data() { soporte::filasDeDialecto(); }
    void encuentra_lo_que_queda()
    {
        Consultorio base(soporte::dialectoActual());
        const QDate lunes = Consultorio::lunes();
        QCOMPARE(buscar(base, Consultorio::a("08:00")), QStringList()); // no template
        plantilla(base, corta());
        // To the minute: a start time that is now still counts, one that is over does not.
        QCOMPARE(
            buscar(base, QDateTime(lunes, QTime(9, 20, 59))),
            QStringList({"23/11 09:20 1", "24/11 09:00 2", "25/11 09:00 2"}));
        QCOMPARE(buscar(base, Consultorio::a("09:21"), 1), QStringList({"24/11 09:00 2"}));

        base.turno(7, Consultorio::a("09:00"));
        base.turno(7, Consultorio::a("09:00")); // an extra appointment takes no second place
        base.turno(7, Consultorio::a("09:10")); // nor does one between the start times
        base.turno(-111, Consultorio::a(lunes.addDays(1), "09:00"));
        base.turno(7, Consultorio::a(lunes.addDays(1), "09:20"));
        base.turno(7, Consultorio::a(lunes.addDays(2), "09:20"), {{"Doctor", 21}});
        QCOMPARE(
            buscar(base, Consultorio::a("08:00")), QStringList({"23/11 09:20 1", "25/11 09:00 2", "26/11 09:00 2"}));

        QVERIFY(!agregarDiasNoLaborables(base.conexion(), 20, {{0, 25, 11, 2026}, {0, 26, 0, 0}}));
        QCOMPARE(
            buscar(base, Consultorio::a("08:00")), QStringList({"23/11 09:20 1", "27/11 09:00 2", "28/11 09:00 2"}));

        // The newest template wins, with an afternoon only.
        plantilla(base, {{}, {}, QTime(16, 0), QTime(17, 0), 30}, "27/11/2026", "27/11/2026");
        QCOMPARE(buscar(base, Consultorio::a("08:00"), 2), QStringList({"23/11 09:20 1", "27/11 16:00 2"}));

        plantilla(base, {QTime(8, 0), QTime(9, 0), {}, {}, 60}, "1/1/2026", "31/12/2026", 21);
        QCOMPARE(
            buscar(base, Consultorio::a("07:00"), 4, true),
            QStringList({"Gómez 23/11 08:00 1", "Pérez 23/11 09:20 1", "Gómez 24/11 08:00 1", "Gómez 25/11 08:00 1"}));

        QVERIFY(!agregarDiasNoLaborables(base.conexion(), 20, {{0, 0, 0, 0}}));
        QCOMPARE(buscar(base, Consultorio::a("08:00")), QStringList());
    }

    void cruza_anios_y_bisiestos_data()
    {
        QTest::addColumn<QDate>("hoy");
        QTest::addColumn<QStringList>("dias");
        QTest::newRow("año nuevo") << QDate(2026, 12, 31)
                                   << QStringList({"31/12 09:00 2", "02/01 09:00 2", "03/01 09:00 2"});
        QTest::newRow("bisiesto") << QDate(2028, 2, 28)
                                  << QStringList({"28/02 09:00 2", "29/02 09:00 2", "01/03 09:00 2"});
        QTest::newRow("común") << QDate(2027, 2, 28)
                               << QStringList({"28/02 09:00 2", "01/03 09:00 2", "02/03 09:00 2"});
        QTest::newRow("fin de la plantilla") << QDate(2028, 12, 31) << QStringList({"31/12 09:00 2"});
    }
    void cruza_anios_y_bisiestos()
    {
        Consultorio base;
        plantilla(base, corta());
        QVERIFY(!agregarDiasNoLaborables(base.conexion(), 20, {{0, 1, 1, 0}}));
        QFETCH(QDate, hoy);
        QTEST(buscar(base, Consultorio::a(hoy, "08:00")), "dias");
    }

    void mira_mas_alla_de_lo_lleno()
    {
        Consultorio base;
        plantilla(base, corta());
        const QDate desde = Consultorio::lunes();
        {
            db::Transaction transaccion(base.conexion());
            for (int i = 0; i < 100; ++i)
                for (const char *hora : {"09:00", "09:20"})
                    base.turno(7, Consultorio::a(desde.addDays(i), hora));
            transaccion.commit();
        }
        QCOMPARE(
            buscar(base, Consultorio::a("08:00"), 2),
            QStringList(
                {desde.addDays(100).toString("dd/MM ") + "09:00 2",
                 desde.addDays(101).toString("dd/MM ") + "09:00 2"}));
    }
};

PRUEBA(PruebaLibres)
#include "PruebaLibres.moc"
