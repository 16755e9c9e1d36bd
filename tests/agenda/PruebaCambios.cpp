#include "Consultorio.h"
#include "agenda/AtenderTurno.h"
#include "agenda/CambiosTurno.h"
#include "agenda/DiasNoLaborables.h"
#include "agenda/TurnoGuardado.h"
#include "support/Prueba.h"

using namespace agenda;

/// What is done with an appointment that exists.
class PruebaCambios : public QObject
{
    Q_OBJECT

    static constexpr auto preguntaCaja
        = "Existe un pago en Caja que corresponde a este turno. ¿Desea eliminar el pago registrado en Caja?";
    static constexpr auto preguntaEliminar = "¿Seguro que desea Eliminar el/los turno/s seleccionado/s?";

    static QString texto(const base::Control &control) { return control ? control->texto : QString(); }

private slots:
    void estados_data()
    {
        QTest::addColumn<bool>("llegado");
        QTest::addColumn<bool>("atendido");
        QTest::addColumn<QString>("operacion");
        QTest::addColumn<QString>("queda"); // arrived, attended
        QTest::addColumn<QString>("rechazo");
        const QString ausente
            = "Antes de marcar un turno como 'Ausente', primero debe indicar que no se ha 'Atendido'.";
        const QString noLlego = "Antes de marcar un turno como 'Atendido', primero debe indicar que 'llegó'.";
        QTest::newRow("llega") << false << false << "llegó"
                               << "-1 0"
                               << "";
        QTest::newRow("llega dos veces") << true << false << "llegó"
                                         << "-1 0"
                                         << "";
        QTest::newRow("ausente") << true << false << "ausente"
                                 << "0 0"
                                 << "";
        QTest::newRow("atendido no falta") << true << true << "ausente"
                                           << "-1 -1" << ausente;
        QTest::newRow("atendido") << true << false << "atendido"
                                  << "-1 -1"
                                  << "";
        QTest::newRow("atendido sin llegar") << false << false << "atendido"
                                             << "0 0" << noLlego;
        QTest::newRow("no atendido") << true << true << "no atendido"
                                     << "-1 0"
                                     << "";
    }

    void estados()
    {
        QFETCH(bool, llegado);
        QFETCH(bool, atendido);
        QFETCH(QString, operacion);
        for (const auto dialecto : {db::Dialect::Kind::Access, db::Dialect::Kind::SqlServer}) {
            Consultorio base(dialecto);
            const qint64 id = base.turno(7, Consultorio::a("09:20"), {{"llegado", llegado}, {"Atendido", atendido}});
            const base::Control control = operacion == "llegó" ? marcarLlegado(base, id, true)
                : operacion == "ausente"                       ? marcarLlegado(base, id, false)
                                                               : marcarAtendido(base, id, operacion == "atendido");
            QTEST(texto(control), "rechazo");
            const db::Recordset fila(base.conexion(), "SELECT * FROM [Agenda Turnos] WHERE id = ?", {id});
            QTEST(QString("%1 %2").arg(fila.flag(u"llegado") ? -1 : 0).arg(fila.flag(u"Atendido") ? -1 : 0), "queda");
        }
    }

    void soloDeHoyEnAdelante_data() { soporte::filasDeDialecto(); }
    void soloDeHoyEnAdelante()
    {
        Consultorio base(soporte::dialectoActual());
        const QDateTime hoy = Consultorio::a("09:20");
        base.reloj.set(hoy.addSecs(3600)); // an hour of today that is over is still today
        const qint64 deHoy = base.turno(7, hoy), deAyer = base.turno(7, hoy.addDays(-1));
        QVERIFY(!marcarLlegado(base, deAyer, true));
        base.conexion().execute("UPDATE [Lista Doctores] SET aplicaraturnos = -1");
        QVERIFY(!marcarLlegado(base, deHoy, true));
        QCOMPARE(texto(marcarLlegado(base, deAyer, false)), sinPermiso);
        QCOMPARE(texto(modificar(base, deHoy, {.fecha = hoy.addDays(-1).addSecs(1200)})), sinPermiso);
        base.guion.esperarPregunta(base::titulo::confirmacion, preguntaEliminar, true);
        const auto eliminados = liberar(base, {deHoy, deAyer});
        QVERIFY(!eliminados);
        QCOMPARE(eliminados.rechazo().texto, sinPermiso);
        QCOMPARE(base.cuenta(), 2);
        QVERIFY(base.guion.terminar());
    }

    void ausente_con_pago_en_caja_data() { soporte::filasDeDialecto(); }
    void ausente_con_pago_en_caja()
    {
        Consultorio base(soporte::dialectoActual());
        const qint64 caja = base.fila("Caja", {{"importe", 100}, {"detalle", "turno"}});
        const qint64 otra = base.fila("Caja", {{"importe", 50}, {"detalle", "otro"}});
        const qint64 id
            = base.turno(7, Consultorio::a("09:20"), {{"llegado", true}, {"pagado", true}, {"idcaja", caja}});
        const auto enCaja = [&] { return base.valor("SELECT COUNT(*) FROM [Caja]"); };

        QVERIFY(!marcarLlegado(base, id, false)); // payments are not kept in the register: nothing to ask
        QCOMPARE(enCaja(), QString("2"));

        base.configurar("pagocaja", true);
        QVERIFY(!marcarLlegado(base, id, false)); // absent already
        QVERIFY(!marcarLlegado(base, id, true));
        base.guion.esperarPregunta("Confirmación...", preguntaCaja, false);
        QVERIFY(!marcarLlegado(base, id, false));
        QCOMPARE(enCaja(), QString("2"));

        QVERIFY(!marcarLlegado(base, id, true));
        base.guion.esperarPregunta("Confirmación...", preguntaCaja, true);
        QVERIFY(!marcarLlegado(base, id, false));
        QCOMPARE(base.valor("SELECT id FROM [Caja]"), QString::number(otra));
        QCOMPARE(base.valor("SELECT idcaja FROM [Agenda Turnos]"), QString("0"));
        QVERIFY(base.guion.terminar());
    }

    void turno_eliminado_por_otra_terminal_data() { soporte::filasDeDialecto(); }
    void turno_eliminado_por_otra_terminal()
    {
        Consultorio base(soporte::dialectoActual());
        const qint64 queda = base.turno(7, Consultorio::a("09:00"));
        const qint64 id = base.turno(7, Consultorio::a("09:20"), {{"llegado", true}});
        base.otraTerminal()->execute("DELETE FROM [Agenda Turnos] WHERE id = ?", {id});

        for (const base::Control &control :
             {marcarLlegado(base, id, true),
              marcarLlegado(base, id, false),
              marcarAtendido(base, id, true),
              marcarAtendido(base, id, false),
              modificar(base, id, {.observacionestur = "x"}),
              modificar(base, id, {.fecha = Consultorio::a("10:00")})}) {
            QCOMPARE(texto(control), yaNoExiste);
            QCOMPARE(control->titulo, QString("Atención..."));
        }
        QVERIFY(!leerTurnoGuardado(base.conexion(), id));
        base.guion.esperarPregunta("Confirmación...", preguntaEliminar, true);
        const auto liberados = liberar(base, {queda, id});
        QVERIFY(!liberados);
        QCOMPARE(liberados.rechazo().texto, yaNoExiste);
        QCOMPARE(base.cuenta(), 1);
        QCOMPARE(base.valor("SELECT COUNT(*) FROM [Historial]"), QString("0"));
    }

    void sin_derecho_no_cambia_nada()
    {
        Consultorio base;
        const qint64 id = base.turno(7, Consultorio::a("09:20"), {{"llegado", true}});
        base.quitarDerecho("accesomodificarturno");
        base.quitarDerecho("accesoeliminarturnos");
        base.quitarDerecho("accesoasignarturno");
        base.configurar("pagocaja", true);
        for (const base::Control &control :
             {marcarLlegado(base, id, false),
              marcarAtendido(base, id, true),
              modificar(base, id, {.observacionestur = "x"}),
              modificar(base, id, {.fecha = Consultorio::a("10:00")}),
              bloquear(base, base.usuario, {Consultorio::a("11:00")})})
            QCOMPARE(texto(control), sinPermiso);
        QCOMPARE(liberar(base, {id}).rechazo().texto, sinPermiso);
        QCOMPARE(base.cuenta("llegado <> 0"), 1);
    }

    void atiende_al_paciente_del_turno_data() { soporte::filasDeDialecto(); }
    void atiende_al_paciente_del_turno()
    {
        Consultorio base(soporte::dialectoActual());
        base.paciente(7, "Paz", "Eva");
        const qint64 id = base.turno(7, Consultorio::a("09:00"));
        const qint64 sinPaciente = base.turno(8, Consultorio::a("09:20"));
        const qint64 bloqueado = base.turno(-111, Consultorio::a("09:40"));
        QCOMPARE(*atender(base, id, false), 7);
        QCOMPARE(
            atender(base, id, true).rechazo().texto,
            QString("Un Paciente está siendo atendido, para seguir debe cerrar la ficha del Paciente"));
        QCOMPARE(
            atender(base, sinPaciente, false).rechazo().texto,
            QString("Este paciente no Existe, probablemente a sido eliminado."));
        QVERIFY(!atender(base, bloqueado, false));
        QCOMPARE(atender(base, bloqueado + 9, false).rechazo().texto, yaNoExiste);
        base.usuario = 0;
        QCOMPARE(
            atender(base, id, false).rechazo().texto,
            QString("Defina un Usuario Activo válido desde la ventana Configuración."));
    }

    void libera_y_lo_anota_data() { soporte::filasDeDialecto(); }
    void libera_y_lo_anota()
    {
        Consultorio base(soporte::dialectoActual());
        const qint64 uno = base.turno(7, Consultorio::a("09:20"));
        const qint64 dos = base.turno(-111, Consultorio::a("09:40"));
        base.turno(7, Consultorio::a("10:00"));
        base.guion.esperarPregunta("Confirmación...", preguntaEliminar, false);
        QCOMPARE(*liberar(base, {uno, dos}), 0);
        QCOMPARE(base.cuenta(), 3);
        base.guion.esperarPregunta("Confirmación...", preguntaEliminar, true);
        QCOMPARE(*liberar(base, {uno, dos}), 2);
        QCOMPARE(base.cuenta(), 1);
        QCOMPARE(base.valor("SELECT ventana FROM [Historial]"), QString("Agenda de Turnos"));
        QCOMPARE(
            base.valor("SELECT accion FROM [Historial]"),
            QString("Eliminación de turnos. (Fecha/Hora Turno/s: 23/11/2026 09:20, 23/11/2026 09:40)"));
    }

    void bloquea_solo_lo_libre_data() { soporte::filasDeDialecto(); }
    void bloquea_solo_lo_libre()
    {
        Consultorio base(soporte::dialectoActual());
        QVERIFY(!bloquear(base, base.usuario, {Consultorio::a("09:00"), Consultorio::a("09:20")}));
        QCOMPARE(base.cuenta("NroHC = -111"), 2);
        base.turno(7, Consultorio::a("10:00"));
        QVERIFY(bloquear(base, base.usuario, {Consultorio::a("09:40"), Consultorio::a("10:00")}));
        QCOMPARE(base.cuenta("NroHC = -111"), 2);

        const qint64 id = base.valor("SELECT id FROM [Agenda Turnos] WHERE NroHC = -111").toLongLong();
        QVERIFY(marcarLlegado(base, id, true));
        QCOMPARE(base.cuenta("llegado <> 0"), 0);
    }

    void mueve_dentro_de_los_limites_data() { soporte::filasDeDialecto(); }
    void mueve_dentro_de_los_limites()
    {
        Consultorio base(soporte::dialectoActual());
        base.plantilla(Consultorio::maniana(), {0, 0, false, false});
        const qint64 id = base.turno(7, Consultorio::a("09:20"));
        base.turno(8, Consultorio::a("09:40"));
        const auto control = modificar(base, id, {.fecha = Consultorio::a("09:40")});
        QVERIFY(control);
        QCOMPARE(
            control->texto,
            QString("No puede registrar más sobreturnos. Los siguientes turnos no se asignaron:\n23/11/2026 09:40"));
        QVERIFY(!modificar(base, id, {.fecha = Consultorio::a("09:20")})); // onto itself
        const QDateTime otroDia = Consultorio::a(Consultorio::lunes().addDays(8), "10:00");
        QVERIFY(!agregarDiasNoLaborables(base.conexion(), base.usuario, {{0, 2, 12, 0}}));
        QCOMPARE(
            texto(modificar(base, id, {.fecha = otroDia.addDays(1)})),
            QString("La fecha seleccionada NO corresponde a un día laborable."));
        QVERIFY(!modificar(base, id, {.fecha = otroDia}));
        QVERIFY(!modificar(base, id, {.motivo = 5, .observacionestur = " O'Higgins \n"}));
        const auto guardado = leerTurnoGuardado(base.conexion(), id);
        QCOMPARE(guardado->fecha, otroDia);
        QCOMPARE(guardado->motivo, 5);
        QCOMPARE(guardado->observacionestur, QString("O'Higgins"));
        QCOMPARE(guardado->titulo(), QString("01/12/2026 10:00   PACIENTE ELIMINADO DEL SISTEMA"));
    }
};

PRUEBA(PruebaCambios)
#include "PruebaCambios.moc"
