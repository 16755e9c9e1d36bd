#include "Usuarios.h"
#include "support/Prueba.h"
#include "ui/CampoClave.h"
#include "users/forms/Registro.h"
#include "users/forms/acceso.h"
#include "users/forms/acceso2.h"
#include "users/forms/usuariosadmin.h"

#include <QLabel>
#include <QListWidget>

using namespace users;

namespace {

/// Any other window, with something unsaved in it.
class ficha : public ui::Ventana
{
public:
    ficha(db::Entorno &e, ui::Ventanas &v)
        : Ventana(e, v, "ficha", "Ficha")
    {
    }
    bool hayCambios() const override { return cambios; }
    bool cambios = false;
};

} // namespace

/// The three small windows that ask for a password.
class PruebaVentanas : public QObject
{
    Q_OBJECT

    std::unique_ptr<Usuarios> base;
    std::unique_ptr<ui::Ventanas> ventanas;
    QVariantMap resultado;
    int avisosAlMarco = 0;

    template <typename Form>
    Form *abrir(const char *nombre)
    {
        resultado.clear();
        auto *form = qobject_cast<Form *>(
            ventanas->abrir(QLatin1String(nombre), {{}, [this](const QVariantMap &dicho) { resultado = dicho; }}));
        if (form && !QTest::qWaitForWindowActive(form))
            return nullptr;
        return form;
    }
    static QStringList nombres(const QListWidget &lista)
    {
        QStringList todos;
        for (int i = 0; i < lista.count(); ++i)
            todos << lista.item(i)->text();
        return todos;
    }

private slots:
    void init()
    {
        base = std::make_unique<Usuarios>();
        ventanas = std::make_unique<ui::Ventanas>();
        registrarVentanas(*base, *ventanas);
        ventanas->registrar("ficha", ui::Modo::Marco, [this] { return new ficha(*base, *ventanas); });
        avisosAlMarco = 0;
        connect(ventanas.get(), &ui::Ventanas::refrescoPedido, this, [this](const QStringList &quienes) {
            avisosAlMarco += quienes.contains("sistema");
        });
    }
    void cleanup()
    {
        ventanas.reset();
        base->guion.terminar();
        base.reset();
    }

    void ingreso()
    {
        const int ana = base->agregar("Ana", "Rosa");
        base->agregar("Zulema", {}, false, 9);
        auto *v = abrir<acceso>("acceso");
        QVERIFY(v);
        QCOMPARE(nombres(*v->lisusuarios), QStringList({"Zulema", "Ana", "Juan Pérez"}));
        QCOMPARE(v->lisusuarios->currentRow(), 2);
        QVERIFY(v->claveactual->hasFocus());
        QCOMPARE(v->claveactual->echoMode(), QLineEdit::Password);

        QTest::keyClick(v->claveactual, Qt::Key_Up); // the arrows choose, the password goes on being typed
        QVERIFY(v->claveactual->hasFocus());
        QTest::keyClicks(v->claveactual, "rosa");
        base->guion.esperarMensaje(base::titulo::atencion, "La Clave de Acceso es Incorrecta.");
        v->cancelar->setFocus();
        QTest::mouseClick(v->aceptar, Qt::LeftButton);
        QVERIFY(v->isVisible() && v->claveactual->hasFocus());
        QCOMPARE(base->usuario, 20);

        QTest::keyClicks(v->claveactual, "Rosa"); // over the wrong one, which was selected
        QTest::keyClick(v->claveactual, Qt::Key_Return);
        QVERIFY(!ventanas->buscar("acceso"));
        QCOMPARE(resultado.value("id").toInt(), ana);
        QCOMPARE(base->usuario, ana);
        QCOMPARE(avisosAlMarco, 1);

        v = abrir<acceso>("acceso");
        QVERIFY(v);
        QCOMPARE(v->lisusuarios->currentItem()->text(), QString("Ana"));
        QTest::keyClick(v->claveactual, Qt::Key_Escape);
        QVERIFY(!ventanas->buscar("acceso"));
        QVERIFY(resultado.isEmpty());
    }

    void cambioCierraLoAbierto()
    {
        const int ana = base->agregar("Ana");
        auto *otra = dynamic_cast<ficha *>(ventanas->abrir("ficha"));
        QVERIFY(otra);
        otra->cambios = true;
        auto *v = abrir<acceso2>("acceso2");
        QVERIFY(v);
        QCOMPARE(v->windowTitle(), QString("Cambiar Usuario del Sistema"));
        QTest::keyClick(v->claveactual, Qt::Key_Up);
        const auto preguntar = [this](bool respuesta) {
            base->guion.esperarPregunta(
                base::titulo::atencion, "Hay datos sin guardar. ¿Desea cerrar la ventana de todos modos?", respuesta);
        };
        preguntar(false);
        QTest::keyClick(v->claveactual, Qt::Key_Return);
        QCOMPARE(base->usuario, 20); // what she was writing stays, and so does she
        QVERIFY(v->isVisible() && ventanas->buscar("ficha"));
        QCOMPARE(base->historial(), QStringList());

        preguntar(true);
        QTest::keyClick(v->claveactual, Qt::Key_Return);
        QCOMPARE(base->usuario, ana);
        QVERIFY(!ventanas->buscar("acceso2") && !ventanas->buscar("ficha"));
        QCOMPARE(avisosAlMarco, 1);
    }

    void sinUsuarioActual()
    {
        base->usuario = 9999;
        auto *v = abrir<acceso2>("acceso2");
        QVERIFY(v);
        QCOMPARE(v->lisusuarios->currentItem()->text(), QString("Juan Pérez"));
        QVERIFY(v->lisusuarios->hasFocus());
        QTest::keyClick(v->lisusuarios, Qt::Key_Return);
        QCOMPARE(base->usuario, 20);
    }

    void puerta()
    {
        base->agregar("Ana", "Rosa", true);
        auto *v = abrir<usuariosadmin>("usuariosadmin");
        QVERIFY(v);
        QVERIFY(v->claveactual->hasFocus());
        base->guion.esperarMensaje(base::titulo::atencion, "Debe ingresar la Clave de Acceso de Administrador.");
        QTest::keyClick(v->claveactual, Qt::Key_Return);
        QVERIFY(resultado.isEmpty());
        QTest::keyClicks(v->claveactual, "Rosa");
        QTest::mouseClick(v->aceptar, Qt::LeftButton);
        QCOMPARE(resultado.value("administrador").toString(), QString("Ana"));
        QVERIFY(!ventanas->buscar("usuariosadmin"));
    }

    void mayusculasFijasYClaveALaVista()
    {
        auto *v = abrir<usuariosadmin>("usuariosadmin");
        QVERIFY(v);
        auto *aviso = v->findChild<QLabel *>("avisomayusculas");
        QVERIFY(aviso && !aviso->isVisible());
        QTest::keyClick(v->claveactual, 'A', Qt::ShiftModifier);
        QTest::keyClick(v->claveactual, '7');
        QVERIFY(!aviso->isVisible());
        QTest::sendKeyEvent(QTest::Click, v->claveactual, Qt::Key_A, "A", Qt::NoModifier);
        QVERIFY(aviso->isVisible());
        QTest::keyClick(v->claveactual, Qt::Key_CapsLock);
        QVERIFY(!aviso->isVisible());

        QTest::keyClick(v->claveactual, Qt::Key_V, Qt::AltModifier);
        QCOMPARE(v->claveactual->echoMode(), QLineEdit::Normal);
        QTest::keyClick(v->claveactual, Qt::Key_V, Qt::AltModifier);
        QCOMPARE(v->claveactual->echoMode(), QLineEdit::Password);
    }
};

PRUEBA(PruebaVentanas)
#include "PruebaVentanas.moc"
