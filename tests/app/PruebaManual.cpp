#include "app/Manual.h"
#include "support/Prueba.h"

#include <QDir>
#include <QFile>
#include <QRegularExpression>

using namespace Qt::StringLiterals;

/// The guide as the help window reads it, and the guide as it is written.
class PruebaManual : public QObject
{
    Q_OBJECT

    QTemporaryDir carpeta;

    void escribir(const QString &archivo, const QString &texto)
    {
        QFile file(carpeta.filePath(archivo));
        QVERIFY(QDir().mkpath(QFileInfo(file).path()) && file.open(QIODevice::WriteOnly));
        file.write(texto.toUtf8());
    }

private slots:
    void lee()
    {
        QVERIFY(app::Manual(carpeta.path()).paginas().isEmpty());
        escribir(u"guia.md"_qs, u"# Guía\n\n- [Dos](guia/dos.md)\n- [Uno](guia/uno.md#parte)\n- [No](guia/no.md)\n"_qs);
        escribir(
            u"guia/uno.md"_qs, u"# El uno\n\n![La ventana](../pantallas/caja.png)\n\n## Parte\ntexto **suyo**\n"_qs);
        escribir(
            u"guia/dos.md"_qs,
            u"# El dos\n\n| tecla | hace |\n|---|---|\n| `F5` | vuelve a [leer](uno.md) el DÍA |\n\n"
            "![x](../pantallas/caja.png)![y](../pantallas/turno.png)\n"_qs);
        escribir(u"guia/suelta.md"_qs, u"# Ánimo\nnada\n"_qs);
        escribir(u"guia/aparte.md"_qs, u"# Índice\ndía uno\n"_qs);
        const app::Manual manual(carpeta.path());
        QStringList archivos;
        for (const app::PaginaManual &pagina : manual.paginas())
            archivos << pagina.archivo;
        QCOMPARE(archivos.join(u' '), u"guia.md guia/dos.md guia/uno.md guia/suelta.md guia/aparte.md"_qs);
        const app::PaginaManual &dos = manual.paginas()[1], &uno = manual.paginas()[2];
        QCOMPARE(dos.titulo, u"El dos"_qs);
        QCOMPARE(dos.texto, u"El dos tecla hace F5 vuelve a leer el DÍA xy"_qs);
        QCOMPARE(uno.secciones, QStringList{u"Parte"_qs});
        QCOMPARE(manual.paginaDeVentana(u"turno"_qs), u"guia/dos.md"_qs);
        QCOMPARE(manual.paginaDeVentana(u"caja"_qs), u"guia/dos.md"_qs);
        QCOMPARE(manual.paginaDeVentana({}), QString());

        const auto hallados = [&](const QString &texto) {
            QStringList paginas;
            for (const app::HallazgoManual &hallazgo : manual.buscar(texto))
                paginas << manual.paginas()[hallazgo.pagina].titulo;
            return paginas.join(u'|');
        };
        QCOMPARE(hallados(u"dia"_qs), u"El dos|Índice"_qs);
        QCOMPARE(hallados(u"  UNO día "_qs), u"Índice"_qs);
        QCOMPARE(hallados(u"uno"_qs), u"El uno|Guía|Índice"_qs); // the title first
        QCOMPARE(hallados(u"indice"_qs), u"Índice"_qs);
        QCOMPARE(hallados(u"|---"_qs), QString());
        QCOMPARE(hallados(u" "_qs), QString());
    }

    void anclas()
    {
        QCOMPARE(
            app::anclaDe(u"Horarios y días, en que «no» se atiende"_qs), u"horarios-y-días-en-que-no-se-atiende"_qs);
        QCOMPARE(app::sinAcentos(u"ÁRBOL Ñandú"_qs), u"arbol nandu"_qs);
    }

    /// Every link of the guide leads somewhere, and every page and picture of it is in the reach of a link or the
    /// index.
    void laGuiaEnlaza()
    {
        const QDir docs(QStringLiteral(VASTELO_DOCS));
        const app::Manual manual(docs.path());
        QVERIFY(manual.paginas().size() > 5);
        static const QRegularExpression enlace(u"\\]\\(([^)]+)\\)"_qs);
        for (const app::PaginaManual &pagina : manual.paginas()) {
            QVERIFY2(!pagina.titulo.endsWith(u".md"_qs) && pagina.texto.size() > 40, qPrintable(pagina.archivo));
            QFile file(docs.filePath(pagina.archivo));
            QVERIFY(file.open(QIODevice::ReadOnly));
            const QString texto = QString::fromUtf8(file.readAll());
            for (auto i = enlace.globalMatch(texto); i.hasNext();) {
                const QUrl url = QUrl(pagina.archivo).resolved(QUrl(i.next().captured(1)));
                QVERIFY2(
                    QFile::exists(docs.filePath(url.path())), qPrintable(pagina.archivo + u" -> "_qs + url.toString()));
                if (!url.hasFragment())
                    continue;
                bool esta = false;
                for (const app::PaginaManual &otra : manual.paginas())
                    for (const QString &titulo : otra.secciones + QStringList{otra.titulo})
                        esta = esta || (otra.archivo == url.path() && app::anclaDe(titulo) == url.fragment());
                QVERIFY2(esta, qPrintable(pagina.archivo + u" -> "_qs + url.toString()));
            }
        }
    }
};

PRUEBA(PruebaManual)
#include "PruebaManual.moc"
