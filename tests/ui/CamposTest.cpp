#include "support/BaseDePrueba.h"
#include "support/Prueba.h"
#include "ui/CampoFecha.h"
#include "ui/Iconos.h"
#include "ui/ListaCombo.h"
#include "ui/MensajesQt.h"

#include <QCalendarWidget>
#include <QComboBox>
#include <QCompleter>
#include <QInputDialog>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QSignalSpy>
#include <QTimer>

class CamposTest : public QObject
{
    Q_OBJECT

    /// Acts on the modal box that the next call opens.
    template <typename Accion>
    static void enCuantoAbra(Accion accion)
    {
        QTimer::singleShot(0, qApp, [accion] {
            QWidget *modal = QApplication::activeModalWidget();
            QVERIFY(modal);
            accion(modal);
            if (modal->isVisible()) {
                QTest::qFail("the box stayed open", __FILE__, __LINE__);
                modal->close();
            }
        });
    }

private slots:
    void fechaEscrita_data()
    {
        QTest::addColumn<QString>("escrito");
        QTest::addColumn<QDate>("fecha");
        QTest::addColumn<QString>("queda");
        QTest::addColumn<bool>("nula");
        QTest::newRow("corta") << "5/3/80" << QDate(1980, 3, 5) << "05/03/1980" << false;
        QTest::newRow("entera") << "05/03/1980" << QDate(1980, 3, 5) << "05/03/1980" << false;
        QTest::newRow("no existe") << "31/2/2024" << QDate() << "31/2/2024" << false;
        QTest::newRow("no es fecha") << "ayer" << QDate() << "ayer" << false;
        QTest::newRow("blancos") << "  " << QDate() << "  " << true;
        QTest::newRow("vacía") << "" << QDate() << "" << true;
    }
    void fechaEscrita()
    {
        QFETCH(QString, escrito);
        QFETCH(QDate, fecha);
        QFETCH(QString, queda);
        QFETCH(bool, nula);
        ui::CampoFecha campo;
        QSignalSpy avisos(&campo, &ui::CampoFecha::fechaCambiada);
        QTest::keyClicks(&campo, escrito);
        QTest::keyClick(&campo, Qt::Key_Return);
        QCOMPARE(campo.text(), queda);
        QCOMPARE(campo.fecha(), fecha);
        QCOMPARE(campo.isNull(), nula);
        QCOMPARE(campo.esValida(), fecha.isValid());
        QCOMPARE(campo.property("invalido").toBool(), !nula && !fecha.isValid());
        QCOMPARE(avisos.isEmpty() ? QDate() : avisos.last().first().toDate(), fecha);
    }

    void fechaElegida()
    {
        ui::CampoFecha campo;
        campo.show();
        campo.setHoy(QDate(2026, 11, 22));
        QTest::keyClick(&campo, Qt::Key_F4);
        auto *calendario = campo.findChild<QCalendarWidget *>();
        QVERIFY(calendario);
        QCOMPARE(calendario->selectedDate(), QDate(2026, 11, 22));
        emit calendario->clicked(QDate(2026, 11, 3));
        QCOMPARE(campo.text(), QStringLiteral("03/11/2026"));
        // the binder moves it by its USER property
        QCOMPARE(campo.metaObject()->userProperty().name(), "fecha");
        campo.setReadOnly(true);
        QTRY_VERIFY(!campo.findChild<QCalendarWidget *>());
        QTest::keyClick(&campo, Qt::Key_F4);
        QVERIFY(!campo.findChild<QCalendarWidget *>());
    }

    void listaDeTabla_data() { soporte::filasDeDialecto(); }
    void listaDeTabla()
    {
        soporte::BaseDePrueba base(soporte::dialectoActual());
        base.conexion().execute(
            QStringLiteral("INSERT INTO [Lista Doctores] (NomDoc,tipo,prioridad) VALUES (?,0,5)"),
            {QStringLiteral("Zulema Díaz")});
        const int zulema = int(base.conexion().insertedId());
        QComboBox lista;
        QSignalSpy cambios(&lista, &QComboBox::currentIndexChanged);
        ui::cargarLista(lista, base.conexion(), "Lista Doctores", "NomDoc", {{QStringLiteral("<Todos>"), -1}});
        QCOMPARE(lista.count(), 3);
        QCOMPARE(lista.itemText(1), QStringLiteral("Zulema Díaz"));
        QCOMPARE(ui::idElegido(lista), -1);

        ui::elegirId(lista, zulema);
        cambios.clear();
        ui::cargarLista(lista, base.conexion(), "Lista Doctores", "NomDoc");
        QCOMPARE(ui::idElegido(lista), zulema);
        QCOMPARE(cambios.size(), 0);
        lista.setEditText(QStringLiteral("nadie"));
        QCOMPARE(ui::idElegido(lista, 77), 77);
        ui::cargarLista(lista, base.conexion(), "Lista Doctores", "NomDoc", {{QStringLiteral("<Todos>"), -1}});
        QCOMPARE(lista.currentText(), QStringLiteral("nadie")); // what is being typed outlives a reload
        lista.setEditText(QStringLiteral("juan pérez"));
        QCOMPARE(ui::idElegido(lista), base.usuario);
        ui::elegirId(lista, 12345);
        QCOMPARE(ui::idElegido(lista, 77), 77);
        QVERIFY(lista.currentText().isEmpty());

        lista.completer()->setCompletionPrefix(QStringLiteral("DIA"));
        QCOMPARE(lista.completer()->completionCount(), 1);
    }

    void listaLarga()
    {
        std::vector<std::pair<QString, int>> entradas;
        for (int i = 1; i <= 5000; ++i)
            entradas.emplace_back(QStringLiteral("Entrada %1").arg(i), i);
        QComboBox lista;
        lista.show();
        QElapsedTimer reloj;
        reloj.start();
        ui::ponerEntradas(lista, entradas);
        ui::elegirId(lista, 4999);
        QVERIFY2(reloj.elapsed() < 500, qPrintable(QString::number(reloj.elapsed())));
        QCOMPARE(lista.currentText(), QStringLiteral("Entrada 4999"));
    }

    void mensajes()
    {
        ui::MensajesQt mensajes;
        enCuantoAbra([](QWidget *modal) {
            auto *caja = qobject_cast<QMessageBox *>(modal);
            QVERIFY(caja);
            QCOMPARE(caja->text(), QStringLiteral("a <b>c</b>"));
            QCOMPARE(caja->textFormat(), Qt::PlainText);
            QCOMPARE(caja->icon(), QMessageBox::Warning);
            QCOMPARE(caja->buttons().size(), 1);
            QCOMPARE(caja->buttons().first()->text(), QStringLiteral("Aceptar"));
            QTest::keyClick(caja, Qt::Key_Escape);
        });
        mensajes.advertir(QStringLiteral("T"), QStringLiteral("a <b>c</b>"));

        for (const bool porDefecto : {true, false}) {
            enCuantoAbra([](QWidget *modal) { QTest::keyClick(modal, Qt::Key_Return); });
            QCOMPARE(mensajes.pregunta(QStringLiteral("T"), QStringLiteral("¿?"), porDefecto), porDefecto);
            enCuantoAbra([](QWidget *modal) { QTest::keyClick(modal, Qt::Key_Escape); });
            QVERIFY(!mensajes.pregunta(QStringLiteral("T"), QStringLiteral("¿?"), porDefecto));
        }

        enCuantoAbra([](QWidget *modal) {
            auto *linea = modal->findChild<QLineEdit *>();
            QCOMPARE(linea->echoMode(), QLineEdit::Password);
            QTest::keyClicks(linea, QStringLiteral("secreta"));
            QTest::keyClick(linea, Qt::Key_Return);
        });
        QCOMPARE(mensajes.pedirClave(QStringLiteral("T"), QStringLiteral("Clave")), QStringLiteral("secreta"));
        enCuantoAbra([](QWidget *modal) { QTest::keyClick(modal, Qt::Key_Escape); });
        QCOMPARE(mensajes.pedirTexto(QStringLiteral("T"), QStringLiteral("x"), QStringLiteral("y")), std::nullopt);
    }

    void iconos()
    {
        QVERIFY(ui::icono(QStringLiteral("no-existe")).isNull());
        QVERIFY(!ui::icono(QStringLiteral("document-save")).pixmap(22, 22).isNull());
        const QImage claro = ui::icono(QStringLiteral("document-save")).pixmap(22, 22).toImage();
        const QPalette antes = QApplication::palette();
        QPalette noche(Qt::white, Qt::black);
        noche.setColor(QPalette::Window, Qt::black);
        noche.setColor(QPalette::WindowText, Qt::white);
        QApplication::setPalette(noche);
        const QImage oscuro = ui::icono(QStringLiteral("document-save")).pixmap(22, 22).toImage();
        QApplication::setPalette(antes);
        QVERIFY(claro != oscuro);
    }
};

PRUEBA(CamposTest)
#include "CamposTest.moc"
