#include "base/Fechas.h"
#include "base/Numeros.h"
#include "base/Windows1252.h"
#include "support/MensajesGuionados.h"
#include "support/Prueba.h"

using namespace base;

/// Dates, ages and numbers between their values and what a person types and reads.
class PruebaTextos : public QObject
{
    Q_OBJECT

private slots:
    void dates_data()
    {
        QTest::addColumn<QString>("texto");
        QTest::addColumn<QDate>("fecha");
        const QDate ninguna;
        QTest::newRow("whole") << "05/03/1980" << QDate(1980, 3, 5);
        QTest::newRow("short") << "5/3/80" << QDate(1980, 3, 5);
        QTest::newRow("this century") << "5/3/29" << QDate(2029, 3, 5);
        QTest::newRow("last century") << "5/3/30" << QDate(1930, 3, 5);
        QTest::newRow("dashes and blanks") << " 5-3-1980 " << QDate(1980, 3, 5);
        QTest::newRow("digits alone") << "05031980" << QDate(1980, 3, 5);
        QTest::newRow("six digits") << "050380" << QDate(1980, 3, 5);
        QTest::newRow("day first") << "12/05/2026" << QDate(2026, 5, 12);
        QTest::newRow("leap day") << "29/02/2024" << QDate(2024, 2, 29);
        QTest::newRow("no leap day") << "29/02/2023" << ninguna;
        QTest::newRow("month 13") << "01/13/2023" << ninguna;
        QTest::newRow("mixed separators") << "1/2-2023" << ninguna;
        QTest::newRow("three-digit year") << "1/2/202" << ninguna;
        QTest::newRow("year 99") << "01/01/0099" << ninguna;
        QTest::newRow("unknown") << "31/12/9999" << fechaDesconocida();
        QTest::newRow("words") << "mañana" << ninguna;
        QTest::newRow("empty") << "" << ninguna;
    }

    void dates()
    {
        QFETCH(QString, texto);
        QFETCH(QDate, fecha);
        QCOMPARE(leerFecha(texto).value_or(QDate()), fecha);
        soporte::MensajesGuionados guion;
        if (!fecha.isValid())
            guion.esperarMensaje("ERROR en la fecha...", "El Formato de Fecha debe ser dd/mm/aaaa\nERROR en la Fecha.");
        QCOMPARE(verificarFecha(guion, texto, "ERROR en la Fecha."), fecha.isValid());
        QVERIFY(guion.terminar());
    }

    void ages_data()
    {
        QTest::addColumn<QDate>("desde");
        QTest::addColumn<QDate>("hasta");
        QTest::addColumn<QString>("texto");
        const QDate fum(2017, 1, 1);
        QTest::newRow("before") << fum << QDate(2016, 12, 31) << "";
        QTest::newRow("same day") << fum << fum << "0d";
        QTest::newRow("24 days") << fum << QDate(2017, 1, 25) << "24d";
        QTest::newRow("29 days") << fum << fum.addDays(29) << "29d";
        QTest::newRow("30 days") << fum << QDate(2017, 1, 31) << "4sem 2d";
        QTest::newRow("364 days") << fum << fum.addDays(364) << "52sem 0d";
        QTest::newRow("365 days") << fum << fum.addDays(365) << "1a 0m";
        QTest::newRow("2 years 4 months") << QDate(2014, 3, 10) << QDate(2016, 7, 1) << "2a 4m";
        QTest::newRow("month before birthday") << QDate(1980, 12, 31) << QDate(2026, 11, 22) << "45a 11m";
        QTest::newRow("no date") << QDate() << fum << "";
    }

    void ages()
    {
        QFETCH(QDate, desde);
        QFETCH(QDate, hasta);
        QTEST(textoEdad(desde, hasta), "texto");
    }

    void calendarYears()
    {
        QCOMPARE(aniosCalendario(QDate(2025, 12, 31), QDate(2026, 1, 1)), 1);
        QCOMPARE(diaSemana(QDate(2026, 11, 22)), 1); // a Sunday
        QCOMPARE(diaSemana(QDate(2026, 11, 28)), 7);
    }

    void money_data()
    {
        QTest::addColumn<double>("importe");
        QTest::addColumn<QString>("texto");
        QTest::newRow("zero") << 0.0 << "0,00";
        QTest::newRow("cents") << 0.05 << "0,05";
        QTest::newRow("thousands") << 1234.5 << "1.234,50";
        QTest::newRow("millions") << 12345678.9 << "12.345.678,90";
        QTest::newRow("negative") << -100.0 << "-100,00";
        QTest::newRow("half up") << 2.345 << "2,35";
        QTest::newRow("single precision") << double(1234.56f) << "1.234,56";
        QTest::newRow("single half") << double(0.145f) << "0,15";
        QTest::newRow("rounds to zero") << -0.001 << "0,00";
        QTest::newRow("carries") << 999.995 << "1.000,00";
    }

    void money()
    {
        QFETCH(double, importe);
        QTEST(dinero(importe), "texto");
    }

    void numbers_data()
    {
        QTest::addColumn<QString>("texto");
        QTest::addColumn<double>("numero"); // NaN: not a number
        QTest::newRow("comma") << "12,5" << 12.5;
        QTest::newRow("point") << "12.5" << 12.5;
        QTest::newRow("Argentine") << "1.234,50" << 1234.5;
        QTest::newRow("foreign") << "1,234.50" << 1234.5;
        QTest::newRow("millions") << "1.234.567" << 1234567.0;
        QTest::newRow("negative") << " -3,2 " << -3.2;
        QTest::newRow("whole") << "007" << 7.0;
        QTest::newRow("begins with comma") << ",5" << 0.5;
        QTest::newRow("two decimals") << "1.2,3,4" << qQNaN();
        QTest::newRow("exponent") << "1e5" << qQNaN();
        QTest::newRow("letters") << "12a" << qQNaN();
        QTest::newRow("empty") << "" << qQNaN();
        QTest::newRow("sign alone") << "-" << qQNaN();
    }

    void numbers()
    {
        QFETCH(QString, texto);
        QFETCH(double, numero);
        const auto leido = leerNumero(texto);
        QCOMPARE(leido.has_value(), !qIsNaN(numero));
        if (leido)
            QCOMPARE(*leido, numero);
    }

    void eightBitText()
    {
        const QString texto = QStringLiteral("Ñandú € “O'Higgins” …");
        const auto bytes = aWindows1252(texto);
        QVERIFY(bytes);
        QCOMPARE(bytes->size(), texto.size());
        QCOMPARE(desdeWindows1252(*bytes), texto);
        QVERIFY(!aWindows1252(u"王"));
        QVERIFY(!aWindows1252(u"\u0081"));
    }
};

PRUEBA(PruebaTextos)
#include "PruebaTextos.moc"
