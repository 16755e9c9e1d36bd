#include "app/Red.h"
#include "app/forms/accesored.h"
#include "support/BaseDePrueba.h"
#include "support/Prueba.h"
#include "ui/Ventanas.h"

#include <QGroupBox>
#include <QRadioButton>
#include <QVBoxLayout>

using app::accesored;

namespace {

/// The program behind the window: remembers what it is told to be.
class programa : public app::CambioDeRuta
{
public:
    bool verificarBase() override { return lista; }
    bool baseLista() const override { return lista; }
    app::Ruta rutaGuardada() const override { return ruta; }
    bool cambiarRuta(const app::Ruta &nueva) override
    {
        ruta = nueva;
        ++veces;
        return sirve;
    }
    app::Hallazgo examinarRuta(const app::Ruta &examinada) const override
    {
        return {sirve, QStringLiteral("en ") + examinada.carpeta};
    }
    bool admiteServidor() const override { return controlador; }

    app::Ruta ruta;
    bool lista = true, sirve = true, controlador = false;
    int veces = 0;
};

class otraVentana : public ui::Ventana
{
public:
    otraVentana(db::Entorno &e, ui::Ventanas &v)
        : Ventana(e, v, QStringLiteral("otra"), QStringLiteral("Otra"))
    {
    }
    bool hayCambios() const override { return true; }
};

} // namespace

class RedTest : public QObject
{
    Q_OBJECT

    std::unique_ptr<soporte::BaseDePrueba> base;
    std::unique_ptr<ui::Ventanas> ventanas;
    programa red;
    accesored *ventana = nullptr;

    const QString sinGuardar = QStringLiteral("Hay datos sin guardar. ¿Desea cerrar la ventana de todos modos?");

private slots:
    void init()
    {
        base = std::make_unique<soporte::BaseDePrueba>();
        ventanas = std::make_unique<ui::Ventanas>();
        red = {};
        red.ruta.reservado = QByteArray(18, 'r');
        red.ruta.carpeta = QStringLiteral("/mnt/vieja");
        ventanas->registrar(
            QStringLiteral("accesored"), ui::Modo::Marco, [this] { return new accesored(*base, *ventanas, &red); });
        ventanas->registrar(
            QStringLiteral("otra"), ui::Modo::Marco, [this] { return new otraVentana(*base, *ventanas); });
        ventana = static_cast<accesored *>(ventanas->abrir(QStringLiteral("accesored")));
        QVERIFY(ventana);
    }
    void cleanup()
    {
        ventanas.reset();
        QVERIFY(base->guion.terminar());
    }

    void loQueSePuedeEscribir()
    {
        QVERIFY(ventana->local->isChecked() && !ventana->carpeta->isEnabled() && !ventana->datosservidor->isEnabled());
        QVERIFY(!ventana->nota->isVisible() && !ventana->hayCambios());
        QTest::mouseClick(ventana->otra, Qt::LeftButton);
        QVERIFY(ventana->carpeta->isEnabled() && ventana->hayCambios());
        base->guion.esperarCarpeta(
            QStringLiteral("Seleccione la carpeta compartida que contiene el archivo Datos.mdb."),
            QStringLiteral("/mnt/nueva"));
        QTest::mouseClick(ventana->examinar, Qt::LeftButton);
        QCOMPARE(ventana->carpeta->text(), QStringLiteral("/mnt/nueva"));
        QTest::mouseClick(ventana->modoservidor, Qt::LeftButton);
        QVERIFY(!ventana->carpeta->isEnabled() && ventana->servidor->isEnabled());
        QVERIFY(ventana->nota->text().contains(QStringLiteral("Falta el controlador")));
        QVERIFY(ventana->nota->isVisible());
        // back to what is saved, nothing would be lost
        QTest::mouseClick(ventana->modoaccess, Qt::LeftButton);
        QTest::mouseClick(ventana->local, Qt::LeftButton);
        ventana->carpeta->setText(red.ruta.carpeta);
        QVERIFY(!ventana->hayCambios());

        red.controlador = true;
        ventanas->abrir(QStringLiteral("accesored"));
        QTest::mouseClick(ventana->modoservidor, Qt::LeftButton);
        QVERIFY(!ventana->nota->isVisible());
    }

    void probarNoCambiaNada()
    {
        QTest::mouseClick(ventana->otra, Qt::LeftButton);
        ventana->carpeta->clear();
        base->guion.esperarMensaje(
            base::titulo::aviso,
            QStringLiteral("Elija la carpeta compartida en la que está la base de datos."),
            base::Icono::Advertencia);
        QTest::mouseClick(ventana->probar, Qt::LeftButton);
        QCOMPARE(ventana->focusWidget(), ventana->carpeta);
        ventana->carpeta->setText(QStringLiteral("/mnt/nueva"));
        QTest::mouseClick(ventana->probar, Qt::LeftButton);
        QCOMPARE(ventana->resultado->text(), QStringLiteral("en /mnt/nueva"));
        QCOMPARE(red.veces, 0);
        ventana->carpeta->setText(QStringLiteral("/mnt/otra")); // not what was looked at
        QCOMPARE(ventana->resultado->text(), QString());
        base->guion.esperarPregunta(base::titulo::atencion, sinGuardar, false);
        QTest::keyClick(ventana, Qt::Key_Escape);
        QVERIFY(ventana->isVisible());
    }

    void guardarCierraLasDemas()
    {
        QVERIFY(ventanas->abrir(QStringLiteral("otra")));
        QTest::mouseClick(ventana->otra, Qt::LeftButton);
        base->guion.esperarPregunta(base::titulo::atencion, sinGuardar, false);
        QTest::mouseClick(ventana->guardar, Qt::LeftButton);
        QCOMPARE(red.veces, 0);
        QVERIFY(ventanas->buscar(QStringLiteral("otra")));

        base->guion.esperarPregunta(base::titulo::atencion, sinGuardar, true);
        base->guion.esperarMensaje(
            QStringLiteral("Información"),
            QStringLiteral("El programa trabaja ahora con la base de datos indicada."),
            base::Icono::Informacion);
        QTest::keyClick(ventana, Qt::Key_S, Qt::ControlModifier);
        QCOMPARE(red.veces, 1);
        QVERIFY(!ventanas->buscar(QStringLiteral("otra")) && !ventanas->buscar(QStringLiteral("accesored")));
        app::Ruta esperada;
        esperada.otraCarpeta = true;
        esperada.carpeta = QStringLiteral("/mnt/vieja");
        esperada.reservado = QByteArray(18, 'r');
        QCOMPARE(red.ruta, esperada);
    }

    void siNoSirveQueda()
    {
        red.sirve = false;
        QTest::mouseClick(ventana->otra, Qt::LeftButton);
        base->guion.esperarPregunta(
            base::titulo::atencion,
            QStringLiteral(
                "La base de datos indicada no se puede usar.\n¿Desea volver a la ubicación anterior (carpeta '%1')?")
                .arg(base->carpetaPrograma()),
            true);
        QTest::mouseClick(ventana->guardar, Qt::LeftButton);
        QCOMPARE(red.veces, 2);
        QVERIFY(ventana->isVisible() && ventana->local->isChecked() && !ventana->hayCambios());
    }
};

PRUEBA(RedTest)
#include "RedTest.moc"
