#include "db/Connection.h"
#include "db/Error.h"
#include "db/access/ControladorAccess.h"
#include "db/access/FuenteOdbc.h"
#include "db/odbc/OdbcEngine.h"
#include "odbc/Postgres.h"
#include "support/Falla.h"
#include "support/Prueba.h"

using namespace Qt::StringLiterals;
using db::access::Valor;
using db::odbc::Passing;

namespace {

class Anotador final : public db::access::Receptor
{
public:
    std::vector<db::access::TablaVieja> tablas;
    std::vector<std::vector<Valor>> filas;
    int terminadas = 0;
    std::function<bool(std::size_t filas)> seguir;

    void empezar(const db::access::TablaVieja &tabla) override { tablas.push_back(tabla); }
    void fila(const std::vector<Valor> &celdas) override { filas.push_back(celdas); }
    void terminar() override { ++terminadas; }
    bool sigue() override { return !seguir || seguir(filas.size()); }
};

} // namespace

/// The reading of old databases through a driver, on one that is here and knows every type: Access's own is asked the
/// same things.
class PruebaFuenteOdbc : public QObject
{
    Q_OBJECT

    std::unique_ptr<Postgres> server;

    [[nodiscard]] db::access::FuenteOdbc fuente() const
    {
        return db::access::FuenteOdbc(server->target(Passing::Bound).text);
    }
    [[nodiscard]] std::unique_ptr<db::Connection> connect() const
    {
        return std::make_unique<db::Connection>(std::make_unique<db::OdbcEngine>(server->target(Passing::Bound)));
    }

private slots:
    void initTestCase()
    {
        server = std::make_unique<Postgres>();
        const auto connection = connect();
        connection->execute(
            u"CREATE TABLE \"Año \"\"Ñ\"\"\" (id serial PRIMARY KEY, si bool, corto smallint, largo integer, simple "
            u"real,"
            " doble double precision, monto numeric(19,4), fecha timestamp, texto varchar(80), memo text, bytes bytea,"
            " clave uuid)"_s);
        connection->execute(u"CREATE INDEX dos ON \"Año \"\"Ñ\"\"\" (fecha, largo)"_s);
        connection->execute(u"CREATE UNIQUE INDEX una ON \"Año \"\"Ñ\"\"\" (doble)"_s);
        connection->execute(u"CREATE TABLE muchas AS SELECT g AS numero, repeat('ñ', 300) AS texto"
                            " FROM generate_series(1, 20000) AS g"_s);
        connection->execute(u"CREATE VIEW vista AS SELECT 1 AS uno"_s);
    }
    void cleanupTestCase() { server.reset(); }

    void everyCellAsItIs()
    {
        QString largo;
        while (largo.size() < 200'000)
            largo += u"≥ ñ 😀 O'Higgins \\\r\n"_s;
        const auto connection = connect();
        const auto insertar = [&](const db::Params &valores) {
            connection->execute(
                u"INSERT INTO \"Año \"\"Ñ\"\"\" (si, corto, largo, simple, doble, monto, fecha, texto, memo, bytes, "
                u"clave)"
                " VALUES (? <> 0, ?, ?, ?, ?, CAST(? AS numeric(19,4)), CAST(? AS timestamp), ?, ?, ?, CAST(? AS uuid))"_s,
                valores);
        };
        insertar(
            {1,
             -32768,
             2147483647,
             0.1f,
             0.1,
             u"-922337203685477.5808"_s,
             u"0100-01-01 00:00:00"_s,
             QString(80, u'ñ'),
             largo,
             QByteArray("\0\1\xFF", 3),
             u"00112233-4455-6677-8899-aabbccddeeff"_s});
        insertar(
            {0, 0, -1, 3.4028235e38f, 5e-324, u"12.50"_s, u"9999-12-31 23:59:59"_s, u""_s, u""_s, QByteArray(""), {}});
        insertar({0, {}, {}, {}, {}, {}, u"1899-12-29 06:00:00.6"_s, u" a "_s, u"😀"_s, QByteArray(70'000, '\0'), {}});
        insertar({0, {}, {}, {}, {}, {}, {}, {}, {}, {}, {}});

        Anotador leido;
        QVERIFY(fuente().leer(leido, u"AÑO \"ñ\""_s));
        QCOMPARE(leido.tablas.size(), 1u);
        QCOMPARE(leido.terminadas, 1);
        const db::access::TablaVieja &tabla = leido.tablas.front();
        QCOMPARE(tabla.nombre, u"Año \"Ñ\""_s);
        QCOMPARE(tabla.filas, 4);
        using jet::Tipo;
        const Tipo tipos[]
            = {Tipo::Largo,
               Tipo::Logico,
               Tipo::Entero,
               Tipo::Largo,
               Tipo::Simple,
               Tipo::Doble,
               Tipo::Decimal,
               Tipo::Fecha,
               Tipo::Texto,
               Tipo::Memo,
               Tipo::Ole,
               Tipo::Guid};
        for (int c = 0; c < tabla.columnas.size(); ++c)
            QVERIFY2(tabla.columnas[c].tipo == tipos[c], qPrintable(tabla.columnas[c].nombre));
        QVERIFY(tabla.columnas[0].autonumerica && !tabla.columnas[3].autonumerica);
        QCOMPARE(tabla.columnas[8].tamano, 80);
        QStringList indices;
        for (const auto &indice : tabla.indices) {
            QString texto = indice.unico ? u"único"_s : u"común"_s;
            for (const int columna : indice.columnas)
                texto += u' ' + tabla.columnas[columna].nombre;
            indices << texto;
        }
        indices.sort();
        QCOMPARE(indices, (QStringList{u"común fecha largo"_s, u"único doble"_s, u"único id"_s}));

        const QVector<QStringList> esperadas{
            {u"1"_s,
             u"Sí"_s,
             u"-32768"_s,
             u"2147483647"_s,
             QString::number(double(0.1f), 'g', 17),
             u"0.10000000000000001"_s,
             u"-922337203685477.5808"_s,
             u"0100-01-01 00:00:00"_s,
             QString(80, u'ñ'),
             largo,
             u"hex:0001ff"_s,
             u"{00112233-4455-6677-8899-AABBCCDDEEFF}"_s},
            {u"2"_s,
             u"No"_s,
             u"0"_s,
             u"-1"_s,
             QString::number(double(3.4028235e38f), 'g', 17),
             u"4.9406564584124654e-324"_s,
             u"12.5000"_s,
             u"9999-12-31 23:59:59"_s,
             u""_s,
             u""_s,
             u"hex:"_s,
             {}},
            {u"3"_s,
             u"No"_s,
             {},
             {},
             {},
             {},
             {},
             u"1899-12-29 06:00:01"_s,
             u" a "_s,
             u"😀"_s,
             u"hex:"_s + QString(140'000, u'0'),
             {}},
            {u"4"_s, u"No"_s, {}, {}, {}, {}, {}, {}, {}, {}, {}, {}}};
        QCOMPARE(qsizetype(leido.filas.size()), esperadas.size());
        for (int f = 0; f < esperadas.size(); ++f)
            for (int c = 0; c < tabla.columnas.size(); ++c) {
                const Valor &valor = leido.filas[size_t(f)][size_t(c)];
                const QByteArray donde = QStringLiteral("row %1, %2: %3")
                                             .arg(f + 1)
                                             .arg(tabla.columnas[c].nombre, valor.descripcion().left(80))
                                             .toUtf8();
                QVERIFY2(valor.esNulo() == esperadas[f][c].isNull(), donde.constData());
                QVERIFY2(valor.descripcion() == esperadas[f][c], donde.constData());
            }
    }

    void onlyTablesAndAsLongAsWanted()
    {
        Anotador todas;
        QVERIFY(fuente().leer(todas));
        QStringList nombres;
        for (const auto &tabla : todas.tablas)
            nombres << tabla.nombre;
        QCOMPARE(nombres, (QStringList{u"Año \"Ñ\""_s, u"muchas"_s}));
        QCOMPARE(todas.tablas.back().filas, 20'000);
        QVERIFY(todas.filas.size() > 20'000);

        Anotador pocas;
        pocas.seguir = [](std::size_t filas) { return filas < 10; };
        QVERIFY(!fuente().leer(pocas, u"muchas"_s));
        QCOMPARE(pocas.filas.size(), 10u);
        QCOMPARE(pocas.terminadas, 0);
    }

    // What the driver says may hold the password and the folder: only its numbers are told.
    void failuresTellNoSecrets()
    {
        Anotador nadie;
        const auto falla = [&nadie](const QString &conexion) {
            const auto error = soporte::fallaDe([&] { (void)db::access::FuenteOdbc(conexion).leer(nadie); });
            return error ? error->description() : QString();
        };
        const QString mala = falla(server->target(Passing::Bound, u"otra"_s, u"nadie"_s).text);
        QVERIFY2(mala.contains(u"el controlador de Access informa"_s), qPrintable(mala));
        for (const auto &secreto : {u"otra"_s, u"nadie"_s, u"prueba"_s, u"127.0.0.1"_s})
            QVERIFY2(!mala.contains(secreto), qPrintable(mala));
        const QString sin = falla(db::access::conexionAccess(u"No está (*.mdb)"_s, u"/x/Datos.mdb"_s, u"secreta"_s));
        QVERIFY2(sin.startsWith(u"Falta el controlador"_s), qPrintable(sin));
    }

    void driverAndItsText()
    {
        using db::access::conexionAccess;
        using db::access::elegirControladorAccess;
        const auto ace = u"Microsoft Access Driver (*.mdb, *.accdb)"_s;
        const auto jet = u"Driver do Microsoft Access (*.mdb)"_s;
        QCOMPARE(elegirControladorAccess({u"SQL Server"_s, jet, ace, u"Microsoft Excel Driver (*.xls)"_s}), ace);
        QCOMPARE(elegirControladorAccess({jet, u"Microsoft Access Text Driver (*.txt, *.csv)"_s}), jet);
        QCOMPARE(elegirControladorAccess({u"SQL Server"_s}), std::nullopt);

        QCOMPARE(
            conexionAccess(ace, u"/datos (viejos)/Año 1.mdb"_s, u"kes'trel"_s),
            u"DRIVER={"_s + ace + u"};DBQ=/datos (viejos)/Año 1.mdb;UID=admin;PWD=kes'trel;ReadOnly=1;"_s);
        QVERIFY(conexionAccess(jet, u"/a"_s, u"x;DBQ=/otra"_s).contains(u";PWD={x;DBQ=/otra};"_s));
        QVERIFY_THROWS_EXCEPTION(db::Error, (void)conexionAccess(jet, u"/a"_s, u"x;y}"_s));
    }
};

PRUEBA(PruebaFuenteOdbc)
#include "PruebaFuenteOdbc.moc"
