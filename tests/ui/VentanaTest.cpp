#include "ui/Ventana.h"
#include "db/Error.h"
#include "support/BaseDePrueba.h"
#include "support/Prueba.h"
#include "ui/Avance.h"
#include "ui/Grilla.h"

#include <QClipboard>
#include <QFile>
#include <QLineEdit>
#include <QMainWindow>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QProgressDialog>
#include <QPushButton>
#include <QSignalSpy>
#include <QTabWidget>
#include <QVBoxLayout>

namespace {

const QString pregunta = QStringLiteral("Hay datos sin guardar. ¿Desea cerrar la ventana de todos modos?");

/// A window with everything that the base cares about.
class ficha : public ui::Ventana
{
    Q_OBJECT

public:
    ficha(db::Entorno &e, ui::Ventanas &v, const QString &nombre)
        : Ventana(e, v, nombre, QStringLiteral("Ficha"))
        , apellido(new QLineEdit)
        , notas(new QLineEdit)
        , guardar(new QPushButton(QStringLiteral("Guardar")))
    {
        apellido->setObjectName(QStringLiteral("apellido"));
        notas->setObjectName(QStringLiteral("notas"));
        guardar->setObjectName(QStringLiteral("guardar"));
        auto *solapas = new QTabWidget;
        auto *segunda = new QWidget;
        (new QVBoxLayout(segunda))->addWidget(notas);
        solapas->addTab(new QWidget, QStringLiteral("1"));
        solapas->addTab(segunda, QStringLiteral("2"));
        auto *caja = new QVBoxLayout(this);
        caja->addWidget(apellido);
        caja->addWidget(guardar);
        caja->addWidget(solapas);
        alPulsar(guardar, [this] {
            ++guardados;
            if (falla)
                throw db::Error(db::Error::Kind::Busy, 5, QStringLiteral("La base está ocupada."));
        });
    }

    bool preparar(const ui::Pedido &pedido) override
    {
        ++preparadas;
        if (falla)
            throw db::Error(db::Error::Kind::Busy, 5, QStringLiteral("La base está ocupada."));
        return !pedido.datos.value(QStringLiteral("rechazar")).toBool();
    }
    void refrescar() override { ++refrescadas; }
    bool hayCambios() const override { return apellido->isModified(); }
    QString ayuda() const override { return QStringLiteral("Cómo se usa"); }

    using Ventana::aceptado;
    using Ventana::datos;
    using Ventana::setEnter;
    using Ventana::terminar;

    QLineEdit *apellido, *notas;
    QPushButton *guardar;
    int preparadas = 0, refrescadas = 0, guardados = 0;
    bool falla = false;
};

} // namespace

class VentanaTest : public QObject
{
    Q_OBJECT

    std::unique_ptr<soporte::BaseDePrueba> base;
    std::unique_ptr<ui::Ventanas> ventanas;
    bool fallaAlAbrir = false;

    ficha *abrir(const QString &nombre, const ui::Pedido &pedido = {}, QWidget *sobre = nullptr)
    {
        return static_cast<ficha *>(ventanas->abrir(nombre, pedido, sobre));
    }

private slots:
    void init()
    {
        base = std::make_unique<soporte::BaseDePrueba>();
        ventanas = std::make_unique<ui::Ventanas>();
        fallaAlAbrir = false;
        for (const auto &[nombre, modo] :
             {std::pair(QStringLiteral("ficha"), ui::Modo::Marco), {QStringLiteral("elegir"), ui::Modo::Dialogo}})
            ventanas->registrar(nombre, modo, [this, nombre = nombre] {
                auto *nueva = new ficha(*base, *ventanas, nombre);
                nueva->falla = fallaAlAbrir;
                return nueva;
            });
    }
    void cleanup()
    {
        ventanas.reset();
        QVERIFY(base->guion.terminar());
    }

    void unaVentanaPorNombre()
    {
        QCOMPARE(ventanas->abrir(QStringLiteral("ninguna")), nullptr);
        ficha *primera = abrir(QStringLiteral("ficha"), {{{QStringLiteral("n"), 1}}});
        QVERIFY(primera && primera->isVisible());
        QCOMPARE(abrir(QStringLiteral("ficha"), {{{QStringLiteral("n"), 2}}}), primera);
        QCOMPARE(primera->preparadas, 2);
        QCOMPARE(primera->datos().value(QStringLiteral("n")).toInt(), 2);

        // an open window keeps what it was doing when it declines
        QCOMPARE(abrir(QStringLiteral("ficha"), {{{QStringLiteral("rechazar"), true}}}), nullptr);
        QCOMPARE(primera->datos().value(QStringLiteral("n")).toInt(), 2);
        QVERIFY(primera->isVisible());

        ventanas->refrescar({QStringLiteral("ficha")});
        ventanas->refrescar({QStringLiteral("elegir")});
        QCOMPARE(primera->refrescadas, 1);

        // closed, though the object still lives until the event loop turns
        primera->close();
        QCOMPARE(ventanas->buscar(QStringLiteral("ficha")), nullptr);
        ficha *segunda = abrir(QStringLiteral("ficha"));
        QVERIFY(segunda && segunda != primera);
    }

    void laQueSeNiegaNoQueda()
    {
        QCOMPARE(abrir(QStringLiteral("ficha"), {{{QStringLiteral("rechazar"), true}}}), nullptr);
        QCOMPARE(ventanas->buscar(QStringLiteral("ficha")), nullptr);
        fallaAlAbrir = true;
        base->guion.esperarMensaje(base::titulo::error, QStringLiteral("La base está ocupada."));
        QCOMPARE(abrir(QStringLiteral("ficha")), nullptr);
        QCOMPARE(ventanas->buscar(QStringLiteral("ficha")), nullptr);
    }

    void dentroDelMarco()
    {
        QMainWindow marco;
        auto *area = new QMdiArea;
        marco.setCentralWidget(area);
        marco.resize(400, 300);
        marco.show();
        ventanas->setArea(area);
        ficha *v = abrir(QStringLiteral("ficha"));
        QCOMPARE(area->subWindowList().size(), 1);
        QVERIFY(area->viewport()->rect().contains(area->subWindowList().first()->geometry()));

        // refused, the frame stays; agreed, the frame goes with the window, whichever of both is closed
        QTest::keyClicks(v->apellido, QStringLiteral("x"));
        base->guion.esperarPregunta(base::titulo::atencion, pregunta, false);
        area->subWindowList().first()->close();
        QVERIFY(v->isVisible());
        QCOMPARE(ventanas->buscar(QStringLiteral("ficha")), v);
        base->guion.esperarPregunta(base::titulo::atencion, pregunta, false);
        QVERIFY(!ventanas->cerrarTodas());
        base->guion.esperarPregunta(base::titulo::atencion, pregunta, true);
        QTest::keyClick(v->apellido, Qt::Key_Escape);
        QTRY_VERIFY(area->subWindowList().isEmpty());

        const QPointer<ficha> otra = abrir(QStringLiteral("ficha"));
        area->subWindowList().first()->close();
        QTRY_VERIFY(!otra);
        QTRY_VERIFY(area->subWindowList().isEmpty());
        QVERIFY(ventanas->cerrarTodas());
    }

    // A window inside the frame that is the active one keeps the frame's menu from having the keys.
    void alFrenteTieneElFoco()
    {
        QMainWindow marco;
        auto *area = new QMdiArea;
        auto *boton = new QPushButton;
        marco.setCentralWidget(area);
        marco.setMenuWidget(boton);
        marco.show();
        QVERIFY(QTest::qWaitForWindowActive(&marco));
        ventanas->setArea(area);
        ficha *v = abrir(QStringLiteral("ficha"));
        v->apellido->setFocus();
        boton->setFocus();
        QVERIFY(boton->hasFocus());
        QVERIFY(ventanas->activar(QStringLiteral("ficha")));
        QVERIFY(v->apellido->hasFocus());
    }

    void dialogoEsperaYDevuelve()
    {
        ficha *quien = abrir(QStringLiteral("ficha"));
        QVERIFY(QTest::qWaitForWindowActive(quien));
        quien->apellido->setFocus();
        QVariantMap recibido;
        int veces = 0;
        ficha *dialogo = abrir(
            QStringLiteral("elegir"),
            {.alTerminar =
                 [&](const QVariantMap &r) {
                     recibido = r;
                     ++veces;
                 }},
            quien);
        QVERIFY(dialogo->isWindow());
        QCOMPARE(dialogo->windowModality(), Qt::WindowModal);
        QCOMPARE(dialogo->parentWidget(), quien);
        const QPoint entre = dialogo->geometry().center() - quien->geometry().center();
        QVERIFY(entre.manhattanLength() < 80);

        dialogo->apellido->setModified(true); // finished: nothing is lost, nothing is asked
        dialogo->terminar({{QStringLiteral("id"), 7}});
        QCOMPARE(recibido.value(QStringLiteral("id")).toInt(), 7);
        QCOMPARE(ventanas->buscar(QStringLiteral("elegir")), nullptr);
        QTRY_VERIFY(quien->apellido->hasFocus());
        dialogo->terminar({});
        QCOMPARE(veces, 1);

        // cancelled: nobody is told
        dialogo = abrir(QStringLiteral("elegir"), {.alTerminar = [&](const QVariantMap &) { ++veces; }}, quien);
        QTest::keyClick(dialogo, Qt::Key_Escape);
        QCOMPARE(ventanas->buscar(QStringLiteral("elegir")), nullptr);
        QCOMPARE(veces, 1);
    }

    void teclas()
    {
        ficha *v = abrir(QStringLiteral("ficha"));
        QVERIFY(QTest::qWaitForWindowActive(v));
        v->apellido->setFocus();
        QSignalSpy termino(v->apellido, &QLineEdit::editingFinished);
        QTest::keyClicks(v->apellido, QStringLiteral("Diaz"));
        QTest::keyClick(v->apellido, Qt::Key_S, Qt::ControlModifier);
        QCOMPARE(v->guardados, 1);
        QCOMPARE(termino.size(), 1); // what was being typed counted before the save
        QVERIFY(v->apellido->hasFocus());

        v->guardar->setEnabled(false);
        QTest::keyClick(v->apellido, Qt::Key_S, Qt::ControlModifier);
        QCOMPARE(v->guardados, 1);
        v->guardar->setEnabled(true);

        QTest::keyClick(v->apellido, Qt::Key_Return);
        QVERIFY(v->guardar->hasFocus());
        QTest::keyClick(v->guardar, Qt::Key_Return);
        QCOMPARE(v->guardados, 2);
        v->setEnter(v->guardar, {v->apellido});
        QTest::keyClick(v->apellido, Qt::Key_Return);
        QCOMPARE(v->guardados, 3);

        base->guion.esperarMensaje(QStringLiteral("Ayuda"), v->ayuda(), base::Icono::Informacion);
        QTest::keyClick(v->apellido, Qt::Key_F1);
        QTest::keyClick(v->apellido, Qt::Key_F5);
        QCOMPARE(v->refrescadas, 1);
        v->apellido->setModified(false);
    }

    void fallaSeDiceUnaVez()
    {
        ficha *v = abrir(QStringLiteral("ficha"));
        v->falla = true;
        v->apellido->insert(QStringLiteral("Pérez"));
        base->guion.esperarMensaje(base::titulo::error, QStringLiteral("La base está ocupada."));
        QTest::mouseClick(v->guardar, Qt::LeftButton);
        QCOMPARE(v->apellido->text(), QStringLiteral("Pérez"));
        QVERIFY(v->isVisible());
        v->apellido->setModified(false);
    }

    void rechazoLlevaAlCampo()
    {
        ficha *v = abrir(QStringLiteral("ficha"));
        QVERIFY(QTest::qWaitForWindowActive(v));
        QVERIFY(v->aceptado(std::nullopt));
        base->guion.esperarMensaje(base::titulo::aviso, QStringLiteral("Faltan notas."));
        QVERIFY(!v->aceptado(base::Rechazo{base::titulo::aviso, QStringLiteral("Faltan notas."), "notas"}));
        QVERIFY(v->notas->isVisible()); // on a page that was turned away
        QVERIFY(v->notas->hasFocus());
    }

    void exporta()
    {
        ficha *v = abrir(QStringLiteral("ficha"));
        ui::Grilla grilla(QStringLiteral("g"), QStringLiteral("|Nombre"));
        grilla.mostrar({{QStringLiteral("Ñandú")}}, {1});
        const QString destino = base->carpetaPrograma() + QStringLiteral("/lista.csv");
        base->guion.esperarDestino(QStringLiteral("Exportar"), destino);
        v->exportar(grilla);
        QFile archivo(destino);
        QVERIFY(archivo.open(QIODevice::ReadOnly));
        QCOMPARE(archivo.readAll(), QByteArray("\xEF\xBB\xBFNombre\r\nÑandú\r\n"));
        base->guion.esperarDestino(QStringLiteral("Exportar"), std::nullopt);
        v->exportar(grilla);
        QCOMPARE(
            base->valor(QStringLiteral("SELECT accion FROM [Historial]")),
            QStringLiteral("Exportación de la lista a un archivo. (Renglones: 1)"));
        v->copiar(grilla, false);
        QCOMPARE(QApplication::clipboard()->text(), QStringLiteral("Nombre\nÑandú"));
    }

    void loLargoSeCancela()
    {
        ficha *v = abrir(QStringLiteral("ficha"));
        ui::Avance avance(v, QStringLiteral("Exportando..."), 1000);
        QVERIFY(avance.paso());
        v->findChild<QProgressDialog *>()->cancel();
        QVERIFY(!avance.paso());
        QVERIFY(avance.cancelado());
    }

    void loQueFallaAlExportarSeDice()
    {
        ficha *v = abrir(QStringLiteral("ficha"));
        ui::Grilla grilla(QStringLiteral("g"), QStringLiteral("|Nombre"));
        grilla.modelo().setAlRecorrer([](bool empieza) {
            if (empieza)
                throw db::Error(db::Error::Kind::Busy, 5, QStringLiteral("Otra terminal."));
        });
        const QString destino = base->carpetaPrograma() + QStringLiteral("/otra.csv");
        base->guion.esperarDestino(QStringLiteral("Exportar"), destino);
        base->guion.esperarMensaje(base::titulo::error, QStringLiteral("Otra terminal."));
        v->exportar(grilla);
        QVERIFY(!QFile::exists(destino));
    }
};

PRUEBA(VentanaTest)
#include "VentanaTest.moc"
