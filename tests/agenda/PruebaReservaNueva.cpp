#include "Consultorio.h"
#include "agenda/CambiosTurno.h"
#include "agenda/DiasNoLaborables.h"
#include "agenda/MismoDia.h"
#include "agenda/ReservaNueva.h"
#include "support/Prueba.h"

using namespace agenda;

/// A patient created together with the appointment, what a patient has on the same day, and changing an appointment.
class PruebaReservaNueva : public QObject
{
    Q_OBJECT

    static patients::DatosReducidos datos() { return {.apellido = "O'Higgins", .nombres = "Ana D'Amico"}; }
    static Reserva reserva(const Consultorio &base, const QVector<QDateTime> &turnos)
    {
        return {0, base.usuario, turnos, 0, QString()};
    }
    /// Everything that creating neither leaves as it was.
    static QStringList huella(Consultorio &base)
    {
        return {
            base.valor("SELECT COUNT(id) AS n FROM [Pacientes]"),
            base.valor("SELECT COUNT(id) AS n FROM [Antecedentes Perinatologicos]"),
            base.valor("SELECT COUNT(id) AS n FROM [Agenda Turnos]"),
            base.valor("SELECT UltimoPaci FROM [Config]"),
            base.valor("SELECT numerohc FROM [Config]")};
    }

private slots:
    void crea_los_dos_data() { soporte::filasDeDialecto(); }
    void crea_los_dos()
    {
        Consultorio base(soporte::dialectoActual());
        base.configurar("UltimoPaci", 41);
        base.configurar("prefijohc", "HC-");
        base.configurar("numerohc", "25");
        Reserva r = reserva(base, {Consultorio::a("09:20"), Consultorio::a("10:00")});
        r.nrohc = 7; // another patient's, which does not count
        r.observacionestur = "'ayuno'";
        const auto nueva = reservarPacienteNuevo(base, datos(), r);
        QVERIFY(nueva && nueva->paciente && !nueva->informe());
        QCOMPARE(*nueva->paciente, (patients::PacienteCreado{42, "HC-000025", "O'HIGGINS, ANA D'AMICO"}));
        QCOMPARE(nueva->ids.size(), 2);
        QCOMPARE(base.cuenta("NroHC = 42"), 2);
        QCOMPARE(base.valor("SELECT observacionestur FROM [Agenda Turnos] WHERE NroHC = 42"), QString("'ayuno'"));
        QCOMPARE(huella(base).mid(3), (QStringList{"42", "26"}));
    }

    void ninguno_de_los_dos_data() { soporte::filasDeDialecto(); }
    void ninguno_de_los_dos()
    {
        Consultorio base(soporte::dialectoActual());
        base.configurar("UltimoPaci", 41);
        base.configurar("numerohc", "25");
        base.plantilla(Consultorio::maniana(), {-1, 0, false, false});
        base.turno(7, Consultorio::a("09:40"));
        const QStringList antes = huella(base);

        // One of the times is enough.
        const QVector<QDateTime> turnos{Consultorio::a("09:20"), Consultorio::a("09:40"), Consultorio::a("10:00")};
        const auto nueva = reservarPacienteNuevo(base, datos(), reserva(base, turnos));
        QVERIFY(nueva && !nueva->paciente && nueva->ids.isEmpty());
        QCOMPARE(nueva->noAsignados, QVector<QDateTime>{Consultorio::a("09:40")});
        QCOMPARE(nueva->informe()->titulo, QString("Atención..."));
        QCOMPARE(
            nueva->informe()->texto,
            QString("No puede registrar más sobreturnos. El paciente y el turno no serán registrados."));
        QCOMPARE(huella(base), antes);
        // The connection is as good as before.
        QVERIFY(reservarPacienteNuevo(base, datos(), reserva(base, {Consultorio::a("09:20")}))->paciente);
    }

    void rechaza_en_su_orden_data() { soporte::filasDeDialecto(); }
    void rechaza_en_su_orden()
    {
        Consultorio base(soporte::dialectoActual());
        base.configurar("forzarmotivo", true);
        base.configurar("forzarguardarpaci", 1);
        base.paciente(7, "O'Higgins", "Ana D'Amico", {{"DNI", "20111222"}});
        const QStringList antes = huella(base);
        patients::DatosReducidos d;
        Reserva r = reserva(base, {});
        const auto rechazo = [&](const QString &texto, const char *campo) {
            const auto nueva = reservarPacienteNuevo(base, d, r);
            QVERIFY(!nueva);
            QCOMPARE(nueva.rechazo().texto, texto);
            QCOMPARE(nueva.rechazo().campo, QString(campo));
        };
        rechazo("Debe ingresar el Apellido del Paciente", "apellidor");
        d = datos();
        rechazo("Debe ingresar el Documento de Identidad del Paciente", "dnir");
        d.dni = "20111222";
        d.telefono = "4555";
        d.idcobertura = 1;
        rechazo("Debe indicar el día y la hora del turno que le asignará al paciente.", "agregarturno");
        r.turnos = {Consultorio::a("09:20")};
        rechazo("Debe indicar el motivo de la consulta.", "motivo");
        r.motivo = 3;
        const QString igual
            = "Ya existe un paciente con el mismo nombre y apellido. ¿Desea igualmente continuar dando de alta al"
              " paciente?";
        base.guion.esperarPregunta("Atención...", igual, false);
        const auto niUno = reservarPacienteNuevo(base, d, r);
        QVERIFY(niUno && !niUno->paciente && !niUno->informe());
        base.guion.esperarPregunta("Atención...", igual, true);
        rechazo("Ya existe otro paciente con el Nº de Documento que le quiere ingresar al paciente actual.", "dnir");
        d.dni = "20111333";
        for (const char *derecho : {"accesoasignarturno", "accesocrearpaciente"}) {
            base.quitarDerecho(derecho);
            rechazo(sinPermiso, "");
        }
        base.usuario = 9999;
        rechazo("Defina un Usuario Activo válido desde la ventana Configuración.", "");
        QCOMPARE(huella(base), antes);
        QVERIFY(base.guion.terminar());
    }

    void un_informe_largo_entra_en_la_pantalla()
    {
        QVector<QDateTime> momentos;
        for (int i = 0; i < 366; ++i)
            momentos << Consultorio::a(Consultorio::lunes().addDays(i), "09:20");
        const QStringList lineas = rechazoSobreturnos(momentos, true).texto.split('\n').mid(1);
        QVERIFY(lineas.size() <= 30);
        QCOMPARE(lineas.join(' ').count("09:20"), 366);
        QCOMPARE(rechazoSobreturnos(momentos.mid(0, 30), true).texto.count('\n'), 30);
    }

    void avisa_donde_no_se_atiende_data() { soporte::filasDeDialecto(); }
    void avisa_donde_no_se_atiende()
    {
        Consultorio base(soporte::dialectoActual());
        QVERIFY(!agregarDiasNoLaborables(base.conexion(), base.usuario, {{0, 25, 12, 0}}));
        base.turno(-111, Consultorio::a("10:00"));
        base.turno(-111, Consultorio::a("10:20"), {{"Doctor", 9999}});
        base.turno(7, Consultorio::a("10:40"));
        const QDate navidad(2026, 12, 25);
        const auto aviso = [&](const QVector<QDateTime> &momentos) {
            return avisoSinAtencion(base.conexion(), base.usuario, momentos);
        };
        QCOMPARE(aviso({}), QString());
        QCOMPARE(aviso({Consultorio::a("10:20"), Consultorio::a("10:40")}), QString());
        QCOMPARE(
            aviso({Consultorio::a("10:00"), Consultorio::a(navidad, "09:00"), Consultorio::a(navidad, "09:20")}),
            QString("No se atiende: 23/11/2026 10:00, 25/12/2026."));
        QVector<QDateTime> muchas;
        for (int anio = 0; anio < 5; ++anio)
            muchas << Consultorio::a(navidad.addYears(anio), "09:00");
        QCOMPARE(aviso(muchas), QString("No se atiende: 25/12/2026, 25/12/2027, 25/12/2028 y otros 2."));
        QCOMPARE(
            avisoDeReserva({}, {Consultorio::a(navidad, "09:00")}, navidad.addDays(1), aviso({muchas.first()})),
            QString("El 25/12/2026 ya pasó. No se atiende: 25/12/2026."));
    }

    void turnos_del_mismo_dia_data() { soporte::filasDeDialecto(); }
    void turnos_del_mismo_dia()
    {
        Consultorio base(soporte::dialectoActual());
        const qint64 otra = base.fila("Lista Doctores", {{"NomDoc", "Dra. D'Amico"}, {"tipo", 0}});
        const QDate lunes = Consultorio::lunes(), fin(2026, 12, 31), principio(2027, 1, 1);
        base.turno(7, Consultorio::a("16:00"), {{"Doctor", otra}});
        const qint64 propio = base.turno(7, Consultorio::a("09:20"));
        base.turno(8, Consultorio::a("09:40"));
        base.turno(-111, Consultorio::a("10:00"));
        base.turno(7, Consultorio::a(fin, "23:59"), {{"Doctor", 9999}});
        base.turno(7, Consultorio::a(lunes.addDays(1), "00:00"));
        const auto texto = [&](const QVector<QDateTime> &momentos, qint64 menos = 0, int nrohc = 7) {
            return avisoDeReserva(turnosDeEsosDias(base.conexion(), nrohc, momentos, menos), momentos, lunes);
        };
        const auto el = [](QDate dia) { return Consultorio::a(dia, "12:00"); };
        QCOMPARE(texto({el(lunes)}), QString("Ya tiene turno ese día: 09:20 con Juan Pérez y 16:00 con Dra. D'Amico"));
        QCOMPARE(texto({el(lunes)}, propio), QString("Ya tiene turno ese día: 16:00 con Dra. D'Amico"));
        // Days in between that are not asked about are not told.
        QCOMPARE(
            texto({el(principio), el(lunes), el(fin)}, propio),
            QString("Ya tiene turno el 23/11/2026, 16:00 con Dra. D'Amico; el 31/12/2026, 23:59 con"
                    " <Médico sin Identificar>"));
        QCOMPARE(texto({el(principio), el(lunes.addDays(2))}), QString());
        QCOMPARE(texto({el(lunes)}, 0, 9), QString());
        QCOMPARE(texto({el(lunes)}, 0, 0), QString());
        QCOMPARE(texto({}), QString());
        QCOMPARE(texto({el(lunes.addDays(-1)), el(lunes)}, 0, 9), QString("El 22/11/2026 ya pasó."));

        QVector<QDateTime> muchos;
        for (int i = 0; i < 6; ++i) {
            base.turno(9, el(QDate(2027, 2, 1).addDays(7 * i)));
            muchos << el(QDate(2027, 2, 1).addDays(7 * i));
        }
        QVERIFY(texto(muchos, 0, 9).endsWith("; el 15/02/2027, 12:00 con Juan Pérez; y otros 3 días"));
    }

    void modifica_data() { soporte::filasDeDialecto(); }
    void modifica()
    {
        Consultorio base(soporte::dialectoActual());
        base.plantilla(Consultorio::maniana(), {0, 0, false, false});
        base.conexion().execute(
            "INSERT INTO [Agenda Turnos No Se Atiende] (iddoctor,dia,mes,anio) VALUES (?,25,11,0)", {base.usuario});
        base.turno(8, Consultorio::a("10:00"));
        const qint64 id = base.turno(7, Consultorio::a("09:20"), {{"motivo", 5}, {"observacionestur", "ayuno"}});
        const auto queda = [&] {
            const db::Recordset fila(base.conexion(), "SELECT * FROM [Agenda Turnos] WHERE id = ?", {id});
            return QStringList{
                fila.dateTime(u"Fecha").toString("dd HH:mm"), fila.text(u"motivo"), fila.text(u"observacionestur")};
        };
        const auto rechazo = [&](const CambioTurno &cambio) {
            const auto control = modificar(base, id, cambio);
            return control ? control->campo + '|' + control->texto : QString();
        };
        // All or nothing: what is refused keeps the rest back.
        CambioTurno todo{Consultorio::a("10:00"), 6, "D'Amico"};
        QCOMPARE(
            rechazo(todo),
            QString("listahoras|No puede registrar más sobreturnos. Los siguientes turnos no se asignaron:\n"
                    "23/11/2026 10:00"));
        todo.fecha = Consultorio::a(QDate(2026, 11, 25), "09:20");
        QCOMPARE(rechazo(todo), QString("fechadia|La fecha seleccionada NO corresponde a un día laborable."));
        QCOMPARE(queda(), (QStringList{"23 09:20", "5", "ayuno"}));
        todo.fecha = Consultorio::a(QDate(2026, 12, 31), "09:40");
        QCOMPARE(rechazo(todo), QString());
        QCOMPARE(queda(), (QStringList{"31 09:40", "6", "D'Amico"}));

        // What did not change is not tested: the appointment may stand where no new one would be given.
        base.conexion().execute(
            "UPDATE [Agenda Turnos] SET Fecha = "
                + base.conexion().dialect().dateTime(Consultorio::a(QDate(2026, 11, 25), "09:25")) + " WHERE id = ?",
            {id});
        QCOMPARE(rechazo({.observacionestur = "trae\nestudios"}), QString());
        base.configurar("forzarmotivo", true);
        QCOMPARE(rechazo({.motivo = 0}), QString("motivo|Debe indicar el motivo de la consulta."));
        QCOMPARE(queda(), (QStringList{"25 09:25", "6", "trae\nestudios"}));

        base.quitarDerecho("accesomodificarturno");
        QCOMPARE(rechazo({.motivo = 4}), '|' + sinPermiso);
        base.conexion().execute("UPDATE [Lista Doctores] SET accesomodificarturno = 1 WHERE id = ?", {base.usuario});
        base.conexion().execute("DELETE FROM [Agenda Turnos] WHERE id = ?", {id});
        QCOMPARE(rechazo({.motivo = 4}), '|' + yaNoExiste);
    }
};

PRUEBA(PruebaReservaNueva)
#include "PruebaReservaNueva.moc"
