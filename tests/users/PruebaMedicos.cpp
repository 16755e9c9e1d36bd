#include "Usuarios.h"
#include "support/Prueba.h"
#include "ui/CampoClave.h"
#include "ui/Campos.h"
#include "ui/ListaCombo.h"
#include "users/Claves.h"
#include "users/Profesionales.h"
#include "users/forms/Registro.h"
#include "users/forms/medicos.h"

#include <QCheckBox>
#include <QComboBox>
#include <QListWidget>
#include <QTabWidget>
#include <QToolButton>

using namespace users;

/// The window of professionals and users, driven as a person does.
class PruebaMedicos : public QObject
{
    Q_OBJECT

    std::unique_ptr<Usuarios> base;
    std::unique_ptr<ui::Ventanas> ventanas;
    int ana = 0;
    int avisosAlMarco = 0;

    medicos *abrir(int id)
    {
        auto *v = qobject_cast<medicos *>(ventanas->abrir("medicos", {{{"id", id}}, {}}));
        return v && QTest::qWaitForWindowActive(v) ? v : nullptr;
    }
    /// Presses a button, on whichever page it stands.
    static void pulsar(medicos *v, QAbstractButton *boton)
    {
        for (int i = 0; i < v->solapas->count(); ++i)
            if (v->solapas->widget(i)->isAncestorOf(boton))
                v->solapas->setCurrentIndex(i);
        QVERIFY2(boton->isVisible() && boton->isEnabled(), qPrintable(boton->objectName()));
        QTest::mouseClick(boton, Qt::LeftButton);
    }
    template <typename Control>
    static Control *campo(medicos *v, const char *columna)
    {
        return qobject_cast<Control *>(v->campos().control(QLatin1String(columna)));
    }
    static void elegir(medicos *v, int fila)
    {
        v->lisusuarios->setCurrentRow(fila);
        QCoreApplication::processEvents();
    }
    static QString elegido(medicos *v)
    {
        return v->lisusuarios->currentItem() ? v->lisusuarios->currentItem()->text() : QString();
    }

private slots:
    void init()
    {
        base = std::make_unique<Usuarios>();
        ventanas = std::make_unique<ui::Ventanas>();
        registrarVentanas(*base, *ventanas);
        ana = base->agregar("Ana", claves::huella("Rosa"));
        avisosAlMarco = 0;
        connect(ventanas.get(), &ui::Ventanas::refrescoPedido, this, [this] { ++avisosAlMarco; });
    }
    void cleanup()
    {
        ventanas.reset();
        base->guion.terminar();
        base.reset();
    }

    void todaColumnaTieneSuCampo()
    {
        medicos *v = abrir(ana);
        QVERIFY(v);
        for (const QString &columna : columnasDeUsuario())
            QVERIFY2(v->campos().control(columna), qPrintable(columna));
        QCOMPARE(int(v->campos().campos().size()), int(columnasDeUsuario().size()));
        QCOMPARE(v->lisusuarios->item(0)->text(), QString("<Médico sin Identificar>"));
        QCOMPARE(v->lisusuarios->item(1)->text(), QString("Ana"));
        // the password is there and cannot be seen
        QVERIFY(v->claveusuario->text().isEmpty());
        QCOMPARE(v->claveusuario->placeholderText(), QString("Tiene una clave: escriba otra para cambiarla"));
        QVERIFY(!v->hayCambios());
        // nobody has nothing to edit
        elegir(v, 0);
        QVERIFY(!v->solapas->isVisible() && !v->guardar->isEnabled() && !v->eliminar->isEnabled());
    }

    void unoNuevoConLosPermisosDeOtro()
    {
        base->conexion().execute(
            "UPDATE [Lista Doctores] SET accesocaja = 0, verfichareducida = -1, administrador = -1 WHERE id = ?",
            {ana});
        medicos *v = abrir(20);
        QVERIFY(v);
        QTest::keyClick(v->lisusuarios, Qt::Key_N, Qt::ControlModifier);
        QVERIFY(campo<QLineEdit>(v, "NomDoc")->hasFocus());
        base->guion.esperarMensaje(base::titulo::aviso, "Debe ingresar el nombre del Usuario.");
        QTest::keyClick(v, Qt::Key_S, Qt::ControlModifier);
        campo<QLineEdit>(v, "NomDoc")->insert("Zoé");
        ui::elegirId(*campo<QComboBox>(v, "tipo"), 1);
        QVERIFY(campo<QComboBox>(v, "medisecre")->isEnabled());
        QVERIFY(!campo<QCheckBox>(v, "moduloweb")->isEnabled());
        ui::elegirId(*campo<QComboBox>(v, "medisecre"), 20);
        QVERIFY(!v->copiar->isEnabled());
        ui::elegirId(*v->copiarde, ana);
        pulsar(v, v->copiar);
        QVERIFY(
            !campo<QCheckBox>(v, "accesocaja")->isChecked() && campo<QCheckBox>(v, "verfichareducida")->isChecked());
        QVERIFY(!campo<QCheckBox>(v, "administrador")->isChecked());
        v->claveusuario->setText("rosa");
        base->guion.esperarMensaje(
            base::titulo::atencion,
            "Ya existe un Usuario con la misma Clave de Usuario que desea ingresar. Seleccione una distinta");
        pulsar(v, v->guardar);
        QVERIFY(v->claveusuario->isVisible() && v->claveusuario->hasFocus()); // its page came forward
        QTest::keyClicks(v->claveusuario, "Lobo");
        QTest::keyClick(v->claveusuario, Qt::Key_Return); // not to the button that takes a password away
        QVERIFY(campo<QCheckBox>(v, "administrador")->hasFocus());
        pulsar(v, v->guardar);

        QCOMPARE(elegido(v), QString("Zoé"));
        QVERIFY(!v->hayCambios() && v->claveusuario->text().isEmpty());
        QVERIFY(avisosAlMarco > 0);
        const int id = base->valor("SELECT id FROM [Lista Doctores] WHERE NomDoc = ?", {"Zoé"}).toInt();
        QVERIFY(claves::coincide(base->clave(id), "Lobo"));
        QCOMPARE(base->columna(id, "medisecre") + base->columna(id, "accesocaja"), QString("200"));
    }

    void laClaveSeQuitaYSeDeja()
    {
        const QString huella = base->clave(ana);
        medicos *v = abrir(ana);
        QVERIFY(v);
        campo<QLineEdit>(v, "Tel")->setText("4556677");
        pulsar(v, v->guardar);
        QCOMPARE(base->clave(ana), huella); // not touched
        pulsar(v, v->quitarclave);
        QVERIFY(v->hayCambios());
        pulsar(v, v->guardar);
        QVERIFY(base->clave(ana).isEmpty());
        QCOMPARE(v->claveusuario->placeholderText(), QString("Sin clave"));
        QVERIFY(!v->quitarclave->isEnabled());
    }

    void todosYNinguno()
    {
        medicos *v = abrir(ana);
        QVERIFY(v);
        pulsar(v, v->ninguno);
        QVERIFY(!campo<QCheckBox>(v, "accesored")->isChecked());
        pulsar(v, v->todos);
        // all that may be done: what takes something away is not among it
        QVERIFY(campo<QCheckBox>(v, "accesored")->isChecked());
        QVERIFY(!campo<QCheckBox>(v, "accesoparcialpaciente")->isChecked());
        QVERIFY(!campo<QCheckBox>(v, "aplicaraturnos")->isChecked());
    }

    void loEscritoNoSePierdeAlElegirOtro()
    {
        medicos *v = abrir(ana);
        QVERIFY(v);
        v->claveusuario->setText("nueva");
        const QString pregunta = "El usuario tiene cambios sin guardar. ¿Desea descartarlos?";
        base->guion.esperarPregunta(base::titulo::atencion, pregunta, false);
        elegir(v, 2);
        QCOMPARE(elegido(v), QString("Ana"));
        QCOMPARE(v->claveusuario->text(), QString("nueva"));
        ventanas->refrescar(); // nor when another window asks
        QCOMPARE(v->claveusuario->text(), QString("nueva"));
        base->guion.esperarPregunta(base::titulo::atencion, pregunta, true);
        elegir(v, 2);
        QCOMPARE(campo<QLineEdit>(v, "NomDoc")->text(), QString("Juan Pérez"));
        QVERIFY(v->claveusuario->text().isEmpty());
    }

    void eliminadoDesdeOtraComputadora()
    {
        medicos *v = abrir(20);
        QVERIFY(v);
        base->conexion().execute("DELETE FROM [Lista Doctores] WHERE id = ?", {ana});
        base->guion.esperarMensaje(
            base::titulo::atencion,
            "Este Usuario ya No existe, debe haber sido eliminado por el Administrador del sistema. Actualice la lista "
            "de usuarios cerrando y abriendo nuevamente la ventana Configuración.");
        elegir(v, 1);
        QVERIFY(!v->solapas->isVisible());
    }

    void seEliminaASiMismo()
    {
        base->usuario = ana;
        medicos *v = abrir(ana);
        QVERIFY(v);
        base->guion.esperarPregunta(
            base::titulo::confirmacion, "¿Seguro que desea eliminar a este Usuario del sistema?", true);
        QTest::keyClick(v->lisusuarios, Qt::Key_Delete);
        QCOMPARE(v->lisusuarios->count(), 2);
        QCOMPARE(elegido(v), QString("<Médico sin Identificar>"));
        QVERIFY(avisosAlMarco > 0); // the frame shows who works: nobody
    }

    void ayudas()
    {
        medicos *v = abrir(ana);
        QVERIFY(v);
        const std::pair<const char *, const char *> temas[]
            = {{"ayudaprioridad", "prioridad cero"},
               {"ayudaadministrador", "'Configuración' con su propia Clave"},
               {"ayudamedicoactivo", "<Médico sin Identificar>"},
               {"ayudamoduloweb", "15 días"}};
        for (const auto &[nombre, tema] : temas) {
            auto *boton = v->findChild<QToolButton *>(nombre);
            QVERIFY2(boton, nombre);
            QVERIFY2(boton->whatsThis().contains(tema), nombre);
            base->guion.esperarMensaje(boton->accessibleName(), boton->whatsThis(), base::Icono::Informacion);
            pulsar(v, boton);
        }
    }
};

PRUEBA(PruebaMedicos)
#include "PruebaMedicos.moc"
