#include "support/Falla.h"
#include "support/Prueba.h"

#include "catalogos/Csv.h"
#include "db/Error.h"

class CsvTest : public QObject
{
    Q_OBJECT

private slots:
    void reads_data();
    void reads();
    void refuses_data();
    void refuses();
};

void CsvTest::reads_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QString>("rows"); // cells by "|", rows by "/"

    QTest::newRow("plain") << QByteArray("a,b\n1,ñandú\n2,\n") << "1|ñandú/2|";
    QTest::newRow("without the last end") << QByteArray("a,b\n1,2") << "1|2";
    QTest::newRow("windows ends") << QByteArray("a,b\r\n1,2\r\n") << "1|2";
    QTest::newRow("quotes") << QByteArray("a,b\n\"x, y\",\"dice \"\"sí\"\"\"\n") << "x, y|dice \"sí\"";
    QTest::newRow("break inside quotes") << QByteArray("a,b\n\"uno\ndos\",2\n") << "uno\ndos|2";
    QTest::newRow("empty quotes") << QByteArray("a,b\n\"\",\"\"\n") << "|";
    QTest::newRow("mark of order") << QByteArray("\xEF\xBB\xBF"
                                                 "a,b\n1,2\n")
                                   << "1|2";
    QTest::newRow("only the header") << QByteArray("a,b\n") << "";
}

void CsvTest::reads()
{
    QFETCH(QByteArray, text);
    QFETCH(QString, rows);
    const catalogos::Csv csv = catalogos::leerCsv(text);
    QCOMPARE(csv.column(u"b"), 1);
    QStringList joined;
    for (const QStringList &row : csv.rows)
        joined << row.join(u'|');
    QCOMPARE(joined.join(u'/'), rows);
}

void CsvTest::refuses_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<int>("line");

    QTest::newRow("empty") << QByteArray() << 1;
    QTest::newRow("open quote") << QByteArray("a,b\n1,2\n\"x,2\n") << 3;
    QTest::newRow("text after quotes") << QByteArray("a,b\n\"x\"y,2\n") << 2;
    QTest::newRow("quotes inside") << QByteArray("a,b\nx\"y,2\n") << 2;
    QTest::newRow("short row") << QByteArray("a,b\n1,2\n3\n") << 3;
    QTest::newRow("long row") << QByteArray("a,b\n1,2,3\n") << 2;
    QTest::newRow("not UTF-8") << QByteArray("a,b\n\xF1,2\n") << 1;
}

void CsvTest::refuses()
{
    QFETCH(QByteArray, text);
    QFETCH(int, line);
    const auto falla = soporte::fallaDe([&] { (void)catalogos::leerCsv(text); });
    QVERIFY(falla);
    QCOMPARE(falla->number(), line);
}

PRUEBA(CsvTest)
#include "CsvTest.moc"
