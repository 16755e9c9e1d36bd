#include "ConVentanas.h"
#include "agenda/DiasNoLaborables.h"
#include "agenda/forms/Arrastre.h"
#include "agenda/forms/CalendarioMes.h"
#include "agenda/forms/GrillaTurnos.h"
#include "agenda/forms/agendalibres.h"
#include "agenda/forms/agendamodifturno.h"
#include "agenda/forms/agendaobservacion.h"
#include "agenda/forms/agendaordenes.h"
#include "agenda/forms/agendas.h"
#include "ui/ListaCombo.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDropEvent>
#include <QLineEdit>
#include <QListWidget>
#include <QMenu>
#include <QMimeData>
#include <QPlainTextEdit>
#include <QScrollBar>
#include <QTimer>

using namespace agenda;

namespace {

const QString noDisponible = "Esta ventana todavía no forma parte de esta versión de Vastelo.";

} // namespace

/// What the window "agendas" does with appointments, driven as a person does.
class PruebaOperaciones : public ConVentanas
{
    Q_OBJECT

    agendas *a = nullptr;

    void abrir(const QVariantMap &datos = {{"fecha", Consultorio::lunes()}})
    {
        a = ConVentanas::abrir<agendas>("agendas", datos);
        QVERIFY(a);
    }
    void cerrar(const char *nombre)
    {
        if (auto *suya = ventanas->buscar(QLatin1String(nombre)))
            suya->close();
        activar(a);
    }
    void tecla(Qt::Key cual, Qt::KeyboardModifiers con = {}) { QTest::keyClick(a->lista, cual, con); }
    void elegir(const QString &hora, int cual = 0) { elegirHora(a->lista, hora, cual); }
    QString actual(int columna = 0) const { return a->lista->modelo().textoCelda(a->lista->filaActual(), columna); }
    QString momento(qint64 id) const
    {
        return base->valor("SELECT Fecha FROM [Agenda Turnos] WHERE id = ?", {id}).mid(5, 11);
    }
    /// Drops what `mime` carries on a widget, as the end of a drag does; true when it was taken.
    static bool soltar(QWidget *en, QPoint lugar, const QMimeData &mime)
    {
        QDragEnterEvent entra(lugar, Qt::MoveAction, &mime, Qt::LeftButton, {});
        QApplication::sendEvent(en, &entra);
        QDragMoveEvent pasa(lugar, Qt::MoveAction, &mime, Qt::LeftButton, {});
        QApplication::sendEvent(en, &pasa);
        QDropEvent suelta(lugar, Qt::MoveAction, &mime, Qt::LeftButton, {});
        QApplication::sendEvent(en, &suelta);
        QCoreApplication::processEvents();
        return pasa.isAccepted() && suelta.isAccepted();
    }
    bool soltarEn(qint64 id, const QString &hora)
    {
        elegir(hora);
        const std::unique_ptr<QMimeData> mime(mimeDeTurno(id));
        return soltar(a->lista->viewport(), a->lista->visualRect(a->lista->currentIndex()).center(), *mime);
    }

private slots:
    void init()
    {
        preparar();
        base->plantilla(Consultorio::maniana(), {-1, 0, false, false});
        base->paciente(7, "Paz", "Eva");
    }
    void cleanup()
    {
        a = nullptr;
        terminar();
    }

    void corta_y_pega()
    {
        const qint64 id = base->turno(7, Consultorio::a("09:40"));
        base->turno(7, Consultorio::a("10:00"));
        base->turno(-111, Consultorio::a("10:20"));
        QVERIFY(!agregarDiasNoLaborables(base->conexion(), base->usuario, {{0, 25, 11, 0}}));
        abrir();
        tecla(Qt::Key_V, Qt::ControlModifier); // nothing cut
        elegir("09:40");
        tecla(Qt::Key_X, Qt::ControlModifier);
        QVERIFY(a->avisocorte->isVisible());
        QVERIFY(a->avisocorte->text().contains("23/11/2026 09:40   Paz, Eva"));
        tecla(Qt::Key_Escape);
        QVERIFY(!a->avisocorte->isVisible());
        QVERIFY(a->isVisible());
        tecla(Qt::Key_V, Qt::ControlModifier);
        QCOMPARE(momento(id), QString("11-23 09:40"));

        tecla(Qt::Key_X, Qt::ControlModifier);
        tecla(Qt::Key_V, Qt::ControlModifier); // onto itself
        QVERIFY(!a->avisocorte->isVisible());
        QCOMPARE(momento(id), QString("11-23 09:40"));

        tecla(Qt::Key_X, Qt::ControlModifier);
        base->guion.esperarMensaje(
            "Atención...",
            "No puede registrar más sobreturnos. Los siguientes turnos no se asignaron:\n23/11/2026 10:00",
            base::Icono::Advertencia);
        elegir("10:00");
        tecla(Qt::Key_V, Qt::ControlModifier);
        base->guion.esperarMensaje("Atención...", "En el horario elegido no se atiende.");
        elegir("10:20");
        tecla(Qt::Key_V, Qt::ControlModifier);
        QVERIFY(a->avisocorte->isVisible());

        tecla(Qt::Key_Right, Qt::ControlModifier);
        tecla(Qt::Key_Right, Qt::ControlModifier);
        base->guion.esperarMensaje("Aviso...", "La fecha seleccionada NO corresponde a un día laborable.");
        elegir("10:00");
        tecla(Qt::Key_V, Qt::ControlModifier);
        tecla(Qt::Key_Left, Qt::ControlModifier);
        elegir("10:40");
        a->tiempo->setInterval(1); // a tick meanwhile changes nothing
        QTest::qWait(20);
        a->tiempo->setInterval(30000);
        tecla(Qt::Key_V, Qt::ControlModifier);
        QCOMPARE(momento(id), QString("11-24 10:40"));
        QVERIFY(!a->avisocorte->isVisible());
        QCOMPARE(a->lista->claveActual(), id);

        tecla(Qt::Key_X, Qt::ControlModifier);
        base->otraTerminal()->execute("DELETE FROM [Agenda Turnos] WHERE id = ?", {id});
        base->guion.esperarMensaje("Atención...", yaNoExiste);
        elegir("09:00");
        tecla(Qt::Key_V, Qt::ControlModifier);
        QVERIFY(!a->avisocorte->isVisible());
    }

    void pega_en_un_dia_sin_horarios()
    {
        const qint64 id = base->turno(7, Consultorio::a("09:40"));
        base->conexion().execute("UPDATE [Agenda Turnos Horarios] SET fechahasta = #11/23/2026#");
        abrir();
        elegir("09:40");
        tecla(Qt::Key_X, Qt::ControlModifier);
        tecla(Qt::Key_Right, Qt::ControlModifier);
        QCOMPARE(a->lista->modelo().rowCount(), 0);
        QVERIFY(a->menupegar->isEnabled());
        tecla(Qt::Key_V, Qt::ControlModifier);
        auto *m = abierta<agendamodifturno>("agendamodifturno");
        QVERIFY(m);
        QCOMPARE(m->fechadia->fecha(), Consultorio::lunes().addDays(1));
        QCOMPARE(m->hora->text(), QString("09:40"));
        m->hora->setText("15:15");
        pulsar(m->guardar);
        QTRY_COMPARE(momento(id), QString("11-24 15:15"));
        QVERIFY(!a->avisocorte->isVisible());
        QTRY_COMPARE(a->lista->claveActual(), id);
    }

    void no_pasa_a_otro_profesional()
    {
        const qint64 otro = base->fila("Lista Doctores", {{"NomDoc", "Gómez"}, {"tipo", 0}});
        const qint64 id = base->turno(7, Consultorio::a("09:40"));
        base->turno(7, Consultorio::a("11:00"), {{"Doctor", otro}});
        abrir();
        elegir("09:40");
        tecla(Qt::Key_X, Qt::ControlModifier);
        ui::elegirId(*a->lisdocto, int(otro));
        elegir("11:00");
        base->guion.esperarMensaje(
            "Atención...", "El turno es de otro profesional: sólo puede pasarse a otro horario del mismo profesional.");
        tecla(Qt::Key_V, Qt::ControlModifier);
        QCOMPARE(momento(id), QString("11-23 09:40"));
    }

    void arrastra()
    {
        const qint64 id = base->turno(7, Consultorio::a("09:40"));
        base->turno(8, Consultorio::a("10:00"));
        base->turno(-111, Consultorio::a("10:20"));
        abrir();
        const QString pregunta = "¿Desea pasar el turno de Paz, Eva del 23/11/2026 09:40 al 23/11/2026 10:40?";
        base->guion.esperarPregunta("Confirmación...", pregunta, false);
        QVERIFY(soltarEn(id, "10:40"));
        QCOMPARE(momento(id), QString("11-23 09:40"));
        QVERIFY(soltarEn(id, "09:40")); // onto itself: nothing to ask
        QVERIFY(!soltarEn(id, "10:20")); // nobody attends there
        base->guion.esperarPregunta(
            "Confirmación...",
            "¿Desea pasar el turno de Paz, Eva del 23/11/2026 09:40 al 23/11/2026 10:00?\n"
            "En ese horario ya hay un turno asignado.",
            false);
        QVERIFY(soltarEn(id, "10:00"));
        base->guion.esperarPregunta("Confirmación...", pregunta, true);
        QVERIFY(soltarEn(id, "10:40"));
        QCOMPARE(momento(id), QString("11-23 10:40"));
        QCOMPARE(a->lista->claveActual(), id);

        QMimeData deOtro;
        deOtro.setText("7");
        QVERIFY(!soltar(a->lista->viewport(), a->lista->visualRect(a->lista->currentIndex()).center(), deOtro));

        // A day of the calendar is not an hour yet: it is shown, with the appointment cut.
        const std::unique_ptr<QMimeData> mime(mimeDeTurno(id));
        const QDate jueves = Consultorio::lunes().addDays(3);
        QVERIFY(soltar(a->fechadia, a->fechadia->lugarDe(jueves), *mime));
        QCOMPARE(a->dia().fecha, jueves);
        QVERIFY(a->avisocorte->isVisible());
        elegir("09:00");
        tecla(Qt::Key_V, Qt::ControlModifier);
        QCOMPARE(momento(id), QString("11-26 09:00"));

        base->quitarDerecho("accesomodificarturno");
        base->guion.esperarMensaje("Atención...", sinPermiso);
        tecla(Qt::Key_X, Qt::ControlModifier);
        QVERIFY(!a->avisocorte->isVisible());
    }

    void recorre_con_el_teclado()
    {
        base->turno(7, Consultorio::a("09:40"));
        base->turno(7, Consultorio::a("10:00"));
        abrir();
        elegir("09:00");
        tecla(Qt::Key_Down, Qt::ControlModifier); // 09:20 is over
        QCOMPARE(actual(), QString("10:20"));
        tecla(Qt::Key_Up, Qt::ControlModifier);
        QCOMPARE(actual(), QString("10:20"));
        elegir("10:00"); // an appointment: on another day the keyboard goes on at its hour
        tecla(Qt::Key_Left, Qt::ControlModifier);
        QCOMPARE(a->dia().fecha, Consultorio::lunes().addDays(-1));
        QCOMPARE(actual(), QString("10:00"));
        base->conexion().execute("UPDATE [Agenda Turnos Horarios] SET DoMaHasta = #12/30/1899 09:30#");
        tecla(Qt::Key_Left, Qt::ControlModifier);
        tecla(Qt::Key_Right, Qt::ControlModifier);
        QCOMPARE(actual(), QString("09:20")); // the nearest of a shorter day
        tecla(Qt::Key_Home, Qt::ControlModifier);
        QCOMPARE(a->dia().fecha, Consultorio::lunes());
        QCOMPARE(actual(), QString("10:00"));

        elegir("10:40");
        tecla(Qt::Key_Down, Qt::ControlModifier); // none is left today: the next ones are offered
        auto *libres = qobject_cast<agendalibres *>(ventanas->buscar("agendalibres"));
        QVERIFY(libres);
        activar(libres);
        QCOMPARE(libres->lista->modelo().rowCount(), diasConLugarBuscados);
        QCOMPARE(libres->lista->modelo().textoCelda(0, 4), QString("2"));
        libres->detodos->setChecked(true);
        libres->lista->setFocus();
        QTest::keyClick(libres->lista, Qt::Key_Down);
        QTest::keyClick(libres->lista, Qt::Key_Return);
        QTRY_COMPARE(a->dia().fecha, Consultorio::lunes().addDays(1));
        QCOMPARE(actual(), QString("09:00"));
    }

    void abre_la_ficha_del_paciente()
    {
        const qint64 id = base->turno(7, Consultorio::a("09:40"));
        base->turno(8, Consultorio::a("10:00"));
        abrir();
        elegir("09:40");
        base->guion.esperarMensaje("Atención...", noDisponible, base::Icono::Informacion);
        tecla(Qt::Key_Return);
        testigo("pacientes");
        tecla(Qt::Key_Return);
        QCOMPARE(Testigo::conDatos.value("nrohc").toInt(), 7);
        activar(a);
        base->guion.esperarMensaje(
            "Atención...", "Un Paciente está siendo atendido, para seguir debe cerrar la ficha del Paciente");
        a->menuficha->trigger();
        cerrar("pacientes");
        elegir("10:00");
        QCOMPARE(actual(1), QString("PACIENTE ELIMINADO DEL SISTEMA"));
        base->guion.esperarMensaje("Atención...", "Este paciente no Existe, probablemente a sido eliminado.");
        tecla(Qt::Key_F2);

        testigo("pacientesredu");
        base->conexion().execute("UPDATE [Lista Doctores] SET verfichareducida = -1");
        elegir("09:40");
        tecla(Qt::Key_F2);
        QCOMPARE(Testigo::abiertas, QStringList({"pacientes", "pacientesredu"}));
        cerrar("pacientesredu");

        base->delEquipo.modoTurno = true; // Enter acts on the appointment: its menu, instead of the file
        QStringList menu;
        QTimer::singleShot(0, a, [&] {
            if (auto *abierto = qobject_cast<QMenu *>(QApplication::activePopupWidget())) {
                for (const QAction *accion : abierto->actions())
                    menu << accion->objectName();
                abierto->close();
            }
        });
        tecla(Qt::Key_Return);
        for (const char *nombre :
             {"menuasignar",
              "menueliminar",
              "menubloquear",
              "menuficha",
              "menuobser",
              "menuhora",
              "menumotivo",
              "menullego",
              "menuatendido",
              "menupagar"})
            QVERIFY2(menu.contains(QLatin1String(nombre)), nombre);
        activar(a);
        tecla(Qt::Key_F, Qt::ControlModifier);
        QVERIFY(ventanas->buscar("resulbusque"));
        cerrar("resulbusque");

        base->conexion().execute("DELETE FROM [Agenda Turnos] WHERE id = ?", {id});
        base->guion.esperarMensaje("Atención...", yaNoExiste);
        tecla(Qt::Key_F2);
        QCOMPARE(a->dia().turnos, 1);
    }

    void ofrece_registrar_la_sesion()
    {
        const auto turno = [&](const char *hora) { return base->turno(7, Consultorio::a(hora), {{"llegado", true}}); };
        turno("09:00");
        const qint64 segundo = turno("09:20");
        base->fila("Pacientes Ordenes", {{"NroPaci", 7}, {"numero", 4}, {"sesiones", 5}, {"fecha", QDate(2026, 1, 1)}});
        const qint64 orden = base->fila(
            "Pacientes Ordenes", {{"NroPaci", 7}, {"numero", 5}, {"sesiones", 1}, {"fecha", QDate(2026, 2, 1)}});
        abrir();
        elegir("09:20");
        QTest::mouseClick(
            a->lista->viewport(), Qt::LeftButton, {}, a->lista->visualRect(a->lista->modelo().index(0, 1)).center());
        QVERIFY(a->detalle->text().contains("Paciente: Paz, Eva"));
        QVERIFY(a->detalleordenes->isVisible());
        tecla(Qt::Key_A, Qt::ControlModifier); // without a window for the session nothing is offered
        QVERIFY(!ventanas->buscar("agendaordenes"));
        testigo("nuevasesion");
        elegir("09:20");
        tecla(Qt::Key_A, Qt::ControlModifier);
        auto *elige = qobject_cast<agendaordenes *>(ventanas->buscar("agendaordenes"));
        QVERIFY(elige);
        activar(elige);
        QCOMPARE(elige->listaordenes->count(), 2);
        QTest::keyClick(elige->listaordenes, Qt::Key_Down);
        QTest::keyClick(elige->listaordenes, Qt::Key_Return);
        QTRY_COMPARE(Testigo::abiertas, QStringList("nuevasesion"));
        QCOMPARE(Testigo::conDatos.value("id").toLongLong(), segundo);
        QCOMPARE(Testigo::conDatos.value("idorden").toLongLong(), orden);
        QCOMPARE(base->cuenta("Atendido <> 0"), 2);
        cerrar("nuevasesion");
        tecla(Qt::Key_A, Qt::ControlModifier); // undone: nothing to offer
        QVERIFY(!ventanas->buscar("agendaordenes"));
    }

    void abre_lo_demas_por_su_nombre()
    {
        const qint64 id = base->turno(7, Consultorio::a("09:40"));
        abrir();
        elegir("09:40");
        for (QPushButton *boton : {a->pagar, a->buscar}) {
            base->guion.esperarMensaje("Atención...", noDisponible, base::Icono::Informacion);
            boton->click();
        }
        QCOMPARE(base->valor("SELECT COUNT(*) FROM [Historial]"), QString("0"));
        for (const char *nombre : {"agendapagocaja", "agendapagoorden", "elecpaci"})
            testigo(nombre);
        tecla(Qt::Key_G, Qt::ControlModifier);
        QCOMPARE(Testigo::abiertas.takeLast(), QString("agendapagoorden"));
        QCOMPARE(Testigo::conDatos.value("id").toLongLong(), id);
        cerrar("agendapagoorden");
        base->configurar("pagocaja", true);
        a->menupagar->trigger();
        QCOMPARE(Testigo::abiertas.takeLast(), QString("agendapagocaja"));
        cerrar("agendapagocaja");
        tecla(Qt::Key_F, Qt::ControlModifier);
        QCOMPARE(Testigo::conDatos.value("modo").toInt(), 3);
        cerrar("elecpaci");
        tecla(Qt::Key_T, Qt::ControlModifier);
        QVERIFY(ventanas->buscar("agendastodas"));
        QCOMPARE(
            base->valor("SELECT accion FROM [Historial]"),
            QString("Se ingresó a la ventana que muestra todas las agendas al mismo tiempo."));
    }

    void el_tic_no_molesta()
    {
        base->plantilla({QTime(6, 0), QTime(14, 0), {}, {}, 10});
        const qint64 id = base->turno(7, Consultorio::a("09:40"));
        abrir();
        a->resize(900, 480);
        elegir("11:00");
        tecla(Qt::Key_Down, Qt::ShiftModifier);
        const int lugar = a->lista->verticalScrollBar()->value();
        QVERIFY(lugar > 0);
        a->lisdocto->lineEdit()->setText("Gó");
        const auto elegidas = a->lista->clavesElegidas();
        base->turno(7, Consultorio::a("06:00"));
        a->tiempo->setInterval(1);
        QTRY_COMPARE(a->dia().turnos, 2);
        QCOMPARE(a->lista->clavesElegidas(), elegidas);
        QCOMPARE(a->lista->verticalScrollBar()->value(), lugar);
        QCOMPARE(a->lisdocto->currentText(), QString("Gó"));

        elegir("09:40");
        tecla(Qt::Key_F7);
        auto *editor = qobject_cast<agendaobservacion *>(ventanas->buscar("agendaobservacion"));
        QVERIFY(editor);
        editor->observacionestur->setPlainText("a medio escri");
        base->turno(7, Consultorio::a("06:10"));
        QTRY_COMPARE(a->dia().turnos, 3);
        QCOMPARE(editor->observacionestur->toPlainText(), QString("a medio escri"));
        QCOMPARE(a->lista->claveActual(), id);
        a->tiempo->setInterval(30000);
    }

    void se_abre_en_un_turno()
    {
        const QDate fecha(2026, 12, 3);
        const qint64 otro = base->fila("Lista Doctores", {{"NomDoc", "Gómez"}, {"tipo", 0}});
        const qint64 id = base->turno(7, Consultorio::a(fecha, "18:15"), {{"Doctor", otro}});
        abrir({{"id", id}});
        QCOMPARE(a->dia().fecha, fecha);
        QCOMPARE(a->dia().doctor, int(otro));
        QCOMPARE(a->lista->claveActual(), id);
        abrir({{"doctor", base->usuario}, {"fecha", Consultorio::lunes()}, {"hora", "10:20"}});
        QCOMPARE(actual(), QString("10:20"));
        base->guion.esperarMensaje("Atención...", yaNoExiste);
        QVERIFY(!ventanas->abrir("agendas", {{{"id", id + 50}}, {}}));
        QCOMPARE(a->dia().fecha, Consultorio::lunes());
    }

    void sin_profesionales_ni_usuario()
    {
        base->turno(7, Consultorio::a("09:40"));
        base->conexion().execute("UPDATE [Lista Doctores] SET tipo = 1");
        abrir();
        QCOMPARE(a->lista->modelo().rowCount(), 0);
        QVERIFY(!a->nuevo->isEnabled());
        for (const Qt::Key cual : {Qt::Key_Return, Qt::Key_F2, Qt::Key_F3, Qt::Key_F6, Qt::Key_Delete, Qt::Key_F9})
            tecla(cual);
        for (const Qt::Key cual : {Qt::Key_N, Qt::Key_L, Qt::Key_A, Qt::Key_G, Qt::Key_X, Qt::Key_V, Qt::Key_Down})
            tecla(cual, Qt::ControlModifier);

        base->conexion().execute("UPDATE [Lista Doctores] SET tipo = 0");
        base->usuario = 0;
        a->actualizar();
        a->lisdocto->setCurrentIndex(0);
        elegir("09:40");
        for (const Qt::Key cual : {Qt::Key_L, Qt::Key_A, Qt::Key_X}) {
            base->guion.esperarMensaje(
                "Atención...", "Defina un Usuario Activo válido desde la ventana Configuración.");
            tecla(cual, Qt::ControlModifier);
        }
        QCOMPARE(base->cuenta("llegado <> 0"), 0);
    }
};

PRUEBA(PruebaOperaciones)
#include "PruebaOperaciones.moc"
