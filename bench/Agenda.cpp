#include "Agenda.h"

#include "DiasLlenos.h"
#include "Motor.h"
#include "Tabla.h"
#include "agenda/Calendario.h"
#include "agenda/DiaAgenda.h"
#include "agenda/ProximoLibre.h"
#include "agenda/forms/CalendarioMes.h"
#include "agenda/forms/GrillaTurnos.h"
#include "agenda/forms/agendas.h"
#include "db/Connection.h"
#include "db/Entorno.h"
#include "db/ListaDoctores.h"
#include "ui/Ventanas.h"

#include <QCoreApplication>
#include <QEvent>
#include <QPixmap>
#include <QTimer>

namespace medicion {

namespace {

void medirVentana(Tabla &tabla, db::Entorno &entorno, ui::Ventanas &ventanas, int profesional, QDate lleno, int veces)
{
    db::Connection &conexion = entorno.conexion();
    Motor motor(conexion);
    auto *ventana = qobject_cast<agenda::agendas *>(ventanas.abrir(
        QStringLiteral("agendas"),
        {{{QStringLiteral("doctor"), profesional}, {QStringLiteral("fecha"), lleno.addDays(1)}}, {}}));
    ventana->tiempo->stop();
    (void)ventana->grab();
    const QDate primero(lleno.year(), lleno.month(), 1);
    const QByteArray dia = diaCrudo(conexion, profesional, lleno);
    const QByteArray mes = mesCrudo(conexion, profesional, primero, primero.addMonths(1).addDays(-1));
    const auto crudo = [&] {
        (void)motor.ejecutar(dia);
        (void)motor.ejecutar(mes);
    };
    const QByteArray vispera = diaCrudo(conexion, profesional, lleno.addDays(-1));
    const auto idaYVuelta = [&] {
        ventana->fechadia->setFecha(lleno.addDays(-1));
        ventana->fechadia->setFecha(lleno);
    };
    const auto idaYVueltaCruda = [&] {
        (void)motor.ejecutar(vispera);
        (void)motor.ejecutar(mes);
        crudo();
    };
    tabla.comparar(QStringLiteral("ventana: al día anterior y de vuelta"), idaYVuelta, idaYVueltaCruda, veces);
    tabla.comparar(
        QStringLiteral("ventana: al día anterior y de vuelta, pintada una vez"),
        [&] {
            idaYVuelta();
            (void)ventana->grab();
        },
        idaYVueltaCruda,
        veces);
    tabla.comparar(
        QStringLiteral("ventana: se vuelve a leer sola, sin cambios"), [&] { ventana->refrescar(); }, crudo, veces);
    const QByteArray unTurno = Motor::traducida(QStringLiteral("SELECT * FROM [Agenda Turnos] WHERE id = ?"));
    const QByteArray suPaciente = Motor::traducida(
        QStringLiteral("SELECT Apellido,Nombres,idcobertura,NroOS,ultimacons FROM [Pacientes] WHERE NroHC = ?"));
    const QByteArray susOrdenes = Motor::traducida(QStringLiteral(
        "SELECT id,sesiones,fecha,numero,costo,entregada,autorizada,"
        "(SELECT SUM(importe) FROM [Pacientes Pagos] WHERE idorden = [Pacientes Ordenes].id and quien = 'P'),"
        "(SELECT COUNT(id) FROM [Pacientes Sesiones] WHERE idorden = [Pacientes Ordenes].id)"
        " FROM [Pacientes Ordenes] WHERE NroPaci = ? ORDER BY fecha,id"));
    int fila = 0;
    tabla.comparar(
        QStringLiteral("ventana: una flecha abajo, con sus datos y órdenes"),
        [&] { ventana->lista->elegirFila(++fila % 60); },
        [&] {
            const std::vector<qint64> paciente{1 + fila * 97};
            (void)motor.ejecutar(unTurno, {fila + 1});
            (void)motor.ejecutar(suPaciente, paciente);
            (void)motor.ejecutar(susOrdenes, paciente);
        },
        veces);
    ventana->close();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

} // namespace

void medirAgenda(Tabla &tabla, db::Entorno &entorno, ui::Ventanas &ventanas, QDate hoy, int veces)
{
    db::Connection &conexion = entorno.conexion();
    Motor motor(conexion);
    const auto profesional = int(
        conexion
            .query(QStringLiteral("SELECT TOP 1 Doctor FROM [Agenda Turnos] WHERE Fecha > ? ORDER BY Fecha"), {hoy})
            ->integer(0, 0));
    const QByteArray unDia = diaCrudo(conexion, profesional, hoy);
    tabla.comparar(
        QStringLiteral("un día de la agenda"),
        [&] { (void)agenda::cargarDia(conexion, profesional, hoy, hoy); },
        [&] { (void)motor.ejecutar(unDia); },
        veces * 3);
    const QDate desde(hoy.year(), hoy.month(), 1), hasta = desde.addMonths(1).addDays(-1);
    const QByteArray unMes = mesCrudo(conexion, profesional, desde, hasta);
    tabla.comparar(
        QStringLiteral("los días con turnos de un mes"),
        [&] { (void)agenda::diasConTurnos(conexion, profesional, desde, hasta); },
        [&] { (void)motor.ejecutar(unMes); },
        veces * 3);

    const QDate lleno = hoy.addDays(7);
    const DiaLleno diaLleno(conexion, profesional, lleno);
    const QByteArray elLleno = diaCrudo(conexion, profesional, lleno);
    tabla.comparar(
        QStringLiteral("un día de 60 turnos"),
        [&] { (void)agenda::cargarDia(conexion, profesional, lleno, hoy); },
        [&] { (void)motor.ejecutar(elLleno); },
        veces * 3);

    const QVector<db::Doctor> todos = db::profesionales(conexion);
    const QVector<db::Doctor> uno{{profesional, QString()}};
    for (const auto &[texto, quienes] :
         {std::pair(QStringLiteral("los 10 próximos días libres de un profesional"), uno),
          std::pair(QStringLiteral("los 10 próximos días libres de todos"), todos)}) {
        QStringList ids;
        for (const db::Doctor &d : quienes)
            ids << QString::number(d.id);
        const QByteArray cruda = Motor::traducida(
            QStringLiteral("SELECT Doctor,Fecha FROM [Agenda Turnos] WHERE %1 And Doctor IN (%2)")
                .arg(conexion.dialect().dayRange(QStringLiteral("Fecha"), hoy, hoy.addDays(27)), ids.join(u',')));
        tabla.comparar(
            texto,
            [&] { (void)agenda::proximosLibres(conexion, quienes, QDateTime(hoy, QTime(9, 0))); },
            [&] { (void)motor.ejecutar(cruda); },
            veces);
    }
    medirVentana(tabla, entorno, ventanas, profesional, lleno, veces * 3);
}

} // namespace medicion
