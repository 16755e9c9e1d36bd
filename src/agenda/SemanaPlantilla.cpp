#include "agenda/SemanaPlantilla.h"

#include "agenda/GrillaDia.h"

#include <algorithm>

namespace agenda {

namespace {

constexpr int minimoHoras = 6;

int minutos(QTime hora) { return hora.hour() * 60 + hora.minute(); }

QString horaDe(int minutos)
{
    return QStringLiteral("%1:%2").arg(minutos / 60, 2, 10, QChar(u'0')).arg(minutos % 60, 2, 10, QChar(u'0'));
}

/// One half of a day; nothing when it gives no slot, with a word on why when it was begun.
std::optional<Franja> franja(int dia, bool tarde, const Jornada &jornada, QStringList &avisos)
{
    const auto &desde = tarde ? jornada.taDesde : jornada.maDesde;
    const auto &hasta = tarde ? jornada.taHasta : jornada.maHasta;
    const QString cual = nombreDia(dia) + (tarde ? QStringLiteral(" a la tarde: ") : QStringLiteral(" a la mañana: "));
    if (!desde && !hasta)
        return std::nullopt;
    if (!desde || !hasta) {
        avisos << cual + (desde ? QStringLiteral("falta la hora final.") : QStringLiteral("falta la hora inicial."));
        return std::nullopt;
    }
    const Jornada sola{*desde, *hasta, {}, {}, jornada.duracion};
    const GrillaDia grilla(sola);
    if (grilla.cantidad() == 0) {
        avisos << cual + QStringLiteral("la hora final debe ser posterior a la inicial.");
        return std::nullopt;
    }
    const int paso = jornada.duracion > 0 ? jornada.duracion : duracionSupuesta;
    const int fin = minutos(grilla.horas().back()) + paso;
    return Franja{dia, tarde, minutos(*desde), minutos(*hasta), fin, paso, grilla.cantidad()};
}

} // namespace

SemanaPlantilla semanaDe(const std::array<Jornada, 7> &dias)
{
    SemanaPlantilla semana;
    int primera = 24 * 60, ultima = 0;
    for (int d = 0; d < 7; ++d) {
        const Jornada &jornada = dias[size_t(d)];
        const auto maniana = franja(d, false, jornada, semana.avisos);
        const auto tarde = franja(d, true, jornada, semana.avisos);
        for (const auto &f : {maniana, tarde}) {
            if (!f)
                continue;
            semana.franjas.push_back(*f);
            primera = std::min(primera, f->desde);
            ultima = std::max(ultima, std::max(f->fin, f->hasta));
        }
        if (maniana && tarde) {
            const int desde = std::max(maniana->desde, tarde->desde), hasta = std::min(maniana->fin, tarde->fin);
            if (desde < hasta) {
                semana.encimadas.push_back({d, desde, hasta});
                semana.avisos << QStringLiteral("%1: los turnos de la mañana y de la tarde se enciman de %2 a %3.")
                                     .arg(nombreDia(d), horaDe(desde), horaDe(hasta));
            }
        }
        semana.turnos[size_t(d)] = GrillaDia(jornada).cantidad();
        semana.total += semana.turnos[size_t(d)];
    }
    if (!semana.franjas.empty()) {
        semana.primeraHora = primera / 60;
        semana.ultimaHora = (ultima + 59) / 60;
        const int faltan = minimoHoras - (semana.ultimaHora - semana.primeraHora);
        if (faltan > 0) {
            semana.primeraHora = std::max(0, semana.primeraHora - faltan / 2);
            semana.ultimaHora = std::max(semana.ultimaHora, semana.primeraHora + minimoHoras);
        }
    }
    return semana;
}

std::array<int, 7> ordenSemana(int primerDia)
{
    std::array<int, 7> orden{};
    for (int i = 0; i < 7; ++i)
        orden[size_t(i)] = (primerDia + i) % 7;
    return orden;
}

QString nombreDia(int dia)
{
    static const QStringList nombres{
        QStringLiteral("Domingo"),
        QStringLiteral("Lunes"),
        QStringLiteral("Martes"),
        QStringLiteral("Miércoles"),
        QStringLiteral("Jueves"),
        QStringLiteral("Viernes"),
        QStringLiteral("Sábado")};
    return nombres.value(dia);
}

QString turnosTexto(int cantidad)
{
    if (cantidad == 0)
        return QStringLiteral("sin turnos");
    return cantidad == 1 ? QStringLiteral("1 turno") : QStringLiteral("%1 turnos").arg(cantidad);
}

QStringList avisosDeFechas(const QVector<PlantillaListada> &lista, int id, QDate desde, QDate hasta)
{
    if (!desde.isValid() || !hasta.isValid())
        return {};
    if (hasta < desde)
        return {QStringLiteral("La fecha final es anterior a la inicial: esta plantilla no rige ningún día.")};
    QStringList nuevas, viejas;
    for (int i = 0; i < lista.size(); ++i) {
        const PlantillaListada &otra = lista.at(i);
        if (otra.id == id || otra.fechadesde > hasta || otra.fechahasta < desde || otra.fechahasta < otra.fechadesde)
            continue;
        (id != 0 && otra.id > id ? nuevas : viejas) << QStringLiteral("Nº %1").arg(i + 1);
    }
    QStringList avisos;
    if (!viejas.isEmpty())
        avisos << QStringLiteral("Comparte días con la plantilla %1: en ellos rige ésta, que es más nueva.")
                      .arg(viejas.join(QStringLiteral(", ")));
    if (!nuevas.isEmpty())
        avisos << QStringLiteral("Comparte días con la plantilla %1, que es más nueva: en ellos no rige ésta.")
                      .arg(nuevas.join(QStringLiteral(", ")));
    return avisos;
}

} // namespace agenda
