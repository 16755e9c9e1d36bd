#include "DiasLlenos.h"

#include "Motor.h"
#include "agenda/Plantilla.h"
#include "db/Connection.h"

namespace medicion {

namespace {

QString de(int profesional)
{
    return profesional == 0 ? QString() : QStringLiteral(" And Doctor = %1").arg(profesional);
}

} // namespace

QByteArray diaCrudo(db::Connection &conexion, int profesional, QDate dia)
{
    return Motor::traducida(
        QStringLiteral(
            "SELECT id,NroHC,Fecha,observacionestur,"
            "(SELECT Apellido & ', ' & Nombres FROM [Pacientes] WHERE [Pacientes].NroHC = [Agenda Turnos].NroHC),"
            "(SELECT Tel FROM [Pacientes] WHERE [Pacientes].NroHC = [Agenda Turnos].NroHC),"
            "(SELECT TelCelular FROM [Pacientes] WHERE [Pacientes].NroHC = [Agenda Turnos].NroHC),"
            "(SELECT nombre FROM [Lista Coberturas] WHERE [Lista Coberturas].id = (SELECT idcobertura FROM [Pacientes]"
            " WHERE [Pacientes].NroHC = [Agenda Turnos].NroHC)),"
            "(SELECT Motivo FROM [Lista Motivos Consulta] WHERE [Lista Motivos Consulta].id = [Agenda Turnos].motivo),"
            "(SELECT importe FROM [Caja] WHERE [Caja].id = [Agenda Turnos].idcaja),"
            "(SELECT SUM(costo) FROM [Pacientes Ordenes] WHERE NroPaci = [Agenda Turnos].NroHC),"
            "(SELECT SUM(importe) FROM [Pacientes Pagos] WHERE NroPaci = [Agenda Turnos].NroHC and quien = 'P'),"
            "llegado,Atendido FROM [Agenda Turnos] WHERE %1%2 ORDER BY id")
            .arg(conexion.dialect().dayRange(QStringLiteral("Fecha"), dia, dia), de(profesional)));
}

QByteArray mesCrudo(db::Connection &conexion, int profesional, QDate desde, QDate hasta)
{
    return Motor::traducida(
        QStringLiteral("SELECT Fecha FROM [Agenda Turnos] WHERE %1%2 And NroHC <> -111 GROUP BY Fecha")
            .arg(conexion.dialect().dayRange(QStringLiteral("Fecha"), desde, hasta), de(profesional)));
}

DiaLleno::DiaLleno(db::Connection &conexion, int profesional, QDate dia)
    : m_conexion(conexion)
    , m_ultimo(conexion.query(QStringLiteral("SELECT MAX(id) FROM [Agenda Turnos]"))->integer(0, 0))
{
    agenda::Plantilla plantilla;
    plantilla.iddoctor = profesional;
    plantilla.dias.fill({QTime(8, 0), QTime(18, 0), {}, {}, 10});
    const QString fecha = dia.toString(QStringLiteral("dd/MM/yyyy"));
    const auto id = agenda::guardarPlantilla(conexion, plantilla, fecha, fecha);
    m_plantilla = id ? *id : 0;
    db::Transaction transaccion(conexion);
    for (int i = 0; i < 60; ++i)
        conexion.execute(
            QStringLiteral("INSERT INTO [Agenda Turnos] (NroHC,Fecha,motivo,Doctor) VALUES (?,?,0,?)"),
            {1 + i * 97, QDateTime(dia, QTime(8, 0)).addSecs(i * 600), profesional});
    transaccion.commit();
}

DiaLleno::~DiaLleno()
{
    m_conexion.execute(QStringLiteral("DELETE FROM [Agenda Turnos] WHERE id > ?"), {m_ultimo});
    m_conexion.execute(QStringLiteral("DELETE FROM [Agenda Turnos Horarios] WHERE id = ?"), {m_plantilla});
}

} // namespace medicion
