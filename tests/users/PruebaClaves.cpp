#include "support/Prueba.h"
#include "users/Claves.h"

using namespace users;

/// Passwords as they are stored, in both forms.
class PruebaClaves : public QObject
{
    Q_OBJECT

private slots:
    void comparan_data()
    {
        QTest::addColumn<QString>("guardada");
        QTest::addColumn<QString>("escrita");
        QTest::addColumn<bool>("exacta");
        QTest::addColumn<bool>("sinMayusculas");
        QTest::newRow("igual") << "Ñandú 7"
                               << "Ñandú 7" << true << true;
        QTest::newRow("blancos alrededor") << "  Ñandú 7"
                                           << "Ñandú 7\t " << true << true;
        QTest::newRow("otra letra") << "Ñandú 7"
                                    << "ÑANDÚ 7" << false << true;
        QTest::newRow("el acento cuenta") << "Ñandú 7"
                                          << "ñandu 7" << false << false;
        QTest::newRow("el acento, escrito aparte")
            << "Ñandú 7" << QString::fromUtf8("N\u0303andu\u0301 7") << true << true;
        QTest::newRow("blanco en el medio") << "Ñandú 7"
                                            << "Ñandú7" << false << false;
        QTest::newRow("nada escrito") << "Ñandú 7"
                                      << "  " << false << false;
        QTest::newRow("apóstrofo") << "O'Higgins"
                                   << "o'higgins" << false << true;
    }
    void comparan()
    {
        QFETCH(QString, guardada);
        QFETCH(QString, escrita);
        QFETCH(bool, exacta);
        QFETCH(bool, sinMayusculas);
        for (const QString &forma : {guardada, claves::huella(guardada)}) {
            QCOMPARE(claves::coincide(forma, escrita), exacta);
            QCOMPARE(claves::coincideSinMayusculas(forma, escrita), sinMayusculas);
        }
    }

    void huellas()
    {
        const QString una = claves::huella("secreta"), otra = claves::huella("secreta");
        QVERIFY(una != otra); // salted
        QVERIFY(una.size() <= claves::ancho && claves::huella(QString(200, u'x')).size() <= claves::ancho);
        QVERIFY(claves::esHuella(una) && !claves::esHuella(u"secreta"));
        // who reads the table cannot type what stands there
        QVERIFY(!claves::coincide(una, una) && !claves::coincideSinMayusculas(una, una));
        // one hash must go on being accepted by every later version
        QVERIFY(claves::coincide("§1AAECAwQFBgcICQoLUz27XSNm+idhKmLnyN06us+Hz3H+G2ET", "Ñandú 7"));
        QVERIFY(claves::coincideSinMayusculas("§1AAECAwQFBgcICQoLUz27XSNm+idhKmLnyN06us+Hz3H+G2ET", "ÑANDÚ 7"));
    }

    void daniadasNoCoinciden()
    {
        const QString buena = claves::huella("secreta");
        QString cambiada = buena;
        cambiada.back() = cambiada.back() == u'A' ? u'B' : u'A';
        for (const QString &mala : {QString("§1"), buena.chopped(1), buena + 'A', "§1" + QString(48, u'?'), cambiada}) {
            QVERIFY(claves::esHuella(mala));
            QVERIFY(!claves::coincide(mala, "secreta"));
            QVERIFY(!claves::coincide(mala, mala));
        }
        QVERIFY(claves::vacia(u" \t") && !claves::coincide(" ", " ") && !claves::coincide("", ""));
    }
};

PRUEBA(PruebaClaves)
#include "PruebaClaves.moc"
