#include "ConVentanas.h"
#include "agenda/Esquema.h"
#include "agenda/forms/CalendarioMes.h"
#include "agenda/forms/PanelReserva.h"
#include "agenda/forms/agendanuevoturno.h"
#include "agenda/forms/agendas.h"
#include "agenda/forms/agendastodas.h"
#include "agenda/forms/resulbusque.h"
#include "agenda/forms/telefonomodif.h"
#include "agenda/forms/telefonos.h"
#include "ui/Preferencias.h"

#include <QAbstractItemModelTester>
#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QShortcut>
#include <QTimer>
#include <QToolButton>

using namespace agenda;

/// The view of all agendas, the telephone list and a patient's appointments, driven as a person does.
class PruebaVentanasTodas : public ConVentanas
{
    Q_OBJECT

    int bruni = 0;

    agendastodas *abrirTodas() { return abrir<agendastodas>("agendastodas", {{"fecha", Consultorio::lunes()}}); }
    /// What is chosen in the table: "Juan Pérez 09:20 Paz, Eva".
    static QString elegido(agendastodas *a)
    {
        const auto lugar = a->lista->actual();
        return lugar.fila ? lugar.agenda->nombre + u' ' + horaTexto(lugar.fila->hora) + u' ' + lugar.fila->paciente
                          : QString();
    }
    static QString columna(ui::Grilla *grilla, int cual)
    {
        QStringList textos;
        for (int i = 0; i < grilla->modelo().rowCount(); ++i)
            textos << grilla->modelo().index(i, cual).data().toString();
        return textos.join(QStringLiteral("; "));
    }
    static void marcar(agendastodas *a, int fila, bool mostrado)
    {
        a->listaprofesionales->item(fila)->setCheckState(mostrado ? Qt::Checked : Qt::Unchecked);
    }

private slots:
    void init()
    {
        preparar();
        testigo(QStringLiteral("pacientes"));
        base->plantilla(Consultorio::maniana());
        bruni = int(base->fila("Lista Doctores", {{"NomDoc", "Bruni"}, {"tipo", 0}, {"Prioridad", -1}}));
        base->fila("Lista Doctores", {{"NomDoc", "Castro"}, {"tipo", 0}, {"Prioridad", -2}}); // never attends
        std::swap(base->usuario, bruni);
        base->plantilla({QTime(9, 0), QTime(10, 0), {}, {}, 30});
        std::swap(base->usuario, bruni);
        base->paciente(7, "Paz", "Eva", {{"Tel", "4711"}});
        base->paciente(8, "<b>Núñez", "Luis");
    }
    void cleanup() { terminar(); }

    void recorre_y_da_turnos_con_el_teclado()
    {
        base->turno(8, Consultorio::a("09:30"), {{"Doctor", bruni}, {"observacionestur", "trae <i>placas"}});
        agendastodas *a = abrirTodas();
        QVERIFY(a);
        QCOMPARE(a->fechaactiva->text(), QString("Lunes 23 de noviembre de 2026"));
        const ModeloTodas &modelo = a->lista->modelo();
        const QAbstractItemModelTester controlador(
            const_cast<ModeloTodas *>(&modelo), QAbstractItemModelTester::FailureReportingMode::QtTest);
        QCOMPARE(modelo.columnCount(), 2);
        QCOMPARE(a->listaprofesionales->item(2)->text(), QString("Castro  —  Sin horario"));
        QCOMPARE(modelo.headerData(1, Qt::Horizontal, ModeloTodas::Resumen).toString(), QString("1 turno · 1 libre"));
        QVERIFY(modelo.index(2, 1).data(Qt::ToolTipRole).toString().contains("trae &lt;i&gt;placas"));

        // Where it is now; half an hour of the neighbour takes two lines of this one.
        QCOMPARE(elegido(a), QString("Juan Pérez 09:20 "));
        QTest::keyClick(a->lista, Qt::Key_Right);
        QCOMPARE(elegido(a), QString("Bruni 09:00 "));
        QTest::keyClick(a->lista, Qt::Key_Down);
        QCOMPARE(elegido(a), QString("Bruni 09:30 <b>Núñez, Luis"));
        QTest::keyClick(a->lista, Qt::Key_Down);
        QCOMPARE(elegido(a), QString("Bruni 09:30 <b>Núñez, Luis"));
        QTest::keyClick(a->lista, Qt::Key_Left);
        QCOMPARE(elegido(a), QString("Juan Pérez 09:20 "));
        QTest::keyClick(a->lista, Qt::Key_End);
        QCOMPARE(elegido(a), QString("Juan Pérez 10:40 "));

        QTest::keyClick(a->lista, Qt::Key_Return);
        auto *nuevo = qobject_cast<agendanuevoturno *>(ventanas->buscar("agendanuevoturno"));
        QVERIFY(nuevo);
        QCOMPARE(nuevo->panel->listaturnos->item(0)->text(), QString("23/11/2026 10:40"));
        nuevo->close();
        QTRY_VERIFY(!ventanas->buscar("agendanuevoturno"));
        activar(a);

        // Enter on an appointment goes to the agenda of that professional.
        a->lista->elegirHora(bruni, QTime(9, 30));
        QTest::keyClick(a->lista, Qt::Key_Return);
        auto *una = qobject_cast<agendas *>(ventanas->buscar("agendas"));
        QVERIFY(una);
        QCOMPARE(una->lisdocto->currentText(), QString("Bruni"));
        QCOMPARE(una->fechadia->fecha(), Consultorio::lunes());
    }

    void cambia_estados_con_las_reglas()
    {
        const qint64 id = base->turno(7, Consultorio::a("09:20"));
        agendastodas *a = abrirTodas();
        a->lista->elegirHora(base->usuario, QTime(9, 20));
        base->guion.esperarMensaje(
            "Atención...", "Antes de marcar un turno como 'Atendido', primero debe indicar que 'llegó'.");
        QTest::keyClick(a->lista, Qt::Key_A, Qt::ControlModifier);
        QCOMPARE(a->sala->modelo().rowCount(), 0);
        QTest::keyClick(a->lista, Qt::Key_L, Qt::ControlModifier);
        QCOMPARE(elegido(a), QString("Juan Pérez 09:20 Paz, Eva"));
        QCOMPARE(a->sinollego->text(), QString("No &llegó"));
        QCOMPARE(columna(a->sala, 1), QString("Paz, Eva"));
        QCOMPARE(columna(a->sala, 0), QString("0 min"));
        QCOMPARE(a->titulosala->text(), QString("&Sala de espera: 1"));

        // The tick counts on; from the waiting room the patient is attended.
        base->reloj.set(Consultorio::a("09:42"));
        QCOMPARE(a->tiempo->interval(), 30000);
        a->tiempo->setInterval(1);
        QTRY_COMPARE(columna(a->sala, 0), QString("12 min"));
        a->tiempo->setInterval(30000);
        a->lista->elegirHora(bruni, QTime(9, 0));
        a->sala->setFocus();
        a->sala->elegirFila(0);
        QCOMPARE(elegido(a), QString("Juan Pérez 09:20 Paz, Eva"));
        QTest::keyClick(a->sala, Qt::Key_Return);
        QCOMPARE(Testigo::conDatos, (QVariantMap{{"nrohc", 7}}));
        activar(a);
        base->guion.esperarMensaje(
            "Atención...", "Un Paciente está siendo atendido, para seguir debe cerrar la ficha del Paciente");
        QTest::keyClick(a->sala, Qt::Key_F2);
        QTest::keyClick(a->sala, Qt::Key_A, Qt::ControlModifier);
        QCOMPARE(base->cuenta("Atendido <> 0"), 1);
        QCOMPARE(a->sala->modelo().rowCount(), 0);
        QCOMPARE(a->lista->modelo().lugar(1, 0).fila->atendido, true);

        // Several free hours of both are blocked; deleting asks.
        a->lista->setFocus();
        a->lista->elegirHora(base->usuario, QTime(9, 40));
        QTest::keyClick(a->lista, Qt::Key_Down, Qt::ShiftModifier);
        QTest::keyClick(a->lista, Qt::Key_F6);
        QCOMPARE(base->cuenta("NroHC = -111"), 2);
        a->lista->elegirHora(base->usuario, QTime(9, 40));
        base->guion.esperarPregunta(
            "Confirmación...", "¿Seguro que desea Eliminar el/los turno/s seleccionado/s?", true);
        QTest::keyClick(a->lista, Qt::Key_Delete);
        QCOMPARE(base->cuenta("NroHC = -111"), 1);
        QCOMPARE(elegido(a), QString("Juan Pérez 09:40 "));

        // Another station deletes the row that is to be changed.
        a->lista->elegirHora(base->usuario, QTime(9, 20));
        base->conexion().execute("DELETE FROM [Agenda Turnos] WHERE id = ?", {id});
        base->guion.esperarMensaje("Atención...", yaNoExiste);
        pulsar(a->sinollego);
        QCOMPARE(a->lista->modelo().agenda(0)->dia.turnos, 0);

        base->quitarDerecho("accesoasignarturno");
        a->lista->elegirHora(base->usuario, QTime(10, 40));
        base->guion.esperarMensaje("Atención...", sinPermiso);
        QTest::keyClick(a->lista, Qt::Key_F6);
    }

    void otra_terminal_no_mueve_la_eleccion()
    {
        base->turno(7, Consultorio::a("10:00"));
        agendastodas *a = abrirTodas();
        a->lista->elegirHora(base->usuario, QTime(10, 0));
        base->turno(8, Consultorio::a("09:05")); // a line more above
        base->turno(8, Consultorio::a("09:20"));
        base->turno(7, Consultorio::a("09:20"));
        ventanas->refrescar({"agendastodas"});
        QCOMPARE(elegido(a), QString("Juan Pérez 10:00 Paz, Eva"));
        base->conexion().execute("DELETE FROM [Agenda Turnos] WHERE Fecha = #11/23/2026 10:00#");
        ventanas->refrescar({"agendastodas"});
        QCOMPARE(elegido(a), QString());
        QVERIFY(!a->sinollego->isEnabled() && !a->liberar->isEnabled());

        // What cannot be read is told once; a reload by hand brings the ticks back.
        base->conexion().execute("DROP TABLE [Agenda Turnos No Se Atiende]");
        base->guion.esperarMensaje("ERROR...", "La base de datos no tiene la tabla 'Agenda Turnos No Se Atiende'.");
        a->tiempo->setInterval(1);
        QTRY_VERIFY(!a->tiempo->isActive());
        QTest::qWait(20);
        base->conexion().createTable(*esquema().table(u"Agenda Turnos No Se Atiende"));
        QTest::keyClick(a, Qt::Key_F5);
        QVERIFY(a->tiempo->isActive());
        QCOMPARE(a->tiempo->interval(), 30000);
    }

    void elige_profesionales_y_dia()
    {
        const QTemporaryDir carpeta;
        ui::Preferencias::usarArchivo(carpeta.filePath("gustos.ini"));
        base->turno(7, Consultorio::a("09:20"), {{"llegado", true}});
        base->turno(8, Consultorio::a("09:30"), {{"Doctor", bruni}, {"llegado", true}});
        agendastodas *a = abrirTodas();
        QCOMPARE(a->sala->modelo().rowCount(), 2);
        a->lista->elegirHora(bruni, QTime(9, 30));
        marcar(a, 0, false);
        QCOMPARE(a->lista->modelo().columnCount(), 1);
        QCOMPARE(elegido(a), QString("Bruni 09:30 <b>Núñez, Luis"));
        QCOMPARE(a->titulosala->text(), QString("&Sala de espera: 1  (y 1 de profesionales que no se muestran)"));
        a->close();
        a = abrirTodas();
        QCOMPARE(a->lista->modelo().columnCount(), 1);
        pulsar(a->ninguno);
        QCOMPARE(a->lista->modelo().columnCount(), 0);
        QVERIFY(!a->nuevo->isEnabled() && !a->horarios->isEnabled());
        pulsar(a->todos);
        QCOMPARE(a->lista->modelo().columnCount(), 2);
        ui::Preferencias::usarArchivo({});

        a->lista->setFocus();
        a->lista->elegirHora(bruni, QTime(9, 30));
        QTest::keyClick(a->lista, Qt::Key_Right, Qt::ControlModifier);
        QCOMPARE(a->fechaactiva->text(), QString("Martes 24 de noviembre de 2026"));
        QCOMPARE(elegido(a), QString("Bruni 09:30 "));
        QTest::keyClick(a->lista, Qt::Key_Left, Qt::ControlModifier);
        QTest::keyClick(a->lista, Qt::Key_Left, Qt::ControlModifier);
        QCOMPARE(a->fechadia->fecha(), Consultorio::lunes().addDays(-1));
        QTest::keyClick(a->lista, Qt::Key_Home, Qt::ControlModifier);
        QCOMPARE(a->fechadia->fecha(), Consultorio::lunes());
        a->fechadia->setFecha(QDate(2027, 3, 1)); // the templates end
        QCOMPARE(a->lista->modelo().columnCount(), 0);

        base->quitarDerecho("accesoagendas");
        a->close();
        base->guion.esperarMensaje("Atención...", sinPermiso);
        QVERIFY(!ventanas->abrir("agendastodas"));
    }

    void lista_de_telefonos()
    {
        base->fila("Telefonos", {{"nombre", "Gasista"}, {"telefono", "450-1234"}});
        auto *t = abrir<telefonos>("telefonos");
        QVERIFY(t);
        QCOMPARE(columna(t->lista, 0), QString("Gasista; Bruni; Castro; Juan Pérez"));
        QTest::keyClicks(t->buscado, "paz");
        QTRY_COMPARE(columna(t->lista, 0), QString("Paz, Eva"));
        QTest::keyClick(t->buscado, Qt::Key_Return);
        QVERIFY(!t->modificar->isEnabled() && !t->eliminar->isEnabled());
        QTest::keyClick(t->lista, Qt::Key_Return);
        QCOMPARE(Testigo::conDatos, (QVariantMap{{"nrohc", 7}}));
        activar(t);
        t->conpacientes->setChecked(false);
        QCOMPARE(columna(t->lista, 0), QString());
        QVERIFY(t->cantidad->text().startsWith("No se encontró a nadie."));

        // What was typed begins the new one, which is shown although the search would not.
        t->buscado->setText("Luz y Fuerza");
        QTest::keyClick(t->buscado, Qt::Key_N, Qt::ControlModifier);
        auto *m = qobject_cast<telefonomodif *>(ventanas->buscar("telefonomodif"));
        QVERIFY(m);
        activar(m);
        QCOMPARE(m->nombre->text(), QString("Luz y Fuerza"));
        base->guion.esperarMensaje("Aviso...", "Debe ingresar un Teléfono, un Celular o un Correo electrónico.");
        pulsar(m->guardar);
        m->nombre->setText("EPE");
        m->telefono->setText("0800");
        QCOMPARE(m->telefono->maxLength(), 50);
        QTest::keyClick(m, Qt::Key_S, Qt::ControlModifier);
        QTRY_VERIFY(!ventanas->buscar("telefonomodif"));
        activar(t);
        QCOMPARE(t->buscado->text(), QString());
        QCOMPARE(t->lista->modelo().index(t->lista->filaActual(), 0).data().toString(), QString("EPE"));

        base->guion.esperarPregunta(
            "Confirmación...", "¿Seguro que desea eliminar a ' EPE ' de la lista de teléfonos?", true);
        QTest::keyClick(t->lista, Qt::Key_Delete);
        QVERIFY(!columna(t->lista, 0).contains("EPE"));

        t->lista->elegirFila(0);
        base->conexion().execute("DELETE FROM [Telefonos]");
        base->guion.esperarMensaje("Atención...", yaNoExiste);
        QTest::keyClick(t->lista, Qt::Key_Return);
        QVERIFY(!columna(t->lista, 0).contains("Gasista"));
    }

    void turnos_de_un_paciente()
    {
        const qint64 futuro = base->turno(7, Consultorio::a(Consultorio::lunes().addDays(1), "09:20"));
        base->turno(7, Consultorio::a(Consultorio::lunes().addDays(-7), "09:20"), {{"llegado", true}});
        auto *r = abrir<resulbusque>("resulbusque", {{"nrohc", 7}, {"nombre", "PAZ, EVA"}});
        QVERIFY(r);
        QCOMPARE(r->paciente->text(), QString("PAZ, EVA"));
        QCOMPARE(r->cantidad->text(), QString("1 turno desde hoy, 1 anteriores"));
        QCOMPARE(columna(r->lista, 0), QString("24/11/2026; 16/11/2026"));
        QTest::keyClick(r->lista, Qt::Key_Return);
        auto *a = qobject_cast<agendas *>(ventanas->buscar("agendas"));
        QVERIFY(a);
        QCOMPARE(a->fechadia->fecha(), Consultorio::lunes().addDays(1));

        activar(r);
        r->lista->elegirClave(futuro);
        base->conexion().execute("DELETE FROM [Agenda Turnos] WHERE id = ?", {futuro});
        base->guion.esperarMensaje("Atención...", yaNoExiste);
        QTest::keyClick(r->lista, Qt::Key_Return);
        QCOMPARE(r->cantidad->text(), QString("Ningún turno desde hoy, 1 anteriores"));

        r = abrir<resulbusque>("resulbusque", {{"nrohc", 8}});
        QCOMPARE(r->paciente->text(), QString("<b>Núñez, Luis"));
        QCOMPARE(r->cantidad->text(), QString("Este paciente no tiene turnos."));
        QVERIFY(!r->veragenda->isEnabled() && !r->findChild<QPushButton *>("copiarlista")->isEnabled());
    }

    void teclas_sin_repetir()
    {
        const QVariantMap paciente{{"nrohc", 7}};
        for (const char *nombre : {"agendastodas", "telefonos", "telefonomodif", "resulbusque"}) {
            ui::Ventana *v = abrir<ui::Ventana>(nombre, paciente);
            QVERIFY(v);
            QStringList teclas;
            for (const auto *boton : v->findChildren<QAbstractButton *>())
                teclas << boton->shortcut().toString();
            for (const auto *rotulo : v->findChildren<QLabel *>())
                if (rotulo->buddy())
                    teclas << QKeySequence::mnemonic(rotulo->text()).toString();
            for (const auto *atajo : v->findChildren<QShortcut *>())
                teclas << atajo->key().toString();
            teclas.removeAll(QString());
            QStringList unicas = teclas;
            unicas.removeDuplicates();
            QCOMPARE(teclas, unicas);
            v->close();
        }
    }
};

PRUEBA(PruebaVentanasTodas)
#include "PruebaVentanasTodas.moc"
