#include "Consultorio.h"
#include "agenda/CambiosTurno.h"
#include "agenda/CuadroDia.h"
#include "agenda/DiasNoLaborables.h"
#include "agenda/SalaEspera.h"
#include "agenda/TurnosPaciente.h"
#include "support/Prueba.h"

using namespace agenda;

namespace {

/// Counts the statements that pass through it.
class Contadora : public db::Engine
{
public:
    explicit Contadora(db::Engine &engine)
        : m_engine(engine)
    {
    }
    static inline int sentencias = 0;

    [[nodiscard]] db::Dialect::Kind dialect() const override { return m_engine.dialect(); }
    [[nodiscard]] db::Rows query(const QString &sql, const db::Params &params) override
    {
        ++sentencias;
        return m_engine.query(sql, params);
    }
    int execute(const QString &sql, const db::Params &params) override { return m_engine.execute(sql, params); }
    [[nodiscard]] qint64 insertedId() override { return m_engine.insertedId(); }
    void begin() override { m_engine.begin(); }
    void commit() override { m_engine.commit(); }
    void rollback() override { m_engine.rollback(); }
    [[nodiscard]] QString singleTable(const QString &sql) override { return m_engine.singleTable(sql); }
    [[nodiscard]] QStringList tableNames() override { return m_engine.tableNames(); }
    [[nodiscard]] QVector<db::Column> columns(const QString &table) override { return m_engine.columns(table); }
    void createTable(const db::Table &table) override { m_engine.createTable(table); }
    void addColumn(const QString &table, const db::Column &column) override { m_engine.addColumn(table, column); }

private:
    db::Engine &m_engine;
};

QStringList textos(const DiaAgenda &dia)
{
    QStringList lineas;
    for (const FilaDia &f : dia.filas)
        lineas << QStringLiteral("%1 %2 %3 %4 %5 %6")
                      .arg(f.clave())
                      .arg(int(f.clase))
                      .arg(f.nrohc)
                      .arg(f.deGrilla)
                      .arg(f.turnosDeLaHora)
                      .arg(f.textos().join(u'|'));
    return lineas;
}

} // namespace

/// All agendas side by side, the waiting room and a patient's appointments.
class PruebaTodas : public QObject
{
    Q_OBJECT

private slots:
    void muestra_lo_mismo_que_cada_agenda_data() { soporte::filasDeDialecto(); }
    void muestra_lo_mismo_que_cada_agenda()
    {
        Consultorio base(soporte::dialectoActual());
        const QDate lunes = Consultorio::lunes();
        base.paciente(7, "O'Higgins", "Ana", {{"Tel", "4711"}});
        base.paciente(8, "Núñez", "Luis");
        base.fila("Pacientes Ordenes", {{"NroPaci", 7}, {"costo", 2000}, {"fecha", QDate(2026, 5, 1)}});
        const int primero = base.usuario;
        std::vector<int> doctores{primero};
        for (const char *nombre : {"Bruni", "Castro", "Díaz", "Elía"})
            doctores.push_back(int(base.fila("Lista Doctores", {{"NomDoc", nombre}, {"tipo", 0}, {"Prioridad", -1}})));
        const auto deDoctor = [&](size_t cual) { base.usuario = doctores[cual]; };
        base.plantilla(Consultorio::maniana(), {-1, -1, true, false});
        base.turno(7, Consultorio::a("09:20"), {{"llegado", true}});
        base.turno(8, Consultorio::a("09:20"));
        base.turno(99, Consultorio::a("09:05"));
        deDoctor(1); // two templates: the newer one counts; a blocked slot
        base.plantilla(Consultorio::maniana());
        base.plantilla({QTime(9, 30), QTime(10, 30), QTime(10, 0), QTime(11, 0), 15});
        base.turno(-111, Consultorio::a("09:45"));
        base.turno(8, Consultorio::a(lunes.addDays(1), "09:45"));
        deDoctor(2); // without template
        base.turno(8, Consultorio::a("23:50"));
        deDoctor(3); // a day off
        base.plantilla(Consultorio::maniana());
        QVERIFY(!agregarDiasNoLaborables(base.conexion(), doctores[3], {DiaNoLaborable::de(lunes, true)}));
        QVERIFY(!agregarDiasNoLaborables(base.conexion(), doctores[1], {DiaNoLaborable::de(lunes.addDays(1))}));
        base.turno(7, Consultorio::a("10:00"), {{"Doctor", 5555}}); // of nobody in the list
        base.usuario = primero;

        for (const bool anual : {false, true}) {
            base.configurar("versaldoanioactual", anual);
            const TodasAgendas todas = cargarTodas(base.conexion(), lunes, base.reloj.today());
            QCOMPARE(todas.agendas.size(), doctores.size() + 1);
            for (size_t i = 0; i < doctores.size(); ++i) {
                const DiaAgenda sola = cargarDia(base.conexion(), doctores[i], lunes, base.reloj.today());
                const DiaAgenda &junta = todas.agendas[i].dia;
                QCOMPARE(junta.doctor, doctores[i]);
                QCOMPARE(textos(junta), textos(sola));
                QCOMPARE(junta.resumen(), sola.resumen());
                QCOMPARE(junta.noLaborable, sola.noLaborable);
                QVERIFY(junta.ajustes == sola.ajustes && junta.fecha == sola.fecha);
            }
            QCOMPARE(todas.agendas.back().nombre, QString("<Médico sin Identificar>"));
            QCOMPARE(todas.agendas.back().dia.turnos, 1);
            QStringList resumenes;
            for (const AgendaDelDia &agenda : todas.agendas)
                resumenes << agenda.resumen();
            QCOMPARE(
                resumenes,
                QStringList(
                    {"3 turnos · 5 libres",
                     "0 turnos · 5 libres",
                     "Sin horario · 1 turno",
                     "No se atiende",
                     "Sin horario",
                     "Sin horario · 1 turno"}));
            QVERIFY(!todas.agendas[4].tieneAlgo() && todas.agendas[3].tieneAlgo());
        }

        // However many professionals there are, the same few statements.
        const auto cuenta = [&] {
            db::Connection contada(std::make_unique<Contadora>(base.conexion().engine()));
            Contadora::sentencias = 0;
            (void)cargarTodas(contada, lunes, base.reloj.today());
            (void)cargarSala(contada, lunes);
            return Contadora::sentencias;
        };
        const int antes = cuenta();
        for (int i = 0; i < 10; ++i) {
            base.usuario = int(base.fila("Lista Doctores", {{"NomDoc", QString::number(i)}, {"tipo", 0}}));
            base.plantilla(Consultorio::maniana());
            base.turno(7, Consultorio::a("09:20"), {{"llegado", true}});
        }
        QCOMPARE(cuenta(), antes);
        QVERIFY2(antes <= 6, qPrintable(QString::number(antes)));
    }

    void cada_fila_ocupa_lo_que_dura()
    {
        Consultorio base;
        base.paciente(7, "Paz", "Eva");
        const int primero = base.usuario;
        base.plantilla({QTime(9, 0), QTime(10, 0), {}, {}, 30});
        base.turno(7, Consultorio::a("09:30"));
        base.turno(7, Consultorio::a("09:30"));
        base.usuario = int(base.fila("Lista Doctores", {{"NomDoc", "Bruni"}, {"tipo", 0}, {"Prioridad", -1}}));
        base.plantilla({QTime(9, 0), QTime(9, 40), QTime(16, 0), QTime(16, 20), 20});
        base.turno(7, Consultorio::a("23:50"));
        base.usuario = primero;

        const TodasAgendas todas = cargarTodas(base.conexion(), Consultorio::lunes(), base.reloj.today());
        const CuadroDia cuadro = armarCuadro({&todas.agendas[0], &todas.agendas[1]});
        QStringList horas;
        for (const QTime &hora : cuadro.horas)
            horas << horaTexto(hora);
        QCOMPARE(horas.join(u' '), QString("09:00 09:20 09:30 09:30 16:00 23:50"));
        const auto cubre = [&](int columna) {
            QString filas;
            for (int r = 0; r < int(cuadro.horas.size()); ++r) {
                const CuadroDia::Celda *celda = cuadro.celda(columna, r);
                filas += celda ? QChar(u'0' + celda->fila) : QChar(u'.');
            }
            return filas;
        };
        QCOMPARE(cubre(0), QString("0012..")); // 09:00 lasts two lines; two share 09:30; none lasts into the afternoon
        QCOMPARE(cubre(1), QString("011123"));
    }

    void la_sala_cuenta_desde_la_llegada_data() { soporte::filasDeDialecto(); }
    void la_sala_cuenta_desde_la_llegada()
    {
        Consultorio base(soporte::dialectoActual());
        base.paciente(7, "Paz", "Eva");
        base.paciente(8, "Núñez", "Luis");
        const qint64 tarde = base.turno(7, Consultorio::a("09:20"));
        const qint64 temprano = base.turno(8, Consultorio::a("10:20"));
        const qint64 viejo = base.turno(99, Consultorio::a("09:00"), {{"llegado", true}}); // marked without an hour
        base.turno(-111, Consultorio::a("09:40"), {{"llegado", true}});
        base.turno(7, Consultorio::a("09:40"), {{"llegado", true}, {"Atendido", true}});
        base.turno(7, Consultorio::a("10:00"));
        // Arrived yesterday, then moved to today.
        const qint64 movido = base.turno(
            8, Consultorio::a("11:00"), {{"llegado", true}, {"fechahorallegada", Consultorio::a("09:00").addDays(-1)}});

        base.reloj.set(Consultorio::a("08:50"));
        QVERIFY(!marcarLlegado(base, temprano, true));
        base.reloj.set(Consultorio::a("09:10"));
        QVERIFY(!marcarLlegado(base, tarde, true));
        base.reloj.set(Consultorio::a("09:30"));
        QVERIFY(!marcarLlegado(base, temprano, true)); // once more, by another station: the first hour stays

        const auto sala = [&] {
            QStringList lineas;
            for (const EnEspera &uno : cargarSala(base.conexion(), Consultorio::lunes()))
                lineas << QStringLiteral("%1 %2 %3 %4")
                              .arg(uno.id)
                              .arg(horaTexto(uno.hora), uno.paciente, uno.espera(base.reloj.now()));
            return lineas;
        };
        const auto linea = [](qint64 id, const char *resto) { return QString::number(id) + u' ' + resto; };
        QCOMPARE(
            sala(),
            QStringList(
                {linea(temprano, "10:20 Núñez, Luis 40 min"),
                 linea(tarde, "09:20 Paz, Eva 20 min"),
                 linea(viejo, "09:00 PACIENTE ELIMINADO DEL SISTEMA —"),
                 linea(movido, "11:00 Núñez, Luis —")}));

        base.reloj.set(Consultorio::a("09:00")); // behind the station that marked it
        QVERIFY(sala().at(1).endsWith("0 min"));
        base.reloj.set(Consultorio::a("10:55"));
        QVERIFY(sala().at(0).endsWith("2 h 05 min"));

        QVERIFY(!marcarLlegado(base, temprano, false));
        QCOMPARE(sala().size(), 3);
        QVERIFY(!marcarLlegado(base, temprano, true));
        QVERIFY(sala().at(1).endsWith("0 min")); // absent in between: counts from now on
        QVERIFY(!marcarAtendido(base, temprano, true));
        QCOMPARE(sala().size(), 3);
    }

    void turnos_de_un_paciente_data() { soporte::filasDeDialecto(); }
    void turnos_de_un_paciente()
    {
        Consultorio base(soporte::dialectoActual());
        const QDate hoy = Consultorio::lunes();
        const qint64 motivo = base.fila("Lista Motivos Consulta", {{"Motivo", "Control"}});
        base.turno(7, Consultorio::a(hoy.addDays(30), "10:00"));
        base.turno(7, Consultorio::a(hoy.addDays(-400), "10:00"), {{"llegado", true}, {"Atendido", true}});
        base.turno(
            7, Consultorio::a(hoy, "08:00"), {{"motivo", motivo}, {"llegado", true}, {"observacionestur", "ayuno"}});
        base.turno(7, Consultorio::a(hoy.addDays(-1), "10:00"), {{"Doctor", 999}});
        base.turno(8, Consultorio::a(hoy, "09:00"));

        QStringList lineas;
        for (const TurnoPaciente &turno : turnosDePaciente(base.conexion(), 7, hoy))
            lineas << turno.textos().join(u'|');
        QCOMPARE(
            lineas,
            QStringList(
                {"23/11/2026|lunes|08:00|Juan Pérez|Control|SI|NO|ayuno",
                 "23/12/2026|miércoles|10:00|Juan Pérez||NO|NO|",
                 "22/11/2026|domingo|10:00|<Médico sin Identificar>||NO|NO|",
                 "19/10/2025|domingo|10:00|Juan Pérez||SI|SI|"}));
        QVERIFY(turnosDePaciente(base.conexion(), 9, hoy).empty());
    }
};

PRUEBA(PruebaTodas)
#include "PruebaTodas.moc"
