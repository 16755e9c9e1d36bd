#include "agenda/RangoTurnos.h"

#include "agenda/DiasNoLaborables.h"
#include "agenda/GrillaDia.h"
#include "agenda/Textos.h"
#include "base/Fechas.h"
#include "db/Connection.h"

#include <map>
#include <set>

namespace agenda {

namespace {

base::Rechazo aviso(const QString &texto, const char *campo)
{
    return {base::titulo::aviso, texto, QLatin1String(campo)};
}

struct Rango {
    QDate desde;
    QDate hasta;
};

base::Resultado<Rango> leerRango(const QString &desde, const QString &hasta)
{
    if (desde.trimmed().isEmpty())
        return aviso(QStringLiteral("Debe ingresar la Fecha Inicial."), "desde");
    const auto primera = base::leerFecha(desde);
    if (!primera)
        return aviso(QStringLiteral("ERROR en la Fecha Inicial."), "desde");
    if (hasta.trimmed().isEmpty())
        return aviso(QStringLiteral("Debe ingresar la Fecha Final."), "hasta");
    const auto ultima = base::leerFecha(hasta);
    if (!ultima)
        return aviso(QStringLiteral("ERROR en la Fecha Final."), "hasta");
    if (*ultima < *primera)
        return aviso(QStringLiteral("La Fecha Final no puede ser anterior a la Fecha Inicial."), "hasta");
    if (primera->daysTo(*ultima) >= maximoRango)
        return aviso(QStringLiteral("El período no puede abarcar más de %1 días.").arg(maximoRango), "hasta");
    return Rango{*primera, *ultima};
}

/// The templates that hold on some day of the range, the newest first.
std::vector<Plantilla> plantillasDelRango(db::Connection &conexion, int doctor, const Rango &rango)
{
    std::vector<Plantilla> plantillas;
    const QVector<PlantillaListada> lista = listarPlantillas(conexion, doctor);
    for (auto listada = lista.crbegin(); listada != lista.crend(); ++listada)
        if (listada->fechadesde <= rango.hasta && listada->fechahasta >= rango.desde)
            if (const auto plantilla = leerPlantilla(conexion, listada->id))
                plantillas.push_back(*plantilla);
    return plantillas;
}

struct Ocupacion {
    int turnos = 0;
    bool bloqueado = false;
};

std::map<QDate, Ocupacion> ocupacionDe(db::Connection &conexion, int doctor, QTime hora, const Rango &rango)
{
    const db::Rows filas = conexion.query(
        QStringLiteral("SELECT Fecha,NroHC FROM [Agenda Turnos] WHERE ")
            + conexion.dialect().dayRange(QStringLiteral("Fecha"), rango.desde, rango.hasta)
            + QStringLiteral(" And Doctor = ?"),
        {doctor});
    std::map<QDate, Ocupacion> dias;
    for (int i = 0; i < filas->rowCount(); ++i) {
        const QDateTime fecha = filas->dateTime(i, 0);
        if (alMinuto(fecha.time()) != hora)
            continue;
        Ocupacion &dia = dias[fecha.date()];
        if (filas->integer(i, 1) == nroBloqueado)
            dia.bloqueado = true;
        else
            ++dia.turnos;
    }
    return dias;
}

} // namespace

base::Resultado<TurnosDelRango>
repartirHora(db::Connection &conexion, int doctor, QTime hora, const QString &desde, const QString &hasta)
{
    const auto rango = leerRango(desde, hasta);
    if (!rango)
        return rango.rechazo();
    const std::vector<Plantilla> plantillas = plantillasDelRango(conexion, doctor, *rango);
    const std::set<QDate> libres
        = diasNoLaborablesEntre(listarDiasNoLaborables(conexion, doctor), rango->desde, rango->hasta);
    const auto ocupacion = ocupacionDe(conexion, doctor, hora, *rango);

    TurnosDelRango turnos;
    for (QDate dia = rango->desde; dia <= rango->hasta; dia = dia.addDays(1)) {
        if (libres.contains(dia))
            continue;
        const auto rige = std::find_if(plantillas.begin(), plantillas.end(), [dia](const Plantilla &p) {
            return p.fechadesde <= dia && p.fechahasta >= dia;
        });
        if (rige == plantillas.end() || !GrillaDia(rige->jornada(dia)).contiene(hora))
            continue;
        const auto suya = ocupacion.find(dia);
        if (suya != ocupacion.end() && suya->second.bloqueado) {
            ++turnos.bloqueados;
            continue;
        }
        turnos.ocupados += suya != ocupacion.end() && suya->second.turnos > 0;
        turnos.momentos.append({dia, hora});
    }
    if (turnos.momentos.isEmpty()) {
        return aviso(
            QStringLiteral("Ningún día laborable del período tiene libre el horario de las %1.").arg(horaTexto(hora)),
            "hora");
    }
    return turnos;
}

QString TurnosDelRango::texto() const
{
    const bool uno = momentos.size() == 1;
    QString texto
        = uno ? QStringLiteral("Se agregará 1 turno") : QStringLiteral("Se agregarán %1 turnos").arg(momentos.size());
    if (ocupados > 0) {
        texto += uno ? QStringLiteral(",") : QStringLiteral(", %1 de ellos").arg(ocupados);
        texto
            += ocupados == 1 ? QStringLiteral(" en un horario ya ocupado") : QStringLiteral(" en horarios ya ocupados");
    }
    texto += u'.';
    if (bloqueados > 0)
        texto += bloqueados == 1
            ? QStringLiteral(" Se saltea 1 día en que no se atiende a esa hora.")
            : QStringLiteral(" Se saltean %1 días en que no se atiende a esa hora.").arg(bloqueados);
    return texto;
}

} // namespace agenda
