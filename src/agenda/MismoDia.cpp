#include "agenda/MismoDia.h"

#include "agenda/DiasNoLaborables.h"
#include "agenda/GrillaDia.h"
#include "agenda/Textos.h"
#include "base/Fechas.h"
#include "db/Connection.h"

#include <set>

namespace agenda {

namespace {

/// Days that are named one by one; of the others only how many they are.
constexpr int maximoDiasNombrados = 3;

std::set<QDate> diasDe(const QVector<QDateTime> &momentos)
{
    std::set<QDate> dias;
    for (const QDateTime &momento : momentos)
        dias.insert(momento.date());
    return dias;
}

/// "10:20 con Dra. Gómez y 16:00 con Dr. Paz".
QString horasDelDia(const QVector<TurnoDelPaciente> &turnos, QDate dia)
{
    QStringList horas;
    for (const TurnoDelPaciente &turno : turnos)
        if (turno.fecha.date() == dia)
            horas << QStringLiteral("%1 con %2").arg(horaTexto(turno.fecha.time()), turno.profesional);
    const QString ultima = horas.takeLast();
    return horas.isEmpty() ? ultima : horas.join(QStringLiteral(", ")) + QStringLiteral(" y ") + ultima;
}

QString avisoPasados(const std::set<QDate> &dias, QDate hoy)
{
    QStringList pasados;
    for (const QDate dia : dias)
        if (dia < hoy)
            pasados << base::fechaTexto(dia);
    if (pasados.isEmpty())
        return {};
    return pasados.size() == 1 ? QStringLiteral("El %1 ya pasó.").arg(pasados.first())
                               : QStringLiteral("Estos días ya pasaron: %1.").arg(pasados.join(QStringLiteral(", ")));
}

} // namespace

QVector<TurnoDelPaciente>
turnosDeEsosDias(db::Connection &conexion, int nrohc, const QVector<QDateTime> &momentos, qint64 menos)
{
    const std::set<QDate> dias = diasDe(momentos);
    if (nrohc <= 0 || dias.empty())
        return {};
    // From the first to the last of them: a patient has few appointments, however far apart the days are.
    const db::Rows filas = conexion.query(
        QStringLiteral("SELECT id,Fecha,(SELECT NomDoc FROM [Lista Doctores] WHERE [Lista Doctores].id ="
                       " [Agenda Turnos].Doctor) AS nombre FROM [Agenda Turnos] WHERE NroHC = ? And ")
            + conexion.dialect().dayRange(QStringLiteral("Fecha"), *dias.begin(), *dias.rbegin())
            + QStringLiteral(" ORDER BY Fecha,id"),
        {nrohc});
    QVector<TurnoDelPaciente> turnos;
    for (int i = 0; i < filas->rowCount(); ++i) {
        const QDateTime fecha = filas->dateTime(i, 1);
        if (!dias.contains(fecha.date()) || filas->integer(i, 0) == menos)
            continue;
        const QString profesional = filas->text(i, 2).trimmed();
        turnos.append({filas->integer(i, 0), fecha, profesional.isEmpty() ? textoSinProfesional : profesional});
    }
    return turnos;
}

QString avisoMismoDia(const QVector<TurnoDelPaciente> &turnos, bool variosDias)
{
    if (turnos.isEmpty())
        return {};
    if (!variosDias)
        return QStringLiteral("Ya tiene turno ese día: ") + horasDelDia(turnos, turnos.first().fecha.date());
    std::set<QDate> dias;
    for (const TurnoDelPaciente &turno : turnos)
        dias.insert(turno.fecha.date());
    QStringList partes;
    for (const QDate dia : dias)
        if (partes.size() < maximoDiasNombrados)
            partes << QStringLiteral("el %1, %2").arg(base::fechaTexto(dia), horasDelDia(turnos, dia));
    const int otros = int(dias.size()) - int(partes.size());
    QString texto = QStringLiteral("Ya tiene turno ") + partes.join(QStringLiteral("; "));
    if (otros > 0)
        texto += otros == 1 ? QStringLiteral("; y otro de esos días") : QStringLiteral("; y otros %1 días").arg(otros);
    return texto;
}

QString avisoSinAtencion(db::Connection &conexion, int doctor, const QVector<QDateTime> &momentos)
{
    const std::set<QDate> dias = diasDe(momentos);
    if (dias.empty())
        return {};
    const QVector<DiaNoLaborable> noLaborables = listarDiasNoLaborables(conexion, doctor);
    const db::Rows bloqueos = conexion.query(
        QStringLiteral("SELECT Fecha FROM [Agenda Turnos] WHERE ")
            + conexion.dialect().dayRange(QStringLiteral("Fecha"), *dias.begin(), *dias.rbegin())
            + QStringLiteral(" And Doctor = ? And NroHC = ?"),
        {doctor, nroBloqueado});
    std::set<QString> bloqueados;
    for (int i = 0; i < bloqueos->rowCount(); ++i)
        bloqueados.insert(base::fechaHoraTexto(bloqueos->dateTime(i, 0)));

    QStringList cuales;
    for (const QDateTime &momento : momentos) {
        const QString dia = base::fechaTexto(momento.date()), hora = base::fechaHoraTexto(momento);
        if (!diasNoLaborablesEntre(noLaborables, momento.date(), momento.date()).empty()) {
            if (!cuales.contains(dia))
                cuales << dia;
        } else if (bloqueados.count(hora) > 0) {
            cuales << hora;
        }
    }
    if (cuales.isEmpty())
        return {};
    const auto otros = cuales.size() - maximoDiasNombrados;
    QString texto = QStringLiteral("No se atiende: ") + cuales.mid(0, maximoDiasNombrados).join(QStringLiteral(", "));
    if (otros > 0)
        texto += QStringLiteral(" y otros %1").arg(otros);
    return texto + u'.';
}

QString avisoDeReserva(
    const QVector<TurnoDelPaciente> &turnos, const QVector<QDateTime> &momentos, QDate hoy, const QString &sinAtencion)
{
    const std::set<QDate> dias = diasDe(momentos);
    const QString dia = (avisoPasados(dias, hoy) + u' ' + sinAtencion).trimmed();
    QStringList lineas{dia, avisoMismoDia(turnos, dias.size() > 1)};
    lineas.removeAll(QString());
    return lineas.join(u'\n');
}

} // namespace agenda
