#include "ConVentanas.h"
#include "agenda/DiasNoLaborables.h"
#include "agenda/forms/CalendarioMes.h"
#include "agenda/forms/CampoHora.h"
#include "agenda/forms/GrillaTurnos.h"
#include "agenda/forms/PanelReserva.h"
#include "agenda/forms/agendahorarios.h"
#include "agenda/forms/agendamodifturno.h"
#include "agenda/forms/agendamotivo.h"
#include "agenda/forms/agendanuevoturno.h"
#include "agenda/forms/agendaobservacion.h"
#include "agenda/forms/agendas.h"
#include "patients/forms/CampoPaciente.h"
#include "ui/CampoFecha.h"
#include "ui/ListaCombo.h"

#include <QComboBox>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QSpinBox>
#include <QTimer>
#include <QToolButton>

using namespace agenda;

namespace {

/// Stands in for the patient chooser: whoever opens it gets patient 7.
class Elector : public ui::Ventana
{
public:
    Elector(db::Entorno &e, ui::Ventanas &v)
        : Ventana(e, v, "elecpaci", "Elección del Paciente")
    {
    }
    bool preparar(const ui::Pedido &pedido) override
    {
        modo = pedido.datos.value("modo").toInt();
        QTimer::singleShot(0, this, [this] { terminar({{"nrohc", 7}, {"nombre", "Paz, Eva"}}); });
        return true;
    }
    static inline int modo = 0;
};

} // namespace

/// The windows, driven as a person does.
class PruebaVentanas : public ConVentanas
{
    Q_OBJECT

    agendas *abrirAgenda(QDate fecha = Consultorio::lunes()) { return abrir<agendas>("agendas", {{"fecha", fecha}}); }
    static void elegir(agendas *a, const QString &hora) { elegirHora(a->lista, hora); }
    static QString celda(agendas *a, int columna)
    {
        return a->lista->modelo().index(a->lista->filaActual(), columna).data().toString();
    }

private slots:
    void init()
    {
        preparar();
        ventanas->registrar("elecpaci", ui::Modo::Dialogo, [this] { return new Elector(*base, *ventanas); });
        base->plantilla(Consultorio::maniana(), {-1, 0, false, false});
        base->paciente(7, "Paz", "Eva");
    }
    void cleanup() { terminar(); }

    void da_un_turno_llega_y_es_atendido()
    {
        agendas *a = abrirAgenda();
        QVERIFY(a);
        QCOMPARE(a->lisdocto->currentText(), QString("Juan Pérez"));
        QCOMPARE(a->fechaactiva->text(), QString("Lunes 23 de noviembre de 2026"));
        elegir(a, "10:20");
        QVERIFY(!a->sinollego->isEnabled());
        QTest::keyClick(a->lista, Qt::Key_Return);

        auto *n = abierta<agendanuevoturno>("agendanuevoturno");
        QVERIFY(n);
        QCOMPARE(n->panel->listaturnos->count(), 1);
        QCOMPARE(n->panel->listaturnos->item(0)->text(), QString("23/11/2026 10:20"));
        base->guion.esperarMensaje("Aviso...", "Debe seleccionar el paciente al que le asignará un turno.");
        pulsar(n->guardar);
        pulsar(n->elegirpaciente);
        QTRY_COMPARE(n->paciente->text(), QString("Paz, Eva"));
        QCOMPARE(Elector::modo, 2);
        n->panel->observacionestur->setPlainText("ayuno");
        QTest::keyClick(n, Qt::Key_S, Qt::ControlModifier);
        QTRY_VERIFY(!ventanas->buscar("agendanuevoturno"));
        activar(a);

        QCOMPARE(celda(a, 0), QString("10:20"));
        QCOMPARE(celda(a, 1), QString("Paz, Eva"));
        QCOMPARE(celda(a, 7), QString("NO"));
        QVERIFY(a->detalle->text().contains("Paciente: Paz, Eva"));
        QVERIFY(a->fechadia->conTurnos().contains(Consultorio::lunes()));
        QVERIFY(a->listatemp->findItems("10:20  Ocupado", Qt::MatchExactly).size() == 1);

        base->guion.esperarMensaje(
            "Atención...", "Antes de marcar un turno como 'Atendido', primero debe indicar que 'llegó'.");
        QTest::keyClick(a->lista, Qt::Key_A, Qt::ControlModifier);
        QTest::keyClick(a->lista, Qt::Key_L, Qt::ControlModifier);
        QCOMPARE(celda(a, 7), QString("SI"));
        pulsar(a->sinoatendido);
        QCOMPARE(celda(a, 8), QString("SI"));
        const auto fondo = a->lista->modelo().index(a->lista->filaActual(), 1).data(Qt::BackgroundRole);
        QCOMPARE(fondo.value<QColor>(), QColor("#CFFBCF"));
        QCOMPARE(base->cuenta("llegado <> 0 and Atendido <> 0"), 1);
    }

    void bloquea_y_libera_con_el_teclado()
    {
        agendas *a = abrirAgenda();
        elegir(a, "09:40");
        QTest::keyClick(a->lista, Qt::Key_Down, Qt::ShiftModifier);
        QTest::keyClick(a->lista, Qt::Key_F6);
        QCOMPARE(base->cuenta("NroHC = -111"), 2);
        elegir(a, "09:40");
        QCOMPARE(celda(a, 1), QString("========= NO SE ATIENDE =========="));
        QVERIFY(!a->sinollego->isEnabled());
        base->guion.esperarPregunta(
            "Confirmación...", "¿Seguro que desea Eliminar el/los turno/s seleccionado/s?", true);
        QTest::keyClick(a->lista, Qt::Key_Delete);
        QCOMPARE(base->cuenta("NroHC = -111"), 1);
    }

    void otra_terminal_cambia_el_dia()
    {
        const qint64 id = base->turno(7, Consultorio::a("09:20"));
        agendas *a = abrirAgenda();
        elegir(a, "10:00");
        // Another station books: the tick shows it and leaves the selection.
        base->turno(7, Consultorio::a("09:00"));
        base->turno(7, Consultorio::a("09:05"));
        QVERIFY(a->tiempo->isActive());
        QCOMPARE(a->tiempo->interval(), 30000);
        a->tiempo->setInterval(1);
        QTRY_COMPARE(a->dia().turnos, 3);
        base->delEquipo.segundosAgenda = 5;
        base->configurar("primerdiaagendaturnos", 1);
        ventanas->refrescar();
        QCOMPARE(a->tiempo->interval(), 5000);
        a->tiempo->setInterval(30000);
        QCOMPARE(celda(a, 0), QString("10:00"));
        QCOMPARE(celda(a, 1), QString());

        elegir(a, "09:20");
        base->conexion().execute("DELETE FROM [Agenda Turnos] WHERE id = ?", {id});
        base->guion.esperarMensaje("Atención...", yaNoExiste);
        pulsar(a->sinollego);
        QCOMPARE(a->dia().turnos, 2);
    }

    void recorre_el_calendario()
    {
        base->turno(7, Consultorio::a(QDate(2027, 2, 28), "09:00"));
        QVERIFY(!agregarDiasNoLaborables(base->conexion(), base->usuario, {{0, 25, 12, 0}}));
        agendas *a = abrirAgenda(QDate(2027, 1, 31));
        pulsar(a->fechamesmas);
        QCOMPARE(a->dia().fecha, QDate(2027, 2, 28));
        QVERIFY(a->fechadia->conTurnos().contains(QDate(2027, 2, 28)));
        pulsar(a->fechaaniomenos);
        QCOMPARE(a->dia().fecha, QDate(2026, 2, 28));
        pulsar(a->hoy);
        QCOMPARE(a->dia().fecha, Consultorio::lunes());
        QTest::mouseClick(a->fechadia, Qt::LeftButton, {}, a->fechadia->lugarDe(Consultorio::lunes().addDays(3)));
        QCOMPARE(a->dia().fecha, Consultorio::lunes().addDays(3));
        a->fechadia->setFocus();
        QTest::keyClick(a->fechadia, Qt::Key_PageDown);
        QTest::keyClick(a->fechadia, Qt::Key_Left);
        QCOMPARE(a->dia().fecha, QDate(2026, 12, 25));
        QVERIFY(a->fechaactiva->text().endsWith("No se atiende"));
    }

    void informa_el_limite_y_queda_abierta()
    {
        base->turno(7, Consultorio::a("09:40"));
        agendas *a = abrirAgenda();
        elegir(a, "09:40");
        pulsar(a->nuevo);
        auto *n = abierta<agendanuevoturno>("agendanuevoturno");
        QVERIFY(n);
        pulsar(n->elegirpaciente);
        QTRY_VERIFY(n->hayCambios());
        base->guion.esperarMensaje(
            "Atención...",
            "No puede registrar más sobreturnos. Los siguientes turnos no se asignaron:\n23/11/2026 09:40",
            base::Icono::Advertencia);
        pulsar(n->guardar);
        QVERIFY(n->isVisible());

        activar(n);
        n->panel->nuevoturno->setFocus();
        n->panel->nuevoturno->setText("mañana");
        base->guion.esperarMensaje("ERROR...", "ERROR en la Fecha del Turno.");
        QTest::keyClick(n->panel->nuevoturno, Qt::Key_Return);
        n->panel->nuevoturno->setText("24/11/26 9:00");
        QTest::keyClick(n->panel->nuevoturno, Qt::Key_Return);
        QCOMPARE(n->panel->listaturnos->count(), 2);
        base->guion.esperarMensaje(
            "Atención...",
            "Los siguientes sobreturnos no se asignaron ya que se alcanzó el límite permitido:\n23/11/2026 09:40",
            base::Icono::Advertencia);
        pulsar(n->guardar);
        QTRY_VERIFY(!ventanas->buscar("agendanuevoturno"));
        QCOMPARE(base->cuenta(), 2);
    }

    void cambia_hora_y_observaciones()
    {
        const qint64 id = base->turno(7, Consultorio::a("09:40"));
        agendas *a = abrirAgenda();
        elegir(a, "09:40");
        pulsar(a->modifobservacion);
        auto *o = abierta<agendaobservacion>("agendaobservacion");
        QVERIFY(o);
        o->observacionestur->setPlainText("dos\nrenglones");
        pulsar(o->guardar);
        QTRY_COMPARE(a->dia().filas[2].observaciones, QString("dos\nrenglones"));
        activar(a);

        elegir(a, "09:40");
        QTest::keyClick(a->lista, Qt::Key_F9);
        auto *m = abierta<agendamodifturno>("agendamodifturno");
        QVERIFY(m);
        QTest::keyClick(m->fechadia, Qt::Key_Right);
        m->listahoras->setCurrentRow(4);
        QCOMPARE(m->hora->text(), QString("10:20"));
        pulsar(m->guardar);
        QTRY_COMPARE(a->dia().turnos, 0);
        QCOMPARE(
            base->valor("SELECT Fecha FROM [Agenda Turnos] WHERE id = ?", {id}).left(16), QString("2026-11-24 10:20"));
    }

    void edita_la_plantilla()
    {
        agendas *a = abrirAgenda();
        pulsar(a->horarios);
        auto *h = abierta<agendahorarios>("agendahorarios");
        QVERIFY(h);
        QCOMPARE(h->listaplantillas->count(), 1);
        QVERIFY(!h->hayCambios());
        CampoHora *desde = h->dias[1].taDesde;
        desde->setFocus();
        QTest::keyClicks(desde, "1530");
        h->dias[1].taHasta->setText("25");
        QVERIFY(h->hayCambios());
        base->guion.esperarMensaje("Aviso...", "ERROR en la hora ingresada, debe ser del tipo 'hh:mm'.");
        pulsar(h->guardar);
        QCOMPARE(desde->text(), QString("15:30"));
        h->dias[1].taHasta->setText("16");
        ui::elegirId(*h->dias[1].duracion, 30);
        pulsar(h->guardar);
        QVERIFY(!h->hayCambios());
        QCOMPARE(a->dia().grilla.cantidad(), 5); // 09:00 to 11:00 every 30 minutes, 15:30
        QCOMPARE(a->dia().grilla.celda(5), QString("15:30"));

        pulsar(h->nuevo);
        h->cantidadsobreturnos->setValue(2);
        const QString descartar = "La plantilla tiene cambios sin guardar. ¿Desea descartarlos?";
        base->guion.esperarPregunta("Atención...", descartar, false);
        QTest::mouseClick(
            h->listaplantillas->viewport(),
            Qt::LeftButton,
            {},
            h->listaplantillas->visualItemRect(h->listaplantillas->item(0)).center());
        QTRY_COMPARE(base->guion.dichos().last(), "Atención...|" + descartar);
        QTRY_COMPARE(h->listaplantillas->currentRow(), -1);
        QVERIFY(h->listaplantillas->selectedItems().isEmpty());
        QCOMPARE(h->cantidadsobreturnos->value(), 2);
        base->guion.esperarMensaje("Aviso...", "Debe ingresar la Fecha Inicial.");
        pulsar(h->guardar);
        ui::elegirId(*h->dia, 23);
        pulsar(h->agregardia);
        QCOMPARE(h->listadias->item(0)->text(), QString("El día 23 de cada mes de cada año."));
        QVERIFY(a->fechaactiva->text().endsWith("No se atiende"));
    }

    void sin_permiso_no_se_escribe_en_vano()
    {
        const qint64 id = base->turno(7, Consultorio::a("09:40"));
        base->quitarDerecho("accesomodificarturno");
        base->quitarDerecho("accesoagendas");
        for (const char *nombre : {"agendamotivo", "agendaobservacion", "agendamodifturno", "agendas"}) {
            base->guion.esperarMensaje("Atención...", sinPermiso);
            QVERIFY2(!ventanas->abrir(nombre, {{{"id", id}}, {}}), nombre);
        }
    }

    void el_motivo_obligatorio_no_se_quita()
    {
        const qint64 id = base->turno(7, Consultorio::a("09:40"), {{"motivo", 1}});
        base->configurar("forzarmotivo", true);
        auto *m = abrir<agendamotivo>("agendamotivo", {{"id", id}});
        QVERIFY(m);
        ui::elegirId(*m->motivo, 0);
        base->guion.esperarMensaje("Aviso...", "Debe indicar el motivo de la consulta.");
        pulsar(m->guardar);
        QVERIFY(m->motivo->hasFocus());
        QCOMPARE(base->cuenta("motivo = 1"), 1);
    }

    void cada_letra_una_vez_data()
    {
        QTest::addColumn<int>("cuantas");
        for (const auto &[nombre, cuantas] :
             {std::pair("agendas", 13),
              {"agendastodas", 10},
              {"agendahorarios", 10},
              {"agendasnolabo", 8},
              {"agendaferiados", 6},
              {"agendanuevoturno", 9},
              {"agendanuevahora", 6},
              {"agendanuevoturnoctrln", 10},
              {"agendamodifturno", 5},
              {"agendamanana", 6},
              {"agendaexportar", 5},
              {"resulbusque", 5},
              {"telefonos", 8},
              {"telefonomodif", 6}})
            QTest::newRow(nombre) << cuantas;
    }
    void cada_letra_una_vez()
    {
        QFETCH(int, cuantas);
        const qint64 id = base->turno(7, Consultorio::a("09:20"));
        const bool deTelefono = QByteArray(QTest::currentDataTag()) == "telefonomodif";
        const QVariantMap datos{
            {"doctor", base->usuario}, {"turnos", QStringList()}, {"id", deTelefono ? 0 : id}, {"nrohc", 7}};
        const ui::Ventana *ventana = ventanas->abrir(QTest::currentDataTag(), {datos, {}});
        QVERIFY(ventana);
        QStringList letras;
        for (const QWidget *pieza : ventana->findChildren<QWidget *>()) {
            const QString texto = pieza->property("text").toString();
            if (const auto lugar = texto.indexOf('&'); lugar >= 0 && lugar + 1 < texto.size())
                letras << texto.mid(lugar + 1, 1).toUpper();
        }
        QVERIFY2(letras.size() >= cuantas, qPrintable(letras.join(' ')));
        letras.sort();
        QVERIFY2(QStringList(letras).removeDuplicates() == 0, qPrintable(letras.join(' ')));
    }

    void lee_horas_escritas()
    {
        QCOMPARE(*leerHora(" 8 "), QTime(8, 0));
        QCOMPARE(*leerHora("0830"), QTime(8, 30));
        QCOMPARE(*leerHora("8.05"), QTime(8, 5));
        for (const char *mala : {"", "24", "8:60", "ocho", "830:1"})
            QVERIFY2(!leerHora(mala), mala);
    }
};

PRUEBA(PruebaVentanas)
#include "PruebaVentanas.moc"
