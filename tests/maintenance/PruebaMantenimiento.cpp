#include "db/Recordset.h"
#include "maintenance/forms/FormularioEntrada.h"
#include "maintenance/forms/Registro.h"
#include "maintenance/forms/listamantenimiento.h"
#include "maintenance/forms/listareemplazo.h"
#include "maintenance/forms/mantenimiento.h"
#include "support/BaseDePrueba.h"
#include "support/Prueba.h"
#include "ui/BotonLista.h"
#include "ui/Grilla.h"
#include "ui/ListaCombo.h"

#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSpinBox>
#include <QToolButton>
#include <QTreeWidget>
#include <QVBoxLayout>

using namespace maintenance;
using namespace Qt::StringLiterals;

namespace {

/// A form with a list of a lookup table and the button beside it.
class Ficha : public ui::Ventana
{
public:
    Ficha(db::Entorno &e, ui::Ventanas &v)
        : Ventana(e, v, u"ficha"_s, u"Ficha"_s)
        , cobertura(new QComboBox(this))
        , notas(new QLineEdit(this))
    {
        cobertura->setObjectName(u"cobertura"_s);
        boton = ui::botonLista(*this, v, *cobertura, u"Lista Coberturas"_s, u"Obras sociales"_s);
        auto *todo = new QVBoxLayout(this);
        todo->addWidget(cobertura);
        todo->addWidget(boton);
        todo->addWidget(notas);
        refrescar();
    }
    void refrescar() override { ui::cargarLista(*cobertura, conexion(), u"Lista Coberturas"_s); }

    QComboBox *cobertura;
    QLineEdit *notas;
    QToolButton *boton;
};

} // namespace

/// The windows of the lookup lists, driven as a person does.
class PruebaMantenimiento : public QObject
{
    Q_OBJECT

    std::unique_ptr<soporte::BaseDePrueba> base;
    std::unique_ptr<ui::Ventanas> ventanas;

    template <typename Form>
    Form *abierta(const QString &nombre)
    {
        auto *form = qobject_cast<Form *>(ventanas->buscar(nombre));
        if (form && QTest::qWaitForWindowExposed(form)) {
            form->activateWindow();
            (void)QTest::qWaitForWindowActive(form);
        }
        return form;
    }
    mantenimiento *abrir(const QString &tabla)
    {
        ventanas->abrir(u"mantenimiento"_s, {{{u"lista"_s, tabla}}, {}});
        return abierta<mantenimiento>(u"mantenimiento"_s);
    }
    Ficha *abrirFicha() { return static_cast<Ficha *>(ventanas->abrir(u"ficha"_s)); }
    qint64 agregar(const QString &tabla, const QString &nombre)
    {
        db::Recordset rs(base->conexion(), u"SELECT * FROM [%1] WHERE id = 0"_s.arg(tabla));
        rs.addNew();
        rs.set(u"nombre", nombre);
        return rs.update();
    }
    static void elegir(VentanaLista *v, qint64 id)
    {
        v->entradas->elegirClave(id);
        QCOMPARE(v->entradas->claveActual(), id);
        QCoreApplication::processEvents();
    }
    static void escribir(QLineEdit *campo, const QString &texto)
    {
        campo->setFocus();
        campo->setText(texto);
    }
    static void elegirLista(mantenimiento *v, const QString &titulo)
    {
        const auto hallados = v->listas->findItems(titulo, Qt::MatchExactly | Qt::MatchRecursive);
        QCOMPARE(hallados.size(), 1);
        v->listas->setCurrentItem(hallados.first());
        QCoreApplication::processEvents();
    }

private slots:
    void init()
    {
        base = std::make_unique<soporte::BaseDePrueba>();
        ventanas = std::make_unique<ui::Ventanas>();
        registrarVentanas(*base, *ventanas);
        ventanas->registrar(u"ficha"_s, ui::Modo::Marco, [this] { return new Ficha(*base, *ventanas); });
    }
    void cleanup()
    {
        ventanas.reset();
        base->guion.terminar();
        base.reset();
    }

    void agregaPorTeclado()
    {
        Ficha *f = abrirFicha();
        f->cobertura->setEditText(u"a medio escribir"_s);
        ventanas->abrir(u"mantenimiento"_s);
        auto *v = abierta<mantenimiento>(u"mantenimiento"_s);
        QVERIFY(v);
        QTest::keyClicks(v->buscarlista, "documento");
        QTRY_COMPARE(v->titulolista->text(), u"Tipo de Documento de Identidad"_s);
        v->buscarlista->setText(u"medicas"_s);
        QTRY_COMPARE(v->titulolista->text(), u"Coberturas Médicas"_s);
        QTest::keyClick(v->buscarlista, Qt::Key_Return);
        QCOMPARE(v->focusWidget(), v->listas);

        QTest::keyClick(v, Qt::Key_N, Qt::ControlModifier);
        QCOMPARE(v->focusWidget(), v->formulario->nombre);
        QTest::keyClicks(v->focusWidget(), "Zeta Salud");
        QTest::keyClick(v->focusWidget(), Qt::Key_Return);
        QCOMPARE(v->focusWidget()->objectName(), u"Porcentaje_Cobertura"_s);
        QTest::keyClicks(v->focusWidget(), "70");
        QTest::keyClick(v->focusWidget(), Qt::Key_Return);
        QCOMPARE(v->focusWidget(), v->formulario->prioridad);
        v->formulario->prioridad->setValue(2000);
        QTest::keyClick(v->focusWidget(), Qt::Key_Return);

        QCOMPARE(v->entradas->modelo().textoCelda(0, 0), u"Zeta Salud"_s);
        QCOMPARE(v->entradas->modelo().textoCelda(0, 1), u"70"_s);
        QCOMPARE(v->entradas->filaActual(), 0);
        QVERIFY(!v->hayCambios());
        // The other window has the new entry, and what was being typed there.
        QCOMPARE(f->cobertura->itemText(0), u"Zeta Salud"_s);
        QCOMPARE(f->cobertura->currentText(), u"a medio escribir"_s);

        // A new entry that the filter would hide is shown all the same.
        escribir(v->filtro, u"zETA"_s);
        QCOMPARE(v->cantidad->text(), u"1 entrada"_s);
        v->nuevo->click();
        v->formulario->nombre->setText(u"Yunque"_s);
        QTest::keyClick(v, Qt::Key_S, Qt::ControlModifier);
        QVERIFY(v->filtro->text().isEmpty());
        QCOMPARE(v->entradas->modelo().textoCelda(v->entradas->filaActual(), 0), u"Yunque"_s);
    }

    void loEscritoNoSePierde()
    {
        const qint64 uno = agregar(u"Lista Etnia"_s, u"Uno & medio"_s), dos = agregar(u"Lista Etnia"_s, u"Dos"_s);
        mantenimiento *v = abrir(u"Lista Etnia"_s);
        elegir(v, uno);
        QCOMPARE(v->formulario->nombre->text(), u"Uno & medio"_s);
        v->formulario->nombre->setText(u"Uno y medio"_s);
        const QString descartar = u"La entrada tiene cambios sin guardar. ¿Desea descartarlos?"_s;
        base->guion.esperarPregunta(u"Atención..."_s, descartar, false);
        v->entradas->elegirClave(dos);
        QTRY_COMPARE(v->entradas->claveActual(), uno);
        base->guion.esperarPregunta(u"Atención..."_s, descartar, false);
        elegirLista(v, u"Ciudad"_s);
        QTRY_COMPARE(v->listas->currentItem()->text(0), u"Etnia"_s);
        QCOMPARE(v->titulolista->text(), u"Etnia"_s);
        escribir(v->filtro, u"nada que se parezca"_s);
        QCoreApplication::processEvents();
        ventanas->refrescar();
        QCOMPARE(v->entradas->modelo().rowCount(), 0);
        QCOMPARE(v->formulario->nombre->text(), u"Uno y medio"_s);

        // Another station deletes the row: what was typed can still be added.
        base->otraTerminal()->execute(u"DELETE FROM [Lista Etnia] WHERE id = ?"_s, {uno});
        base->guion.esperarMensaje(
            u"Atención..."_s, u"Este Registro ya No existe, debe haber sido eliminado por otro usuario."_s);
        v->guardar->click();
        QCOMPARE(v->formulario->nombre->text(), u"Uno y medio"_s);
        QVERIFY(v->hayCambios());
        v->guardar->click();
        QCOMPARE(base->valor(u"SELECT COUNT(id) FROM [Lista Etnia] WHERE nombre = 'Uno y medio'"_s), u"1"_s);

        // Nothing is typed: a change made elsewhere shows itself.
        elegir(v, dos);
        base->otraTerminal()->execute(u"UPDATE [Lista Etnia] SET nombre = 'Dos y dos' WHERE id = ?"_s, {dos});
        QTest::keyClick(v, Qt::Key_F5);
        QCOMPARE(v->formulario->nombre->text(), u"Dos y dos"_s);
    }

    void eliminaYReemplaza()
    {
        const qint64 vieja = agregar(u"Lista Ciudad"_s, u"El Puente"_s),
                     queda = agregar(u"Lista Ciudad"_s, u"EL PUENTE"_s),
                     libre = agregar(u"Lista Ciudad"_s, u"Sin uso"_s);
        base->conexion().execute(u"INSERT INTO [Pacientes] (NroHC,idciudad) VALUES (1,?)"_s, {vieja});
        mantenimiento *v = abrir(u"Lista Ciudad"_s);
        elegir(v, libre);
        v->entradas->setFocus();
        base->guion.esperarPregunta(
            u"Confirmación..."_s, u"¿Seguro que desea eliminar «Sin uso» de la lista Ciudad?"_s, true);
        QTest::keyClick(v->entradas, Qt::Key_Delete);
        QCOMPARE(v->entradas->modelo().filaDe(libre), -1);
        QTRY_VERIFY(v->entradas->filaActual() >= 0);

        elegir(v, vieja);
        base->guion.esperarMensaje(
            u"Información"_s, u"«El Puente» está en uso en 1 paciente."_s, base::Icono::Informacion);
        v->usos->click();
        base->guion.esperarPregunta(
            u"Atención..."_s,
            u"Esta entrada está en uso en 1 paciente: si se eliminara, esos registros quedarían sin «El Puente».\n"
            "¿Desea elegir otra entrada que la reemplace?"_s,
            true);
        v->eliminar->click();
        auto *r = abierta<listareemplazo>(u"listareemplazo"_s);
        QVERIFY(r);
        // The other entry of the same name is what this is for.
        QCOMPARE(ui::idElegido(*r->destino), int(queda));
        r->destino->setEditText(u"no existe"_s);
        base->guion.esperarMensaje(u"Aviso..."_s, u"Debe seleccionar la entrada que queda en su lugar."_s);
        r->guardar->click();
        ui::elegirId(*r->destino, int(queda));
        base->guion.esperarPregunta(
            u"Confirmación..."_s,
            u"Se cambiará «El Puente» por «EL PUENTE» en 1 paciente, y «El Puente» se eliminará de la lista Ciudad.\n"
            "Esta acción no se puede deshacer. ¿Seguro que desea continuar?"_s,
            true);
        r->guardar->click();
        QVERIFY(!ventanas->buscar(u"listareemplazo"_s));
        QCOMPARE(v->entradas->claveActual(), queda);
        QCOMPARE(v->entradas->modelo().filaDe(vieja), -1);
        QCOMPARE(base->valor(u"SELECT idciudad FROM [Pacientes] WHERE NroHC = 1"_s).toLongLong(), queda);
    }

    void desdeElBotonDeUnaLista()
    {
        const qint64 una = agregar(u"Lista Coberturas"_s, u"Mutual Una"_s);
        Ficha *f = abrirFicha();
        QVERIFY(QTest::qWaitForWindowActive(f));
        f->cobertura->setFocus();
        f->cobertura->setEditText(u"Mutual Otra"_s);
        QTest::keyClick(f->cobertura, Qt::Key_F2);
        auto *v = abierta<listamantenimiento>(u"listamantenimiento"_s);
        QVERIFY(v);
        QCOMPARE(v->windowTitle(), u"Obras sociales"_s);
        QCOMPARE(v->formulario->nombre->text(), u"Mutual Otra"_s);
        QCOMPARE(v->focusWidget(), v->formulario->nombre);
        v->guardar->click();
        QVERIFY(!ventanas->buscar(u"listamantenimiento"_s));
        QCOMPARE(f->cobertura->currentText(), u"Mutual Otra"_s);
        QVERIFY(ui::idElegido(*f->cobertura) > una);

        // What is chosen is shown; Enter on another one brings it back, Esc nothing.
        f->boton->click();
        v = abierta<listamantenimiento>(u"listamantenimiento"_s);
        QCOMPARE(v->formulario->nombre->text(), u"Mutual Otra"_s);
        QTest::keyClick(v, Qt::Key_Escape);
        QCOMPARE(f->cobertura->currentText(), u"Mutual Otra"_s);
        f->cobertura->setEditText(u"mutual una"_s); // an entry, in other letters
        f->boton->click();
        v = abierta<listamantenimiento>(u"listamantenimiento"_s);
        QCOMPARE(v->entradas->claveActual(), una);
        v->formulario->nombre->setText(u"Mutual Una SA"_s);
        v->guardar->click();
        QVERIFY(ventanas->buscar(u"listamantenimiento"_s));
        QTest::keyClick(v->entradas, Qt::Key_Return);
        QCOMPARE(f->cobertura->currentText(), u"Mutual Una SA"_s);

        base->conexion().execute(u"UPDATE [Lista Doctores] SET accesoconfiguracion = 0"_s);
        base->guion.esperarMensaje(
            u"Atención..."_s,
            u"No tiene permiso para ejecutar esta acción. Consulte con el Administrador del sistema para definir sus "
            "permisos de accesos."_s);
        f->boton->click();
        QVERIFY(!ventanas->buscar(u"listamantenimiento"_s));
    }

    void camposDeLasVacunas()
    {
        mantenimiento *v = abrir(u"Lista Vacunas"_s);
        v->nuevo->click();
        v->formulario->nombre->setText(u"Vacuna de prueba"_s);
        auto *tipo = v->findChild<QComboBox *>(u"Tipo"_s);
        auto *dosis = v->findChild<QSpinBox *>(u"NroDosis"_s);
        auto *edad = v->findChild<QLineEdit *>(u"Edad2"_s);
        QVERIFY(tipo && dosis && edad);
        tipo->setCurrentText(u"Otras Vacunas"_s);
        dosis->setValue(2);
        v->findChild<QLineEdit *>(u"Edad1"_s)->setText(u"2"_s);
        edad->setText(u"dos"_s);
        base->guion.esperarMensaje(u"Aviso..."_s, u"El valor ingresado en ' 2ª dosis (meses) ' no es válido."_s);
        v->guardar->click();
        QCOMPARE(v->focusWidget(), edad);
        edad->setText(u"18"_s);
        const auto rotulos = v->findChildren<QLabel *>();
        QVERIFY(std::any_of(rotulos.begin(), rotulos.end(), [](QLabel *l) { return l->text() == u"1a 6m"_s; }));
        v->guardar->click();
        const int fila = v->entradas->filaActual();
        QCOMPARE(v->entradas->modelo().textoCelda(fila, 1), u"Otras Vacunas"_s);
        QCOMPARE(v->entradas->modelo().textoCelda(fila, 3), u"2, 18"_s);
        QVERIFY(v->entradas->comoCsv().contains(u"Vacuna de prueba;Otras Vacunas;2;2, 18;0\r\n"_s));

        // Another list takes its place, and comes back with the same fields.
        elegirLista(v, u"Etnia"_s);
        QVERIFY(!v->findChild<QComboBox *>(u"Tipo"_s));
        elegirLista(v, u"Vacunas"_s);
        QVERIFY(v->findChild<QComboBox *>(u"Tipo"_s));
    }

    void unaLetraParaCadaCosa()
    {
        mantenimiento *v = abrir(u"Lista Etnia"_s);
        for (const Lista &l : maintenance::listas()) {
            elegirLista(v, l.titulo);
            QCOMPARE(v->titulolista->text(), l.titulo);
            QStringList letras;
            const auto ver = [&](const QWidget *control, const QString &texto) {
                const QKeySequence tecla = QKeySequence::mnemonic(texto);
                if (!control->isVisible() || tecla.isEmpty())
                    return;
                QVERIFY2(!letras.contains(tecla.toString()), qPrintable(l.titulo + u": "_s + texto));
                letras << tecla.toString();
            };
            for (const auto *boton : v->findChildren<QPushButton *>())
                ver(boton, boton->text());
            for (const auto *rotulo : v->findChildren<QLabel *>())
                ver(rotulo, rotulo->text());
        }
    }
};

PRUEBA(PruebaMantenimiento)
#include "PruebaMantenimiento.moc"
