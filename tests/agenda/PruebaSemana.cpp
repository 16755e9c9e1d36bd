#include "agenda/SemanaPlantilla.h"
#include "support/Prueba.h"

using namespace agenda;

/// The week that a template gives, as numbers to draw.
class PruebaSemana : public QObject
{
    Q_OBJECT

    static std::optional<QTime> hora(const QString &texto)
    {
        const QTime t = QTime::fromString(texto, "HH:mm");
        return t.isValid() ? std::optional(t) : std::nullopt;
    }

private slots:
    void un_dia_data()
    {
        QTest::addColumn<QString>("horas"); // morning from, to, afternoon from, to; "-" not given
        QTest::addColumn<int>("duracion");
        QTest::addColumn<QString>("franjas"); // from-typed end-end of the last slot:slots
        QTest::addColumn<QString>("encimada");
        QTest::addColumn<QString>("reloj"); // first and last hour drawn
        QTest::addColumn<QString>("aviso");

        QTest::newRow("mañana y tarde") << "08:00 12:00 16:00 19:00" << 30 << "480-720-720:8 960-1140-1140:6"
                                        << ""
                                        << "8-19"
                                        << "";
        QTest::newRow("el último se pasa") << "09:00 10:10 - -" << 20 << "540-610-620:4"
                                           << ""
                                           << "7-13"
                                           << "";
        QTest::newRow("sólo tarde") << "- - 13:00 20:00" << 60 << "780-1200-1200:7"
                                    << ""
                                    << "13-20"
                                    << "";
        QTest::newRow("se enciman") << "08:00 13:00 12:30 17:00" << 20 << "480-780-780:15 750-1020-1030:14"
                                    << "750-780"
                                    << "8-18"
                                    << "Lunes: los turnos de la mañana y de la tarde se enciman de 12:30 a 13:00.";
        QTest::newRow("el último se pasa sobre la tarde")
            << "08:00 12:10 12:10 14:00" << 60 << "480-730-780:5 730-840-850:2"
            << "730-780"
            << "8-15"
            << "Lunes: los turnos de la mañana y de la tarde se enciman de 12:10 a 13:00.";
        QTest::newRow("pegadas no se enciman") << "08:00 12:00 12:00 14:00" << 60 << "480-720-720:4 720-840-840:2"
                                               << ""
                                               << "8-14"
                                               << "";
        QTest::newRow("pasada la medianoche") << "- - 18:00 23:59" << 60 << "1080-1439-1440:6"
                                              << ""
                                              << "18-24"
                                              << "";
        QTest::newRow("media dada") << "08:00 - 16:00 22:00" << 20 << "960-1320-1320:18"
                                    << ""
                                    << "16-22"
                                    << "Lunes a la mañana: falta la hora final.";
        QTest::newRow("sin comienzo") << "- - - 20:00" << 20 << ""
                                      << ""
                                      << "8-20"
                                      << "Lunes a la tarde: falta la hora inicial.";
        QTest::newRow("al revés") << "12:00 08:00 - -" << 20 << ""
                                  << ""
                                  << "8-20"
                                  << "Lunes a la mañana: la hora final debe ser posterior a la inicial.";
        QTest::newRow("vacío") << "- - - -" << 20 << ""
                               << ""
                               << "8-20"
                               << "";
    }

    void un_dia()
    {
        QFETCH(QString, horas);
        QFETCH(int, duracion);
        const QStringList h = horas.split(' ');
        std::array<Jornada, 7> dias{};
        dias[1] = {hora(h[0]), hora(h[1]), hora(h[2]), hora(h[3]), duracion};
        const SemanaPlantilla semana = semanaDe(dias);

        QStringList franjas;
        int turnos = 0;
        for (const Franja &f : semana.franjas) {
            QCOMPARE(f.dia, 1);
            franjas << QString("%1-%2-%3:%4").arg(f.desde).arg(f.hasta).arg(f.fin).arg(f.turnos);
            turnos += f.turnos;
        }
        QTEST(franjas.join(' '), "franjas");
        QStringList encimadas;
        for (const Encimada &e : semana.encimadas)
            encimadas << QString("%1-%2").arg(e.desde).arg(e.hasta);
        QTEST(encimadas.join(' '), "encimada");
        QTEST(QString("%1-%2").arg(semana.primeraHora).arg(semana.ultimaHora), "reloj");
        QTEST(semana.avisos.join('|'), "aviso");
        QCOMPARE(semana.turnos[1], turnos);
        QCOMPARE(semana.total, turnos);
    }

    void empieza_el_dia_pedido()
    {
        QVERIFY((ordenSemana(0) == std::array<int, 7>{0, 1, 2, 3, 4, 5, 6}));
        QVERIFY((ordenSemana(1) == std::array<int, 7>{1, 2, 3, 4, 5, 6, 0}));
        QVERIFY((ordenSemana(6) == std::array<int, 7>{6, 0, 1, 2, 3, 4, 5}));
    }

    void fechas_compartidas_data()
    {
        QTest::addColumn<int>("id");
        QTest::addColumn<QDate>("desde");
        QTest::addColumn<QDate>("hasta");
        QTest::addColumn<QString>("avisos");
        const QString mas = "Comparte días con la plantilla %1: en ellos rige ésta, que es más nueva.";
        const QString menos = "Comparte días con la plantilla %1, que es más nueva: en ellos no rige ésta.";
        QTest::newRow("nueva sobre las dos") << 0 << QDate(2026, 12, 31) << QDate(2027, 1, 1) << mas.arg("Nº 1, Nº 2");
        QTest::newRow("la primera, tapada") << 4 << QDate(2026, 1, 1) << QDate(2026, 12, 31) << menos.arg("Nº 2");
        QTest::newRow("sola") << 0 << QDate(2028, 2, 29) << QDate(2028, 2, 29) << "";
        QTest::newRow("un día la toca") << 0 << QDate(2027, 2, 28) << QDate(2027, 3, 31) << mas.arg("Nº 2");
        QTest::newRow("al revés") << 0 << QDate(2027, 1, 1) << QDate(2026, 1, 1)
                                  << "La fecha final es anterior a la inicial: esta plantilla no rige ningún día.";
        QTest::newRow("sin escribir") << 0 << QDate() << QDate(2026, 1, 1) << "";
    }
    void fechas_compartidas()
    {
        QFETCH(int, id);
        QFETCH(QDate, desde);
        QFETCH(QDate, hasta);
        const QVector<PlantillaListada> lista{
            {4, "", {2026, 1, 1}, {2026, 12, 31}}, {9, "", {2026, 12, 1}, {2027, 2, 28}}};
        QTEST(avisosDeFechas(lista, id, desde, hasta).join('|'), "avisos");
    }
};

PRUEBA(PruebaSemana)
#include "PruebaSemana.moc"
