#include "db/access/Cabecera.h"
#include "db/access/Fechas.h"
#include "jet/Largo.h"
#include "jet/Texto.h"
#include "jet/Valor.h"
#include "support/Prueba.h"

#include <cstring>
#include <map>

using namespace Qt::StringLiterals;

namespace {

jet::Bytes bytes(const QByteArray &crudo)
{
    return {reinterpret_cast<const std::uint8_t *>(crudo.constData()), std::size_t(crudo.size())};
}

QByteArray hex(const char *texto) { return QByteArray::fromHex(texto); }

QString comoTexto(jet::Bytes crudo)
{
    return QString::fromLatin1(
        QByteArray(reinterpret_cast<const char *>(crudo.data()), qsizetype(crudo.size())).toHex());
}

/// Pages with one row each, the owner of long values.
class LibroDePrueba final : public jet::Libro
{
public:
    std::map<std::uint32_t, QByteArray> paginas;

    void poner(std::uint32_t numero, const QByteArray &fila)
    {
        QByteArray pagina(4096, '\0');
        pagina.replace(0, 8, QByteArray("\1\1\0\0LVAL", 8));
        pagina[12] = 1;
        const int lugar = 4096 - int(fila.size());
        pagina[14] = char(lugar & 0xFF);
        pagina[15] = char(lugar >> 8);
        pagina.replace(lugar, fila.size(), fila);
        paginas[numero] = pagina;
    }
    jet::Version version() const override { return jet::Version::Jet4; }
    std::size_t tamano() const override { return paginas.size() * 4096; }
    jet::Bytes pagina(std::uint32_t numero) override
    {
        if (!paginas.contains(numero))
            throw jet::Danio("no hay");
        return bytes(paginas[numero]);
    }
};

} // namespace

/// Raw bytes of old files, those of Access 97 too, of which there is no sample.
class PruebaDecodificacion : public QObject
{
    Q_OBJECT

private slots:
    void texts_data()
    {
        QTest::addColumn<QByteArray>("crudo");
        QTest::addColumn<bool>("unicode");
        QTest::addColumn<QString>("texto");
        QTest::addColumn<bool>("exacto");
        QTest::newRow("plain") << hex("f10041000a00") << true << u"ñA\n"_qs << true;
        QTest::newRow("compressed") << hex("fffef141") << true << u"ñA"_qs << true;
        QTest::newRow("both") << hex("fffe4100ac2042000043") << true << u"A€BC"_qs << true;
        QTest::newRow("only a mark") << hex("fffe") << true << QString() << true;
        QTest::newRow("emoji") << hex("3dd876dc") << true << u"👶"_qs << true;
        QTest::newRow("half an emoji") << hex("3dd84100") << true << u"\uFFFDA"_qs << false;
        QTest::newRow("half at the end") << hex("41003dd8") << true << u"A\uFFFD"_qs << false;
        QTest::newRow("zero inside") << hex("410000004200") << true << QString(u"A\0B"_qs) << true;
        QTest::newRow("1252") << hex("f18081") << false << u"ñ€\u0081"_qs << true;
    }
    void texts()
    {
        QFETCH(QByteArray, crudo);
        QFETCH(bool, unicode);
        const jet::Texto leido
            = unicode ? jet::textoUnicode(bytes(crudo)) : jet::textoDePagina(bytes(crudo), jet::windows1252());
        QTEST(QString::fromStdString(leido.utf8), "texto");
        QTEST(leido.exacto, "exacto");
    }

    void dates_data()
    {
        QTest::addColumn<double>("guardada");
        QTest::addColumn<QString>("fecha");
        QTest::newRow("first") << -657434.0 << u"0100-01-01 00:00:00"_qs;
        QTest::newRow("part of a day before the first") << -0.25 << u"1899-12-30 06:00:00"_qs;
        QTest::newRow("day -1, morning") << -1.25 << u"1899-12-29 06:00:00"_qs;
        QTest::newRow("almost midnight, negative") << -1.9999999 << u"1899-12-30 00:00:00"_qs;
        QTest::newRow("rounded up") << 40056.41666666665 << u"2009-08-31 10:00:00"_qs;
        QTest::newRow("last second") << 2958465.99999 << u"9999-12-31 23:59:59"_qs;
        QTest::newRow("not beyond it") << 2958465.9999999 << u"9999-12-31 23:59:59"_qs;
        QTest::newRow("too early") << -657435.0 << QString();
        QTest::newRow("too late") << 2958466.0 << QString();
        QTest::newRow("no number") << std::numeric_limits<double>::quiet_NaN() << QString();
    }
    void dates()
    {
        QFETCH(double, guardada);
        const auto segundos = jet::segundosDeFecha(guardada);
        QTEST(segundos ? db::access::textoDeFecha(*segundos) : QString(), "fecha");
    }

    void numbersAsText()
    {
        QCOMPARE(
            jet::textoDeGuid(bytes(hex("33221100554477668899aabbccddeeff"))), "{00112233-4455-6677-8899-AABBCCDDEEFF}");
        const auto decimal
            = [](const char *crudo, int escala) { return jet::textoDeDecimal(bytes(hex(crudo)), escala); };
        QCOMPARE(decimal("00000000000000000000000000e2040000", 2), "12.50");
        QCOMPARE(decimal("80000000000000000000000000050000 00", 3), "-0.005");
        QCOMPARE(decimal("00000000000000000000000000000000 00", 0), "0");
    }

    // Byte counts of Access 97 rows: places of a byte each, with a jump where they pass 256.
    void rowsOfAccess97()
    {
        jet::Tabla tabla;
        tabla.hayVariables = true;
        tabla.columnas
            = {{"id", jet::Tipo::Largo, 4, true, 0, 0, 0},
               {"si", jet::Tipo::Logico, 0, true, 0, 0, 1},
               {"a", jet::Tipo::Texto, 255, false, 0, 0, 2},
               {"b", jet::Tipo::Texto, 255, false, 0, 1, 3},
               {"nueva", jet::Tipo::Texto, 255, false, 0, 2, 4}};
        const QByteArray corta = hex("04 07000000 4142 43 08 07 05 02 0f");
        auto celdas = jet::partirFila(bytes(corta), tabla, jet::Version::Jet3);
        QCOMPARE(jet::u32(*celdas[0].crudo, 0), 7u);
        QVERIFY(celdas[1].verdadero);
        QCOMPARE(comoTexto(*celdas[2].crudo), u"4142"_qs);
        QCOMPARE(comoTexto(*celdas[3].crudo), u"43"_qs);
        QVERIFY(!celdas[4].crudo); // the column came later

        const QByteArray larga = hex("04 07000000") + QByteArray(255, 'x') + "yz" + hex("06 04 05 01 02 0f");
        celdas = jet::partirFila(bytes(larga), tabla, jet::Version::Jet3);
        QCOMPARE(celdas[2].crudo->size(), 255u);
        QCOMPARE(comoTexto(*celdas[3].crudo), u"797a"_qs);
    }

    // A deleted column keeps its place in the rows: the one added afterwards is not in the old ones.
    void deletedAndAddedColumns()
    {
        jet::Tabla tabla;
        tabla.columnas = {{"id", jet::Tipo::Largo, 4, true, 0, 0, 0}, {"nueva", jet::Tipo::Largo, 4, true, 8, 0, 2}};
        const QByteArray vieja = hex("0200 07000000 99999999 03");
        QVERIFY(!jet::partirFila(bytes(vieja), tabla, jet::Version::Jet4)[1].crudo);
        const QByteArray actual = hex("0300 07000000 99999999 05000000 07");
        QCOMPARE(jet::u32(*jet::partirFila(bytes(actual), tabla, jet::Version::Jet4)[1].crudo, 0), 5u);
        for (const char *corta : {"", "03", "0300", "0300 07", "ff7f 0700000099999999050000 0007"})
            QVERIFY_THROWS_EXCEPTION(jet::Danio, (void)jet::partirFila(bytes(hex(corta)), tabla, jet::Version::Jet4));
    }

    void longValues()
    {
        LibroDePrueba libro;
        libro.poner(7, hex("00080000") + "uno ");
        libro.poner(8, hex("00000000") + "dos y mucho mas");
        const auto leido = [&libro](const char *cabecera) {
            const auto valor = jet::leerLargo(libro, bytes(hex(cabecera)));
            return QByteArray(reinterpret_cast<const char *>(valor.data()), qsizetype(valor.size()));
        };
        QCOMPARE(leido("03000080 00000000 00000000 616263"), "abc"_qba);
        QCOMPARE(leido("06000000 00070000 00000000"), "uno do"_qba);
        QCOMPARE(leido("03000040 00080000 00000000"), "\0\0\0"_qba);
        QCOMPARE(leido(""), QByteArray());
        libro.poner(9, hex("00090000") + "a"); // leads to itself: its length ends it
        QCOMPARE(leido("05000000 00090000 00000000"), "aaaaa"_qba);
        libro.poner(10, hex("000a0000")); // and one without contents is damage
        for (const char *malo :
             {"05000000 000a0000 00000000",
              "00000100 00090000 00000000", // longer than the file
              "05000080 00000000 00000000 6162",
              "ff000040 00070000 00000000",
              "05000000 00ff0000 00000000",
              "05000000 03070000 00000000",
              "ffffff3f 00070000 00000000",
              "0500"})
            QVERIFY_THROWS_EXCEPTION(jet::Danio, (void)leido(malo));
    }

    void headers_data()
    {
        QTest::addColumn<QByteArray>("primeros");
        QTest::addColumn<int>("formato");
        using Formato = db::access::Cabecera::Formato;
        const QByteArray jet = QByteArray("\0\1\0\0Standard Jet DB\0", 20);
        QTest::newRow("Jet 3") << jet + QByteArray(236, '\0') << int(Formato::Jet3);
        QTest::newRow("Jet 4") << jet + '\1' + QByteArray(235, '\0') << int(Formato::Jet4);
        QTest::newRow("2007") << QByteArray("\0\1\0\0Standard ACE DB\0", 20) + '\2' + QByteArray(235, '\0')
                              << int(Formato::Nuevo);
        QTest::newRow("short") << jet << int(Formato::Otro);
        QTest::newRow("other") << QByteArray(256, 'x') << int(Formato::Otro);
    }
    void headers()
    {
        QFETCH(QByteArray, primeros);
        QTEST(int(db::access::leerCabecera(QByteArrayView(primeros)).formato), "formato");
    }
};

PRUEBA(PruebaDecodificacion)
#include "PruebaDecodificacion.moc"
