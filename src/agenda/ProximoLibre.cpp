#include "agenda/ProximoLibre.h"

#include "agenda/DiasNoLaborables.h"
#include "agenda/GrillaDia.h"
#include "agenda/Plantilla.h"
#include "db/Connection.h"
#include "db/ListaDoctores.h"

#include <algorithm>
#include <map>
#include <unordered_set>

namespace agenda {

namespace {

/// Days of the first stretch; a professional is seldom booked up for longer.
constexpr int primerTramo = 28;

/// A number for each minute: a set of them is searched without asking the time zone what a date-time means.
qint64 minutoDe(QDate fecha, QTime hora) { return fecha.toJulianDay() * 1440 + hora.hour() * 60 + hora.minute(); }

/// One professional's book while it is looked through.
struct Libro {
    QVector<Plantilla> plantillas; ///< newest first
    QVector<DiaNoLaborable> noLaborables;
    std::unordered_set<qint64> ocupados; ///< by minutoDe()

    [[nodiscard]] const Plantilla *plantilla(QDate fecha) const
    {
        for (const Plantilla &p : plantillas)
            if (p.fechadesde <= fecha && fecha <= p.fechahasta)
                return &p;
        return nullptr;
    }
    [[nodiscard]] bool atiende(QDate fecha) const
    {
        return std::none_of(
            noLaborables.begin(), noLaborables.end(), [fecha](const DiaNoLaborable &dia) { return dia.abarca(fecha); });
    }
};

/// "iddoctor IN (1,2)".
QString deEllos(const QString &columna, const std::map<int, Libro> &libros)
{
    QStringList ids;
    for (const auto &[id, libro] : libros)
        ids << QString::number(id);
    return columna + QStringLiteral(" IN (") + ids.join(u',') + u')';
}

void leerNoLaborables(db::Connection &conexion, std::map<int, Libro> &libros)
{
    const db::Rows filas = conexion.query(
        QStringLiteral("SELECT iddoctor,dia,mes,anio FROM [Agenda Turnos No Se Atiende] WHERE ")
        + deEllos(QStringLiteral("iddoctor"), libros));
    for (int i = 0; i < filas->rowCount(); ++i)
        libros[int(filas->integer(i, 0))].noLaborables.append(
            {0, int(filas->integer(i, 1)), int(filas->integer(i, 2)), int(filas->integer(i, 3))});
}

void leerOcupados(db::Connection &conexion, std::map<int, Libro> &libros, QDate desde, QDate hasta)
{
    const db::Rows filas = conexion.query(
        QStringLiteral("SELECT Doctor,Fecha FROM [Agenda Turnos] WHERE ")
        + conexion.dialect().dayRange(QStringLiteral("Fecha"), desde, hasta) + QStringLiteral(" And ")
        + deEllos(QStringLiteral("Doctor"), libros));
    for (auto &[id, libro] : libros)
        libro.ocupados.clear();
    for (int i = 0; i < filas->rowCount(); ++i) {
        const QDateTime momento = filas->dateTime(i, 1);
        libros[int(filas->integer(i, 0))].ocupados.insert(minutoDe(momento.date(), momento.time()));
    }
}

/// The day's openings; an empty `libres` when there are none.
DiaConLugar buscarEn(const Libro &libro, const db::Doctor &profesional, QDate fecha, qint64 desde)
{
    DiaConLugar dia{profesional.id, profesional.nombre, fecha, {}, 0};
    const Plantilla *plantilla = libro.plantilla(fecha);
    if (!plantilla || !libro.atiende(fecha))
        return dia;
    std::vector<QTime> horas = GrillaDia(plantilla->jornada(fecha)).horas();
    // Overlapping halves of the day name a start time twice.
    std::sort(horas.begin(), horas.end());
    horas.erase(std::unique(horas.begin(), horas.end()), horas.end());
    for (const QTime &hora : horas) {
        const qint64 minuto = minutoDe(fecha, hora);
        if (minuto < desde || libro.ocupados.contains(minuto))
            continue;
        if (dia.libres++ == 0)
            dia.primera = hora;
    }
    return dia;
}

} // namespace

std::vector<DiaConLugar>
proximosLibres(db::Connection &conexion, const QVector<db::Doctor> &profesionales, const QDateTime &ahora, int cuantos)
{
    std::map<int, Libro> libros;
    for (const db::Doctor &profesional : profesionales)
        libros[profesional.id];
    std::vector<DiaConLugar> dias;
    if (libros.empty())
        return dias;
    for (const Plantilla &plantilla :
         plantillasVigentes(conexion, deEllos(QStringLiteral("iddoctor"), libros), ahora.date()))
        libros[plantilla.iddoctor].plantillas.append(plantilla);
    // Nobody attends after the last template ends.
    QDate ultimo;
    for (const auto &[id, libro] : libros)
        for (const Plantilla &plantilla : libro.plantillas)
            ultimo = ultimo.isValid() ? qMax(ultimo, plantilla.fechahasta) : plantilla.fechahasta;
    if (!ultimo.isValid())
        return dias;
    ultimo = qMin(ultimo, ahora.date().addDays(diasVistaLibres));
    leerNoLaborables(conexion, libros);

    const qint64 desde = minutoDe(ahora.date(), ahora.time());
    int tramo = primerTramo;
    for (QDate primero = ahora.date(); primero <= ultimo && int(dias.size()) < cuantos; tramo *= 2) {
        const QDate hasta = qMin(ultimo, primero.addDays(tramo - 1));
        leerOcupados(conexion, libros, primero, hasta);
        for (QDate fecha = primero; fecha <= hasta && int(dias.size()) < cuantos; fecha = fecha.addDays(1)) {
            const auto deEseDia = dias.size();
            for (const db::Doctor &profesional : profesionales)
                if (DiaConLugar dia = buscarEn(libros[profesional.id], profesional, fecha, desde); dia.libres > 0)
                    dias.push_back(std::move(dia));
            std::stable_sort(
                dias.begin() + qsizetype(deEseDia), dias.end(), [](const DiaConLugar &a, const DiaConLugar &b) {
                    return a.primera < b.primera;
                });
        }
        primero = hasta.addDays(1);
    }
    if (int(dias.size()) > cuantos)
        dias.resize(size_t(cuantos));
    return dias;
}

} // namespace agenda
