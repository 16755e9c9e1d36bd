#include "agenda/Calendario.h"
#include "agenda/DiasNoLaborables.h"
#include "agenda/GrillaDia.h"
#include "support/Prueba.h"

using namespace agenda;

/// What needs no database: slots of a day, days off, the month's layout.
class PruebaGrilla : public QObject
{
    Q_OBJECT

private slots:
    void arma_los_horarios_data()
    {
        QTest::addColumn<QStringList>("horas"); // morning from, to, afternoon from, to; empty: not given
        QTest::addColumn<int>("duracion");
        QTest::addColumn<int>("cantidad");
        QTest::addColumn<QString>("primera");
        QTest::addColumn<QString>("ultima");

        QTest::newRow("mañana y tarde") << QStringList{"08:00", "12:00", "16:00", "19:00"} << 30 << 14 << "08:00"
                                        << "18:30";
        QTest::newRow("el último se pasa") << QStringList{"09:00", "10:10", "", ""} << 20 << 4 << "09:00"
                                           << "10:00";
        QTest::newRow("sólo tarde") << QStringList{"", "", "16:00", "17:00"} << 20 << 3 << "16:00"
                                    << "16:40";
        QTest::newRow("media mañana dada") << QStringList{"08:00", "", "16:00", "17:00"} << 20 << 3 << "16:00"
                                           << "16:40";
        QTest::newRow("no atiende") << QStringList{"", "", "", ""} << 20 << 0 << ""
                                    << "";
        QTest::newRow("al revés") << QStringList{"12:00", "08:00", "", ""} << 20 << 0 << ""
                                  << "";
        QTest::newRow("hasta la medianoche") << QStringList{"", "", "23:00", "23:59"} << 40 << 2 << "23:00"
                                             << "23:40";
        QTest::newRow("desde la medianoche") << QStringList{"00:00", "01:00", "", ""} << 30 << 2 << "00:00"
                                             << "00:30";
        QTest::newRow("duración cero") << QStringList{"09:00", "10:00", "", ""} << 0 << 3 << "09:00"
                                       << "09:40";
        QTest::newRow("duración negativa") << QStringList{"09:00", "10:00", "", ""} << -5 << 3 << "09:00"
                                           << "09:40";
        QTest::newRow("más de lo que entra") << QStringList{"00:00", "23:59", "00:00", "23:59"} << 5 << 289 << "00:00"
                                             << "00:00";
    }

    void arma_los_horarios()
    {
        QFETCH(QStringList, horas);
        QFETCH(int, duracion);
        QFETCH(int, cantidad);
        const auto hora = [&](int i) {
            const QTime t = QTime::fromString(horas.at(i), "HH:mm");
            return t.isValid() ? std::optional(t) : std::nullopt;
        };
        const GrillaDia grilla(Jornada{hora(0), hora(1), hora(2), hora(3), duracion});
        QCOMPARE(grilla.cantidad(), cantidad);
        QCOMPARE(grilla.celda(GrillaDia::celdaCantidad), QString::number(cantidad));
        QTEST(grilla.celda(1), "primera");
        QTEST(grilla.celda(cantidad), "ultima");
        QCOMPARE(grilla.celda(0), QString());
        if (cantidad < GrillaDia::maximo)
            QCOMPARE(grilla.celda(cantidad + 1), QString());
    }

    void reconoce_un_horario_al_minuto()
    {
        const GrillaDia grilla(Jornada{QTime(9, 0), QTime(10, 0), {}, {}, 20});
        QVERIFY(grilla.contiene(QTime(9, 20, 45)));
        QVERIFY(!grilla.contiene(QTime(9, 21)));
        QVERIFY(!grilla.contiene(QTime(10, 0)));
    }

    void abarca_los_dias_libres_data()
    {
        QTest::addColumn<QList<int>>("libre"); // day, month, year
        QTest::addColumn<QDate>("fecha");
        QTest::addColumn<bool>("abarca");
        QTest::addColumn<QString>("texto");

        QTest::newRow("todos") << QList<int>{0, 0, 0} << QDate(2026, 2, 3) << true
                               << "Todos los días de cada mes de cada año.";
        QTest::newRow("navidad") << QList<int>{25, 12, 0} << QDate(2031, 12, 25) << true
                                 << "El día 25 de Diciembre de cada año.";
        QTest::newRow("otro mes") << QList<int>{25, 12, 0} << QDate(2031, 11, 25) << false
                                  << "El día 25 de Diciembre de cada año.";
        QTest::newRow("un año") << QList<int>{0, 0, 2017} << QDate(2017, 7, 9) << true
                                << "Todos los días de cada mes de 2017.";
        QTest::newRow("otro año") << QList<int>{0, 0, 2017} << QDate(2018, 1, 1) << false
                                  << "Todos los días de cada mes de 2017.";
        QTest::newRow("primeros") << QList<int>{1, 0, 0} << QDate(2026, 3, 1) << true
                                  << "El día 1 de cada mes de cada año.";
        QTest::newRow("una fecha") << QList<int>{9, 7, 2026} << QDate(2026, 7, 9) << true
                                   << "El día 9 de Julio de 2026.";
    }

    void abarca_los_dias_libres()
    {
        QFETCH(QList<int>, libre);
        QFETCH(QDate, fecha);
        const DiaNoLaborable dia{0, libre.at(0), libre.at(1), libre.at(2)};
        QTEST(dia.abarca(fecha), "abarca");
        QTEST(dia.texto(), "texto");
    }

    void dispone_el_mes()
    {
        const MesCalendario noviembre = mesCalendario(2026, 11, 0); // begins on a Sunday
        QCOMPARE(noviembre.titulo(), QString("NOVIEMBRE 2026"));
        QCOMPARE(noviembre.encabezados().join(' '), QString("Dom Lun Mar Mié Jue Vie Sáb"));
        QCOMPARE(noviembre.semanas.size(), size_t(5));
        QCOMPARE(noviembre.semanas[0][0], QDate(2026, 11, 1));

        const MesCalendario desdeLunes = mesCalendario(2026, 11, 1);
        QCOMPARE(desdeLunes.encabezados().first(), QString("Lun"));
        QCOMPARE(desdeLunes.semanas.size(), size_t(6));
        QVERIFY(!desdeLunes.semanas[0][0].isValid());
        QCOMPARE(desdeLunes.semanas[0][6], QDate(2026, 11, 1));

        const auto ultimo = [](int anio) {
            QDate dia;
            const MesCalendario febrero = mesCalendario(anio, 2, 1);
            for (const QDate &d : febrero.semanas.back())
                dia = d.isValid() ? d : dia;
            return dia.day();
        };
        QCOMPARE(ultimo(2028), 29);
        QCOMPARE(ultimo(2026), 28);
    }

    void lee_el_primer_dia_de_la_semana()
    {
        QCOMPARE(leerDiaSemana(""), 0);
        QCOMPARE(leerDiaSemana("1"), 1);
        QCOMPARE(leerDiaSemana("9"), 0);
        QCOMPARE(leerDiaSemana(" lunes "), 1);
        QCOMPARE(leerDiaSemana("Miercoles"), 3);
        QCOMPARE(leerDiaSemana("Sábado"), 6);
    }
};

PRUEBA(PruebaGrilla)
#include "PruebaGrilla.moc"
