#include "db/CabezaHistorial.h"
#include "db/CadenaHistorial.h"
#include "db/Error.h"
#include "db/Historial.h"
#include "db/LectorHistorial.h"
#include "db/VerificadorHistorial.h"
#include "db/engine/EmbeddedEngine.h"
#include "support/BaseDePrueba.h"
#include "support/Prueba.h"

#include <QFile>

using namespace Qt::StringLiterals;
using Alcance = db::VerificadorHistorial::Alcance;

namespace {

db::InformeHistorial verificar(db::Entorno &base, Alcance alcance = Alcance::Todo)
{
    db::VerificadorHistorial verificador(base, alcance);
    while (verificador.seguir()) { }
    return verificador.informe();
}

/// "Modificada 1 | EslabonAlterado 2", by date.
QString hallazgos(const db::InformeHistorial &informe)
{
    static const char *const nombres[]
        = {"SinComienzo",
           "ComienzoAlterado",
           "OtroComienzo",
           "SinFinal",
           "FaltanEslabones",
           "EslabonAlterado",
           "Anteriores",
           "Modificada",
           "Eliminada",
           "Agregada"};
    QStringList textos;
    for (const db::HallazgoHistorial &hallazgo : informe.hallazgos)
        textos << QLatin1String(nombres[int(hallazgo.clase)]) + u' ' + QString::number(hallazgo.cantidad);
    return textos.join(u" | "_s);
}

/// Rows as an older version of the program left them, several a day.
void llenarAnteriores(db::Connection &conexion, QDate desde, int dias, int porDia)
{
    db::Transaction transaccion(conexion);
    for (int i = 0; i < dias * porDia; ++i)
        conexion.execute(
            u"INSERT INTO [Historial] (fecha,equipo,iddoctor,ventana,accion) VALUES (?,'PC 1',?,?,?)"_s,
            {QDateTime(desde.addDays(i / porDia), QTime(8, i % 60)),
             i % 3,
             u"Ventana %1"_s.arg(i % 4),
             u"Acción d'antes %1"_s.arg(i)});
    transaccion.commit();
}

/// A file without locks between its stations: each statement is on its own, and others come in between.
class SinCerrojos final : public db::EmbeddedEngine
{
public:
    using EmbeddedEngine::EmbeddedEngine;
    std::function<void()> antesDeEnganchar;

    void begin() override { }
    void commit() override { }
    void rollback() override { }
    int execute(const QString &sql, const db::Params &params) override
    {
        if (antesDeEnganchar && sql.startsWith(u"INSERT INTO [Historial Cadena]"))
            std::exchange(antesDeEnganchar, {})();
        return EmbeddedEngine::execute(sql, params);
    }
};

/// The practice over another connection, as another station.
class Terminal final : public db::Entorno
{
public:
    Terminal(soporte::BaseDePrueba &base, std::unique_ptr<db::Engine> motor)
        : m_base(base)
        , m_conexion(std::move(motor))
    {
    }

    db::Connection &conexion() override { return m_conexion; }
    base::Mensajes &mensajes() override { return m_base.mensajes(); }
    const base::Clock &clock() const override { return m_base.clock(); }
    int usuarioActual() const override { return 7; }
    void setUsuarioActual(int) override { }
    QString equipo() const override { return u"OTRA"_s; }
    QString carpetaPrograma() const override { return m_carpeta.path(); }
    QString carpetaDatos() const override { return m_base.carpetaDatos(); }
    bool esClienteDeRed() const override { return true; }
    int segundosAgenda() const override { return 30; }
    int segundosMensajes() const override { return 30; }
    bool modoTurno() const override { return false; }
    void setAjustesEquipo(const db::AjustesEquipo &) override { }

private:
    soporte::BaseDePrueba &m_base;
    QTemporaryDir m_carpeta;
    db::Connection m_conexion;
};

/// A long text is not compared on the server as it stands.
QString comoSeCompara(soporte::BaseDePrueba &base, QString sentencia)
{
    return base.conexion().dialect().kind() == db::Dialect::Kind::SqlServer
        ? sentencia.replace(u"WHERE accion "_s, u"WHERE CAST(accion AS nvarchar(max)) "_s)
        : sentencia;
}

int ejecutar(soporte::BaseDePrueba &base, const QString &sentencia, const db::Params &valores = {})
{
    return base.conexion().execute(comoSeCompara(base, sentencia), valores);
}

} // namespace

/// The activity log's chain: what shows, and that nothing else does.
class PruebaHistorial : public QObject
{
    Q_OBJECT

    /// Eight entries over three days, two of them equal.
    static void llenar(soporte::BaseDePrueba &base)
    {
        const QStringList acciones{
            u"Se ingresó al sistema."_s,
            u"Se eliminó el paciente 'O'Higgins'.\r\nMotivo: \"repetido\" 100% [x] -- ; 👶"_s,
            u"Repetida"_s,
            u"Repetida"_s,
            QString(5000, u'ñ'),
            u""_s,
            u"Otra"_s,
            u"Última"_s};
        for (int i = 0; i < acciones.size(); ++i) {
            base.reloj.set({QDate(2026, 3, 10 + i / 3), QTime(9, i / 2, 31)});
            db::registrarHistorial(base, u"Ventana d'%1"_s.arg(i % 2), acciones[i]);
        }
        base.reloj.set({QDate(2026, 3, 20), QTime(8, 0)});
    }

private slots:
    void entero_data() { soporte::filasDeDialecto(); }
    void entero()
    {
        soporte::BaseDePrueba base(soporte::dialectoActual());
        QVERIFY(!verificar(base).comenzado);
        llenar(base);
        for (const Alcance alcance : {Alcance::Todo, Alcance::Reciente}) {
            const db::InformeHistorial informe = verificar(base, alcance);
            QCOMPARE(hallazgos(informe), QString());
            QVERIFY(informe.integro() && informe.completo && !informe.sinSellar);
            QCOMPARE(informe.acciones, 8);
            QCOMPARE(informe.desde, QDate(2026, 3, 10));
            QCOMPARE(informe.comienzo, QDateTime(QDate(2026, 3, 10), QTime(9, 0, 31)));
        }
        QCOMPARE(base.valor(u"SELECT COUNT(*) FROM [Historial Usos]"_s), u"2"_s);

        // Undone together with what it told of.
        {
            db::Transaction transaccion(base.conexion());
            db::registrarHistorial(base, u"Caja"_s, u"Nunca fue"_s);
        }
        QCOMPARE(verificar(base).acciones, 8);
        // A clock that stands wrong, and texts that are longer than their columns.
        base.reloj.set({QDate(2019, 1, 1), QTime(0, 0)});
        db::registrarHistorial(base, QString(300, u'v'), u"con\0nulo"_s);
        QCOMPARE(hallazgos(verificar(base)), QString());
    }

    void alterado_data()
    {
        QTest::addColumn<db::Dialect::Kind>("dialecto");
        QTest::addColumn<QStringList>("sentencias");
        QTest::addColumn<QString>("esperado");
        QTest::addColumn<QString>("cuando");
        const QString d10 = u"2026-03-10 09:00"_s, d11 = u"2026-03-11 09:02"_s, d12 = u"2026-03-12 09:03"_s;
        const auto caso
            = [](const char *nombre, QStringList sentencias, const QString &esperado, const QString &cuando) {
                  for (const auto dialecto : {db::Dialect::Kind::Access, db::Dialect::Kind::SqlServer})
                      QTest::addRow("%s %d", nombre, int(dialecto)) << dialecto << sentencias << esperado << cuando;
              };
        caso(
            "acción",
            {u"UPDATE [Historial] SET accion = 'otra' WHERE accion like 'Se ingres%'"_s},
            u"Modificada 1"_s,
            d10);
        caso(
            "una letra",
            {u"UPDATE [Historial] SET accion = 'ultima' WHERE accion = 'Última'"_s},
            u"Modificada 1"_s,
            d12);
        caso("usuario", {u"UPDATE [Historial] SET iddoctor = 21 WHERE accion = 'Otra'"_s}, u"Modificada 1"_s, d12);
        caso("equipo", {u"UPDATE [Historial] SET equipo = NULL WHERE accion = 'Otra'"_s}, u"Modificada 1"_s, d12);
        caso("quitada", {u"DELETE FROM [Historial] WHERE accion = 'Otra'"_s}, u"Eliminada 1"_s, d12);
        caso(
            "dos iguales",
            {u"DELETE FROM [Historial] WHERE accion = 'Repetida' and ventana like '%0'"_s},
            u"Eliminada 1"_s,
            u"2026-03-10 09:01"_s);
        caso(
            "repetida",
            {u"INSERT INTO [Historial] (fecha,equipo,iddoctor,ventana,accion) SELECT fecha,equipo,iddoctor,ventana,accion FROM [Historial] WHERE accion = 'Última'"_s},
            u"Agregada 1"_s,
            d12);
        caso(
            "día nuevo",
            {u"INSERT INTO [Historial] (iddoctor,accion) VALUES (3,'sin fecha')"_s},
            u"Agregada 1"_s,
            QString());
        // Its link is one the chain cannot do without, and its row then stands alone.
        caso(
            "eslabón quitado",
            {u"DELETE FROM [Historial Cadena] WHERE orden = 7"_s},
            u"FaltanEslabones 1 | Agregada 1"_s,
            d12);
        caso(
            "fila y eslabón",
            {u"DELETE FROM [Historial Cadena] WHERE orden = 7"_s, u"DELETE FROM [Historial] WHERE accion = 'Otra'"_s},
            u"FaltanEslabones 1"_s,
            d12);
        caso(
            "fecha del eslabón",
            {u"UPDATE [Historial Cadena] SET fecha = NULL WHERE orden = 7"_s},
            u"EslabonAlterado 1"_s,
            QString());
        caso("sello", {u"UPDATE [Historial Cadena] SET sello = huella WHERE orden = 5"_s}, u"EslabonAlterado 2"_s, d11);
        caso(
            "otra fila y su eslabón",
            {u"UPDATE [Historial] SET accion = 'Repetida' WHERE accion = 'Otra'"_s,
             u"UPDATE [Historial Cadena] SET huella = (SELECT TOP 1 huella FROM [Historial Cadena] WHERE orden = 3) WHERE orden = 7"_s},
            u"EslabonAlterado 1 | Agregada 1"_s,
            d12);
        caso(
            "eslabón cambiado de lugar",
            {u"UPDATE [Historial Cadena] SET orden = 70 WHERE orden = 7"_s,
             u"UPDATE [Historial Cadena] SET orden = 7 WHERE orden = 6"_s,
             u"UPDATE [Historial Cadena] SET orden = 6 WHERE orden = 70"_s},
            u"EslabonAlterado 3"_s,
            d12);
        // Cut off at the end: what this computer remembers speaks.
        caso(
            "final",
            {u"DELETE FROM [Historial Cadena] WHERE orden > 6"_s,
             u"DELETE FROM [Historial] WHERE accion in ('Otra','Última')"_s},
            u"SinFinal 2"_s,
            d12);
        caso("comienzo", {u"DELETE FROM [Historial Cadena] WHERE orden = 0"_s}, u"SinComienzo 8"_s, d12);
        caso("sin cadena", {u"DELETE FROM [Historial Cadena]"_s}, u"OtroComienzo 1"_s, d12);
        caso(
            "fecha del comienzo",
            {u"UPDATE [Historial Cadena] SET fecha = NULL WHERE orden = 0"_s},
            u"ComienzoAlterado 1"_s,
            QString());
    }
    void alterado()
    {
        QFETCH(QStringList, sentencias);
        QFETCH(QString, esperado);
        QFETCH(QString, cuando);
        soporte::BaseDePrueba base(soporte::dialectoActual());
        llenar(base);
        const db::Dialect &d = base.conexion().dialect();
        for (QString sentencia : sentencias) {
            sentencia.replace(u"'Última'"_s, d.text(u"Última"));
            sentencia.replace(u"accion like 'Se ingres%'"_s, d.contains(u"accion"_s, u"Se ingres"));
            QVERIFY(ejecutar(base, sentencia) > 0);
        }
        for (const Alcance alcance : {Alcance::Todo, Alcance::Reciente}) {
            const db::InformeHistorial informe = verificar(base, alcance);
            QCOMPARE(hallazgos(informe), esperado);
            QVERIFY(!informe.integro());
            if (!cuando.isEmpty())
                QCOMPARE(informe.ultimaDiferencia(), QDateTime::fromString(cuando, u"yyyy-MM-dd HH:mm"_s));
        }
        // The log goes on, and what was found stays found.
        db::registrarHistorial(base, u"Caja"_s, u"Sigue"_s);
        QVERIFY(!verificar(base).integro());
    }

    /// Rows from before the chain are sealed on the way, a stretch with each entry, and show when they change.
    void anteriores_data() { soporte::filasDeDialecto(); }
    void anteriores()
    {
        soporte::BaseDePrueba base(soporte::dialectoActual());
        llenarAnteriores(base.conexion(), QDate(2025, 12, 1), 30, 70);
        base.conexion().execute(u"INSERT INTO [Historial] (iddoctor,accion) VALUES (3,'sin fecha')"_s);
        // And some of the day on which the chain begins.
        llenarAnteriores(base.conexion(), QDate(2026, 3, 10), 1, 3);
        base.reloj.set({QDate(2026, 3, 10), QTime(9, 0)});
        db::registrarHistorial(base, u"Caja"_s, u"La primera"_s);
        const auto sinSellar
            = [&] { return base.valor(u"SELECT TOP 1 pendiente FROM [Historial Cadena] ORDER BY orden DESC"_s); };
        QVERIFY(!sinSellar().isEmpty());
        // A station whose clock is behind writes among them meanwhile.
        base.reloj.set({QDate(2025, 12, 29), QTime(9, 0)});
        db::registrarHistorial(base, u"Caja"_s, u"Atrasada"_s);
        base.reloj.set({QDate(2026, 3, 11), QTime(9, 0)});
        int escritas = 2;
        for (; escritas < 20 && !sinSellar().isEmpty(); ++escritas)
            db::registrarHistorial(base, u"Caja"_s, u"Otra"_s);
        QCOMPARE(sinSellar(), QString());
        QVERIFY(escritas > 3);
        const db::InformeHistorial informe = verificar(base);
        QCOMPARE(hallazgos(informe), QString());
        QCOMPARE(informe.anteriores, 30 * 70 + 1 + 3);
        QCOMPARE(informe.acciones, escritas);
        QCOMPARE(
            base.valor(
                u"SELECT COUNT(*) FROM [Historial Usos] WHERE "_s
                + base.conexion().dialect().contains(u"ventana"_s, u"Ventana")),
            u"12"_s);

        // An entry of the day on which the chain begins.
        ejecutar(base, u"UPDATE [Historial] SET iddoctor = 99 WHERE accion = 'La primera'"_s);
        QCOMPARE(hallazgos(verificar(base, Alcance::Reciente)), u"Anteriores 0"_s);
        ejecutar(base, u"UPDATE [Historial] SET iddoctor = ? WHERE accion = 'La primera'"_s, {base.usuario});

        ejecutar(base, u"UPDATE [Historial] SET accion = 'x' WHERE accion = ?"_s, {u"Acción d'antes 80"_s});
        ejecutar(base, u"DELETE FROM [Historial] WHERE accion = ?"_s, {u"Acción d'antes 1500"_s});
        base.conexion().execute(u"INSERT INTO [Historial] (iddoctor,accion) VALUES (3,'sin fecha')"_s);
        ejecutar(base, u"DELETE FROM [Historial] WHERE accion = 'Atrasada'"_s);
        // The first stretch has one changed and one more, the third and the last one less.
        QCOMPARE(hallazgos(verificar(base)), u"Anteriores 1 | Anteriores -1 | Anteriores -1"_s);
    }

    void eliminar_data() { soporte::filasDeDialecto(); }
    void eliminar()
    {
        soporte::BaseDePrueba base(soporte::dialectoActual());
        llenarAnteriores(base.conexion(), QDate(2025, 12, 1), 30, 70);
        base.conexion().execute(u"INSERT INTO [Historial] (iddoctor,accion) VALUES (3,'sin fecha')"_s);
        llenar(base);
        const auto contar
            = [&](const QString &tabla) { return base.valor(u"SELECT COUNT(*) FROM [%1]"_s.arg(tabla)).toInt(); };
        QCOMPARE(db::eliminarHistorial(base, QDate(2025, 11, 30)), 0);
        QCOMPARE(contar(u"Historial"_s), 2109);

        // In the middle of a sealed stretch; the chosen day goes whole, the next one stays whole.
        QVector<int> avances;
        QCOMPARE(db::eliminarHistorial(base, QDate(2025, 12, 10), [&](int porciento) { avances << porciento; }), 700);
        QVERIFY(std::is_sorted(avances.cbegin(), avances.cend()) && avances.constLast() == 100);
        QCOMPARE(contar(u"Historial"_s), 1410);
        QCOMPARE(base.valor(u"SELECT MIN(fecha) FROM [Historial]"_s), u"2025-12-11 08:00:00"_s);
        const db::Rows acto = base.conexion().query(
            comoSeCompara(base, u"SELECT fecha,iddoctor,ventana FROM [Historial] WHERE accion = ?"_s),
            {u"Se eliminaron 700 acciones del historial, hasta el 10/12/2025 inclusive."_s});
        QCOMPARE(acto->rowCount(), 1);
        QCOMPARE(acto->dateTime(0, 0), base.reloj.now());
        QCOMPARE(acto->integer(0, 1), base.usuario);
        QCOMPARE(acto->text(0, 2), u"Configuración del Sistema"_s);
        db::InformeHistorial informe = verificar(base);
        QCOMPARE(hallazgos(informe), QString());
        QCOMPARE(informe.anteriores, 1401);
        // What was removed does not come back unseen.
        base.conexion().execute(
            u"INSERT INTO [Historial] (fecha,equipo,iddoctor,ventana,accion) VALUES (?,'PC 1',1,'Ventana 1','x')"_s,
            {QDateTime(QDate(2025, 12, 10), QTime(8, 0))});
        QCOMPARE(hallazgos(verificar(base)), u"Agregada 1"_s);
        ejecutar(base, u"DELETE FROM [Historial] WHERE accion = 'x'"_s);

        // Into the entries with links of their own, whose links go with them.
        const int eslabones = contar(u"Historial Cadena"_s);
        QCOMPARE(db::eliminarHistorial(base, QDate(2026, 3, 11)), 1400 + 6);
        QVERIFY(contar(u"Historial Cadena"_s) < eslabones - 6);
        QCOMPARE(base.valor(u"SELECT COUNT(*) FROM [Historial] WHERE fecha IS NULL"_s), u"1"_s);
        informe = verificar(base);
        QCOMPARE(hallazgos(informe), QString());
        QCOMPARE(informe.acciones, 2 + 2);
        QCOMPARE(informe.desde, QDate(2026, 3, 12));
        QCOMPARE(informe.comienzo, QDateTime(QDate(2026, 3, 10), QTime(9, 0, 31)));

        // Everything up to today, the removals too; and the log goes on.
        QCOMPARE(db::eliminarHistorial(base, base.reloj.today()), 4);
        db::registrarHistorial(base, u"Caja"_s, u"Sigue"_s);
        QCOMPARE(hallazgos(verificar(base)), QString());
        QCOMPARE(contar(u"Historial"_s), 3);
        ejecutar(base, u"DELETE FROM [Historial] WHERE accion = 'Sigue'"_s);
        QCOMPARE(hallazgos(verificar(base)), u"Eliminada 1"_s);

        // What goes is told to be whole only when it was.
        QCOMPARE(db::eliminarHistorial(base, base.reloj.today()), 1);
        QCOMPARE(
            base.valor(u"SELECT accion FROM [Historial] WHERE fecha IS NOT NULL"_s),
            u"Se eliminó 1 acción del historial, hasta el 20/03/2026 inclusive. Lo eliminado no estaba íntegro."_s);
        QCOMPARE(hallazgos(verificar(base)), QString());
    }

    /// Entries of a clock that stands ahead stay when those around them go.
    void eliminarSalteado_data() { soporte::filasDeDialecto(); }
    void eliminarSalteado()
    {
        soporte::BaseDePrueba base(soporte::dialectoActual());
        for (const int anio : {2026, 2030, 2026, 2026}) {
            base.reloj.set({QDate(anio, 3, 10), QTime(9, 0)});
            db::registrarHistorial(base, u"Caja"_s, QString::number(anio));
        }
        base.reloj.set({QDate(2026, 3, 12), QTime(9, 0)});
        QCOMPARE(db::eliminarHistorial(base, QDate(2026, 3, 11)), 3);
        db::InformeHistorial informe = verificar(base);
        QCOMPARE(hallazgos(informe), QString());
        QCOMPARE(informe.acciones, 2);
        ejecutar(base, u"DELETE FROM [Historial] WHERE accion = '2030'"_s);
        QCOMPARE(hallazgos(verificar(base)), u"Eliminada 1"_s);
    }

    /// The chain never forks: who comes second hangs his link on the first one's.
    void dosTerminales()
    {
        soporte::BaseDePrueba base;
        auto motor = std::make_unique<SinCerrojos>(base.archivo(), u"kestrel428"_s);
        SinCerrojos *suelto = motor.get();
        Terminal otra(base, std::move(motor));
        llenarAnteriores(base.conexion(), QDate(2025, 12, 1), 10, 70);
        for (int i = 0; i < 4; ++i) {
            suelto->antesDeEnganchar = [&] { db::registrarHistorial(base, u"Caja"_s, u"Primera"_s); };
            db::registrarHistorial(otra, u"Caja"_s, u"Segunda"_s);
        }
        const db::InformeHistorial informe = verificar(base);
        QCOMPARE(hallazgos(informe), QString());
        QCOMPARE(informe.acciones, 8);
        QCOMPARE(informe.anteriores, 700);
    }

    /// What is written while the log is being verified is no difference, on any day.
    void mientrasSeEscribe()
    {
        soporte::BaseDePrueba base;
        llenarAnteriores(base.conexion(), QDate(2025, 12, 1), 30, 70);
        llenar(base);
        db::VerificadorHistorial verificador(base, Alcance::Todo);
        for (int i = 0; verificador.seguir(); ++i) {
            base.reloj.set({QDate(2026, 3, i % 2 ? 10 : 25), QTime(10, 0)});
            db::registrarHistorial(base, u"Caja"_s, u"Mientras %1"_s.arg(i));
        }
        QCOMPARE(hallazgos(verificador.informe()), QString());
    }

    /// Of a long chain only the last days are looked at, unless something is wrong among them.
    void reciente()
    {
        soporte::BaseDePrueba base;
        {
            db::Transaction transaccion(base.conexion());
            for (int i = 0; i < 7000; ++i) {
                base.reloj.set({QDate(2026, 3, 1 + i / 1000), QTime(8, i % 60)});
                db::registrarHistorial(base, u"Caja"_s, QString::number(i));
            }
            transaccion.commit();
        }
        db::InformeHistorial informe = verificar(base, Alcance::Reciente);
        QVERIFY(informe.integro() && !informe.completo);
        QCOMPARE(informe.desde, QDate(2026, 3, 3));
        QCOMPARE(informe.acciones, 5000);
        ejecutar(base, u"UPDATE [Historial] SET iddoctor = 1 WHERE accion = '10'"_s);
        QCOMPARE(hallazgos(verificar(base, Alcance::Reciente)), QString());
        QCOMPARE(hallazgos(verificar(base)), u"Modificada 1"_s);
        ejecutar(base, u"DELETE FROM [Historial] WHERE accion = '6999'"_s);
        informe = verificar(base, Alcance::Reciente);
        QVERIFY(informe.completo);
        QCOMPARE(hallazgos(informe), u"Modificada 1 | Eliminada 1"_s);
    }

    /// A chain that was cut off is not passed over because the log goes on.
    void recuerdoDeLaComputadora()
    {
        soporte::BaseDePrueba base;
        llenar(base);
        const auto antes = db::cabezaRecordada(base);
        QVERIFY(antes && antes->orden == 8);
        base.conexion().execute(u"DELETE FROM [Historial Cadena] WHERE orden > 6"_s);
        ejecutar(base, u"DELETE FROM [Historial] WHERE accion in ('Otra','Última')"_s);
        for (int i = 0; i < 5; ++i)
            db::registrarHistorial(base, u"Caja"_s, u"Sigue"_s);
        QCOMPARE(db::cabezaRecordada(base), antes);
        QCOMPARE(hallazgos(verificar(base)), u"SinFinal 0"_s);

        // A file that cannot be read remembers nothing, and is none the worse for it.
        QFile archivo(base.carpetaPrograma() + u"/historial.dat"_s);
        QVERIFY(archivo.open(QIODevice::WriteOnly));
        archivo.write(base.carpetaDatos().toUtf8() + " 00ff 7");
        archivo.close();
        QCOMPARE(hallazgos(verificar(base)), QString());
        db::registrarHistorial(base, u"Caja"_s, u"Sigue"_s);
        QVERIFY(db::cabezaRecordada(base));
    }

    /// Neither a file that may not be written nor one that the upgrade could not complete stops anybody.
    void sinTablas()
    {
        soporte::BaseDePrueba base;
        base.conexion().execute(u"DROP TABLE [Historial Cadena]"_s);
        db::registrarHistorial(base, u"Caja"_s, u"Sin cadena"_s);
        QCOMPARE(base.valor(u"SELECT accion FROM [Historial]"_s), u"Sin cadena"_s);
        QVERIFY(!verificar(base).comenzado);

        Terminal lectora(
            base,
            std::make_unique<db::EmbeddedEngine>(
                base.archivo(), u"kestrel428"_s, db::EmbeddedEngine::Opening::ReadOnly));
        db::registrarHistorial(lectora, u"Caja"_s, u"No se escribe"_s);
        QVERIFY(!verificar(lectora).comenzado);
        QVERIFY_THROWS_EXCEPTION(db::Error, (void)db::eliminarHistorial(lectora, QDate(2026, 12, 31)));
    }

    /// A lot never ends within a minute, however many rows that has.
    void lotes()
    {
        soporte::BaseDePrueba base;
        const QDate dia(2026, 1, 5);
        {
            db::Transaction transaccion(base.conexion());
            for (int i = 0; i < 7000; ++i)
                base.conexion().execute(
                    u"INSERT INTO [Historial] (fecha,accion) VALUES (?,?)"_s,
                    {i < 5 ? QVariant() : QVariant(QDateTime(dia.addDays(i / 6000), QTime(8, i < 1900 ? i % 7 : 8))),
                     QString::number(i)});
            transaccion.commit();
        }
        const auto leer = [&](QDate desde, QDate hasta) {
            QSet<QString> vistas;
            QByteArray ultima;
            db::LectorHistorial lector(base.conexion(), desde, hasta);
            while (lector.leer())
                for (int f = 0; f < lector.cantidad(); ++f) {
                    const QByteArray fecha = lector.filas().utf8(f, 0).toByteArray();
                    if (fecha < ultima || vistas.contains(lector.filas().text(f, 4)))
                        return -1;
                    ultima = fecha;
                    vistas.insert(lector.filas().text(f, 4));
                }
            return int(vistas.size());
        };
        QCOMPARE(leer({}, {}), 7000);
        QCOMPARE(leer(dia, dia), 5995);
        QCOMPARE(leer(dia.addDays(1), {}), 1000);
        QCOMPARE(leer({}, dia.addDays(-1)), 5);
    }
};

PRUEBA(PruebaHistorial)
#include "PruebaHistorial.moc"
