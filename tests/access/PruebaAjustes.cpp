#include "Comun.h"
#include "db/Error.h"

#include <limits>

using namespace Qt::StringLiterals;
using db::access::ColumnaVieja;
using db::access::Desenlace;
using db::access::TablaVieja;
using db::access::Valor;
using jet::Tipo;
using Clase = Valor::Clase;

namespace {

struct Contenido {
    TablaVieja tabla;
    std::vector<std::vector<Valor>> filas;
};

/// An old database made up by the test, for what no sample has.
class FuenteFalsa final : public db::access::Fuente
{
public:
    explicit FuenteFalsa(const std::vector<Contenido> &contenido)
        : m_contenido(contenido)
    {
    }
    bool leer(db::access::Receptor &receptor, const QString &) override
    {
        receptor.vinculada(u"Otra base"_qs);
        for (const Contenido &uno : m_contenido) {
            receptor.empezar(uno.tabla);
            for (const auto &fila : uno.filas)
                receptor.fila(fila);
            receptor.terminar();
        }
        return true;
    }

private:
    const std::vector<Contenido> &m_contenido;
};

Valor nulo() { return {}; }
Valor entero(qint64 numero) { return {Clase::Entero, numero}; }
Valor moneda(qint64 diezmilesimos) { return {Clase::Moneda, diezmilesimos}; }
Valor doble(double numero) { return {Clase::Doble, 0, numero}; }
Valor texto(const QString &contenido) { return {Clase::Texto, 0, 0, contenido.toUtf8()}; }

Contenido tabla(const QString &nombre, const QVector<ColumnaVieja> &columnas, std::vector<std::vector<Valor>> filas)
{
    TablaVieja vieja;
    vieja.nombre = nombre;
    vieja.columnas = columnas;
    vieja.filas = qint64(filas.size());
    return {vieja, std::move(filas)};
}

const ColumnaVieja id{u"ID"_qs, Tipo::Largo, 4, true};

} // namespace

/// What does not fit the system's tables: nothing is lost, and the person is told.
class PruebaAjustes : public QObject
{
    Q_OBJECT

    std::vector<Contenido> m_contenido;

private slots:
    void nothingIsLost()
    {
        const QString largo(120, u'ñ');
        Contenido cosas = tabla(
            u"Cosas Ñ"_qs,
            {id,
             {u"Numero"_qs, Tipo::Largo},
             {u"dato"_qs, Tipo::Binario},
             {u"fecha"_qs, Tipo::Fecha},
             {u"medida"_qs, Tipo::Doble},
             {u"decimal"_qs, Tipo::Decimal}},
            {{entero(1),
              entero(3),
              {Clase::Bytes, 0, 0, "a\0b"_qba},
              {Clase::FechaRota, 0, 1e9},
              doble(std::numeric_limits<double>::quiet_NaN()),
              {Clase::Decimal, 0, 0, "12345678901234567890.5"}},
             {entero(1), nulo(), nulo(), nulo(), nulo(), {Clase::Decimal, 0, 0, "-0.25"}}});
        cosas.tabla.indices = {{{1}, true, false}, {{0}, true, true}};
        m_contenido
            = {tabla(
                   u"PACIENTES"_qs,
                   {id, {u"nrohc"_qs, Tipo::Largo}, {u"APELLIDO"_qs, Tipo::Texto, 50}, {u"Notas"_qs, Tipo::Memo}},
                   {{entero(1), entero(5), texto(largo), {Clase::TextoRoto, 0, 0, "\xEF\xBF\xBD", "\x3D\xD8"}},
                    {entero(1), entero(5), texto(u"Gómez"_qs), texto(QString(u"A\0B"_qs))},
                    {nulo(), entero(6), texto(u"O'Higgins"_qs), texto(QString(u""_qs))}}),
               tabla(
                   u"Caja"_qs,
                   {id, {u"importe"_qs, Tipo::Moneda}},
                   {{entero(1), moneda(1000)}, {entero(2), moneda(12345678)}}),
               tabla(
                   u"Pacientes Embarazos"_qs,
                   {{u"NroPaci"_qs, Tipo::Largo}, {u"NroEmba"_qs, Tipo::Largo}},
                   {{entero(1), entero(1)}, {entero(1), entero(1)}}),
               cosas};
        prueba::Carpeta carpeta(u"ConClave.mdb"_qs);
        db::access::Pedido pedido = carpeta.pedido();
        pedido.abrir = [this](const QString &) { return std::make_unique<FuenteFalsa>(m_contenido); };
        prueba::Seguimiento seguimiento;
        const Desenlace desenlace = db::access::convertir(pedido, seguimiento);
        QVERIFY2(desenlace.tipo == Desenlace::Tipo::Hecha, qPrintable(desenlace.motivo));

        db::EmbeddedEngine motor(carpeta.archivo(), prueba::clave);
        const auto valor = [&motor](const char *sql) {
            const db::Rows rows = motor.queryNative(sql, {});
            return rows->toDelimited(u" ", u"|").chopped(1);
        };
        // The first keeps its number; the others get new ones, and what they had is kept aside.
        QCOMPARE(valor("SELECT id, NroHC, length(Apellido) FROM Pacientes ORDER BY id"), u"1 5 120|2 5 5|3 6 9"_qs);
        QCOMPARE(valor("SELECT type FROM pragma_table_info('Pacientes') WHERE name = 'Apellido'"), u"TEXT(120)"_qs);
        QCOMPARE(valor("SELECT hex(Notas) FROM Pacientes WHERE id = 2"), u"410042"_qs);
        QCOMPARE(valor("SELECT typeof(Notas) FROM Pacientes WHERE id = 3"), u"text"_qs);
        QCOMPARE(
            valor("SELECT count(*) FROM sqlite_master WHERE name = 'Pacientes NroHC' AND sql LIKE '%UNIQUE%'"),
            u"0"_qs);
        QCOMPARE(valor("SELECT importe FROM Caja"), u"0.1|1234.5678"_qs);
        QCOMPARE(valor("SELECT type FROM pragma_table_info('Caja') WHERE name = 'importe'"), u"DOUBLE"_qs);
        QCOMPARE(valor("SELECT count(*) FROM \"Pacientes Embarazos\""), u"2"_qs);
        QCOMPARE(
            valor("SELECT ID, Numero, hex(dato), decimal FROM \"Cosas Ñ\""),
            u"1 3 610062 12345678901234567000|1   -0.25"_qs);
        QCOMPARE(valor("SELECT count(*) FROM sqlite_master WHERE type = 'index' AND tbl_name = 'Cosas Ñ'"), u"2"_qs);
        QCOMPARE(
            valor(
                "SELECT tabla, fila, columna, valor FROM \"Importacion de Access\" ORDER BY tabla DESC, fila, columna"),
            u"Pacientes 1 Notas hex:3dd8|Pacientes 2 id 1|Pacientes 3 id |"
            "Cosas Ñ 1 decimal 12345678901234567890.5|Cosas Ñ 1 fecha 1000000000|Cosas Ñ 1 medida nan"_qs);

        const db::access::Informe &informe = desenlace.informe;
        QCOMPARE(informe.apartados, 6);
        QCOMPARE(informe.vinculadas.constFirst(), u"Otra base"_qs);
        QVERIFY(informe.tablas[0].avisos.join(u' ').contains(u"'Apellido' queda como texto (120)"_qs));
        QVERIFY(informe.tablas[0].avisos.join(u' ').contains(u"valores repetidos en 'NroHC'"_qs));
        QVERIFY(informe.tablas[1].avisos.join(u' ').contains(u"'importe' queda como doble"_qs));
        QVERIFY(informe.tablas[2].avisos.join(u' ').contains(u"misma clave"_qs));
    }

    // The second reading gives something else than the first: no half of either is taken.
    void theFileChanges()
    {
        m_contenido = {tabla(u"Caja"_qs, {id}, {{entero(1)}, {entero(2)}})};
        prueba::Carpeta carpeta(u"ConClave.mdb"_qs);
        db::access::Pedido pedido = carpeta.pedido();
        pedido.abrir = [this, veces = 0](const QString &) mutable {
            if (++veces == 2)
                m_contenido[0].filas.pop_back();
            return std::make_unique<FuenteFalsa>(m_contenido);
        };
        prueba::Seguimiento seguimiento;
        const Desenlace desenlace = db::access::convertir(pedido, seguimiento);
        QVERIFY(desenlace.motivo.contains(u"cambió"_qs));
        QCOMPARE(carpeta.nombres(), QStringList{u"Datos.mdb"_qs});
    }
};

PRUEBA(PruebaAjustes)
#include "PruebaAjustes.moc"
