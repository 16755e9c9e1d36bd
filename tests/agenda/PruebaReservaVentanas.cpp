#include "ConVentanas.h"
#include "agenda/forms/CalendarioMes.h"
#include "agenda/forms/LineaAviso.h"
#include "agenda/forms/PanelReserva.h"
#include "agenda/forms/agendamodifturno.h"
#include "agenda/forms/agendanuevahora.h"
#include "agenda/forms/agendanuevoturno.h"
#include "agenda/forms/agendanuevoturnoctrln.h"
#include "patients/forms/CampoPaciente.h"
#include "patients/forms/FormularioReducido.h"
#include "patients/forms/PanelParecidos.h"
#include "ui/ListaCombo.h"

#include <QComboBox>
#include <QCompleter>
#include <QListWidget>
#include <QPlainTextEdit>

using namespace agenda;

/// The booking windows together, driven as a person does.
class PruebaReservaVentanas : public ConVentanas
{
    Q_OBJECT

    QVariantMap resultado;

    agendanuevoturno *reservar(const QStringList &turnos, const QVariantMap &otros = {})
    {
        QVariantMap datos{{"doctor", base->usuario}, {"turnos", turnos}};
        datos.insert(otros);
        resultado.clear();
        ventanas->abrir("agendanuevoturno", {datos, [this](const QVariantMap &r) { resultado = r; }});
        return abierta<agendanuevoturno>("agendanuevoturno");
    }
    static void teclear(QLineEdit *campo, const char *texto)
    {
        campo->setFocus();
        QTest::keyClicks(campo, texto);
    }

private slots:
    void init()
    {
        preparar();
        testigo("elecpaci", ui::Modo::Dialogo);
        base->plantilla(Consultorio::maniana(), {-1, 0, false, false});
        base->paciente(7, "O'HIGGINS", "EVA", {{"DNI", "20.111.222"}});
        base->paciente(8, "PÉREZ GÓMEZ", "ANA");
        base->paciente(9, "PÉREZ", "GONZALO");
    }
    void cleanup() { terminar(); }

    void elige_el_paciente_escribiendo_data()
    {
        QTest::addColumn<QString>("texto");
        QTest::addColumn<int>("nrohc"); // 0: the chooser is asked
        QTest::addColumn<QString>("pedido");
        QTest::newRow("apellido") << "o'hig" << 7 << "";
        QTest::newRow("documento") << "20111" << 7 << "";
        QTest::newRow("documento con puntos") << "20.111" << 7 << "";
        QTest::newRow("sin acento") << "perez gom" << 8 << "";
        QTest::newRow("apellido y nombres") << "perez gonz" << 9 << "";
        QTest::newRow("con coma") << "perez, gon" << 9 << "";
        QTest::newRow("varios") << "perez" << 0 << "perez|";
        QTest::newRow("nadie") << "Rossi, Al" << 0 << "Rossi|Al";
        QTest::newRow("nada") << "" << 0 << "|";
    }
    void elige_el_paciente_escribiendo()
    {
        QFETCH(QString, texto);
        QFETCH(int, nrohc);
        agendanuevoturno *n = reservar({"23/11/2026 09:20"});
        QVERIFY(n && n->paciente->hasFocus());
        QTest::keyClicks(n->paciente, texto);
        QTest::keyClick(n->paciente, Qt::Key_Return);
        QCOMPARE(n->paciente->nrohc(), nrohc);
        if (nrohc != 0) {
            QVERIFY(n->panel->motivo->hasFocus());
            return;
        }
        auto *elector = static_cast<Testigo *>(ventanas->buscar("elecpaci"));
        QVERIFY(elector);
        QCOMPARE(Testigo::conDatos.value("modo").toInt(), 2);
        QTEST(
            Testigo::conDatos.value("apellido").toString() + '|' + Testigo::conDatos.value("nombres").toString(),
            "pedido");
        elector->elegir({{"nrohc", 8}});
        QCOMPARE(n->paciente->text(), QString("PÉREZ GÓMEZ, ANA"));
        // Typing on lets that one go: nobody is booked by mistake.
        n->paciente->setFocus();
        n->paciente->end(false);
        QTest::keyClicks(n->paciente, "x");
        QCOMPARE(n->paciente->nrohc(), 0);
    }

    void despliega_los_hallados()
    {
        agendanuevoturno *n = reservar({"23/11/2026 09:20"});
        QVERIFY(n);
        QTest::keyClicks(n->paciente, "perez");
        auto *lista = n->paciente->findChild<QCompleter *>()->popup();
        QTRY_VERIFY(lista->isVisible());
        QCOMPARE(lista->model()->rowCount(), 2);
        QTest::keyClick(lista, Qt::Key_Down);
        QTest::keyClick(lista, Qt::Key_Down);
        QTest::keyClick(lista, Qt::Key_Return);
        QCOMPARE(n->paciente->nrohc(), 8);
        QCOMPARE(n->paciente->text(), QString("PÉREZ GÓMEZ, ANA"));
    }

    void avisa_que_ya_tiene_turno()
    {
        base->turno(7, Consultorio::a("10:20"));
        agendanuevoturno *n = reservar({"23/11/2026 09:20"}, {{"nrohc", 7}, {"observacionestur", "ayuno"}});
        QVERIFY(n);
        QCOMPARE(n->panel->profesional->text(), QString("Juan Pérez"));
        QCOMPARE(n->panel->aviso->text(), QString("Ya tiene turno ese día: 10:20 con Juan Pérez"));
        teclear(n->panel->nuevoturno, "24/11/26 9:00");
        QTest::keyClick(n->panel->nuevoturno, Qt::Key_Return);
        teclear(n->panel->nuevoturno, "24/11/2026 09:00"); // the same one is not added again
        QTest::keyClick(n->panel->nuevoturno, Qt::Key_Return);
        QCOMPARE(n->panel->listaturnos->count(), 2);
        QVERIFY(n->panel->aviso->text().startsWith("Ya tiene turno el 23/11/2026, 10:20"));

        // Another station gives one meanwhile: what the person has not seen is asked, once.
        base->turno(7, Consultorio::a(QDate(2026, 11, 24), "16:00"));
        const QString pregunta = "Ya tiene turno el 23/11/2026, 10:20 con Juan Pérez; el 24/11/2026, 16:00 con Juan"
                                 " Pérez\n¿Desea asignar igualmente el/los turno/s?";
        base->guion.esperarPregunta("Atención...", pregunta, false);
        pulsar(n->guardar);
        QVERIFY(n->isVisible());
        pulsar(n->guardar);
        QVERIFY(!ventanas->buscar("agendanuevoturno"));
        QCOMPARE(base->cuenta("NroHC = 7"), 4);
        QCOMPARE(resultado.value("nrohc").toInt(), 7);
        QCOMPARE(resultado.value("fecha").toDateTime(), Consultorio::a("09:20"));
        QCOMPARE(
            base->valor("SELECT observacionestur FROM [Agenda Turnos] WHERE id = ?", {resultado.value("id")}),
            QString("ayuno"));
    }

    void agrega_con_el_selector_y_quita()
    {
        agendanuevoturno *n = reservar({"23/11/2026 09:20"}, {{"nrohc", 7}, {"fecha", QDate(2026, 12, 3)}});
        QVERIFY(n);
        pulsar(n->panel->agregarturno);
        auto *h = abierta<agendanuevahora>("agendanuevahora");
        QVERIFY(h);
        QCOMPARE(h->hora->text(), QString("09:20")); // goes on from the last one
        QTest::keyClick(h->fechadia, Qt::Key_Down);
        QTest::keyClick(h, Qt::Key_S, Qt::ControlModifier);
        QCOMPARE(n->panel->listaturnos->count(), 2);
        QCOMPARE(n->panel->listaturnos->item(1)->text(), QString("30/11/2026 09:20"));
        // The one that the limit refuses is the one chosen, so that it can be taken away.
        base->turno(8, Consultorio::a("09:20"));
        base->turno(8, Consultorio::a(QDate(2026, 11, 30), "09:20"));
        base->guion.esperarMensaje(
            "Atención...",
            "No puede registrar más sobreturnos. Los siguientes turnos no se asignaron:\n"
            "23/11/2026 09:20\n30/11/2026 09:20",
            base::Icono::Advertencia);
        pulsar(n->guardar);
        QCOMPARE(n->panel->listaturnos->selectedItems().size(), 2);
        QVERIFY(abierta<agendanuevoturno>("agendanuevoturno"));
        QTest::keyClick(n->panel->listaturnos, Qt::Key_Delete);
        QCOMPARE(n->panel->listaturnos->count(), 0);
        pulsar(n->panel->agregarturno); // without a time to go on from: the day of the agenda, and no hour yet
        h = abierta<agendanuevahora>("agendanuevahora");
        QVERIFY(h);
        QCOMPARE(h->fechadia->fecha(), QDate(2026, 12, 3));
        QCOMPARE(h->hora->text(), QString());
        h->close();
        QVERIFY(abierta<agendanuevoturno>("agendanuevoturno"));
        n->paciente->setFocus();
        base->guion.esperarMensaje("Aviso...", "Debe indicar el día y la hora del turno que le asignará al paciente.");
        pulsar(n->guardar);
        QVERIFY(n->panel->agregarturno->hasFocus());
    }

    void da_el_turno_a_un_paciente_nuevo()
    {
        base->turno(8, Consultorio::a("09:20"));
        agendanuevoturno *n = reservar({"23/11/2026 09:20"});
        QVERIFY(n);
        QTest::keyClicks(n->paciente, "Rossi");
        QTest::keyClick(n, Qt::Key_N, Qt::ControlModifier);
        auto *c = abierta<agendanuevoturnoctrln>("agendanuevoturnoctrln");
        QVERIFY(c && !c->hayCambios());
        QCOMPARE(c->formulario->apellidor->text(), QString("Rossi"));
        teclear(c->formulario->nombresr, "Luz");
        base->guion.esperarMensaje(
            "Atención...",
            "No puede registrar más sobreturnos. El paciente y el turno no serán registrados.",
            base::Icono::Advertencia);
        QTest::keyClick(c, Qt::Key_S, Qt::ControlModifier);
        QCOMPARE(base->valor("SELECT COUNT(id) AS n FROM [Pacientes]"), QString("3"));
        QTest::keyClick(c->panel->listaturnos, Qt::Key_Delete); // it was left chosen
        teclear(c->panel->nuevoturno, "23/11/26 9:40");
        QTest::keyClick(c->panel->nuevoturno, Qt::Key_Return);
        QTest::keyClick(c, Qt::Key_S, Qt::ControlModifier);
        QVERIFY(!ventanas->buscar("agendanuevoturnoctrln"));
        QVERIFY(!ventanas->buscar("agendanuevoturno"));
        QCOMPARE(resultado.value("nombre").toString(), QString("ROSSI, LUZ"));
        QCOMPARE(resultado.value("fecha").toDateTime(), Consultorio::a("09:40"));
        QCOMPARE(
            base->valor("SELECT NroHC FROM [Agenda Turnos] WHERE id = ?", {resultado.value("id")}),
            resultado.value("nrohc").toString());
    }

    void el_paciente_ya_existe_data()
    {
        QTest::addColumn<bool>("desdeLaReserva");
        QTest::newRow("desde la reserva") << true;
        QTest::newRow("desde la agenda") << false;
    }
    void el_paciente_ya_existe()
    {
        QFETCH(bool, desdeLaReserva);
        if (desdeLaReserva) {
            pulsar(reservar({"23/11/2026 09:20"})->nuevopaciente);
        } else {
            ventanas->abrir(
                "agendanuevoturnoctrln",
                {{{"doctor", base->usuario}, {"turnos", QStringList{"23/11/2026 09:20"}}},
                 [this](const QVariantMap &r) { resultado = r; }});
        }
        auto *c = abierta<agendanuevoturnoctrln>("agendanuevoturnoctrln");
        QVERIFY(c);
        teclear(c->formulario->apellidor, "o'higgins");
        teclear(c->formulario->nombresr, "eva");
        c->panel->observacionestur->setPlainText("control");
        QTRY_VERIFY(c->parecidos->isVisible());
        pulsar(c->parecidos->usarparecido);
        auto *n = abierta<agendanuevoturno>("agendanuevoturno");
        QVERIFY(n);
        QCOMPARE(n->paciente->nrohc(), 7);
        QCOMPARE(n->panel->listaturnos->count(), 1);
        QCOMPARE(n->panel->observacionestur->toPlainText(), QString("control"));
        pulsar(n->guardar);
        QVERIFY(!ventanas->buscar("agendanuevoturno") && !ventanas->buscar("agendanuevoturnoctrln"));
        QCOMPARE(resultado.value("nrohc").toInt(), 7);
        QCOMPARE(base->cuenta("NroHC = 7"), 1);
        QCOMPARE(base->valor("SELECT COUNT(id) AS n FROM [Pacientes]"), QString("3"));
    }

    void sin_permiso_no_se_abre()
    {
        base->quitarDerecho("accesocrearpaciente");
        agendanuevoturno *n = reservar({"23/11/2026 09:20"});
        base->guion.esperarMensaje("Atención...", sinPermiso);
        pulsar(n->nuevopaciente);
        QVERIFY(!ventanas->buscar("agendanuevoturnoctrln"));
        n->close();
        base->quitarDerecho("accesoasignarturno");
        base->guion.esperarMensaje("Atención...", sinPermiso);
        QVERIFY(!reservar({"23/11/2026 09:20"}));
    }

    void modifica_y_conserva_lo_escrito()
    {
        base->turno(8, Consultorio::a(QDate(2026, 11, 24), "09:40"));
        base->turno(7, Consultorio::a(QDate(2026, 11, 24), "16:00"));
        const qint64 id = base->turno(7, Consultorio::a("09:20"), {{"observacionestur", "ayuno"}});
        ventanas->abrir("agendamodifturno", {{{"id", id}}, {}});
        auto *m = abierta<agendamodifturno>("agendamodifturno");
        QVERIFY(m && !m->hayCambios());
        QCOMPARE(m->aviso->text(), QString());
        QCOMPARE(m->listahoras->currentItem()->text(), QString("09:20  Ocupado"));
        QTest::keyClick(m->fechadia, Qt::Key_Right);
        QCOMPARE(m->aviso->text(), QString("Ya tiene turno ese día: 16:00 con Juan Pérez"));
        QCOMPARE(m->hora->text(), QString("09:20")); // the hour stays
        m->observacionestur->setPlainText("sin ayuno");
        m->hora->setText("9:40");
        base->guion.esperarMensaje(
            "Atención...",
            "No puede registrar más sobreturnos. Los siguientes turnos no se asignaron:\n24/11/2026 09:40",
            base::Icono::Advertencia);
        pulsar(m->guardar);
        m->hora->setText("9.");
        base->guion.esperarMensaje("ERROR...", "ERROR en la Fecha del Turno.");
        pulsar(m->guardar);
        QCOMPARE(m->observacionestur->toPlainText(), QString("sin ayuno"));
        m->hora->setText("9:50"); // no start time
        base->conexion().execute("UPDATE [Agenda Turnos] SET NroHC = 8 WHERE id = ?", {id});
        pulsar(m->guardar);
        QVERIFY(!ventanas->buscar("agendamodifturno"));
        QCOMPARE(base->cuenta("NroHC = 8 and observacionestur = 'sin ayuno' and Fecha = #11/24/2026 09:50#"), 1);

        ventanas->abrir("agendamodifturno", {{{"id", id}}, {}});
        m = abierta<agendamodifturno>("agendamodifturno");
        m->hora->setText("10:00");
        base->conexion().execute("DELETE FROM [Agenda Turnos] WHERE id = ?", {id});
        base->guion.esperarMensaje("Atención...", yaNoExiste);
        pulsar(m->guardar);
        QCOMPARE(m->hora->text(), QString("10:00"));
    }
};

PRUEBA(PruebaReservaVentanas)
#include "PruebaReservaVentanas.moc"
