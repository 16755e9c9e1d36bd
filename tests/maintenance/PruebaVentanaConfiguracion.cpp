#include "db/Config.h"
#include "maintenance/forms/CampoImagen.h"
#include "maintenance/forms/Registro.h"
#include "maintenance/forms/configuracion.h"
#include "support/BaseDePrueba.h"
#include "support/Prueba.h"
#include "ui/CampoFecha.h"
#include "ui/Grilla.h"

#include <QCheckBox>
#include <QComboBox>
#include <QFrame>
#include <QImage>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QRadioButton>
#include <QStackedWidget>

using maintenance::configuracion;

namespace {

const QString sinGuardar = QStringLiteral("Hay datos sin guardar. ¿Desea cerrar la ventana de todos modos?");

/// Stands for the window of users: remembers what it was opened for.
class Medicos : public ui::Ventana
{
public:
    Medicos(db::Entorno &e, ui::Ventanas &v)
        : Ventana(e, v, QStringLiteral("medicos"), QStringLiteral("Médicos"))
    {
    }
    bool preparar(const ui::Pedido &pedido) override
    {
        pedida = pedido.datos;
        return true;
    }
    static inline QVariantMap pedida;
};

} // namespace

/// The window of the settings, driven as a person does.
class PruebaVentanaConfiguracion : public QObject
{
    Q_OBJECT

    std::unique_ptr<soporte::BaseDePrueba> base;
    std::unique_ptr<ui::Ventanas> ventanas;

    configuracion *abrir(int administrador = 0)
    {
        auto *v
            = qobject_cast<configuracion *>(ventanas->abrir("configuracion", {{{"administrador", administrador}}, {}}));
        if (v) {
            [&] { QVERIFY(QTest::qWaitForWindowExposed(v)); }();
            v->activateWindow();
        }
        return v;
    }
    template <typename Control = QLineEdit>
    static Control *control(configuracion *v, const char *nombre)
    {
        return v->findChild<Control *>(QLatin1String(nombre));
    }
    static void pulsar(QAbstractButton *boton)
    {
        QVERIFY2(boton->isVisible() && boton->isEnabled(), qPrintable(boton->objectName()));
        QTest::mouseClick(boton, Qt::LeftButton);
    }
    static QString pagina(configuracion *v) { return v->paginas->currentWidget()->objectName(); }
    QString valor(const char *columna) { return db::Config(base->conexion()).texto(QString::fromLatin1(columna)); }

private slots:
    void init()
    {
        base = std::make_unique<soporte::BaseDePrueba>();
        ventanas = std::make_unique<ui::Ventanas>();
        maintenance::registrarVentanas(*base, *ventanas);
        ventanas->registrar("medicos", ui::Modo::Dialogo, [this] { return new Medicos(*base, *ventanas); });
    }
    void cleanup()
    {
        ventanas.reset();
        base->guion.terminar();
        base.reset();
    }

    void guardaLoQueSeEscribio()
    {
        db::Config(base->conexion()).guardar({{"numerohc", "25"}, {"durtur3", 12}});
        configuracion *v = abrir();
        QVERIFY(v && !v->hayCambios() && !v->guardar->isEnabled());
        v->irA("numeracion");
        QCOMPARE(v->vistaprevia->text(), QString("Vista Previa: 000025"));
        control(v, "prefijohc")->setFocus();
        QTest::keyClicks(control(v, "prefijohc"), "HC-");
        QCOMPARE(v->vistaprevia->text(), QString("Vista Previa: HC-000025"));
        v->irA("ficha");
        QVERIFY(control<QRadioButton>(v, "tipoformunewpaciredu")->isChecked());
        pulsar(control<QRadioButton>(v, "tipoformunewpaciampli"));
        v->irA("agenda");
        // A length that an older version stored is none of the choices.
        QCOMPARE(control<QComboBox>(v, "durtur3")->currentText(), QString("Otro valor (12)"));
        QTest::keyClick(control<QComboBox>(v, "primerdiaagendaturnos"), Qt::Key_Down);

        // A new patient takes a number at another station, while this one is being typed in.
        db::Config(*base->otraTerminal()).guardar(u"numerohc", "26");
        v->actualizar();
        QCOMPARE(control(v, "prefijohc")->text(), QString("HC-"));
        QSignalSpy refrescos(ventanas.get(), &ui::Ventanas::refrescoPedido);
        QTest::keyClick(v, Qt::Key_S, Qt::ControlModifier);
        QVERIFY(!v->hayCambios() && !v->guardar->isEnabled());
        QCOMPARE(refrescos.size(), 1);
        QCOMPARE(valor("prefijohc"), QString("HC-"));
        QCOMPARE(valor("numerohc"), QString("26"));
        QCOMPARE(valor("tipoformunewpaci"), QString("1"));
        QCOMPARE(valor("primerdiaagendaturnos"), QString("1"));
        QCOMPARE(valor("durtur3"), QString("12"));
        QCOMPARE(v->vistaprevia->text(), QString("Vista Previa: HC-000026"));
    }

    void elRechazoMuestraSuPagina()
    {
        configuracion *v = abrir();
        control(v, "sumfpp")->setText("28");
        v->irA("caja");
        base->guion.esperarMensaje(
            "Aviso...", "Ingrese en 'Días que se suman a la F.U.M. para obtener la F.P.P.' un número entre 250 y 310.");
        QTest::keyClick(v, Qt::Key_S, Qt::ControlModifier);
        QCOMPARE(pagina(v), QString("ficha"));
        QCOMPARE(QApplication::focusWidget(), control(v, "sumfpp"));
        base->guion.esperarPregunta("Atención...", sinGuardar, false);
        pulsar(v->cancelar);
        QVERIFY(v->isVisible());
        base->guion.esperarPregunta("Atención...", sinGuardar, true);
        pulsar(v->cancelar);
        QVERIFY(!ventanas->buscar("configuracion"));
        QCOMPARE(valor("sumfpp"), QString("280"));
    }

    void buscaUnaOpcion()
    {
        configuracion *v = abrir();
        QTest::keyClick(v, Qt::Key_F, Qt::ControlModifier);
        QCOMPARE(QApplication::focusWidget(), v->buscar);
        const auto visibles = [v] {
            QStringList textos;
            for (int i = 0; i < v->grupos->count(); ++i)
                if (!v->grupos->item(i)->isHidden())
                    textos << v->grupos->item(i)->text();
            return textos;
        };
        v->buscar->setText("ARTICULOS");
        QCOMPARE(visibles(), QStringList("Órdenes"));
        QCOMPARE(pagina(v), QString("ordenes"));
        QTest::keyClick(v->buscar, Qt::Key_Return);
        QCOMPARE(QApplication::focusWidget(), control<QCheckBox>(v, "actualizarstock"));
        QVERIFY(control<QCheckBox>(v, "actualizarstock")->font().bold());
        QVERIFY(!control<QCheckBox>(v, "bloquearcostos")->font().bold());
        v->buscar->setText("no hay tal cosa");
        QVERIFY(visibles().isEmpty());
        v->buscar->setFocus();
        QTest::keyClick(v->buscar, Qt::Key_Escape); // empties the search, and does not close
        QCOMPARE(visibles().size(), v->grupos->count());
        QVERIFY(v->isVisible() && !v->hayCambios());
    }

    void nombraAdministrador()
    {
        configuracion *v = abrir();
        QVERIFY(v->avisoadministrador->isVisible());
        v->irA("usuarios");
        v->lisusuarios->elegirFila(0);
        pulsar(v->abrirmedicos);
        QCOMPARE(Medicos::pedida, (QVariantMap{{"administrador", 0}, {"id", 20}}));
        base->conexion().execute("UPDATE [Lista Doctores] SET administrador = -1, claveusuario = 'x' WHERE id = 20");
        ventanas->buscar("medicos")->close();
        QVERIFY(!v->avisoadministrador->isVisible());
        QCOMPARE(v->lisusuarios->comoTexto(false).section('\n', 1, 1), QString("Juan Pérez\tMédico\tSí\tSí"));
        // Who named him goes on; whoever comes next passes the gate.
        v->irA("caja");
        control<QCheckBox>(v, "pagocaja")->setChecked(true);
        pulsar(v->guardar);
        QVERIFY(db::Config(base->conexion()).bandera(u"pagocaja"));
        v->close();
        base->guion.esperarMensaje(
            "Atención...", "A esta ventana se ingresa con la Clave de Acceso de un Administrador del sistema.");
        QVERIFY(!abrir());
        QVERIFY(abrir(20));
    }

    void eligeElFondo()
    {
        configuracion *v = abrir();
        v->irA("sistema");
        auto *campo = v->findChild<maintenance::CampoImagen *>();
        const QString imagen = base->carpetaPrograma() + "/foto", texto = base->carpetaPrograma() + "/ruta.jpg";
        QImage foto(400, 300, QImage::Format_RGB32);
        foto.fill(Qt::blue);
        QVERIFY(foto.save(imagen, "PNG"));
        QFile otra(texto);
        QVERIFY(otra.open(QIODevice::WriteOnly) && otra.write("texto") > 0);
        otra.close();

        base->guion.esperarArchivo("Imagen para el fondo de la ventana principal", texto);
        base->guion.esperarMensaje(
            "Aviso...",
            "El archivo elegido no es una imagen que se pueda mostrar:\n" + QDir::toNativeSeparators(texto));
        pulsar(campo->elegir);
        QVERIFY(!v->hayCambios() && !campo->quitar->isEnabled());
        base->guion.esperarArchivo("Imagen para el fondo de la ventana principal", imagen);
        pulsar(campo->elegir);
        pulsar(v->guardar);
        QVERIFY(QFile::exists(base->carpetaPrograma() + "/Imagenes/fondoaplicacion"));
        pulsar(campo->quitar);
        QVERIFY(v->hayCambios());
        pulsar(v->guardar);
        QVERIFY(!QFile::exists(base->carpetaPrograma() + "/Imagenes/fondoaplicacion"));
    }

    void eliminaDelHistorial()
    {
        base->conexion().execute(
            "INSERT INTO [Historial] (fecha,equipo,iddoctor,ventana,accion) VALUES (?,'PC',20,'V','A')",
            {QDateTime(QDate(2019, 5, 1), QTime(10, 0))});
        configuracion *v = abrir();
        v->irA("historial");
        QVERIFY(v->resumenhistorial->text().startsWith("El historial tiene 1 registros, desde el 01/05/2019."));
        v->hastahistorial->setText("31/2/2020");
        base->guion.esperarMensaje(
            "ERROR en la fecha...",
            "El Formato de Fecha debe ser dd/mm/aaaa\nFecha hasta la que se elimina el historial");
        pulsar(v->eliminarhistorial);
        v->hastahistorial->setText("31/12/2020");
        base->guion.esperarPregunta(
            "Confirmación...", "¿Seguro que desea eliminar los registros del historial hasta el 31/12/2020?", true);
        base->guion.esperarMensaje("Atención...", "Se eliminaron 1 registros del historial.", base::Icono::Informacion);
        pulsar(v->eliminarhistorial);
        QVERIFY(v->resumenhistorial->text().contains("desde el 22/11/2026")); // the deletion itself
    }

    void cadaPaginaConSusTeclas()
    {
        configuracion *v = abrir();
        QCOMPARE(v->grupos->count(), v->paginas->count());
        for (int i = 0; i < v->paginas->count(); ++i) {
            v->grupos->setCurrentRow(i);
            QMap<QChar, QString> teclas;
            const auto anotar = [&](const QWidget *w, const QString &texto) {
                static const QRegularExpression marca("&(\\w)");
                const auto hallada = marca.match(texto);
                if (!w->isVisible() || !hallada.hasMatch())
                    return;
                const QChar letra = hallada.captured(1).at(0).toUpper();
                QVERIFY2(!teclas.contains(letra), qPrintable(pagina(v) + ": " + teclas.value(letra) + " / " + texto));
                teclas.insert(letra, texto);
            };
            for (const auto *boton : v->findChildren<QAbstractButton *>())
                anotar(boton, boton->text());
            for (const auto *rotulo : v->findChildren<QLabel *>())
                if (rotulo->buddy())
                    anotar(rotulo, rotulo->text());
            QVERIFY(teclas.size() > 2 || pagina(v) == "impresiones");
        }
    }
};

PRUEBA(PruebaVentanaConfiguracion)
#include "PruebaVentanaConfiguracion.moc"
