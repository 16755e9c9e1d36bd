#include "support/Prueba.h"
#include "texto/Rtf.h"
#include "texto/TextoRico.h"

#include <QTextBlock>
#include <QTextCursor>

using namespace Qt::StringLiterals;

/// Formatted texts as they are stored: ours, and what older databases hold.
class PruebaTexto : public QObject
{
    Q_OBJECT

    /// Without what all stored texts begin and end with.
    static QString cuerpo(const QString &html)
    {
        const qsizetype desde = html.indexOf(u"<body>"_s);
        return desde < 0 ? html : html.mid(desde + 6).chopped(14);
    }

private slots:
    void unaVueltaSinPerdida_data()
    {
        QTest::addColumn<QString>("guardado");
        QTest::addColumn<QString>("html");
        QTest::newRow("nada") << u""_s << u""_s;
        QTest::newRow("blancos") << u"<p> </p><p><br></p>"_s << u""_s;
        QTest::newRow("plano") << u"Dr. O'Higgins & <b>\n\n  Mat.  12\tx"_s
                               << u"<p>Dr. O'Higgins &amp; &lt;b&gt;</p><p style=\"-qt-paragraph-type:empty\"><br></p>"
                                  "<p>  Mat.  12\tx</p>"_s;
        QTest::newRow("formato")
            << u"<html><body><p align=center><b>Uno</b> <i>dos</i> <u>tres</u></p>"
               "<p align=right><font color=red>rojo</font><span style='font-size:14pt'> g</span></p>"
               "<ul><li>a</li><li>b</li></ul></body></html>"_s
            << u"<p align=\"center\"><b>Uno</b> <i>dos</i> <u>tres</u></p>"
               "<p align=\"right\"><span style=\"color:#ff0000;\">rojo</span>"
               "<span style=\"font-size:14pt;\"> g</span></p><ul><li>a</li><li>b</li></ul>"_s;
        QTest::newRow("afuera") << u"<p>x<script>alert(1)</script><img src=\"file:///etc/passwd\"></p>"
                                   "<table><tr><td>1</td><td>2</td></tr></table>"_s
                                << u"<p>x</p><p>1</p><p>2</p><p style=\"-qt-paragraph-type:empty\"><br></p>"_s;
    }
    void unaVueltaSinPerdida()
    {
        QFETCH(QString, guardado);
        QFETCH(QString, html);
        const QString primera = texto::comoHtml(guardado);
        QCOMPARE(cuerpo(primera), html);
        QCOMPARE(texto::comoHtml(primera), primera);
    }

    void loPegadoQuedaSencilloYLegible()
    {
        QTextDocument pegado;
        pegado.setHtml(u"<h1 style='color:#ffffff;background:#000'>T</h1><p style='font-family:Comic;font-size:30px'>"
                       "<a href='http://x'>v</a><span style='color:#c00000'>r</span></p>"_s);
        QCOMPARE(
            cuerpo(texto::htmlDe(pegado, texto::Conservar::Sencillo)),
            u"<p><b>T</b></p><p>v<span style=\"color:#c00000;\">r</span></p>"_s);
    }

    void marcadores_data()
    {
        QTest::addColumn<QString>("plantilla");
        QTest::addColumn<QString>("llena");
        QTest::newRow("dos veces") << u"<p>&lt;dni&gt; y &lt;dni&gt;, &lt;c&gt;</p>"_s
                                   << u"O'Higgins <b> y O'Higgins <b>, <c>"_s;
        QTest::newRow("partido por el formato") << u"<p>&lt;<b>dni</b>&gt;</p>"_s << u"O'Higgins <b>"_s;
        QTest::newRow("plano") << u"<dni>\n<sexo>."_s << u"O'Higgins <b>\n<dni>."_s;
        QTest::newRow("como etiqueta") << u"<p>Sr. <sexo></p>"_s << u"Sr. <dni>"_s;
        QTest::newRow("rtf") << u"{\\rtf1 \\b <dni>\\b0\\par}"_s << u"O'Higgins <b>"_s;
        QTest::newRow("vacía") << u""_s << u""_s;
    }
    void marcadores()
    {
        QFETCH(QString, plantilla);
        const QString llena = texto::reemplazar(plantilla, {{u"dni"_s, u"O'Higgins <b>"_s}, {u"sexo"_s, u"<dni>"_s}});
        QTEST(texto::comoPlano(llena), "llena");
        if (plantilla.startsWith(u'{'))
            QVERIFY(llena.contains(u"<b>O'Higgins &lt;b&gt;</b>"_s));
    }

    // What pages on the network are made of must not stop the program when it is pasted or laid out.
    void htmlDesmedido_data()
    {
        QTest::addColumn<QString>("html");
        QTest::newRow("nested tables") << u"<p>a"_s + u"<table><tr><td>"_s.repeated(40) + u"b"_s;
        QTest::newRow("a cell over all columns") << QChar(0xD800) + u"<table><tr><td colspan=\"1000\">a</td></tr>"_s
                + u"<tr><td rowspan=900>b</td></tr>"_s.repeated(30);
    }
    void htmlDesmedido()
    {
        QFETCH(QString, html);
        texto::DocumentoCerrado documento;
        texto::ponerHtml(documento, html);
        QVERIFY(documento.size().height() > 0);
        QVERIFY2(documento.characterCount() < 150, qPrintable(QString::number(documento.characterCount())));
        const QString plano = documento.toPlainText();
        QVERIFY(plano.contains(u'a') && plano.contains(u'b'));
    }

    void imagenesSoloDelTexto_data()
    {
        QTest::addColumn<QByteArray>("datos");
        QTest::addColumn<bool>("seVe");
        QTest::newRow("dots") << "P3 1 1 255 255 0 0"_ba << true;
        QTest::newRow("drawing, which may name files")
            << "<svg xmlns='http://www.w3.org/2000/svg' width='9' height='9'/>"_ba << false;
        QTest::newRow("neither") << "hola"_ba << false;
    }
    void imagenesSoloDelTexto()
    {
        QFETCH(QByteArray, datos);
        texto::DocumentoCerrado documento;
        const QUrl url(u"data:image/x;base64,"_s + QString::fromLatin1(datos.toBase64()));
        QTEST(!documento.resource(QTextDocument::ImageResource, url).isNull(), "seVe");
    }

    void leeRtf()
    {
        const QString rtf
            = uR"({\rtf1\ansi\deff0{\fonttbl{\f0\fnil\fcharset0 MS Sans Serif;}{\f1\froman Times New Roman;}{\f2\fnil\fcharset2 Symbol;}}
{\colortbl ;\red255\green0\blue0;}{\*\generator Viejo;}{\info{\author nadie}}
\viewkind4\uc1\pard\qc\b\f1\fs28 Dr. Juan P\'e9rez\par
\b0\fs20\cf1 Cl\u237\'edni\u8364?\{x\}\cf0\line\i Mat.\i0  12\par
\pard\par
\pard{\pntext\f2\'B7\tab}{\*\pn\pnlvlblt}ayuno\par
{\pict\wmetafile8 0100090000}{\v oculto}fin\par
})"_s;
        texto::DocumentoCerrado documento;
        texto::cargar(documento, rtf);
        QCOMPARE(documento.toPlainText(), u"Dr. Juan Pérez\nClíni€{x}\nMat. 12\n\n•\tayuno\nfin"_s);
        const QString html = cuerpo(texto::htmlDe(documento));
        QVERIFY2(
            html.startsWith(u"<p align=\"center\"><span style=\"font-size:14pt;font-family:'Times New Roman';\">"
                            "<b>Dr. Juan Pérez</b></span></p>"_s),
            qPrintable(html));
        QVERIFY2(
            html.contains(u"<span style=\"color:#ff0000;font-family:'Times New Roman';\">Clíni€{x}</span>"_s),
            qPrintable(html));
        QVERIFY(html.contains(u"<i>Mat.</i>"_s));
        QVERIFY(html.contains(u"<p><span style=\"font-family:'Times New Roman';\">fin</span></p>"_s));

        // Anything is taken: cut off anywhere, braces that do not match, numbers that are none.
        for (qsizetype i = 0; i <= rtf.size(); ++i)
            texto::cargar(documento, rtf.left(i));
        for (const QString &roto :
             {u"{\\rtf"_s, u"{\\rtf1 }}}x\\'zz\\u-99999999999 \\bin999999 y"_s, u"{\\rtf1 "_s + QString(50'000, u'{')})
            texto::cargar(documento, roto);
        texto::cargar(documento, u"{\\rtf1 a\\'"_s);
        QCOMPARE(documento.toPlainText(), u"a"_s);
    }
};

PRUEBA(PruebaTexto)
#include "PruebaTexto.moc"
