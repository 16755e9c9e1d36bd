#include "ConVentanas.h"
#include "agenda/forms/Enlaces.h"
#include "agenda/forms/GrillaTurnos.h"
#include "agenda/forms/agendaexportar.h"
#include "agenda/forms/agendamanana.h"
#include "agenda/forms/agendas.h"
#include "printing/forms/Registro.h"
#include "ui/CampoFecha.h"
#include "ui/ListaCombo.h"
#include "ui/Preferencias.h"

#include <QCheckBox>
#include <QClipboard>
#include <QComboBox>
#include <QLabel>
#include <QPlainTextEdit>
#include <QUrl>

using namespace agenda;

namespace {

/// Opens nothing and remembers what it was to open.
class EnlacesAnotados final : public Enlaces
{
public:
    bool abrir(const QUrl &direccion) override
    {
        pedidos << direccion;
        return hayPrograma;
    }
    QList<QUrl> pedidos;
    bool hayPrograma = true;
};

QByteArray contenido(const QString &archivo)
{
    QFile f(archivo);
    return f.open(QFile::ReadOnly) ? f.readAll() : QByteArray();
}

} // namespace

/// What leaves the window of the agenda, as a person makes it leave.
class PruebaVentanasSalidas : public ConVentanas
{
    Q_OBJECT

    std::shared_ptr<EnlacesAnotados> enlaces;

    agendas *abrirAgenda(QDate fecha = Consultorio::lunes())
    {
        auto *a = qobject_cast<agendas *>(ventanas->abrir("agendas", {{{"fecha", fecha}}, {}}));
        return a && QTest::qWaitForWindowExposed(a) ? a : nullptr;
    }
    agendamanana *abrirAvisos()
    {
        pulsar(abrirAgenda()->manana);
        return qobject_cast<agendamanana *>(ventanas->buscar("agendamanana"));
    }
    [[nodiscard]] QString acciones()
    {
        return base->valor("SELECT COUNT(*) FROM [Historial] WHERE ventana = 'Agenda de Turnos'");
    }

private slots:
    void init()
    {
        enlaces = std::make_shared<EnlacesAnotados>();
        preparar(enlaces);
        printing::registrarVentanas(*base, *ventanas);
        base->plantilla(Consultorio::maniana());
        base->paciente(7, "Paz", "Eva", {{"TelCelular", "0341 156123456"}});
        base->paciente(8, "O'Higgins", "Ana", {{"Tel", "4123456"}});
    }
    void cleanup()
    {
        terminar();
        ui::Preferencias::usarArchivo({});
    }

    void imprime_y_copia_atendidos()
    {
        agendas *a = abrirAgenda();
        QVERIFY(a);
        QTest::keyClick(a->lista, Qt::Key_P, Qt::ControlModifier);
        ui::Ventana *vista = ventanas->buscar("vistaprevia");
        QVERIFY(vista);
        vista->close();

        QApplication::clipboard()->setText("de antes");
        base->guion.esperarMensaje(
            "Aviso", "No hay turnos atendidos en el día seleccionado.", base::Icono::Informacion);
        pulsar(a->plantillatur);
        QCOMPARE(QApplication::clipboard()->text(), QString("de antes"));
        base->turno(8, base->a("09:20"), {{"llegado", true}, {"Atendido", true}});
        base->guion.esperarMensaje(
            "Aviso",
            "Se copió en el portapapeles la plantilla de 'turnos atendidos' del día seleccionado.",
            base::Icono::Informacion);
        pulsar(a->plantillatur);
        QVERIFY(QApplication::clipboard()->text().contains("\n23/11/2026\t09:20\tO'Higgins, Ana\t"));
    }

    void exporta_el_calendario()
    {
        base->turno(7, base->a(base->lunes().addDays(30), "09:00"));
        pulsar(abrirAgenda()->exportarics);
        auto *e = qobject_cast<agendaexportar *>(ventanas->buscar("agendaexportar"));
        QVERIFY(e);
        QCOMPARE(e->profesional->text(), QString("Juan Pérez"));
        QCOMPARE(e->desde->text() + e->hasta->text(), QString("23/11/202623/12/2026"));
        QVERIFY(!e->connombres->isChecked());

        e->hasta->setText("32/1/2027");
        base->guion.esperarMensaje("Aviso...", "ERROR en la Fecha Final.");
        pulsar(e->guardar);
        e->hasta->setFecha(base->lunes().addDays(30));
        const QString archivo = base->carpetaPrograma() + "/turnos.ics";
        base->guion.esperarDestino("Exportar", std::nullopt); // changed her mind
        pulsar(e->guardar);
        base->guion.esperarDestino("Exportar", base->carpetaPrograma() + "/no/hay.ics");
        base->guion.esperarMensaje("ERROR...", "No se pudo escribir el archivo: No such file or directory");
        pulsar(e->guardar);
        QCOMPARE(acciones(), QString("0"));
        base->guion.esperarDestino("Exportar", archivo);
        base->guion.esperarMensaje("Listo", "Se exportó 1 turno.", base::Icono::Informacion);
        pulsar(e->guardar);
        QTRY_VERIFY(!ventanas->buscar("agendaexportar"));
        QVERIFY(contenido(archivo).contains("SUMMARY:Turno\r\n"));
        QCOMPARE(acciones(), QString("1"));
    }

    void avisa_a_los_de_maniana()
    {
        ui::Preferencias::usarArchivo(base->carpetaPrograma() + "/preferencias.ini");
        const QDate jueves = base->lunes().addDays(3);
        base->turno(7, base->a(jueves, "09:00"));
        base->turno(8, base->a(jueves, "09:20"));
        base->turno(999, base->a(jueves, "09:40"));
        agendamanana *m = abrirAvisos();
        QVERIFY(m);
        QCOMPARE(m->fecha->fecha(), jueves);
        QCOMPARE(m->lisdocto->currentText(), QString("Juan Pérez"));
        QCOMPARE(m->lista->modelo().rowCount(), 3);
        QVERIFY(m->estado->text().contains("3 turnos, 2 sin"));

        m->modelo->setPlainText("¡Hola <nombre>!\nA las <hora>");
        QCOMPARE(m->mensaje->toPlainText(), QString("¡Hola Eva!\nA las 09:00"));
        pulsar(m->copiarmensaje);
        QCOMPARE(QApplication::clipboard()->text(), m->mensaje->toPlainText());
        pulsar(m->abrirenlace);
        QCOMPARE(enlaces->pedidos.size(), 1);
        QCOMPARE(enlaces->pedidos.first().path(), QString("/5493416123456"));

        // Not sure of the number: nothing is opened.
        m->lista->elegirFila(1);
        base->guion.esperarMensaje(
            "Atención...",
            "No se puede estar seguro del número de celular de O'Higgins, Ana (Tel. 4123456): hace falta la"
            " característica, por ejemplo 0341 156123456. Corríjalo en la ficha del paciente, o copie el mensaje y"
            " envíelo a mano.",
            base::Icono::Advertencia);
        pulsar(m->abrirenlace);
        QCOMPARE(enlaces->pedidos.size(), 1);
        m->lista->elegirFila(2); // deleted
        QVERIFY(!m->abrirenlace->isEnabled() && !m->copiarmensaje->isEnabled());
        m->lista->elegirFila(0);
        enlaces->hayPrograma = false;
        base->guion.esperarMensaje(
            "ERROR...", "No hay un programa que abra la conversación. Copie el mensaje y envíelo a mano.");
        pulsar(m->abrirenlace);

        const QString archivo = base->carpetaPrograma() + "/avisos.csv";
        base->guion.esperarDestino("Exportar", archivo);
        pulsar(m->exportarlista);
        QVERIFY(contenido(archivo).contains("09:00;Juan Pérez;Paz, Eva;;0341 156123456;+5493416123456;\"¡Hola Eva!\n"));
        QCOMPARE(acciones(), QString("1"));
        QTest::keyClick(m->lista, Qt::Key_P, Qt::ControlModifier);
        QVERIFY(ventanas->buscar("vistaprevia"));
        ventanas->buscar("vistaprevia")->close();

        // Another day, without anybody; the message stays for the next time.
        m->fecha->setText("24/11/26");
        QTest::keyClick(m->fecha, Qt::Key_Return);
        QCOMPARE(m->lista->modelo().rowCount(), 0);
        QVERIFY(!m->imprimir->isEnabled() && !m->exportarlista->isEnabled() && !m->abrirenlace->isEnabled());
        m->close();
        QTRY_VERIFY(!ventanas->buscar("agendamanana"));
        m = abrirAvisos();
        QCOMPARE(m->modelo->toPlainText(), QString("¡Hola <nombre>!\nA las <hora>"));
        pulsar(m->restaurar);
        QVERIFY(m->mensaje->toPlainText().startsWith("Hola Eva."));
    }

    void sin_permiso_no_sale_nada()
    {
        agendas *a = abrirAgenda();
        base->quitarDerecho("accesoagendas");
        for (QPushButton *boton : {a->exportarics, a->manana}) {
            base->guion.esperarMensaje("Atención...", sinPermiso);
            pulsar(boton);
        }
        QVERIFY(!ventanas->buscar("agendaexportar") && !ventanas->buscar("agendamanana"));
    }
};

PRUEBA(PruebaVentanasSalidas)
#include "PruebaVentanasSalidas.moc"
