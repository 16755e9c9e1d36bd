#include "Consultorio.h"
#include "agenda/Reserva.h"
#include "agenda/Sobreturnos.h"
#include "support/Prueba.h"

#include <atomic>
#include <barrier>
#include <thread>

using namespace agenda;

namespace {

/// Another station of the same practice, with its own connection.
class Terminal : public db::Entorno
{
public:
    explicit Terminal(Consultorio &base)
        : m_base(base)
        , m_conexion(base.otraTerminal())
    {
    }
    db::Connection &conexion() override { return *m_conexion; }
    base::Mensajes &mensajes() override { return m_guion; }
    const base::Clock &clock() const override { return m_base.reloj; }
    int usuarioActual() const override { return m_base.usuario; }
    void setUsuarioActual(int) override { }
    QString equipo() const override { return m_base.equipo(); }
    QString carpetaPrograma() const override { return m_base.carpetaPrograma(); }
    QString carpetaDatos() const override { return m_base.carpetaDatos(); }
    bool esClienteDeRed() const override { return true; }
    int segundosAgenda() const override { return 30; }
    int segundosMensajes() const override { return 30; }
    bool modoTurno() const override { return false; }
    void setAjustesEquipo(const db::AjustesEquipo &) override { }

private:
    Consultorio &m_base;
    std::unique_ptr<db::Connection> m_conexion;
    soporte::MensajesGuionados m_guion;
};

} // namespace

/// Booking and its overbooking limits.
class PruebaReserva : public QObject
{
    Q_OBJECT

    static Reserva reserva(const Consultorio &base, const QVector<QDateTime> &turnos)
    {
        return {7, base.usuario, turnos, 0, QString()};
    }

private slots:
    void limites_data()
    {
        // Appointments: "hh:nn" of a patient, "-hh:nn" blocked; grid 09:00 to 10:40, every 20 minutes.
        QTest::addColumn<int>("porDia");
        QTest::addColumn<int>("porHora");
        QTest::addColumn<QString>("turnos");
        QTest::addColumn<QString>("hora");
        QTest::addColumn<int>("mueve"); // which of the appointments is moved, from 1; 0: a new one
        QTest::addColumn<int>("permiso");
        const auto si = int(Permiso::Permitido), hora = int(Permiso::LimiteHora), dia = int(Permiso::LimiteDia);

        QTest::newRow("sin límites") << -1 << -1 << "09:20 09:20 09:25"
                                     << "09:20" << 0 << si;
        QTest::newRow("sin límites, fuera") << -1 << -1 << "09:25 09:26"
                                            << "09:27" << 0 << si;
        QTest::newRow("primero del horario") << 0 << 0 << "09:00"
                                             << "09:20" << 0 << si;
        QTest::newRow("ningún extra") << -1 << 0 << "09:20"
                                      << "09:20" << 0 << hora;
        QTest::newRow("un extra") << -1 << 1 << "09:20"
                                  << "09:20" << 0 << si;
        QTest::newRow("un extra, ya está") << -1 << 1 << "09:20 09:20"
                                           << "09:20" << 0 << hora;
        QTest::newRow("bloqueado no cuenta") << -1 << 0 << "-09:20"
                                             << "09:20" << 0 << si;
        QTest::newRow("bloqueado no cuenta en el día") << 1 << -1 << "-09:25"
                                                       << "09:26" << 0 << si;
        QTest::newRow("fuera, sólo límite por hora") << -1 << 0 << "09:25"
                                                     << "09:25" << 0 << si;
        QTest::newRow("fuera, ninguno") << 0 << -1 << ""
                                        << "09:25" << 0 << dia;
        QTest::newRow("fuera, uno") << 1 << -1 << ""
                                    << "09:25" << 0 << si;
        QTest::newRow("fuera, uno ya está") << 1 << -1 << "09:25"
                                            << "09:30" << 0 << dia;
        QTest::newRow("fuera, dos en una hora son una") << 2 << -1 << "09:25 09:25"
                                                        << "09:30" << 0 << si;
        QTest::newRow("extra del horario pasa al día") << 0 << -1 << "09:20"
                                                       << "09:20" << 0 << dia;
        QTest::newRow("extra permitido por hora, no por día") << 0 << 3 << "09:20"
                                                              << "09:20" << 0 << dia;
        QTest::newRow("extra permitido por ambos") << 1 << 3 << "09:20"
                                                   << "09:20" << 0 << si;
        QTest::newRow("mueve a su propia hora") << 0 << 0 << "09:20"
                                                << "09:20" << 1 << si;
        QTest::newRow("mueve dentro de la hora compartida") << -1 << 1 << "09:20 09:20"
                                                            << "09:20" << 2 << si;
        QTest::newRow("mueve a hora ocupada") << -1 << 0 << "09:20 09:40"
                                              << "09:40" << 1 << hora;
        QTest::newRow("mueve el extra del día") << 1 << -1 << "09:25"
                                                << "09:30" << 1 << si;
        QTest::newRow("mueve un regular afuera") << 1 << -1 << "09:20 09:25"
                                                 << "09:30" << 1 << dia;
    }

    void limites()
    {
        QFETCH(int, porDia);
        QFETCH(int, porHora);
        QFETCH(QString, turnos);
        QFETCH(QString, hora);
        QFETCH(int, mueve);
        for (const auto dialecto : {db::Dialect::Kind::Access, db::Dialect::Kind::SqlServer}) {
            Consultorio base(dialecto);
            base.plantilla(Consultorio::maniana(), {porDia, porHora, false, false});
            QVector<qint64> ids;
            for (const QString &t : turnos.split(' ', Qt::SkipEmptyParts)) {
                const bool bloqueado = t.startsWith('-');
                ids << base.turno(
                    bloqueado ? -111 : 7, Consultorio::a(t.mid(bloqueado ? 1 : 0).toLatin1().constData()));
            }
            // Others' days and the same hours of other days change nothing.
            base.turno(7, Consultorio::a("09:31"), {{"Doctor", base.usuario + 1}});
            base.turno(7, Consultorio::a(Consultorio::lunes().addDays(1), "09:31"));
            QTEST(
                int(controlarSobreturno(
                    base.conexion(),
                    base.usuario,
                    Consultorio::a(hora.toLatin1().constData()),
                    mueve ? ids.at(mueve - 1) : 0)),
                "permiso");
        }
    }

    void escribe_el_turno_data() { soporte::filasDeDialecto(); }
    void escribe_el_turno()
    {
        Consultorio base(soporte::dialectoActual());
        base.paciente(7, "Paz", "Eva");
        base.reloj.set(QDateTime(QDate(2026, 11, 22), QTime(18, 45)));
        Reserva r = reserva(base, {Consultorio::a("09:20")});
        r.motivo = 4;
        r.observacionestur = "  ayuno, 100% seguro 'sic'\nllama antes ";
        const auto hecha = reservar(base, r);
        QVERIFY(hecha);
        QCOMPARE(hecha->ids.size(), 1);
        QVERIFY(!hecha->informe());

        const db::Recordset fila(base.conexion(), "SELECT * FROM [Agenda Turnos] WHERE id = ?", {hecha->ids.first()});
        QCOMPARE(fila.integer(u"NroHC"), 7);
        QCOMPARE(fila.dateTime(u"Fecha"), Consultorio::a("09:20"));
        QCOMPARE(fila.integer(u"Doctor"), base.usuario);
        QCOMPARE(fila.integer(u"motivo"), 4);
        QVERIFY(!fila.flag(u"llegado") && !fila.flag(u"Atendido") && !fila.flag(u"pagado"));
        QCOMPARE(fila.integer(u"idcaja"), 0);
        QCOMPARE(fila.text(u"observacionestur"), QString("ayuno, 100% seguro 'sic'\nllama antes"));
        QCOMPARE(fila.dateTime(u"fechahoraasignado"), base.reloj.now());
        QCOMPARE(fila.text(u"usuarioasigtur"), QString("Juan Pérez"));
    }

    void rechaza_en_su_orden_data() { soporte::filasDeDialecto(); }
    void rechaza_en_su_orden()
    {
        Consultorio base(soporte::dialectoActual());
        base.paciente(7, "Paz", "Eva");
        base.configurar("forzarmotivo", true);
        Reserva r{0, base.usuario, {}, 0, {}};
        const auto rechazo = [&](const char *titulo, const QString &texto) {
            const auto hecha = reservar(base, r);
            QVERIFY(!hecha);
            QCOMPARE(hecha.rechazo().titulo, QString(titulo));
            QCOMPARE(hecha.rechazo().texto, texto);
            QCOMPARE(hecha.rechazo().icono, base::Icono::Critico);
        };
        rechazo("Aviso...", "Debe seleccionar el paciente al que le asignará un turno.");
        r.nrohc = 8;
        rechazo("Aviso...", "Debe indicar el día y la hora del turno que le asignará al paciente.");
        r.turnos = {Consultorio::a("09:20")};
        rechazo("Aviso...", "Debe indicar el motivo de la consulta.");
        r.motivo = 3;
        rechazo("Atención...", "Este paciente no Existe, probablemente a sido eliminado.");
        r.nrohc = 7;
        base.quitarDerecho("accesoasignarturno");
        rechazo("Atención...", sinPermiso);
        base.usuario = 9999;
        rechazo("Atención...", "Defina un Usuario Activo válido desde la ventana Configuración.");
        QCOMPARE(base.cuenta(), 0);
    }

    void informa_los_que_no_entran_data() { soporte::filasDeDialecto(); }
    void informa_los_que_no_entran()
    {
        Consultorio base(soporte::dialectoActual());
        base.paciente(7, "Paz", "Eva");
        base.plantilla(Consultorio::maniana(), {-1, 0, false, false});
        base.turno(7, Consultorio::a("09:40"));
        const auto hecha = reservar(
            base, reserva(base, {Consultorio::a("09:20"), Consultorio::a("09:40"), Consultorio::a("10:00")}));
        QVERIFY(hecha);
        QCOMPARE(hecha->ids.size(), 2);
        QCOMPARE(base.cuenta(), 3);
        const auto informe = hecha->informe();
        QVERIFY(informe);
        QCOMPARE(informe->titulo, QString("Atención..."));
        QCOMPARE(
            informe->texto,
            QString("Los siguientes sobreturnos no se asignaron ya que se alcanzó el límite permitido:\n"
                    "23/11/2026 09:40"));

        // Two lines of the same hour: the first makes the second an extra one.
        const auto repetida = reservar(base, reserva(base, {Consultorio::a("10:20"), Consultorio::a("10:20")}));
        QCOMPARE(repetida->ids.size(), 1);

        const auto ninguna = reservar(base, reserva(base, {Consultorio::a("10:20")}));
        QVERIFY(ninguna->ids.isEmpty());
        QCOMPARE(
            ninguna->informe()->texto,
            QString("No puede registrar más sobreturnos. Los siguientes turnos no se asignaron:\n23/11/2026 10:20"));
    }

    void dos_terminales_a_la_vez()
    {
        Consultorio base;
        base.paciente(7, "Paz", "Eva");
        base.plantilla(Consultorio::maniana(), {-1, 0, false, false});
        QVector<QDateTime> horas;
        const GrillaDia grilla(Consultorio::maniana());
        for (const QTime &hora : grilla.horas())
            horas.append({Consultorio::lunes(), hora});

        // Both give every hour of the day at once: each hour is given by one of them only.
        std::atomic<int> dados = 0, rechazados = 0;
        std::barrier juntas(2);
        const auto trabajar = [&](Terminal *terminal) {
            for (const QDateTime &hora : horas) {
                juntas.arrive_and_wait();
                const auto hecha = reservar(*terminal, reserva(base, {hora}));
                dados += int(hecha->ids.size());
                rechazados += int(hecha->noAsignados.size());
            }
        };
        Terminal una(base), otra(base);
        std::thread hilo(trabajar, &otra);
        trabajar(&una);
        hilo.join();
        QCOMPARE(dados.load(), int(horas.size()));
        QCOMPARE(rechazados.load(), int(horas.size()));
        QCOMPARE(base.cuenta(), int(horas.size()));
    }

    void lee_fechas_escritas()
    {
        QCOMPARE(*leerTurno(" 5/3/27 8:05 "), QDateTime(QDate(2027, 3, 5), QTime(8, 5)));
        for (const char *mala : {"", "5/3/2027", "31/2/2027 10:00", "5/3/2027 25:00"}) {
            const auto momento = leerTurno(mala);
            QVERIFY2(!momento, mala);
            QCOMPARE(momento.rechazo().titulo, QString("ERROR..."));
            QCOMPARE(momento.rechazo().texto, QString("ERROR en la Fecha del Turno."));
        }
    }
};

PRUEBA(PruebaReserva)
#include "PruebaReserva.moc"
