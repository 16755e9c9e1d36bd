#include "ConVentanas.h"
#include "agenda/DiasNoLaborables.h"
#include "agenda/forms/CampoHora.h"
#include "agenda/forms/VistaSemana.h"
#include "agenda/forms/agendaferiados.h"
#include "agenda/forms/agendahorarios.h"
#include "agenda/forms/agendasnolabo.h"
#include "ui/CampoFecha.h"
#include "ui/ListaCombo.h"

#include <QCheckBox>
#include <QComboBox>
#include <QImage>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QSpinBox>
#include <QTreeWidget>

using namespace agenda;

/// The windows of hours and days off, driven as a person does.
class PruebaHorarios : public ConVentanas
{
    Q_OBJECT

    int otro = 0;

    template <typename Form>
    Form *abrir(const char *nombre)
    {
        return ConVentanas::abrir<Form>(nombre, {{"doctor", base->usuario}});
    }
    static QString cual(QWidget *w) { return w ? w->objectName() : QString(); }
    int cuantos(int doctor) { return int(listarDiasNoLaborables(base->conexion(), doctor).size()); }

private slots:
    void init()
    {
        preparar();
        otro = int(base->fila("Lista Doctores", {{"NomDoc", "Otra"}, {"tipo", 0}}));
    }
    void cleanup() { terminar(); }

    void reune_fechas_y_las_guarda()
    {
        auto *n = abrir<agendasnolabo>("agendasnolabo");
        QVERIFY(n);
        base->guion.esperarMensaje("Aviso...", "Debe seleccionar la/s fecha/s que no se atenderá.");
        QTest::keyClick(n, Qt::Key_S, Qt::ControlModifier);
        QCOMPARE(cual(n->focusWidget()), QString("desde"));

        QTest::keyClicks(n->focusWidget(), "28/12/26");
        QTest::keyClick(n->focusWidget(), Qt::Key_Return);
        QCOMPARE(cual(n->focusWidget()), QString("hasta"));
        QTest::keyClicks(n->focusWidget(), "3/1/27");
        QTest::keyClick(n->focusWidget(), Qt::Key_Return);
        QCOMPARE(n->fechas->item(0)->text(), QString("Del 28/12/2026 al 03/01/2027 (7 días)"));
        QCOMPARE(cual(n->focusWidget()), QString("desde"));
        QVERIFY(n->hayCambios());
        QTest::keyClicks(n->focusWidget(), "x");
        base->guion.esperarMensaje("Aviso...", "ERROR en la Fecha Inicial.");
        pulsar(n->agregar);
        n->desde->setText("24/2/27");
        pulsar(n->agregar);
        n->fechas->setFocus();
        n->fechas->setCurrentRow(1);
        QTest::keyClick(n->fechas, Qt::Key_Delete); // takes it from the list: nothing is asked
        QCOMPARE(n->fechas->count(), 1);
        n->desde->setText("1/5/27"); // typed and not yet in the list
        n->paratodos->setChecked(true);
        pulsar(n->guardar);
        QCOMPARE(n->aviso->text(), QString("Se agregaron 16 fechas."));
        QVERIFY(!n->hayCambios());
        QCOMPARE(cuantos(base->usuario), 8);
        QCOMPARE(cuantos(otro), 8);
        QCOMPARE(n->lista->modelo().textoCelda(0, 0), QString("El día 1 de Mayo de 2027."));
        QCOMPARE(n->lista->modelo().textoCelda(0, 1), QString("Sábado"));

        n->paratodos->setChecked(false);
        n->lista->elegirFila(0);
        n->lista->setFocus();
        base->guion.esperarPregunta("Confirmación...", "¿Seguro que desea eliminar la fecha seleccionada?", true);
        QTest::keyClick(n->lista, Qt::Key_Delete);
        QCOMPARE(cuantos(base->usuario), 7);
        QCOMPARE(cuantos(otro), 8);
        n->lista->elegirFila(0);
        base->conexion().execute("DELETE FROM [Agenda Turnos No Se Atiende] WHERE iddoctor = ?", {base->usuario});
        base->guion.esperarPregunta("Confirmación...", "¿Seguro que desea eliminar la fecha seleccionada?", true);
        base->guion.esperarMensaje("Atención...", yaNoExiste);
        pulsar(n->eliminar);
        QCOMPARE(n->lista->modelo().rowCount(), 0);
        ui::elegirId(*n->lisdocto, otro);
        QCOMPARE(n->lista->modelo().rowCount(), 8);
    }

    void propone_los_feriados()
    {
        QVERIFY(!agregarDiasNoLaborables(base->conexion(), base->usuario, {{0, 25, 12, 0}}));
        auto *n = abrir<agendasnolabo>("agendasnolabo2");
        QVERIFY(n);
        pulsar(n->feriados);
        auto *f = qobject_cast<agendaferiados *>(ventanas->buscar("agendaferiados"));
        QVERIFY(f && QTest::qWaitForWindowExposed(f));
        QCOMPARE(f->anio->value(), 2026);
        QCOMPARE(ui::idElegido(*f->lisdocto), base->usuario);
        f->anio->setValue(2025);
        QCOMPARE(f->lista->topLevelItemCount(), 16);
        const QTreeWidgetItem *navidad = f->lista->topLevelItem(15);
        QVERIFY(navidad->isDisabled() && navidad->checkState(0) == Qt::Unchecked);
        QCOMPARE(navidad->text(4), QString("Ya está"));
        ui::elegirId(*f->lisdocto, 0);
        QCOMPARE(f->lista->topLevelItem(15)->text(4), QString("Ya está en 1 de 2"));

        pulsar(f->ninguno);
        base->guion.esperarMensaje("Aviso...", "Debe seleccionar la/s fecha/s que no se atenderá.");
        pulsar(f->guardar);
        pulsar(f->todos);
        f->lista->setCurrentItem(f->lista->topLevelItem(0));
        f->lista->setFocus();
        QTest::keyClick(f->lista, Qt::Key_Space);
        ventanas->refrescar({"agendaferiados"}); // keeps what was ticked
        QCOMPARE(f->lista->topLevelItem(0)->checkState(0), Qt::Unchecked);
        pulsar(f->guardar);
        QTRY_VERIFY(!ventanas->buscar("agendaferiados"));
        QCOMPARE(cuantos(base->usuario), 15);
        QCOMPARE(cuantos(otro), 15);
        QCOMPARE(n->aviso->text(), QString("Se agregaron 29 fechas."));
        QCOMPARE(n->lista->modelo().rowCount(), 15);
    }

    void dibuja_lo_que_se_escribe()
    {
        base->configurar("primerdiaagendaturnos", "1");
        auto *h = abrir<agendahorarios>("agendahorarios2");
        QVERIFY(h);
        QCOMPARE(h->total->text(), QString("Total de la semana: sin turnos"));
        QVERIFY(h->avisos->isHidden());
        // From the dates on, Tab goes along the days as the week begins here.
        h->fechahasta->setFocus();
        QTest::keyClick(h->focusWidget(), Qt::Key_Tab);
        QCOMPARE(cual(h->focusWidget()), QString("LuMaDesde"));
        QTest::keyClicks(h->focusWidget(), "9");
        QCOMPARE(h->avisos->text(), QString("Lunes a la mañana: falta la hora final."));
        QTest::keyClick(h->focusWidget(), Qt::Key_Tab);
        QTest::keyClicks(h->focusWidget(), "1010");
        QCOMPARE(h->total->text(), QString("Total de la semana: 4 turnos"));
        QVERIFY(h->avisos->isHidden());
        ui::elegirId(*h->dias[1].duracion, 5);
        QCOMPARE(h->semana->semana().turnos[1], 14);
        const auto lunes = h->semana->lugarDe(h->semana->semana().franjas.front());
        h->dias[0].maDesde->setText("9");
        h->dias[0].maHasta->setText("10");
        const auto domingo = h->semana->lugarDe(h->semana->semana().franjas.front());
        QVERIFY(domingo.left() > lunes.right());
        QVERIFY(QRectF(h->semana->rect()).contains(domingo));

        // Del in the list of days off does not reach the template.
        QVERIFY(!agregarDiasNoLaborables(base->conexion(), base->usuario, {{0, 25, 12, 0}}));
        ventanas->refrescar({"agendahorarios2"});
        h->listadias->setCurrentRow(0);
        h->listadias->setFocus();
        base->guion.esperarPregunta("Confirmación...", "¿Seguro que desea eliminar la fecha seleccionada?", true);
        QTest::keyClick(h->listadias, Qt::Key_Delete);
        QCOMPARE(cuantos(base->usuario), 0);
        QVERIFY(h->hayCambios());

        base->guion.esperarPregunta(
            "Confirmación...",
            "Con «Todos los días», «De cada mes» y «De cada año» no se atenderá nunca. ¿Desea agregarlo?",
            false);
        pulsar(h->agregardia);
        QCOMPARE(cuantos(base->usuario), 0);

        h->fechadesde->setText("1/1/2027");
        h->fechahasta->setText("31/12/2027");
        pulsar(h->guardar);
        QCOMPARE(h->listaplantillas->count(), 1);
        // Deleted at another station while it was changed: what is typed can still be stored.
        base->conexion().execute("DELETE FROM [Agenda Turnos Horarios]");
        h->dias[0].maHasta->setText("11");
        base->guion.esperarMensaje("Atención...", yaNoExiste);
        pulsar(h->guardar);
        QCOMPARE(h->listaplantillas->count(), 0);
        pulsar(h->guardar);
        QCOMPARE(h->listaplantillas->count(), 1);
        QVERIFY(!h->hayCambios());
        QVERIFY(elegirPlantilla(base->conexion(), base->usuario, {2027, 5, 2})->dias[0].maHasta == QTime(11, 0));
    }

    void pinta_en_todo_tamano_data()
    {
        QTest::addColumn<QSize>("tamano");
        QTest::addColumn<bool>("oscuro");
        QTest::newRow("normal") << QSize(460, 500) << false;
        QTest::newRow("normal, oscuro") << QSize(460, 500) << true;
        QTest::newRow("angosto") << QSize(20, 300) << false;
        QTest::newRow("bajo") << QSize(400, 10) << false;
    }
    void pinta_en_todo_tamano()
    {
        QFETCH(QSize, tamano);
        QFETCH(bool, oscuro);
        QTest::failOnWarning(QRegularExpression("QPainter|nan"));
        VistaSemana vista;
        QPalette colores = vista.palette();
        colores.setColor(QPalette::Base, oscuro ? QColor("#1d2227") : Qt::white);
        vista.setPalette(colores);
        vista.resize(tamano);
        const auto retrato = [&] {
            QImage imagen(tamano, QImage::Format_RGB32);
            vista.render(&imagen);
            return imagen;
        };
        const QImage vacia = retrato(); // never given a week
        std::array<Jornada, 7> dias{};
        vista.setSemana(semanaDe(dias));
        QCOMPARE(retrato(), vacia);
        dias[3] = {QTime(8, 0), QTime(12, 0), QTime(11, 0), QTime(23, 59), 60};
        vista.setSemana(semanaDe(dias));
        const QImage llena = retrato();
        if (tamano != QSize(460, 500))
            return;
        const auto pixel = [&](int i) {
            const QRectF lugar = vista.lugarDe(vista.semana().franjas[size_t(i)]);
            return llena.pixelColor(int(lugar.center().x()), int(lugar.top()) + 5);
        };
        QVERIFY(pixel(0) != vacia.pixelColor(230, 250));
        QVERIFY(pixel(0).name() != pixel(1).name());
    }
};

PRUEBA(PruebaHorarios)
#include "PruebaHorarios.moc"
