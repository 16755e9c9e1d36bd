#include "Pdf.h"
#include "printing/AnchosTabla.h"
#include "printing/Letra.h"
#include "support/Prueba.h"

#include <QElapsedTimer>
#include <QFile>
#include <QPainter>
#include <QTemporaryDir>

#include <csignal>
#include <numeric>
#ifdef Q_OS_UNIX
#include <sys/resource.h>
#endif

using namespace Qt::StringLiterals;
using namespace printing;

/// Documents on pages, looked at through the text of their PDF.
class PruebaPaginas : public QObject
{
    Q_OBJECT

    static Tabla lista(int filas, int columnas = 3)
    {
        Tabla tabla;
        for (int c = 0; c < columnas; ++c)
            tabla.columnas.append({u"Título %1"_s.arg(c), c == columnas - 1 ? Qt::AlignRight : Qt::AlignLeft});
        for (int f = 0; f < filas; ++f) {
            Fila fila;
            for (int c = 0; c < columnas; ++c)
                fila.celdas << u"fila%1.%2"_s.arg(f, 5, 10, QChar(u'0')).arg(c);
            tabla.filas.append(fila);
        }
        return tabla;
    }
    static QString nombreFila(int f) { return u"fila%1.0"_s.arg(f, 5, 10, QChar(u'0')); }

private slots:
    void encabezadosYPieEnCadaHoja()
    {
        Documento documento;
        documento.titulo = u"Pagos de «Ñandú & Cía.»"_s;
        documento.subtitulo = u"desde el 01/11/2026\nMÉDICO: O'Higgins <b>"_s;
        documento.encabezado = {u"<p>Dr. Peña</p><p>Mat. 12</p>"_s, u"<p>Paciente: <b>Núñez</b></p>"_s, {}};
        documento.fecha = {QDate(2026, 11, 24), QTime(11, 5)};
        documento.cuerpo = {Texto{u"<p>Ficha de oficio: difícil</p>"_s}, lista(120)};
        const QStringList paginas = textoImpreso(documento);
        QCOMPARE(paginas.size(), 3);
        for (int i = 0; i < 3; ++i) {
            const QString &pagina = paginas[i];
            QVERIFY(pagina.contains(u"Dr. Peña"_s) && pagina.contains(u"Mat. 12"_s));
            QCOMPARE(pagina.count(u"Paciente: Núñez"_s), 1);
            QCOMPARE(pagina.count(u"Título 2"_s), 1);
            QVERIFY(pagina.contains(u"Impreso el 24/11/2026 11:05"_s));
            QVERIFY(pagina.contains(u"Página %1 de 3"_s.arg(i + 1)));
            QVERIFY(pagina.contains(documento.titulo)); // below the headers, or in the last line
        }
        QVERIFY(paginas[0].contains(u"Ficha de oficio: difícil"_s));
        QVERIFY(paginas[0].contains(u"MÉDICO: O'Higgins <b>"_s));
        // Every row once, in its order.
        const QString todo = paginas.join(QString());
        qsizetype antes = -1;
        for (int f = 0; f < 120; ++f) {
            const qsizetype lugar = todo.indexOf(nombreFila(f));
            QVERIFY2(lugar > antes, qPrintable(nombreFila(f)));
            QCOMPARE(todo.count(nombreFila(f)), 1);
            antes = lugar;
        }

        documento.conPie = documento.conTitulo = false;
        documento.cuerpo = {};
        const QStringList sola = textoImpreso(documento);
        QCOMPARE(sola.size(), 1);
        QVERIFY(!sola[0].contains(u"Página"_s) && !sola[0].contains(u"Ñandú"_s));
        QVERIFY(sola[0].contains(u"Dr. Peña"_s));
    }

    void textoLargoSeParteEntreRenglones()
    {
        QString html = u"<html><body><font face='Verdana' size=2>"_s;
        for (int i = 0; i < 150; ++i)
            html += u"<b>Renglón %1:</b> oficio<br>"_s.arg(i, 3, 10, QChar(u'0'));
        html += u"<br><p>&nbsp;</p><br><p>&nbsp;</p><br></font></body></html>"_s;
        Documento documento;
        documento.cuerpo = {Texto{html}};
        const QString todo = textoImpreso(documento).join(QString());
        for (int i = 0; i < 150; ++i)
            QCOMPARE(todo.count(u"Renglón %1: oficio"_s.arg(i, 3, 10, QChar(u'0'))), 1); // no sign for "fi"

        // Nor does the first line of a consultation stay alone below the others.
        for (int corridas = 0; corridas < 12; ++corridas) {
            html = u"x<br>"_s.repeated(corridas);
            for (int i = 0; i < 30; ++i)
                html += u"<b>Fecha y Hora:</b> de%1<br>Motivo: de%1<br><p>&nbsp;</p><b>______</b><br>"_s.arg(
                    i, 3, 10, QChar(u'0'));
            documento.cuerpo = {Texto{html}};
            for (const QString &pagina : textoImpreso(documento))
                for (int i = 0; i < 30; ++i)
                    QVERIFY(pagina.count(u"de%1"_s.arg(i, 3, 10, QChar(u'0'))) != 1);
        }

        // The blank lines at its end never make an empty page.
        for (int renglones = 40; renglones < 80; ++renglones) {
            documento.cuerpo = {Texto{u"x<br>"_s.repeated(renglones) + u"<p>&nbsp;</p>"_s.repeated(30)}};
            const Paginas conBlancos(documento);
            documento.cuerpo = {Texto{u"x<br>"_s.repeated(renglones - 1) + u"x"_s}};
            QCOMPARE(conBlancos.cantidad(), Paginas(documento).cantidad());
        }
    }

    void nadaSeCortaALaDerecha()
    {
        const double ancho = enUnidades(180);
        for (const int columnas : {1, 5, 18, 40}) {
            Tabla tabla = lista(3, columnas);
            tabla.filas[1].celdas[0] = u"palabra"_s.repeated(60);
            const AnchosTabla reparto = repartir(tabla, ancho);
            const double suma = std::accumulate(reparto.columnas.begin(), reparto.columnas.end(), 0.0);
            QVERIFY2(suma <= ancho + 1, qPrintable(QString::number(suma - ancho)));
            const QString impreso = [&] {
                Documento documento;
                documento.cuerpo = {tabla};
                return textoImpreso(documento).join(QString());
            }();
            if (columnas < 40)
                QVERIFY2(impreso.contains(u".%1"_s.arg(columnas - 1)), qPrintable(impreso));
        }
        QVERIFY(!convieneApaisada(lista(3, 6), {}));
        QVERIFY(convieneApaisada(lista(3, 14), {}));
        // Of the width left over only the columns with a weight take.
        Tabla pesada = lista(2);
        pesada.columnas[1].peso = 1;
        const AnchosTabla reparto = repartir(pesada, ancho);
        QVERIFY(reparto.columnas[1] > ancho / 2);

        // A table of the text that cannot be narrower is drawn smaller.
        Documento documento;
        QString celdas;
        for (int i = 0; i < 60; ++i)
            celdas += u"<td>c%1</td>"_s.arg(i);
        documento.cuerpo = {Texto{u"<table border=1 width=4000><tr>%1</tr></table>"_s.arg(celdas)}};
        QVERIFY(textoImpreso(documento).join(QString()).contains(u"c59"_s));
    }

    void loMasAltoQueUnaHoja()
    {
        Documento documento;
        documento.hoja.papel = Papel::A5;
        documento.hoja.apaisada = true;
        Tabla tabla = lista(3);
        QStringList renglones;
        for (int i = 0; i < 100; ++i)
            renglones << u"renglon%1;"_s.arg(i);
        tabla.filas[1].celdas[1] = renglones.join(u'\n');
        documento.cuerpo = {tabla};
        const QStringList paginas = textoImpreso(documento);
        QVERIFY(paginas.size() >= 4);
        const QString todo = paginas.join(QString());
        for (const QString &renglon : renglones)
            QCOMPARE(todo.count(renglon), 1);
        QVERIFY(paginas.last().contains(nombreFila(2)));

        QImage alta(300, 4000, QImage::Format_RGB32);
        alta.fill(Qt::red);
        documento.cuerpo = {Texto{u"<p>antes</p>"_s}, Imagen{alta}, Texto{u"<p>después</p>"_s}};
        const Paginas conImagen(documento);
        QCOMPARE(conImagen.cantidad(), 2); // a little smaller, it fits below the first text

        // Neither a header nor margins leave a page without room.
        documento.hoja.margenes = {300, 300, 300, 300};
        documento.encabezado.general = u"<p>x</p>"_s.repeated(200);
        documento.encabezado.imagen = alta;
        documento.cuerpo = {lista(20), Texto{u"<p style='font-size:90pt'>Enorme</p>"_s}};
        const Paginas apretado(documento);
        QVERIFY(apretado.cantidad() > 1 && apretado.cantidad() < 100);
    }

    void gruposYTotales()
    {
        for (int antes = 40; antes < 60; ++antes) {
            Tabla tabla = lista(antes);
            tabla.filas.append({{u"Grupo"_s}, Fila::Clase::Grupo});
            tabla.filas.append({{u"delgrupo"_s, u""_s, u"5,00"_s}});
            tabla.filas.append({{u"Total"_s, u""_s, u"1.234,50"_s}, Fila::Clase::Total});
            Documento documento;
            documento.cuerpo = {tabla};
            const QStringList paginas = textoImpreso(documento);
            for (const QString &pagina : paginas) {
                QCOMPARE(pagina.contains(u"Grupo"_s), pagina.contains(u"delgrupo"_s));
                QCOMPARE(pagina.contains(u"Total"_s), pagina.contains(u"delgrupo"_s));
            }
        }
    }

    void siempreClaro()
    {
        const QPalette antes = QGuiApplication::palette();
        QPalette noche;
        noche.setColor(QPalette::Window, Qt::black);
        noche.setColor(QPalette::WindowText, Qt::white);
        noche.setColor(QPalette::Text, Qt::white);
        noche.setColor(QPalette::Base, Qt::black);
        const auto retrato = [] {
            Documento documento;
            documento.titulo = u"Título"_s;
            documento.cuerpo = {Texto{u"<p>Texto con <a href='x'>vínculo</a></p><hr>"_s}, lista(4)};
            QImage hoja(420, 594, QImage::Format_RGB32);
            hoja.fill(Qt::white);
            QPainter pintor(&hoja);
            pintor.scale(2, 2);
            Paginas(documento).pintar(pintor, 0);
            return hoja;
        };
        const QImage deDia = retrato();
        QGuiApplication::setPalette(noche);
        const QImage deNoche = retrato();
        QGuiApplication::setPalette(antes);
        QVERIFY(deDia == deNoche);
        int oscuros = 0;
        for (int y = 0; y < deDia.height(); ++y)
            for (int x = 0; x < deDia.width(); ++x)
                oscuros += qGray(deDia.pixel(x, y)) < 100;
        QVERIFY(oscuros > 200);
    }

    void diezMilFilasEnSeguida()
    {
        Documento documento;
        documento.cuerpo = {lista(10'000, 8)};
        QElapsedTimer reloj;
        reloj.start();
        const Paginas paginas(documento);
        const qint64 tardanza = reloj.elapsed();
        QVERIFY(paginas.cantidad() > 150);
        QVERIFY2(tardanza < 1500, qPrintable(QString::number(tardanza)));
    }

    void elArchivoEnteroONada()
    {
        const QTemporaryDir carpeta;
        const Paginas paginas{Documento{}};
        const QString ausente = carpeta.filePath(u"no/hay/x.pdf"_s);
        QVERIFY(escribirPdf(paginas, ausente)->texto.startsWith(u"No se pudo escribir el archivo PDF: "_s));
        const QString archivo = carpeta.filePath(u"Ñ año.pdf"_s);
        QVERIFY(!escribirPdf(paginas, archivo));
        QVERIFY(QFile(archivo).size() > 500);
        const qint64 antes = QFile(archivo).size();
#ifdef Q_OS_UNIX
        // A disk that fills up half-way.
        Documento largo;
        largo.cuerpo = {lista(2000)};
        const auto conTraza = std::signal(SIGXFSZ, SIG_IGN);
        rlimit limite;
        getrlimit(RLIMIT_FSIZE, &limite);
        const rlimit chico{20'000, limite.rlim_max};
        setrlimit(RLIMIT_FSIZE, &chico);
        const auto lleno = escribirPdf(Paginas(largo), archivo);
        setrlimit(RLIMIT_FSIZE, &limite);
        std::signal(SIGXFSZ, conTraza);
        QVERIFY(lleno);
        QCOMPARE(QFile(archivo).size(), antes);
#endif
    }
};

PRUEBA(PruebaPaginas)
#include "PruebaPaginas.moc"
