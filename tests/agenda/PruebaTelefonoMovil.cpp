#include "agenda/TelefonoMovil.h"
#include "support/Prueba.h"

using namespace agenda;

class PruebaTelefonoMovil : public QObject
{
    Q_OBJECT

private slots:
    void normaliza_data()
    {
        QTest::addColumn<QString>("escrito");
        QTest::addColumn<QString>("esperado"); // empty: not sure
        QTest::addColumn<bool>("comoMovil");
        const auto fila = [](const char *escrito, const char *esperado, bool comoMovil = false) {
            QTest::newRow(escrito) << escrito << esperado << comoMovil;
        };
        fila("011 15-4321-5678", "5491143215678", true);
        fila("11 4321 5678", "5491143215678");
        fila("0341-15-6123456", "5493416123456", true);
        fila("0341 156123456", "5493416123456", true);
        fila("351 6123456", "5493516123456");
        fila("(0351) 612-3456 mamá", "5493516123456");
        fila("+54 9 11 4321-5678", "5491143215678", true);
        fila("+54 011 15 4321 5678", "5491143215678", true);
        fila("5491143215678", "5491143215678", true);
        fila("0054 9 341 6123456", "5493416123456", true);
        fila("+54 341 6123456", "5493416123456");
        fila("9 341 6123456", "5493416123456", true);
        fila("02302 15 412345", "5492302412345", true);
        fila("2945 15 512345", "5492945512345", true); // 294 is another area code
        fila("2940 412345", "5492940412345");
        fila("3541 515123", "5493541515123"); // an area code that ends in 1 before a number that begins with 5
        fila("341 6155123", "5493416155123"); // a 15 that is no mark
        // Not sure.
        fila("", "");
        fila("no tiene", "");
        fila("15-6123456", ""); // no area code
        fila("15 4321-5678", "");
        fila("4321-5678", "");
        fila("011 15 432-567", ""); // a digit is missing
        fila("341 15 61234", "");
        fila("341 6123456 int. 12", "");
        fila("341 6123456 / 341 6123457", "");
        fila("0541 6123456", ""); // no area code begins with 5
        fila("341 0123456", "");
        fila("+598 99 123 456", "");
        fila("+1 341 612 3456", "");
        fila("00 1 341 612 3456", "");
    }
    void normaliza()
    {
        QFETCH(QString, escrito);
        QFETCH(QString, esperado);
        QFETCH(bool, comoMovil);
        QCOMPARE(movilInternacional(escrito).value_or(QString()), esperado);
        QCOMPARE(escritoComoMovil(escrito), comoMovil);
    }

    void eligeTelefono()
    {
        const auto elegido = [](const char *celular, const char *fijo) {
            return movilDe(QString::fromUtf8(celular), QString::fromUtf8(fijo)).value_or(QString());
        };
        QCOMPARE(elegido("351 6123456", "0341 15 4444444"), "5493516123456");
        QCOMPARE(elegido("6123456", "0341 15 4444444"), "5493414444444");
        QCOMPARE(elegido("", "0341 4444444"), QString()); // a landline
    }
};

PRUEBA(PruebaTelefonoMovil)
#include "PruebaTelefonoMovil.moc"
