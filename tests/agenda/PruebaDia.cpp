#include "Consultorio.h"
#include "agenda/Calendario.h"
#include "agenda/DetalleTurno.h"
#include "agenda/DiaAgenda.h"
#include "agenda/OrdenesTurno.h"
#include "support/Prueba.h"

using namespace agenda;

/// The day as the book shows it.
class PruebaDia : public QObject
{
    Q_OBJECT

    static DiaAgenda cargar(Consultorio &base, QDate fecha = Consultorio::lunes())
    {
        return cargarDia(base.conexion(), base.usuario, fecha, base.reloj.today());
    }

private slots:
    void muestra_turnos_y_horarios_libres_data() { soporte::filasDeDialecto(); }
    void muestra_turnos_y_horarios_libres()
    {
        Consultorio base(soporte::dialectoActual());
        base.plantilla({QTime(9, 0), QTime(10, 10), {}, {}, 20});
        const qint64 motivo = base.fila("Lista Motivos Consulta", {{"Motivo", "Control"}});
        const qint64 cobertura = base.fila("Lista Coberturas", {{"nombre", "Mutual del Sur"}});
        const qint64 caja = base.fila("Caja", {{"importe", 1234.5}, {"detalle", "turno"}});
        base.paciente(
            7,
            "O'Higgins",
            "Ana",
            {{"Tel", "4711"}, {"TelCelular", "155"}, {"idcobertura", cobertura}, {"NroOS", "88/1"}});
        base.paciente(8, "Núñez", "Luis", {{"TelCelular", "156"}});
        base.fila("Pacientes Ordenes", {{"NroPaci", 7}, {"costo", 2000}, {"fecha", QDate(2026, 5, 1)}});
        base.fila("Pacientes Ordenes", {{"NroPaci", 7}, {"costo", 500}, {"fecha", QDate(2025, 5, 1)}});
        base.fila(
            "Pacientes Pagos", {{"NroPaci", 7}, {"importe", 100.5}, {"quien", "P"}, {"fecha", QDate(2026, 6, 1)}});
        base.fila("Pacientes Pagos", {{"NroPaci", 7}, {"importe", 9000}, {"quien", "O"}, {"fecha", QDate(2026, 6, 1)}});

        const qint64 primero = base.turno(
            7,
            Consultorio::a("09:20"),
            {{"motivo", motivo},
             {"llegado", true},
             {"idcaja", caja},
             {"observacionestur", "trae\nestudios"},
             {"fechahoraasignado", QDateTime(QDate(2026, 11, 2), QTime(8, 5))},
             {"usuarioasigtur", "Marta"}});
        base.turno(8, Consultorio::a("09:20"));
        base.turno(99, Consultorio::a("09:05")); // its patient was deleted
        base.turno(-111, Consultorio::a("10:00"));
        base.turno(8, Consultorio::a(Consultorio::lunes().addDays(1), "09:00"));
        base.turno(8, Consultorio::a("09:00"), {{"Doctor", base.usuario + 1}});

        const DiaAgenda dia = cargar(base);
        QStringList horas;
        for (const FilaDia &f : dia.filas)
            horas << horaTexto(f.hora);
        QCOMPARE(horas.join(' '), QString("09:00 09:05 09:20 09:20 09:40 10:00"));
        QCOMPARE(dia.turnos, 3);

        QCOMPARE(dia.filas[0].textos(), QStringList({"09:00", "", "", "", "", "", "", "", "", ""}));
        QCOMPARE(dia.filas[1].textos().mid(0, 2), QStringList({"09:05", "PACIENTE ELIMINADO DEL SISTEMA"}));
        QVERIFY(!dia.filas[1].deGrilla);
        QCOMPARE(dia.filas[2].id, primero);
        QCOMPARE(
            dia.filas[2].textos(),
            QStringList(
                {"09:20",
                 "O'Higgins, Ana",
                 "Mutual del Sur",
                 "    Tel. 4711  /  Cel. 155",
                 "Control",
                 "1.234,50",
                 "2.399,50",
                 "SI",
                 "NO",
                 "trae\nestudios"}));
        QCOMPARE(dia.filas[3].textos().at(3), QString("    Cel. 156"));
        QCOMPARE(dia.filas[3].textos().at(5), QString());
        QCOMPARE(dia.filas[5].textos().at(1), QString("========= NO SE ATIENDE =========="));
        QCOMPARE(dia.filas[5].textos().at(7), QString("---"));

        QCOMPARE(
            dia.resumen(),
            QStringList({"09:00", "09:20  Ocupado !!", "09:40", "10:00  ========", "  >>>>> TOTAL: 3  de turnos."}));

        base.configurar("versaldoanioactual", true);
        QCOMPARE(cargar(base).filas[2].saldo, QString("1.899,50"));

        QCOMPARE(
            detalleTurno(base.conexion(), primero),
            QStringList(
                {"Paciente: O'Higgins, Ana      Nº ID: 7",
                 "Cobertura Médica: Mutual del Sur",
                 "Nº Afiliado: 88/1",
                 "Ultima Consulta: ",
                 "Turno dado el día: 02/11/2026 a las 08:05 por el usuario: Marta"}));
        base.configurar("nuidhc", true);
        base.conexion().execute("UPDATE [Pacientes] SET numehistoria = 'HC-7' WHERE NroHC = 7");
        QCOMPARE(
            detalleTurno(base.conexion(), primero).constFirst(),
            QString("Paciente: O'Higgins, Ana      Nº Historia Clínica: HC-7"));
    }

    void sin_plantilla_no_pierde_turnos_data() { soporte::filasDeDialecto(); }
    void sin_plantilla_no_pierde_turnos()
    {
        Consultorio base(soporte::dialectoActual());
        QVERIFY(cargar(base).filas.empty());
        base.paciente(7, "Paz", "Eva");
        base.turno(7, Consultorio::a("23:50"));
        base.turno(7, Consultorio::a("00:00"));
        const DiaAgenda dia = cargar(base);
        QCOMPARE(dia.filas.size(), size_t(2));
        QCOMPARE(horaTexto(dia.filas[0].hora), QString("00:00"));
        QCOMPARE(dia.resumen(), QStringList({"  No hay plantilla", "  >>>>> TOTAL: 2  de turnos."}));

        base.turno(-111, Consultorio::a(Consultorio::lunes().addDays(1), "09:00"));
        const auto dias = diasConTurnos(base.conexion(), base.usuario, QDate(2026, 11, 1), QDate(2026, 11, 30));
        QVERIFY(dias == std::set<QDate>{Consultorio::lunes()});
    }

    void cuenta_las_ordenes_data() { soporte::filasDeDialecto(); }
    void cuenta_las_ordenes()
    {
        Consultorio base(soporte::dialectoActual());
        base.paciente(7, "Paz", "Eva");
        const qint64 practica
            = base.fila("Lista Nomenclador", {{"nombre", "Kinesio, sesión de 40' con aparatología especial"}});
        const auto orden = [&](int numero, QDate fecha, int sesiones, const QVariantMap &otros = {}) {
            QVariantMap valores{{"NroPaci", 7}, {"numero", numero}, {"fecha", fecha}, {"sesiones", sesiones}};
            valores.insert(otros);
            return base.fila("Pacientes Ordenes", valores);
        };
        const qint64 vieja
            = orden(15, QDate(2026, 3, 1), 3, {{"costo", 2000}, {"entregada", true}, {"idpractica", practica}});
        const qint64 completa = orden(0, QDate(2026, 5, 1), 1);
        orden(99, QDate(2026, 6, 1), 0);
        base.fila("Pacientes Ordenes", {{"NroPaci", 8}, {"sesiones", 9}});
        base.fila("Pacientes Sesiones", {{"NroPaci", 7}, {"idorden", vieja}});
        for (int i = 0; i < 2; ++i) // one more than it allows
            base.fila("Pacientes Sesiones", {{"NroPaci", 7}, {"idorden", completa}});
        base.fila("Pacientes Pagos", {{"NroPaci", 7}, {"idorden", vieja}, {"importe", 1500.5}, {"quien", "P"}});
        base.fila("Pacientes Pagos", {{"NroPaci", 7}, {"idorden", vieja}, {"importe", 9000}, {"quien", "O"}});

        const auto pendientes = ordenesConSesiones(base.conexion(), 7);
        QCOMPARE(pendientes.size(), size_t(1));
        QCOMPARE(
            pendientes[0].renglon(),
            QString(
                "Nº Orden: 15     -     Fecha: 01/03/2026     -     Práctica: Kinesio, sesión de 40' con aparatología "
                "...     -     Sesiones Pendientes: 2"));

        // The appointment's own first, then the newest.
        const qint64 turno = base.turno(7, Consultorio::a("09:00"), {{"idorden", vieja}});
        const QStringList lineas = detalleOrdenes(base.conexion(), turno);
        QCOMPARE(
            lineas.mid(0, 5),
            QStringList(
                {"Nº Orden: 15   Fecha Orden: 01/03/2026",
                 "Costo: $2.000,00   Pagó: $1.500,50   Debe: $499,50",
                 "Orden Entregada: Si   Orden Autorizada: No",
                 "Total de Sesiones: 3   Sesiones Realizadas: 1",
                 "Próximo Nº Sesión: 2"}));
        QCOMPARE(lineas.at(6), QString("Nº Orden: 99   Fecha Orden: 01/06/2026"));
        QCOMPARE(lineas.mid(12).constFirst(), QString("Nº Orden:    Fecha Orden: 01/05/2026"));
        QCOMPARE(lineas.last(), QString("Próximo Nº Sesión: No hay pendientes"));
        const qint64 bloqueado = base.turno(-111, Consultorio::a("09:20"));
        QCOMPARE(detalleOrdenes(base.conexion(), bloqueado), QStringList());
        QCOMPARE(detalleOrdenes(base.conexion(), bloqueado + 99), QStringList());
    }

    void pinta_segun_el_estado()
    {
        Consultorio base;
        base.plantilla(Consultorio::maniana(), {-1, -1, true, false});
        base.paciente(7, "Paz", "Eva");
        base.turno(7, Consultorio::a("09:20"), {{"llegado", true}, {"Atendido", true}});
        base.turno(7, Consultorio::a("09:40"));
        base.turno(7, Consultorio::a("09:40"));
        DiaAgenda dia = cargar(base);
        const QDateTime ahora = Consultorio::a("09:30");
        QCOMPARE(dia.tono(dia.filas[0], ahora), Tono::Pasado);
        QCOMPARE(dia.tono(dia.filas[1], ahora), Tono::Atendido);
        QCOMPARE(dia.tono(dia.filas[2], ahora), Tono::Sobreturno);
        QCOMPARE(dia.tono(dia.filas[4], ahora), Tono::Ninguno);
        dia.ajustes.sobreturnoshoraresaltar = false;
        QCOMPARE(dia.tono(dia.filas[2], ahora), Tono::Ninguno);
    }

    void horarios_encimados_se_muestran_una_vez()
    {
        Consultorio base;
        base.plantilla({QTime(9, 0), QTime(10, 0), QTime(9, 40), QTime(10, 20), 20});
        base.paciente(7, "Paz", "Eva");
        base.turno(7, Consultorio::a("09:40"));
        const DiaAgenda dia = cargar(base);
        QCOMPARE(dia.grilla.cantidad(), 5);
        QCOMPARE(dia.filas.size(), size_t(4));
    }
};

PRUEBA(PruebaDia)
#include "PruebaDia.moc"
