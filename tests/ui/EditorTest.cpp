#include "support/Prueba.h"
#include "ui/BarraFormato.h"
#include "ui/EditorTexto.h"

#include <QClipboard>
#include <QComboBox>
#include <QLineEdit>
#include <QMimeData>
#include <QSignalSpy>
#include <QTextEdit>
#include <QToolButton>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

/// The editor of formatted texts, driven by its buttons and keys.
class EditorTest : public QObject
{
    Q_OBJECT

    std::unique_ptr<QWidget> ventana;
    ui::EditorTexto *editor = nullptr;
    ui::BarraFormato *barra = nullptr;

    QString cuerpo() const
    {
        const QString html = editor->html();
        return html.mid(html.indexOf(u"<body>"_s) + 6).chopped(14);
    }
    void elegir(int desde, int hasta)
    {
        QTextCursor cursor(editor->hoja()->document());
        cursor.setPosition(desde);
        cursor.setPosition(hasta, QTextCursor::KeepAnchor);
        editor->hoja()->setTextCursor(cursor);
    }
    void pegar(QMimeData *datos)
    {
        QGuiApplication::clipboard()->setMimeData(datos);
        editor->hoja()->paste();
    }

private slots:
    void init()
    {
        ventana = std::make_unique<QWidget>();
        editor = new ui::EditorTexto(u"contenido"_s, ventana.get());
        (new QVBoxLayout(ventana.get()))->addWidget(editor);
        barra = editor->findChild<ui::BarraFormato *>();
        QVERIFY(barra);
        ventana->show();
        QVERIFY(QTest::qWaitForWindowActive(ventana.get()));
        editor->setFocus();
    }

    void daFormatoALoElegido()
    {
        QCOMPARE(editor->html(), QString());
        QSignalSpy cambios(editor, &ui::EditorTexto::htmlCambiado);
        QTest::keyClicks(editor->hoja(), "uno dos tres");
        QVERIFY(!cambios.isEmpty());
        elegir(4, 7);
        QTest::keyClick(editor->hoja(), Qt::Key_B, Qt::ControlModifier);
        QVERIFY(barra->negrita->isChecked());
        QTest::mouseClick(barra->rojo, Qt::LeftButton);
        elegir(8, 12);
        QTest::mouseClick(barra->subrayado, Qt::LeftButton);
        QVERIFY(!barra->negrita->isChecked());
        QTest::mouseClick(barra->centrado, Qt::LeftButton);
        QVERIFY(editor->hoja()->hasFocus());
        QVERIFY(barra->centrado->isChecked() && !barra->izquierda->isChecked());
        QCOMPARE(
            cuerpo(), u"<p align=\"center\">uno <span style=\"color:#c00000;\"><b>dos</b></span> <u>tres</u></p>"_s);

        // What is stored comes back equal; black is the paper's own.
        const QString guardado = editor->html();
        elegir(4, 7);
        QTest::mouseClick(barra->negro, Qt::LeftButton);
        QTest::keyClick(editor->hoja(), Qt::Key_B, Qt::ControlModifier);
        QTest::keyClick(editor->hoja(), Qt::Key_R, Qt::ControlModifier);
        QCOMPARE(cuerpo(), u"<p align=\"right\">uno dos <u>tres</u></p>"_s);
        editor->setHtml(guardado);
        QCOMPARE(editor->html(), guardado);
        QVERIFY(!editor->hoja()->document()->isUndoAvailable());
        QCOMPARE(editor->property("html").toString(), guardado);

        editor->hoja()->selectAll();
        QTest::keyClick(editor->hoja(), Qt::Key_Delete);
        QCOMPARE(editor->html(), QString());
    }

    void preguntaColorYLetra()
    {
        editor->setHtml(u"abc"_s);
        editor->hoja()->selectAll();
        QColor mostrado;
        barra->setElegirColor([&](const QColor &actual, QWidget *) {
            mostrado = actual;
            return std::optional(QColor(0x12, 0x34, 0x56));
        });
        QTest::mouseClick(barra->mascolores, Qt::LeftButton);
        QCOMPARE(mostrado, QColor(Qt::black));
        barra->setElegirLetra([](const QFont &actual, QWidget *) {
            QFont otra(actual);
            otra.setFamily(u"DejaVu Serif"_s);
            otra.setPointSize(16);
            otra.setStrikeOut(true);
            return std::optional(otra);
        });
        QTest::mouseClick(barra->letra, Qt::LeftButton);
        const QString todo
            = u"<p><span style=\"color:#123456;font-size:16pt;font-family:'DejaVu Serif';\"><s>abc</s></span></p>"_s;
        QCOMPARE(cuerpo(), todo);
        QCOMPARE(barra->tama->currentText(), u"16"_s);
        barra->setElegirLetra([](const QFont &, QWidget *) { return std::optional<QFont>(); });
        barra->setElegirColor([](const QColor &, QWidget *) { return std::optional<QColor>(); });
        QTest::mouseClick(barra->letra, Qt::LeftButton);
        QTest::mouseClick(barra->mascolores, Qt::LeftButton);
        QCOMPARE(cuerpo(), todo);
        barra->tama->setFocus();
        barra->tama->lineEdit()->setText(u"8"_s);
        QTest::keyClick(barra->tama, Qt::Key_Return);
        QVERIFY(cuerpo().contains(u"font-size:8pt"_s));
        QVERIFY(editor->hoja()->hasFocus());
    }

    void vinetas()
    {
        editor->setHtml(u"a\nb\nc"_s);
        elegir(0, 3);
        QTest::mouseClick(barra->vinetas, Qt::LeftButton);
        QCOMPARE(cuerpo(), u"<ul><li>a</li><li>b</li></ul><p>c</p>"_s);
        QTest::mouseClick(barra->vinetas, Qt::LeftButton);
        QCOMPARE(cuerpo(), u"<p>a</p><p>b</p><p>c</p>"_s);
    }

    void pegaSoloFormatoSencillo()
    {
        auto *deAfuera = new QMimeData;
        deAfuera->setHtml(u"<p style='font-family:X;font-size:30px;color:#fefefe;background:black'><b>Ñ</b>"
                          "<script>x()</script><img src='file:///etc/hostname'></p>"_s);
        pegar(deAfuera);
        QCOMPARE(cuerpo(), u"<p><b>Ñ</b></p>"_s);
        auto *plano = new QMimeData;
        plano->setText(u"<b>O'Higgins\n2"_s);
        editor->setHtml({});
        pegar(plano);
        QCOMPARE(cuerpo(), u"<p>&lt;b&gt;O'Higgins</p><p>2</p>"_s);
        auto *imagen = new QMimeData;
        imagen->setImageData(QImage(4, 4, QImage::Format_RGB32));
        editor->setHtml(u"x"_s);
        pegar(imagen);
        QCOMPARE(cuerpo(), u"<p>x</p>"_s);

        // From sheet to sheet nothing is lost.
        editor->setHtml(u"<p><span style=\"font-size:16pt\">g</span></p>"_s);
        editor->hoja()->selectAll();
        editor->hoja()->copy();
        editor->hoja()->paste();
        QCOMPARE(cuerpo(), u"<p><span style=\"font-size:16pt;\">g</span></p>"_s);
    }

    void siempreNegroSobreBlanco()
    {
        const QPalette antes = QApplication::palette();
        QPalette noche;
        noche.setColor(QPalette::Window, Qt::black);
        noche.setColor(QPalette::WindowText, Qt::white);
        noche.setColor(QPalette::Base, Qt::black);
        noche.setColor(QPalette::Text, Qt::white);
        QApplication::setPalette(noche);
        ui::EditorTexto oscuro(u"oscuro"_s);
        oscuro.setHtml(u"texto"_s);
        oscuro.resize(300, 200);
        const QColor fondo = oscuro.hoja()->grab().toImage().pixelColor(150, 150);
        const QString html = oscuro.html();
        QApplication::setPalette(antes);
        QCOMPARE(fondo, QColor(Qt::white));
        QVERIFY(!html.contains(u"color"_s));
    }

    void unaBarraParaDosHojas()
    {
        QWidget otra;
        auto *comun = new ui::BarraFormato(&otra);
        auto *primera = new ui::EditorTexto(u"primera"_s, &otra, comun);
        auto *segunda = new ui::EditorTexto(u"segunda"_s, &otra, comun);
        auto *columna = new QVBoxLayout(&otra);
        for (QWidget *uno : std::initializer_list<QWidget *>{comun, primera, segunda})
            columna->addWidget(uno);
        otra.show();
        QVERIFY(QTest::qWaitForWindowActive(&otra));
        primera->setHtml(u"1"_s);
        segunda->setHtml(u"2"_s);
        segunda->setFocus();
        segunda->hoja()->selectAll();
        QTest::mouseClick(comun->cursiva, Qt::LeftButton);
        QVERIFY(segunda->html().contains(u"<i>2</i>"_s));
        QVERIFY(!primera->html().contains(u"<i>"_s));
        primera->setFocus();
        QVERIFY(!comun->cursiva->isChecked());
    }
};

PRUEBA(EditorTest)
#include "EditorTest.moc"
