#include "db/sql/Collation.h"
#include "db/sql/LikePattern.h"
#include "support/Prueba.h"

#include <random>

using db::sql::compareSpanish;
using db::sql::LikePattern;

/// The order of text and the search in it.
class SqlTextos : public QObject
{
    Q_OBJECT

private slots:
    void orden();
    void iguales();
    void ordenTotal();
    void busca_data();
    void busca();
};

void SqlTextos::orden()
{
    // Each one before the next.
    const QList<QByteArray> ascending{"",      " ",     "1",      "10",   "2", "a",     "á",     "ä",      "ab",
                                      "Arbol", "árbol", "arbola", "arca", "e", "é",     "ez",    "f",      "n",
                                      "nz",    "ñ",     "ñandú",  "o",    "Ö", "perez", "Pérez", "PEREZA", "u",
                                      "ü",     "z",     "zz",     "Ω",    "Ж", "漢",    "😀",     "\xFF"};
    for (qsizetype i = 0; i < ascending.size(); ++i) {
        for (qsizetype j = 0; j < ascending.size(); ++j) {
            const int order = compareSpanish(ascending[i], ascending[j]);
            QVERIFY2((order > 0) - (order < 0) == (i > j) - (i < j), (ascending[i] + " / " + ascending[j]).constData());
        }
    }
}

void SqlTextos::iguales()
{
    QCOMPARE(compareSpanish("ÁÉÍÓÚÜÑÇ", "áéíóúüñç"), 0);
    QCOMPARE(compareSpanish("PÉREZ, Ana", "pérez, ANA"), 0);
    QVERIFY(compareSpanish("Pérez", "Perez") != 0);
    QVERIFY(compareSpanish("Núñez", "Núnez") != 0);
}

void SqlTextos::ordenTotal()
{
    static const QList<QByteArray> letters{
        "a", "A", "á", "Á", "à", "n", "N",      "ñ", "Ñ",    "o",    "z",    " ",        "-",
        "_", "[", "Z", "ß", "ǘ", "ệ", "\u0301", "Ж", "\xC3", "\xA9", "\x80", "\xF0\x9F", "\xED\xA0\x80",
        "é", "0"};
    std::mt19937 random(3);
    const auto word = [&random] {
        QByteArray text;
        for (unsigned i = random() % 5; i > 0; --i)
            text += letters[qsizetype(random() % quint32(letters.size()))];
        return text;
    };
    const auto sign = [](int order) { return (order > 0) - (order < 0); };
    for (int round = 0; round < 60000; ++round) {
        const QByteArray a = word(), b = word(), c = word();
        const int ab = sign(compareSpanish(a, b)), bc = sign(compareSpanish(b, c)), ac = sign(compareSpanish(a, c));
        QCOMPARE(sign(compareSpanish(b, a)), -ab);
        QCOMPARE(compareSpanish(a, a), 0);
        if (ab <= 0 && bc <= 0)
            QVERIFY2(
                ac <= 0 && (ac < 0 || (ab == 0 && bc == 0)),
                (a.toHex() + ' ' + b.toHex() + ' ' + c.toHex()).constData());
    }
}

void SqlTextos::busca_data()
{
    QTest::addColumn<QByteArray>("pattern");
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<bool>("found");
    const auto row = [](const char *pattern, const char *text, bool found) {
        QTest::addRow("%s in %s", pattern, text) << QByteArray(pattern) << QByteArray(text) << found;
    };
    row("perez", "Pérez", true);
    row("PÉREZ", "perez", true);
    row("perez", "Pérezx", false);
    row("%erez%", "Los Pérez Gil", true);
    row("%erezo%", "Los Pérez Gil", false);
    row("%nunez%", "NÚÑEZ", true);
    row("%núñez%", "Nunez", false);
    row("%ñ%", "Núñez", true);
    row("%n\u0303%", "Núñez", true);
    row("%perez%", "Pe\u0301rez", true);
    row("%", "", true);
    row("", "", true);
    row("", "a", false);
    row("_", "é", true);
    row("_", "😀", true);
    row("_", "", false);
    row("a_c", "ábc", true);
    row("a%c%e", "abcde", true);
    row("a%c%e", "abcdf", false);
    row("%ab", "aab", true);
    row("%aab", "aaab", true);
    row("%a_b%", "xxaabxx", true);
    row("[abc]x", "Bx", true);
    row("[a-c]x", "dx", false);
    row("[a-c]x", "Áx", true);
    row("[!a-c]x", "dx", true);
    row("[^a-c]x", "ax", false);
    row("[^a-c]x", "x", false);
    row("[m-o]", "ñ", true);
    row("100[%]", "100%", true);
    row("100[%]", "1000", false);
    row("a[_]b", "axb", false);
    row("a[[]b", "a[b", true);
    row("a[b", "a[b", true);
    row("a]b", "a]b", true);
    row("[-a]", "-", true);
    row("*", "a", false);
    row("*?", "*?", true);
    row("%.%", "A00.1", true);
    row("%a%b%c%d%", "xxaxxbxxcxxdxx", true);
}

void SqlTextos::busca()
{
    QFETCH(QByteArray, pattern);
    QFETCH(QByteArray, text);
    QFETCH(bool, found);
    QCOMPARE(LikePattern(pattern).matches(text), found);
    // A longer way to the same: both roads of the search agree.
    QCOMPARE(LikePattern(pattern + "%%").matches(text + "x"), LikePattern(pattern + '%').matches(text + "x"));
}

PRUEBA(SqlTextos)
#include "sqlTextos.moc"
