#include "Consultorio.h"
#include "agenda/DiasNoLaborables.h"
#include "agenda/Plantilla.h"
#include "support/Prueba.h"

using namespace agenda;

/// Templates and days off as they are stored.
class PruebaPlantilla : public QObject
{
    Q_OBJECT

private slots:
    void guarda_y_lee_todo_data() { soporte::filasDeDialecto(); }
    void guarda_y_lee_todo()
    {
        Consultorio base(soporte::dialectoActual());
        Plantilla p;
        p.iddoctor = base.usuario;
        for (size_t d = 0; d < 7; ++d)
            p.dias[d] = {QTime(8, int(d)), QTime(12, 0), QTime(16, int(d)), QTime(19, 0), 5 * int(d + 1)};
        p.dias[3] = {}; // does not attend
        p.dias[0].maDesde = QTime(0, 0); // midnight is an hour
        p.sobreturnos = {3, 0, true, true};
        const auto id = guardarPlantilla(base.conexion(), p, "5/3/26", "31-12-2026");
        QVERIFY(id);
        p.id = *id;
        p.fechadesde = QDate(2026, 3, 5);
        p.fechahasta = QDate(2026, 12, 31);
        QVERIFY(leerPlantilla(base.conexion(), *id) == p);

        p.dias[3].taDesde = QTime(15, 0);
        p.dias[3].duracion = 0;
        QCOMPARE(*guardarPlantilla(base.conexion(), p, "05/03/2026", "31/12/2026"), *id);
        const auto cambiada = leerPlantilla(base.conexion(), *id);
        QVERIFY(cambiada->dias[3].taDesde == QTime(15, 0));
        QCOMPARE(cambiada->dias[3].duracion, 20);
    }

    void propone_lo_configurado_data() { soporte::filasDeDialecto(); }
    void propone_lo_configurado()
    {
        Consultorio base(soporte::dialectoActual());
        base.configurar("durtur2", 45);
        base.configurar("durtur7", 0);
        const Plantilla nueva = plantillaNueva(base.conexion(), 8);
        QCOMPARE(nueva.iddoctor, 8);
        for (size_t d = 0; d < 7; ++d)
            QCOMPARE(nueva.dias[d].duracion, d == 1 ? 45 : 20);
    }

    void rechaza_fechas_en_su_orden_data()
    {
        QTest::addColumn<QString>("desde");
        QTest::addColumn<QString>("hasta");
        QTest::addColumn<QString>("texto");
        QTest::addColumn<QString>("campo");
        QTest::newRow("sin inicial") << " "
                                     << "x"
                                     << "Debe ingresar la Fecha Inicial."
                                     << "fechadesde";
        QTest::newRow("mala inicial") << "31/2/2026"
                                      << ""
                                      << "ERROR en la Fecha Inicial."
                                      << "fechadesde";
        QTest::newRow("sin final") << "1/1/2026"
                                   << ""
                                   << "Debe ingresar la Fecha Final."
                                   << "fechahasta";
        QTest::newRow("mala final") << "1/1/2026"
                                    << "ayer"
                                    << "ERROR en la Fecha Final."
                                    << "fechahasta";
    }
    void rechaza_fechas_en_su_orden()
    {
        QFETCH(QString, desde);
        QFETCH(QString, hasta);
        Consultorio base;
        const auto id = guardarPlantilla(base.conexion(), {}, desde, hasta);
        QVERIFY(!id);
        QCOMPARE(id.rechazo().titulo, QString("Aviso..."));
        QTEST(id.rechazo().texto, "texto");
        QTEST(id.rechazo().campo, "campo");
        QVERIFY(listarPlantillas(base.conexion(), 0).isEmpty());
    }

    void la_mas_nueva_rige_data() { soporte::filasDeDialecto(); }
    void la_mas_nueva_rige()
    {
        Consultorio base(soporte::dialectoActual());
        db::Connection &c = base.conexion();
        const auto crear = [&](const char *desde, const char *hasta, int doctor) {
            Plantilla p;
            p.iddoctor = doctor;
            return *guardarPlantilla(c, p, desde, hasta);
        };
        const int anual = crear("1/1/2026", "31/12/2026", base.usuario);
        const int verano = crear("1/12/2026", "31/12/2026", base.usuario);
        crear("1/1/2026", "31/12/2026", base.usuario + 1);
        const auto rige = [&](QDate fecha) {
            const auto p = elegirPlantilla(c, base.usuario, fecha);
            return p ? p->id : 0;
        };
        QCOMPARE(rige({2026, 11, 30}), anual);
        QCOMPARE(rige({2026, 12, 1}), verano);
        QCOMPARE(rige({2026, 12, 31}), verano);
        QCOMPARE(rige({2027, 1, 1}), 0);
        QCOMPARE(rige({2025, 12, 31}), 0);
        const int bisiesto = crear("29/2/28", "29/2/2028", base.usuario);
        QCOMPARE(rige({2028, 2, 29}), bisiesto);
        QCOMPARE(rige({2028, 2, 28}) + rige({2028, 3, 1}), 0);
        QVERIFY(ajustesSobreturno(c, base.usuario, {2027, 1, 1}) == AjustesSobreturno{});

        const auto lista = listarPlantillas(c, base.usuario);
        QCOMPARE(lista.size(), 3);
        QCOMPARE(lista.at(1).id, verano);
        QCOMPARE(lista.at(1).texto, QString("Plantilla Nº 2 (abarca desde el 01/12/2026 hasta el 31/12/2026)"));
    }

    void otra_terminal_la_elimino()
    {
        Consultorio base;
        Plantilla p = *leerPlantilla(base.conexion(), base.plantilla(Consultorio::maniana()));
        base.guion.esperarPregunta("Confirmación...", "¿Seguro que desea eliminar la plantilla seleccionada?", false);
        QVERIFY(!*eliminarPlantilla(base, p.id));
        QVERIFY(leerPlantilla(base.conexion(), p.id));
        base.guion.esperarPregunta("Confirmación...", "¿Seguro que desea eliminar la plantilla seleccionada?", true);
        QVERIFY(*eliminarPlantilla(base, p.id));
        base.guion.esperarPregunta("Confirmación...", "¿Seguro que desea eliminar la plantilla seleccionada?", true);
        QCOMPARE(eliminarPlantilla(base, p.id).rechazo().texto, yaNoExiste);
        const auto id = guardarPlantilla(base.conexion(), p, "1/1/2026", "31/12/2026");
        QVERIFY(!id);
        QCOMPARE(id.rechazo().titulo, QString("Atención..."));
        QCOMPARE(id.rechazo().texto, yaNoExiste);
        base.quitarDerecho("accesoagendas");
        QCOMPARE(guardarPlantilla(base, p, "1/1/2026", "31/12/2026").rechazo().texto, sinPermiso);
        QCOMPARE(eliminarPlantilla(base, p.id).rechazo().texto, sinPermiso);
        QVERIFY(base.guion.terminar());
    }

    void dias_libres_data() { soporte::filasDeDialecto(); }
    void dias_libres()
    {
        Consultorio base(soporte::dialectoActual());
        db::Connection &c = base.conexion();
        const auto vacia = agregarDiasNoLaborables(c, base.usuario, {});
        QVERIFY(vacia);
        QCOMPARE(vacia->texto, QString("Debe seleccionar la/s fecha/s que no se atenderá."));

        QVERIFY(!agregarDiasNoLaborables(c, base.usuario, {{0, 25, 12, 0}, {0, 0, 0, 2017}, {0, 1, 5, 2026}}));
        QVERIFY(esNoLaborable(c, base.usuario, {2030, 12, 25}));
        QVERIFY(esNoLaborable(c, base.usuario, {2017, 6, 1}));
        QVERIFY(!esNoLaborable(c, base.usuario, {2026, 11, 23}));
        QVERIFY(!esNoLaborable(c, base.usuario + 1, {2030, 12, 25}));

        QStringList textos;
        for (const DiaNoLaborable &dia : listarDiasNoLaborables(c, base.usuario))
            textos << dia.texto();
        QCOMPARE(
            textos,
            QStringList(
                {"El día 1 de Mayo de 2026.",
                 "Todos los días de cada mes de 2017.",
                 "El día 25 de Diciembre de cada año."}));
        QCOMPARE(
            controlarDiaLaborable(c, base.usuario, {2026, 12, 25})->texto,
            QString("La fecha seleccionada NO corresponde a un día laborable."));
    }

    void lee_periodos_data()
    {
        QTest::addColumn<QString>("desde");
        QTest::addColumn<QString>("hasta");
        QTest::addColumn<bool>("cadaAnio");
        QTest::addColumn<QString>("resultado"); // how many, first and last; or the refusal and its field
        QTest::newRow("un día") << "29/2/28"
                                << "" << false << "1 29/2/2028 29/2/2028";
        QTest::newRow("cambio de año") << "28/12/2026"
                                       << "3/1/27" << false << "7 28/12/2026 3/1/2027";
        QTest::newRow("de cada año") << "31/12/2026"
                                     << "1/1/2027" << true << "2 31/12/0 1/1/0";
        QTest::newRow("bisiesto entero") << "1/1/2028"
                                         << "31/12/2028" << false << "366 1/1/2028 31/12/2028";
        QTest::newRow("demasiado largo") << "1/1/2027"
                                         << "2/1/2028" << false << "El período no puede abarcar más de 366 días.|hasta";
        QTest::newRow("un año y un día, cada año") << "1/1/2027"
                                                   << "1/1/2028" << true << "365 1/1/0 31/12/0";
        QTest::newRow("nada") << " "
                              << "1/1/2027" << false << "Debe seleccionar la/s fecha/s que no se atenderá.|desde";
        QTest::newRow("no existe") << "29/2/2027"
                                   << "" << false << "ERROR en la Fecha Inicial.|desde";
        QTest::newRow("mala final") << "1/2/2027"
                                    << "x" << false << "ERROR en la Fecha Final.|hasta";
        QTest::newRow("al revés") << "2/1/2027"
                                  << "1/1/2027" << false
                                  << "La Fecha Final no puede ser anterior a la Fecha Inicial.|hasta";
    }
    void lee_periodos()
    {
        QFETCH(QString, desde);
        QFETCH(QString, hasta);
        QFETCH(bool, cadaAnio);
        const auto dias = leerPeriodo(desde, hasta, cadaAnio);
        const auto texto = [](const DiaNoLaborable &d) {
            return QString("%1/%2/%3").arg(QString::number(d.dia), QString::number(d.mes), QString::number(d.anio));
        };
        QTEST(
            dias ? QString("%1 %2 %3").arg(QString::number(dias->size()), texto(dias->first()), texto(dias->last()))
                 : dias.rechazo().texto + '|' + dias.rechazo().campo,
            "resultado");
    }

    void de_todos_data() { soporte::filasDeDialecto(); }
    void de_todos()
    {
        Consultorio base(soporte::dialectoActual());
        db::Connection &c = base.conexion();
        const int otro = int(base.fila("Lista Doctores", {{"NomDoc", "Otra"}, {"tipo", 0}}));
        base.paciente(7, "Paz", "Eva");
        base.turno(7, Consultorio::a("09:00"));
        const QVector<DiaNoLaborable> dias{
            DiaNoLaborable::de(Consultorio::lunes()), {0, 25, 12, 0}, DiaNoLaborable::de(Consultorio::lunes())};
        auto alta = agregarDiasNoLaborables(base, {base.usuario}, {dias.at(1)});
        QCOMPARE(alta->agregados, 1);
        alta = agregarDiasNoLaborables(base, {base.usuario, otro}, dias);
        QCOMPARE(alta->agregados, 3);
        QCOMPARE(alta->yaEstaban, 3);
        QCOMPARE(alta->conTurnos, 1);
        QVERIFY(esNoLaborable(c, otro, {2030, 12, 25}));

        const auto primero = listarDiasNoLaborables(c, otro).first(); // the Monday
        const QString una = "¿Seguro que desea eliminar la fecha seleccionada?";
        base.guion.esperarPregunta("Confirmación...", una + "\nSe eliminarán de TODOS los profesionales.", true);
        QCOMPARE(*eliminarDiasNoLaborables(base, {primero.id}, true), 2);
        QVERIFY(!esNoLaborable(c, base.usuario, Consultorio::lunes()));
        // Another station was faster: what is left stays whole.
        const int queda = listarDiasNoLaborables(c, otro).first().id;
        base.guion.esperarPregunta("Confirmación...", "¿Seguro que desea eliminar las 2 fechas seleccionadas?", true);
        QCOMPARE(eliminarDiasNoLaborables(base, {queda, primero.id}).rechazo().texto, yaNoExiste);
        base.guion.esperarPregunta("Confirmación...", una, false);
        QCOMPARE(*eliminarDiasNoLaborables(base, {queda}), 0);
        QCOMPARE(listarDiasNoLaborables(c, otro).size(), 1);
        base.quitarDerecho("accesoagendas");
        QCOMPARE(eliminarDiasNoLaborables(base, {queda}).rechazo().texto, sinPermiso);
        QCOMPARE(agregarDiasNoLaborables(base, {otro}, dias).rechazo().texto, sinPermiso);
        QVERIFY(base.guion.terminar());
    }
};

PRUEBA(PruebaPlantilla)
#include "PruebaPlantilla.moc"
