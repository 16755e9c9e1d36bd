#include "app/forms/ayuda.h"
#include "app/Modulo.h"
#include "app/forms/AvisoSonoro.h"
#include "app/forms/Composicion.h"
#include "app/forms/PaginaAyuda.h"
#include "app/forms/acerca.h"
#include "support/BaseDePrueba.h"
#include "support/Prueba.h"
#include "ui/Ventanas.h"

#include <QApplication>
#include <QClipboard>
#include <QLineEdit>
#include <QPushButton>
#include <QTextBlock>
#include <QTextDocument>
#include <QTreeWidget>
#include <QtEndian>

using namespace Qt::StringLiterals;

namespace {

class ventanaConPagina : public ui::Ventana
{
public:
    ventanaConPagina(db::Entorno &e, ui::Ventanas &v)
        : Ventana(e, v, u"nuevopaci"_qs, u"Nuevo paciente"_qs)
    {
    }
};

} // namespace

/// Help, about box and sound: what stands around the work.
class AyudaTest : public QObject
{
    Q_OBJECT

    std::unique_ptr<soporte::BaseDePrueba> base;
    std::unique_ptr<ui::Ventanas> ventanas;

    app::ayuda *abrir() { return static_cast<app::ayuda *>(ventanas->abrir(u"ayuda"_qs)); }

private slots:
    void init()
    {
        base = std::make_unique<soporte::BaseDePrueba>();
        ventanas = std::make_unique<ui::Ventanas>();
        app::registrarVentanas(*base, *ventanas);
    }
    void cleanup()
    {
        ventanas.reset();
        QVERIFY(base->guion.terminar());
    }

    void paginas()
    {
        app::ayuda *ayuda = abrir();
        QVERIFY(ayuda);
        QCOMPARE(ayuda->pagina->archivo(), u"guia.md"_qs);
        // every page has its line, shows, and its pictures are there and fit
        QVERIFY(ayuda->indice->topLevelItemCount() > 5);
        for (int i = 0; i < ayuda->indice->topLevelItemCount(); ++i) {
            QTreeWidgetItem *item = ayuda->indice->topLevelItem(i);
            ayuda->indice->setCurrentItem(item);
            QVERIFY2(ayuda->pagina->toPlainText().startsWith(item->text(0)), qPrintable(item->text(0)));
            for (QTextBlock bloque = ayuda->pagina->document()->begin(); bloque.isValid(); bloque = bloque.next())
                for (auto parte = bloque.begin(); !parte.atEnd(); ++parte) {
                    const QTextCharFormat formato = parte.fragment().charFormat();
                    QVERIFY(
                        bloque.blockFormat().headingLevel() > 0
                        || !formato.hasProperty(QTextFormat::FontSizeAdjustment));
                    if (!formato.isImageFormat())
                        continue;
                    const auto imagen
                        = ayuda->pagina->document()
                              ->resource(QTextDocument::ImageResource, QUrl(formato.toImageFormat().name()))
                              .value<QImage>();
                    QVERIFY2(!imagen.isNull(), qPrintable(formato.toImageFormat().name()));
                    QVERIFY(imagen.width() / imagen.devicePixelRatio() <= ayuda->pagina->viewport()->width());
                }
        }
    }

    void enlacesYVuelta()
    {
        app::ayuda *ayuda = abrir();
        emit ayuda->pagina->anchorClicked(QUrl(u"guia/principal.md"_qs));
        QCOMPARE(ayuda->pagina->archivo(), u"guia/principal.md"_qs);
        QCOMPARE(ayuda->indice->currentItem()->text(0), u"La ventana principal"_qs);
        emit ayuda->pagina->anchorClicked(QUrl(u"respaldo.md"_qs));
        QCOMPARE(ayuda->pagina->archivo(), u"guia/respaldo.md"_qs);
        for (const char *afuera : {"https://ejemplo.com", "file:///etc/passwd", "../../x.md", "no.md"})
            emit ayuda->pagina->anchorClicked(QUrl(QLatin1String(afuera)));
        QCOMPARE(ayuda->pagina->archivo(), u"guia/respaldo.md"_qs);
        QTest::mouseClick(ayuda->atras, Qt::LeftButton);
        QCOMPARE(ayuda->pagina->archivo(), u"guia/principal.md"_qs);
        QCOMPARE(ayuda->indice->currentItem()->text(0), u"La ventana principal"_qs);
        QTest::mouseClick(ayuda->adelante, Qt::LeftButton);
        QCOMPARE(ayuda->pagina->archivo(), u"guia/respaldo.md"_qs);
        // a heading of the contents
        QTreeWidgetItem *seccion = ayuda->indice->currentItem()->child(0);
        QVERIFY(seccion);
        ayuda->indice->setCurrentItem(seccion);
        QCOMPARE(ayuda->pagina->textCursor().block().text(), seccion->text(0));
        QTest::mouseClick(ayuda->inicio, Qt::LeftButton);
        QCOMPARE(ayuda->pagina->archivo(), u"guia.md"_qs);
    }

    void busqueda()
    {
        app::ayuda *ayuda = abrir();
        ayuda->buscar->setFocus();
        ayuda->buscar->setText(u"SOBRETURNO dia"_qs);
        QVERIFY(ayuda->indice->topLevelItemCount() > 0);
        QTest::keyClick(ayuda->buscar, Qt::Key_Return);
        QVERIFY(ayuda->pagina->archivo() != u"guia.md"_qs);
        QVERIFY(!ayuda->pagina->extraSelections().isEmpty());
        for (const auto &marca : ayuda->pagina->extraSelections())
            QVERIFY(
                marca.cursor.selectedText().compare(u"sobreturno"_qs, Qt::CaseInsensitive) == 0
                || marca.cursor.selectedText().startsWith(u'd', Qt::CaseInsensitive));
        ayuda->buscar->setText(u"zzzz"_qs);
        QCOMPARE(ayuda->indice->topLevelItem(0)->text(0), u"No se encontró nada."_qs);
        QTest::keyClick(ayuda->buscar, Qt::Key_Escape); // the search first, then the window
        QCOMPARE(ayuda->buscar->text(), QString());
        QVERIFY(ayuda->pagina->extraSelections().isEmpty() && ayuda->indice->topLevelItemCount() > 5);
        QTest::keyClick(ayuda->buscar, Qt::Key_Escape);
        QVERIFY(!ventanas->buscar(u"ayuda"_qs));
    }

    /// F1 opens the page of the window; over a dialog when there is one, because what is behind it waits.
    void efeUno()
    {
        ventanaConPagina ventana(*base, *ventanas);
        ventana.show();
        QTest::keyClick(&ventana, Qt::Key_F1);
        ui::Ventana *abierta = ventanas->buscar(u"ayuda"_qs);
        QVERIFY(abierta && !abierta->isModal());
        QCOMPARE(static_cast<app::ayuda *>(abierta)->pagina->archivo(), u"guia/alta.md"_qs);

        ventana.hide();
        ventana.setWindowModality(Qt::WindowModal);
        ventana.show();
        QTest::keyClick(&ventana, Qt::Key_F1);
        abierta = ventanas->buscar(u"ayuda"_qs);
        QVERIFY(abierta && abierta->isModal() && abierta->parentWidget() == &ventana);
        abierta->close();
    }

    void acercaDe()
    {
        auto *acerca = static_cast<app::acerca *>(ventanas->abrir(u"acerca"_qs));
        QVERIFY(acerca);
        QStringList dicho;
        for (const auto *texto : acerca->findChildren<QLabel *>())
            dicho << texto->text();
        for (const QString &parte : {u"Vastelo 1.60.8"_qs, base->archivo(), u"PC-PRUEBA (servidor o única)"_qs})
            QVERIFY2(dicho.contains(parte), qPrintable(parte));
        QTest::mouseClick(acerca->copiar, Qt::LeftButton);
        const QString copiado = QApplication::clipboard()->text();
        QVERIFY(copiado.startsWith(u"Vastelo 1.60.8\nFecha: 22/11/2026 09:00\n"_qs));
        QVERIFY(copiado.contains(base->archivo()) && copiado.contains(QLatin1String(qVersion())));
        QVERIFY(!copiado.contains(u"kestrel"_qs));
    }

    void sonido()
    {
        QFile file(QStringLiteral(VASTELO_SONIDO));
        QVERIFY(file.open(QIODevice::ReadOnly));
        const QByteArray wav = file.readAll();
        QVERIFY(wav.size() < 40'000);
        QVERIFY(wav.startsWith("RIFF") && wav.mid(8, 8) == "WAVEfmt ");
        QCOMPARE(qFromLittleEndian<quint32>(wav.constData() + 4), quint32(wav.size() - 8));
        QCOMPARE(qFromLittleEndian<quint16>(wav.constData() + 22), quint16(1)); // mono
        QCOMPARE(qFromLittleEndian<quint32>(wav.constData() + 24), 22'050u);
        // heard, and neither clipped nor cut off
        int mayor = 0;
        for (int i = 44; i + 1 < wav.size(); i += 2)
            mayor = qMax(mayor, qAbs(int(qFromLittleEndian<qint16>(wav.constData() + i))));
        QVERIFY(mayor > 8'000 && mayor < 32'767);
        QVERIFY(qAbs(int(qFromLittleEndian<qint16>(wav.constData() + wav.size() - 2))) < 300);

        // with or without the file and a device for it, nobody waits and nothing is said
        QTest::failOnWarning(QRegularExpression(u".*"_qs));
        QElapsedTimer tiempo;
        tiempo.start();
        {
            app::AvisoSonoro aviso;
            aviso.tocar(base->carpetaPrograma() + u"/chat.wav"_qs);
            aviso.tocar(QStringLiteral(VASTELO_SONIDO));
            aviso.tocar(QStringLiteral(VASTELO_SONIDO));
            QVERIFY(tiempo.elapsed() < 500);
        }
        QVERIFY(tiempo.elapsed() < 3'000);
    }
};

PRUEBA(AyudaTest)
#include "AyudaTest.moc"
