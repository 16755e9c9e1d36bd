#include "ui/Grilla.h"
#include "db/sql/Collation.h"
#include "support/Prueba.h"
#include "ui/OrdenTexto.h"
#include "ui/Preferencias.h"

#include <QAbstractItemModelTester>
#include <QClipboard>
#include <QHeaderView>
#include <QRandomGenerator>
#include <QScrollBar>
#include <QSignalSpy>
#include <QTemporaryDir>

using ui::ColumnaGrilla;
using ui::Grilla;
using ui::ModeloGrilla;

namespace {

struct Fila {
    int id;
    const char *nombre;
    const char *fecha; ///< null: Null
    double importe;
};

db::Rows filas(const std::vector<Fila> &lista)
{
    db::ResultSet::Builder b(
        {{QStringLiteral("id"), db::Type::Counter},
         {QStringLiteral("nombre"), db::Type::Text},
         {QStringLiteral("fecha"), db::Type::DateTime},
         {QStringLiteral("importe"), db::Type::Single}});
    for (const Fila &f : lista) {
        b.addInteger(f.id);
        b.addText(f.nombre);
        if (f.fecha)
            b.addText(f.fecha);
        else
            b.addNull();
        b.addReal(f.importe);
        b.endRow();
    }
    return b.finish();
}

const std::vector<Fila> gente{
    {1, "Núñez", "2024-03-05 00:00:00", 12.5},
    {2, "ávila", "1999-12-31 08:05:00", 1000},
    {3, "Nunziata", nullptr, -3},
    {4, "Zeta", "2024-03-05 00:00:00", 2},
    {5, "Ávila", "2001-01-01 00:00:00", 12.5}};

const QString encabezado = QStringLiteral("|<Nombre    |^Fecha|>Importe");

QStringList columna(const ModeloGrilla &modelo, int c)
{
    QStringList textos;
    for (int r = 0; r < modelo.rowCount(); ++r)
        textos << modelo.index(r, c).data().toString();
    return textos;
}

std::vector<qint64> claves(const ModeloGrilla &modelo)
{
    std::vector<qint64> todas;
    for (int r = 0; r < modelo.rowCount(); ++r)
        todas.push_back(modelo.clave(r));
    return todas;
}

using Claves = std::vector<qint64>;

} // namespace

class GrillaTest : public QObject
{
    Q_OBJECT

private slots:
    void encabezadoSeLee()
    {
        const auto leido = ui::leerEncabezado(QStringLiteral("|^Fecha   |<Detalle|Importe  |>$ Debe||  |"));
        const std::vector<ColumnaGrilla> esperado{
            {QStringLiteral("Fecha"), Qt::AlignHCenter, 8},
            {QStringLiteral("Detalle"), Qt::AlignLeft, 7},
            {QStringLiteral("Importe"), Qt::AlignLeft, 9},
            {QStringLiteral("$ Debe"), Qt::AlignRight, 6},
            {{}, Qt::AlignLeft, 0},
            {{}, Qt::AlignLeft, 2},
            {{}, Qt::AlignLeft, 0}};
        QCOMPARE(leido, esperado);

        const Grilla grilla(QStringLiteral("g"), QStringLiteral("|A||B"));
        QVERIFY(grilla.isColumnHidden(1));
        QVERIFY(!grilla.isColumnHidden(2));
    }

    void celdasDiceLoQueVale()
    {
        ModeloGrilla modelo(ui::leerEncabezado(encabezado));
        modelo.setRows(filas(gente), 1);
        QCOMPARE(columna(modelo, 1), QStringList({"05/03/2024", "31/12/1999 08:05", "", "05/03/2024", "01/01/2001"}));
        QCOMPARE(columna(modelo, 2), QStringList({"12,5", "1000", "-3", "2", "12,5"}));
        modelo.setFormato(2, ModeloGrilla::Formato::Dinero);
        QCOMPARE(columna(modelo, 2).at(1), QStringLiteral("1.000,00"));

        modelo.setTextos({{QStringLiteral("uno\ndos"), {}, {}}}, {7});
        QCOMPARE(modelo.index(0, 0).data().toString(), QStringLiteral("uno dos"));
        QCOMPARE(modelo.textoCelda(0, 0), QStringLiteral("uno\ndos"));
        QCOMPARE(modelo.clave(0), 7);
        QCOMPARE(modelo.clave(1), 0);
    }

    /// A list that is read as it is scrolled: several results, one below the other.
    void creceAlPie()
    {
        ModeloGrilla modelo(ui::leerEncabezado(encabezado));
        const QAbstractItemModelTester control(&modelo, QAbstractItemModelTester::FailureReportingMode::QtTest);
        modelo.setColumnaClave(0);
        int quedan = 2;
        modelo.setMas([&] { return quedan > 0; }, [&] { modelo.agregarRows(filas(gente), quedan-- == 2 ? 3 : 5); });
        modelo.setRows(filas(gente), 1);
        while (modelo.canFetchMore({}))
            modelo.fetchMore({});
        QCOMPARE(claves(modelo), (Claves{1, 2, 3, 4, 5, 1, 2, 3, 1, 2, 3, 4, 5}));
        QCOMPARE(columna(modelo, 0).mid(5, 3), columna(modelo, 0).first(3));
        QCOMPARE(modelo.filaDe(4), 3);
        modelo.sort(0, Qt::AscendingOrder);
        QCOMPARE(claves(modelo).front(), 2);
        modelo.setRows(filas(gente), 1);
        QCOMPARE(modelo.rowCount(), 5);
    }

    void ordenaPorValores_data()
    {
        QTest::addColumn<int>("columna");
        QTest::addColumn<bool>("baja");
        QTest::addColumn<Claves>("esperado");
        // accents and case count last, "ñ" stands after "n", equal values keep their order in both directions
        QTest::newRow("nombres") << 0 << false << Claves{2, 5, 3, 1, 4};
        QTest::newRow("fechas, Null primero") << 1 << false << Claves{3, 2, 5, 1, 4};
        QTest::newRow("fechas hacia atrás") << 1 << true << Claves{1, 4, 5, 2, 3};
        QTest::newRow("importes") << 2 << false << Claves{3, 4, 1, 5, 2};
        QTest::newRow("importes hacia atrás") << 2 << true << Claves{2, 1, 5, 4, 3};
        QTest::newRow("como se leyó") << -1 << false << Claves{1, 2, 3, 4, 5};
    }
    void ordenaPorValores()
    {
        QFETCH(int, columna);
        QFETCH(bool, baja);
        QFETCH(Claves, esperado);
        ModeloGrilla modelo(ui::leerEncabezado(encabezado));
        const QAbstractItemModelTester control(&modelo, QAbstractItemModelTester::FailureReportingMode::QtTest);
        modelo.setColumnaClave(0);
        modelo.setRows(filas(gente), 1);
        const QPersistentModelIndex sigue = modelo.index(2, 0);
        modelo.sort(columna, baja ? Qt::DescendingOrder : Qt::AscendingOrder);
        QCOMPARE(claves(modelo), esperado);
        QCOMPARE(modelo.clave(sigue.row()), 3);
        // the order outlives a reload
        modelo.setRows(filas(gente), 1);
        QCOMPARE(claves(modelo), esperado);
    }

    void ordenaTextosPorLoQueSon()
    {
        ModeloGrilla modelo(ui::leerEncabezado(QStringLiteral("|Fecha|Importe|DNI|H.C.")));
        modelo.setTextos(
            {{"05/03/2024", "1.000,00", "12031980", "HC10"},
             {"", "20,50", "9031980", "HC9"},
             {"31/12/1999", "-3,00", "11041970", ""}},
            {1, 2, 3});
        modelo.sort(0, Qt::AscendingOrder);
        QCOMPARE(claves(modelo), (Claves{2, 3, 1}));
        modelo.sort(1, Qt::AscendingOrder);
        QCOMPARE(claves(modelo), (Claves{3, 2, 1}));
        modelo.sort(2, Qt::AscendingOrder); // digits in a row are a number, not a day
        QCOMPARE(claves(modelo), (Claves{2, 3, 1}));
    }

    void clavesComoLaBase()
    {
        // the letters over which an order may stumble, in every short combination, ends and damaged bytes included
        const QByteArrayList letras{"a", "A", "á", "à", "n", "ñ", "Ñ", "o", "z", " ", "-", "Þ", "漢", "\x7f", "\xff"};
        QByteArrayList textos{""};
        for (int largo = 0; largo < 3; ++largo)
            for (const QByteArray &base : QByteArrayList(textos))
                for (const QByteArray &letra : letras)
                    if (base.size() >= largo)
                        textos << base + letra;
        QRandomGenerator azar(1);
        std::shuffle(textos.begin(), textos.end(), azar);
        textos.resize(1500);
        QByteArrayList claves;
        for (const QByteArray &texto : textos) {
            claves << QByteArray();
            ui::agregarClaveEspanola(texto, claves.last());
        }
        const auto signo = [](int n) { return (n > 0) - (n < 0); };
        for (qsizetype i = 0; i < textos.size(); ++i)
            for (qsizetype j = 0; j < i; ++j)
                if (signo(claves[i].compare(claves[j])) != signo(db::sql::compareSpanish(textos[i], textos[j])))
                    QFAIL((textos[i].toHex(' ') + " / " + textos[j].toHex(' ')).constData());
    }

    void ordenaPorColumnaOculta()
    {
        ModeloGrilla modelo(ui::leerEncabezado(QStringLiteral("|Texto")));
        modelo.setColumnaClave(0);
        modelo.setTexto(
            [](const db::ResultSet &rows, int row, int) { return QStringLiteral("$ ") + rows.text(row, 3); });
        modelo.setOrden(0, 3);
        modelo.setRows(filas(gente));
        modelo.sort(0, Qt::DescendingOrder);
        QCOMPARE(claves(modelo), (Claves{2, 1, 5, 4, 3}));
        QCOMPARE(modelo.index(0, 0).data().toString(), QStringLiteral("$ 1000"));
    }

    void conservaLoElegidoAlRecargar()
    {
        Grilla grilla(QStringLiteral("g"), encabezado);
        const QAbstractItemModelTester control(
            &grilla.modelo(), QAbstractItemModelTester::FailureReportingMode::QtTest);
        grilla.modelo().setColumnaClave(0);
        QSignalSpy cambios(&grilla, &Grilla::filaCambiada);
        grilla.mostrar(filas(gente), 1);
        QCOMPARE(grilla.claveActual(), 0);
        grilla.elegirClave(4);
        QCOMPARE(cambios.size(), 1);

        grilla.mostrar(filas({gente[4], gente[3]}), 1);
        QCOMPARE(grilla.claveActual(), 4);
        QCOMPARE(cambios.size(), 2); // at another place
        grilla.mostrar(filas({gente[4], gente[3]}), 1);
        QCOMPARE(cambios.size(), 2);

        // a row that another station removed must not hand its selection to its neighbour
        grilla.mostrar(filas({gente[4], gente[0]}), 1);
        QCOMPARE(grilla.claveActual(), 0);
        QCOMPARE(grilla.filaActual(), -1);
        QCOMPARE(cambios.last().first().toInt(), -1);
        QCOMPARE(grilla.currentIndex().row(), 1); // the arrows go on from there

        grilla.mostrar(filas(gente), 1);
        grilla.selectAll();
        grilla.mostrar(filas({gente[2], gente[0]}), 1);
        QCOMPARE(grilla.clavesElegidas(), (Claves{3, 1}));
    }

    void cienMilFilas()
    {
        std::vector<Fila> muchas(100'000, gente[0]);
        for (size_t i = 0; i < muchas.size(); ++i)
            muchas[i].id = int(i + 1);
        const db::Rows rows = filas(muchas);
        Grilla grilla(QStringLiteral("g"), encabezado);
        grilla.resize(500, 400);
        int leidas = 0;
        grilla.modelo().setColumnaClave(0);
        grilla.modelo().setTexto([&leidas](const db::ResultSet &r, int row, int c) {
            ++leidas;
            return r.text(row, c + 1);
        });
        grilla.mostrar(rows, 1);
        grilla.show();
        QVERIFY(QTest::qWaitForWindowExposed(&grilla));
        grilla.elegirClave(50'000);
        QTest::qWait(0);
        const int lugar = grilla.verticalScrollBar()->value();
        QVERIFY(lugar > 49'000);
        grilla.mostrar(rows, 1);
        QCOMPARE(grilla.verticalScrollBar()->value(), lugar);
        QCOMPARE(grilla.claveActual(), 50'000);
        QVERIFY2(leidas < 2'000, qPrintable(QString::number(leidas)));
    }

    void copiaYExporta()
    {
        Grilla grilla(QStringLiteral("g"), QStringLiteral("|Nombre|Nota||"));
        grilla.mostrar(
            {{"O'Higgins; \"el\" viejo", "dos\nrenglones", "oculta", ""}, {"Ana", "", "oculta", ""}}, {1, 2});
        QCOMPARE(
            grilla.comoCsv(),
            QStringLiteral("Nombre;Nota\r\n\"O'Higgins; \"\"el\"\" viejo\";\"dos\nrenglones\"\r\nAna;\r\n"));
        grilla.elegirFila(0);
        QTest::keyClick(&grilla, Qt::Key_C, Qt::ControlModifier);
        QCOMPARE(QGuiApplication::clipboard()->text(), QStringLiteral("O'Higgins; \"el\" viejo\tdos renglones"));
        QCOMPARE(grilla.comoTexto(false).section(u'\n', 0, 0), QStringLiteral("Nombre\tNota"));

        QSignalSpy activada(&grilla, &Grilla::activada);
        QTest::keyClick(&grilla, Qt::Key_Return);
        QCOMPARE(activada.size(), 1);
    }

    void formulasQuedanEnTexto_data()
    {
        QTest::addColumn<QString>("celda");
        QTest::addColumn<bool>("formula");
        for (const char *texto : {"=1+1", "=HYPERLINK(1)", "+1+1", "-1-1", "@SUM(A1)", "-2+3", "+54-341-455", "\t=1"})
            QTest::newRow(texto) << QString::fromUtf8(texto) << true;
        for (const char *texto :
             {"-1.234,50",
              "-5",
              "+3",
              "+54 341 455-1234",
              "+54 (341) 4551234",
              "+543414551234",
              "1=1",
              "O'Higgins",
              "-",
              ""})
            QTest::newRow(texto) << QString::fromUtf8(texto) << false;
    }

    void formulasQuedanEnTexto()
    {
        QFETCH(QString, celda);
        QFETCH(bool, formula);
        Grilla grilla(QStringLiteral("g"), QStringLiteral("|A"));
        grilla.mostrar({{celda}}, {1});
        QCOMPARE(
            grilla.comoCsv(),
            QStringLiteral("A\r\n") + (formula ? QStringLiteral("'") : QString()) + celda + QStringLiteral("\r\n"));
        QCOMPARE(grilla.comoTexto(false), QStringLiteral("A\n") + QString(celda).replace(u'\t', u' '));
    }

    void loQueFallaNoLlegaAlPintar()
    {
        Grilla grilla(QStringLiteral("g"), QStringLiteral("|A|B"));
        ModeloGrilla &modelo = grilla.modelo();
        QString recorridos;
        modelo.setAlRecorrer([&](bool empieza) { recorridos += empieza ? u'(' : u')'; });
        modelo.setTexto([](const db::ResultSet &, int, int) -> QString { throw std::runtime_error("base"); });
        db::ResultSet::Builder filas({{QStringLiteral("n"), db::Type::Long}});
        for (const int n : {7, 8}) {
            filas.addInteger(n);
            filas.endRow();
        }
        modelo.setColumnaClave(0);
        modelo.setYaOrdenada(0);
        grilla.mostrar(filas.finish());
        QCOMPARE(modelo.index(0, 0).data().toString(), QString());
        QVERIFY_THROWS_EXCEPTION(std::runtime_error, (void)grilla.comoCsv());
        QCOMPARE(recorridos, QStringLiteral("()"));
        grilla.sortByColumn(1, Qt::AscendingOrder);
        grilla.sortByColumn(0, Qt::DescendingOrder);
        QCOMPARE(modelo.clave(0), 8);
        grilla.sortByColumn(0, Qt::AscendingOrder);
        QCOMPARE(modelo.clave(0), 7);
    }

    void titulosOrdenan()
    {
        Grilla grilla(QStringLiteral("g"), encabezado);
        grilla.modelo().setColumnaClave(0);
        grilla.mostrar(filas(gente), 1);
        grilla.resize(600, 300);
        grilla.show();
        QVERIFY(QTest::qWaitForWindowExposed(&grilla));
        const auto pulsar = [&grilla](int c) {
            QHeaderView *titulos = grilla.horizontalHeader();
            QTest::mouseClick(
                titulos->viewport(), Qt::LeftButton, {}, QPoint(titulos->sectionViewportPosition(c) + 12, 6));
        };
        QCOMPARE(claves(grilla.modelo()), (Claves{1, 2, 3, 4, 5}));
        grilla.elegirClave(4);
        pulsar(2);
        QCOMPARE(claves(grilla.modelo()), (Claves{3, 4, 1, 5, 2}));
        QCOMPARE(grilla.claveActual(), 4);
        pulsar(2);
        QCOMPARE(claves(grilla.modelo()), (Claves{2, 1, 5, 4, 3}));
        pulsar(2);
        QCOMPARE(claves(grilla.modelo()), (Claves{1, 2, 3, 4, 5}));
    }

    void recuerdaAnchos()
    {
        const QTemporaryDir carpeta;
        ui::Preferencias::usarArchivo(carpeta.filePath(QStringLiteral("p.ini")));
        const auto cerrar = qScopeGuard([] { ui::Preferencias::usarArchivo({}); });
        {
            Grilla grilla(QStringLiteral("g"), encabezado);
            grilla.show();
            grilla.setColumnWidth(0, 321);
        }
        Grilla otra(QStringLiteral("g"), encabezado);
        otra.show();
        QCOMPARE(otra.columnWidth(0), 321);
        Grilla ajena(QStringLiteral("h"), encabezado);
        ajena.show();
        QVERIFY(ajena.columnWidth(0) != 321);
    }

    void reparteElAnchoQueSobra()
    {
        const QTemporaryDir carpeta;
        ui::Preferencias::usarArchivo(carpeta.filePath(QStringLiteral("p.ini")));
        const auto cerrar = qScopeGuard([] { ui::Preferencias::usarArchivo({}); });
        Grilla grilla(QStringLiteral("g"), QStringLiteral("|A   |B   |C   |D"));
        grilla.setElasticas({{0, 3}, {2, 1}});
        grilla.resize(900, 200);
        grilla.show();
        const auto ancho = [&](int columna) { return grilla.columnWidth(columna); };
        const int propio = ancho(1), mas = ancho(0) - propio;
        QVERIFY(mas > 100);
        QVERIFY(qAbs(mas - 3 * (ancho(2) - propio)) <= 3);
        QCOMPARE(grilla.horizontalHeader()->length(), grilla.viewport()->width());
        grilla.resize(60, 200); // too narrow for all: their own widths, and it scrolls
        QCOMPARE(ancho(0), propio);
        grilla.setColumnWidth(1, 200);
        grilla.resize(900, 200);
        QCOMPARE(ancho(0), propio); // the person has chosen: nothing moves any more
        QCOMPARE(ancho(1), 200);
    }
};

PRUEBA(GrillaTest)
#include "GrillaTest.moc"
