#include "base/Fechas.h"
#include "db/Connection.h"
#include "demo/Demo.h"
#include "support/BaseDePrueba.h"
#include "support/Prueba.h"

#include <QCryptographicHash>

using namespace Qt::StringLiterals;

namespace {

const demo::Medida chica{
    .pacientes = 300, .turnos = 1200, .ordenes = 200, .consultas = 400, .semilla = 7, .hoy = QDate(2026, 11, 20)};

const QStringList tablas{
    u"Pacientes"_s,
    u"Lista Doctores"_s,
    u"Agenda Turnos Horarios"_s,
    u"Agenda Turnos No Se Atiende"_s,
    u"Agenda Turnos"_s,
    u"Caja"_s,
    u"Lista Precios"_s,
    u"Pacientes Ordenes"_s,
    u"Pacientes Sesiones"_s,
    u"Pacientes Pagos"_s,
    u"Consultas"_s,
    u"Consultas Items"_s,
    u"Pacientes Embarazos"_s,
    u"Pacientes Embarazos Finalizados"_s,
    u"Pacientes Control Materno"_s,
    u"Pacientes Control Feto"_s,
    u"Pacientes Vacunas"_s,
    u"Pacientes Controles Antropometricos"_s,
    u"Antecedentes Perinatologicos"_s,
    u"Historial"_s};

QByteArray resumen(db::Connection &conexion)
{
    QCryptographicHash hash(QCryptographicHash::Sha256);
    for (const QString &tabla : tablas)
        hash.addData(conexion.query(u"SELECT * FROM [%1]"_s.arg(tabla))->toDelimited(u"|", u"\n").toUtf8());
    return hash.result();
}

} // namespace

class llenar : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { demo::llenar(m_base.conexion(), chica); }

    void dependeSoloDeLaMedida()
    {
        soporte::BaseDePrueba igual, distinta;
        demo::llenar(igual.conexion(), chica);
        QCOMPARE(resumen(igual.conexion()), resumen(m_base.conexion()));
        demo::Medida otra = chica;
        otra.semilla = 8;
        demo::llenar(distinta.conexion(), otra);
        QVERIFY(resumen(distinta.conexion()) != resumen(m_base.conexion()));
    }

    // Equal on every computer too: the first patients of a seed, once and for all.
    void conservaLoQueYaMostro()
    {
        QCOMPARE(m_base.valor(u"SELECT Apellido FROM [Pacientes] WHERE NroHC = 1"_s), u"ELIZALDE"_s);
    }

    void tieneLoPedido()
    {
        QCOMPARE(cuantos(u"[Pacientes]"_s), 300);
        QCOMPARE(cuantos(u"[Agenda Turnos]"_s), 1200);
        QCOMPARE(cuantos(u"[Pacientes Ordenes]"_s), 200);
        QCOMPARE(cuantos(u"[Consultas]"_s), 400);
        QCOMPARE(cuantos(u"[Historial]"_s), 1500);
        for (const QString &tabla : tablas)
            QVERIFY2(cuantos(u'[' + tabla + u']') > 0, qUtf8Printable(tabla));
        QVERIFY(cuantos(u"[Pacientes] WHERE Apellido like '%''%'"_s) > 0);
        QVERIFY(cuantos(u"[Pacientes] WHERE Apellido like '%Ñ%'"_s) > 0);
        QVERIFY(cuantos(u"[Agenda Turnos] WHERE Fecha > #11/20/2026 23:59#"_s) > 0);
        QVERIFY(cuantos(u"[Agenda Turnos] WHERE NroHC = -111"_s) > 0);
    }

    void numerosUnicosYContadoresAlDia()
    {
        QCOMPARE(cuantos(u"(SELECT NroHC FROM [Pacientes] GROUP BY NroHC) AS t"_s), 300);
        const int conDni = cuantos(u"[Pacientes] WHERE DNI <> ''"_s);
        QCOMPARE(cuantos(u"(SELECT DNI FROM [Pacientes] WHERE DNI <> '' GROUP BY DNI) AS t"_s), conDni);
        QCOMPARE(m_base.valor(u"SELECT UltimoPaci FROM [Config]"_s), u"300"_s);
        QCOMPARE(m_base.valor(u"SELECT MAX(NroHC) FROM [Pacientes]"_s), u"300"_s);
        QCOMPARE(m_base.valor(u"SELECT numerohc FROM [Config]"_s), u"301"_s);
        QCOMPARE(m_base.valor(u"SELECT numehistoria FROM [Pacientes] WHERE NroHC = 300"_s), u"HC-000300"_s);
    }

    void todoPerteneceAAlguien_data()
    {
        QTest::addColumn<QString>("huerfanos");
        const auto fila = [](const char *nombre, const QString &tabla, const QString &columna, const QString &dueno) {
            QTest::newRow(nombre) << u"[%1] WHERE %2 NOT IN (SELECT %3)"_s.arg(tabla, columna, dueno);
        };
        const QString nrohc = u"NroHC FROM [Pacientes]"_s;
        QTest::newRow("turnos")
            << u"[Agenda Turnos] WHERE NroHC <> -111 and NroHC NOT IN (SELECT NroHC FROM [Pacientes])"_s;
        fila("turnos, profesional", u"Agenda Turnos"_s, u"Doctor"_s, u"id FROM [Lista Doctores] WHERE tipo = 0"_s);
        fila("ordenes", u"Pacientes Ordenes"_s, u"NroPaci"_s, nrohc);
        fila("ordenes, cobertura", u"Pacientes Ordenes"_s, u"idobrasocial"_s, u"id FROM [Lista Coberturas]"_s);
        fila("ordenes, practica", u"Pacientes Ordenes"_s, u"idpractica"_s, u"id FROM [Lista Nomenclador]"_s);
        fila("sesiones", u"Pacientes Sesiones"_s, u"idorden"_s, u"id FROM [Pacientes Ordenes]"_s);
        fila("pagos", u"Pacientes Pagos"_s, u"idorden"_s, u"id FROM [Pacientes Ordenes]"_s);
        fila("consultas", u"Consultas"_s, u"NroPaci"_s, nrohc);
        fila("items", u"Consultas Items"_s, u"idconsulta"_s, u"id FROM [Consultas]"_s);
        fila("embarazos", u"Pacientes Embarazos"_s, u"NroPaci"_s, u"NroHC FROM [Pacientes] WHERE sexo = 0"_s);
        fila("vacunas", u"Pacientes Vacunas"_s, u"idvacuna"_s, u"id FROM [Lista Vacunas]"_s);
        QTest::newRow("diagnosticos")
            << u"[Consultas Items] WHERE tipoconsulta = 4 and cie10 <> 0 and iditem NOT IN (SELECT id FROM [CIE10])"_s;
        QTest::newRow("pagos de turnos")
            << u"[Agenda Turnos] WHERE idcaja <> 0 and idcaja NOT IN (SELECT id FROM [Caja])"_s;
        QTest::newRow("coberturas")
            << u"[Pacientes] WHERE cobertura = 1 and idcobertura NOT IN (SELECT id FROM [Lista Coberturas])"_s;
    }

    void todoPerteneceAAlguien()
    {
        QFETCH(QString, huerfanos);
        QCOMPARE(cuantos(huerfanos), 0);
    }

    void elTiempoPasaEnOrden()
    {
        QCOMPARE(cuantos(u"[Agenda Turnos] WHERE Fecha > #11/20/2026 23:59# and (llegado <> 0 or Atendido <> 0)"_s), 0);
        QCOMPARE(cuantos(u"[Agenda Turnos] WHERE Atendido <> 0 and llegado = 0"_s), 0);
        QCOMPARE(cuantos(u"[Consultas] WHERE Fecha > #11/20/2026 23:59#"_s), 0);
        QCOMPARE(cuantos(u"[Pacientes Pagos] WHERE fecha > #11/20/2026#"_s), 0);
        QCOMPARE(cuantos(u"[Pacientes Vacunas] WHERE fecha > #11/20/2026#"_s), 0);
        QCOMPARE(
            cuantos(u"[Agenda Turnos] INNER JOIN [Pacientes] ON [Agenda Turnos].NroHC = [Pacientes].NroHC"
                    " WHERE FeNac < #01/01/9000# and FeNac > Fecha"_s),
            0);
        // One running pregnancy at most, numbered to the last one given.
        QCOMPARE(
            cuantos(
                u"(SELECT NroPaci FROM [Pacientes Embarazos] WHERE FinEmba = 0 GROUP BY NroPaci HAVING COUNT(*) > 1) AS t"_s),
            0);
        QCOMPARE(
            cuantos(
                u"[Pacientes] WHERE UltiEmba <> (SELECT COUNT(*) FROM [Pacientes Embarazos] WHERE NroPaci = NroHC)"_s),
            0);
    }

    void ningunTextoExcedeSuColumna()
    {
        for (const QString &tabla : tablas) {
            const auto filas = m_base.conexion().query(u"SELECT * FROM [%1]"_s.arg(tabla));
            for (const db::Column &columna : m_base.conexion().columns(tabla)) {
                if (columna.type != db::Type::Text)
                    continue;
                const int c = filas->column(columna.name);
                for (int f = 0; f < filas->rowCount(); ++f)
                    QVERIFY2(filas->text(f, c).size() <= columna.size, qUtf8Printable(tabla + u'.' + columna.name));
            }
        }
    }

    void noTocaUnaPracticaConPacientes()
    {
        const QByteArray antes = resumen(m_base.conexion());
        demo::llenarSiVacia(m_base.conexion(), chica.hoy);
        QCOMPARE(resumen(m_base.conexion()), antes);
    }

private:
    int cuantos(const QString &desde) { return m_base.valor(u"SELECT COUNT(*) FROM "_s + desde).toInt(); }

    soporte::BaseDePrueba m_base;
};

PRUEBA(llenar)
#include "llenar.moc"
