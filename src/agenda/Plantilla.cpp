#include "agenda/Plantilla.h"

#include "agenda/Textos.h"
#include "base/Fechas.h"
#include "db/Config.h"
#include "db/Entorno.h"
#include "db/ListaDoctores.h"
#include "db/Recordset.h"

namespace agenda {

namespace {

/// Column prefixes of the weekdays, Sunday first.
constexpr std::array<const char *, 7> prefijos = {"Do", "Lu", "Ma", "Mi", "Ju", "Vi", "Sa"};

struct Campo {
    const char *sufijo;
    std::optional<QTime> Jornada::*hora;
};
constexpr std::array<Campo, 4> campos = {{
    {"MaDesde", &Jornada::maDesde},
    {"MaHasta", &Jornada::maHasta},
    {"TaDesde", &Jornada::taDesde},
    {"TaHasta", &Jornada::taHasta},
}};

QString columnaHora(size_t dia, const Campo &campo)
{
    return QLatin1String(prefijos[dia]) + QLatin1String(campo.sufijo);
}

QString columnaDuracion(size_t dia) { return QStringLiteral("durtur%1").arg(dia + 1); }

/// Only the hour of the stored moment counts; its date part is the day zero of the tables.
std::optional<QTime> hora(const db::Recordset &fila, const QString &columna)
{
    const QDateTime momento = fila.dateTime(columna);
    if (!momento.isValid())
        return std::nullopt;
    return momento.time();
}

QVariant guardada(const std::optional<QTime> &hora)
{
    return hora ? QVariant(QDateTime(QDate(1899, 12, 30), *hora)) : QVariant();
}

int limite(const db::Recordset &fila, QStringView columna)
{
    return fila.isNull(columna) ? -1 : int(fila.integer(columna));
}

Plantilla deFila(const db::Recordset &fila)
{
    Plantilla p;
    p.id = int(fila.integer(u"id"));
    p.iddoctor = int(fila.integer(u"iddoctor"));
    p.fechadesde = fila.date(u"fechadesde");
    p.fechahasta = fila.date(u"fechahasta");
    for (size_t d = 0; d < p.dias.size(); ++d) {
        Jornada &jornada = p.dias[d];
        for (const Campo &campo : campos)
            jornada.*campo.hora = hora(fila, columnaHora(d, campo));
        // A length of nothing would never reach the end of the day.
        const int duracion = int(fila.integer(columnaDuracion(d)));
        jornada.duracion = duracion > 0 ? duracion : duracionSupuesta;
    }
    p.sobreturnos.cantidadsobreturnos = limite(fila, u"cantidadsobreturnos");
    p.sobreturnos.cantidadsobreturnoshora = limite(fila, u"cantidadsobreturnoshora");
    p.sobreturnos.sobreturnoshoraresaltar = fila.flag(u"sobreturnoshoraresaltar");
    p.sobreturnos.solosobreturnoshoraplanilla = fila.flag(u"solosobreturnoshoraplanilla");
    return p;
}

/// Reads one of both dates; `cual` is "Inicial" or "Final".
base::Resultado<QDate> leerLimite(const QString &texto, const QString &cual, const QString &campo)
{
    if (texto.trimmed().isEmpty())
        return base::Rechazo{base::titulo::aviso, QStringLiteral("Debe ingresar la Fecha %1.").arg(cual), campo};
    const auto fecha = base::leerFecha(texto);
    if (!fecha)
        return base::Rechazo{base::titulo::aviso, QStringLiteral("ERROR en la Fecha %1.").arg(cual), campo};
    return *fecha;
}

} // namespace

const Jornada &Plantilla::jornada(QDate fecha) const { return dias[size_t(base::diaSemana(fecha) - 1)]; }

std::optional<Plantilla> elegirPlantilla(db::Connection &conexion, int iddoctor, QDate fecha)
{
    const QString dia = conexion.dialect().date(fecha);
    const db::Recordset filas(
        conexion,
        QStringLiteral("SELECT * FROM [Agenda Turnos Horarios] WHERE iddoctor = ? and fechadesde <= ") + dia
            + QStringLiteral(" and fechahasta >= ") + dia + QStringLiteral(" ORDER BY id DESC"),
        {iddoctor});
    if (filas.isEmpty())
        return std::nullopt;
    return deFila(filas);
}

std::map<int, Plantilla> elegirPlantillas(db::Connection &conexion, QDate fecha)
{
    const QString dia = conexion.dialect().date(fecha);
    db::Recordset filas(
        conexion,
        QStringLiteral("SELECT * FROM [Agenda Turnos Horarios] WHERE fechadesde <= ") + dia
            + QStringLiteral(" and fechahasta >= ") + dia + QStringLiteral(" ORDER BY id DESC"));
    std::map<int, Plantilla> suyas;
    for (; !filas.eof(); filas.moveNext())
        suyas.try_emplace(int(filas.integer(u"iddoctor")), deFila(filas)); // the newest comes first
    return suyas;
}

QVector<Plantilla> plantillasVigentes(db::Connection &conexion, const QString &cuales, QDate desde)
{
    db::Recordset filas(
        conexion,
        QStringLiteral("SELECT * FROM [Agenda Turnos Horarios] WHERE ") + cuales + QStringLiteral(" and fechahasta >= ")
            + conexion.dialect().date(desde) + QStringLiteral(" ORDER BY id DESC"));
    QVector<Plantilla> plantillas;
    for (; !filas.eof(); filas.moveNext())
        plantillas.append(deFila(filas));
    return plantillas;
}

Plantilla plantillaNueva(db::Connection &conexion, int iddoctor)
{
    Plantilla p;
    p.iddoctor = iddoctor;
    const db::Config config(conexion);
    for (size_t d = 1; d < p.dias.size(); ++d)
        if (const int duracion = config.numero(columnaDuracion(d)); duracion > 0)
            p.dias[d].duracion = duracion;
    return p;
}

std::optional<Plantilla> leerPlantilla(db::Connection &conexion, int id)
{
    const db::Recordset filas(conexion, QStringLiteral("SELECT * FROM [Agenda Turnos Horarios] WHERE id = ?"), {id});
    if (filas.isEmpty())
        return std::nullopt;
    return deFila(filas);
}

QVector<PlantillaListada> listarPlantillas(db::Connection &conexion, int iddoctor)
{
    const db::Rows filas = conexion.query(
        QStringLiteral("SELECT id,fechadesde,fechahasta FROM [Agenda Turnos Horarios] WHERE iddoctor = ? ORDER BY id"),
        {iddoctor});
    QVector<PlantillaListada> lista;
    for (int i = 0; i < filas->rowCount(); ++i) {
        const QDate desde = filas->dateTime(i, 1).date(), hasta = filas->dateTime(i, 2).date();
        lista.append(
            {int(filas->integer(i, 0)),
             QStringLiteral("Plantilla Nº %1 (abarca desde el %2 hasta el %3)")
                 .arg(QString::number(i + 1), base::fechaTexto(desde), base::fechaTexto(hasta)),
             desde,
             hasta});
    }
    return lista;
}

AjustesSobreturno ajustesSobreturno(db::Connection &conexion, int iddoctor, QDate fecha)
{
    const auto plantilla = elegirPlantilla(conexion, iddoctor, fecha);
    return plantilla ? plantilla->sobreturnos : AjustesSobreturno{};
}

base::Resultado<int>
guardarPlantilla(db::Connection &conexion, Plantilla plantilla, const QString &fechadesde, const QString &fechahasta)
{
    const auto desde = leerLimite(fechadesde, QStringLiteral("Inicial"), QStringLiteral("fechadesde"));
    if (!desde)
        return desde.rechazo();
    const auto hasta = leerLimite(fechahasta, QStringLiteral("Final"), QStringLiteral("fechahasta"));
    if (!hasta)
        return hasta.rechazo();

    db::Transaction transaccion(conexion);
    db::Recordset fila(conexion, QStringLiteral("SELECT * FROM [Agenda Turnos Horarios] WHERE id = ?"), {plantilla.id});
    if (plantilla.id == 0)
        fila.addNew();
    else if (fila.isEmpty())
        return registroEliminado();

    fila.set(u"iddoctor", plantilla.iddoctor);
    fila.set(u"fechadesde", *desde);
    fila.set(u"fechahasta", *hasta);
    for (size_t d = 0; d < plantilla.dias.size(); ++d) {
        const Jornada &jornada = plantilla.dias[d];
        for (const Campo &campo : campos)
            fila.set(columnaHora(d, campo), guardada(jornada.*campo.hora));
        fila.set(columnaDuracion(d), jornada.duracion > 0 ? jornada.duracion : duracionSupuesta);
    }
    fila.set(u"cantidadsobreturnos", plantilla.sobreturnos.cantidadsobreturnos);
    fila.set(u"cantidadsobreturnoshora", plantilla.sobreturnos.cantidadsobreturnoshora);
    fila.set(u"sobreturnoshoraresaltar", plantilla.sobreturnos.sobreturnoshoraresaltar);
    fila.set(u"solosobreturnoshoraplanilla", plantilla.sobreturnos.solosobreturnoshoraplanilla);
    const qint64 id = fila.update();
    transaccion.commit();
    return int(id);
}

base::Resultado<int>
guardarPlantilla(db::Entorno &entorno, const Plantilla &plantilla, const QString &fechadesde, const QString &fechahasta)
{
    if (auto sinDerecho = db::controlarDerecho(entorno, derechoAgendas))
        return *sinDerecho;
    return guardarPlantilla(entorno.conexion(), plantilla, fechadesde, fechahasta);
}

base::Resultado<bool> eliminarPlantilla(db::Entorno &entorno, int id)
{
    if (auto sinDerecho = db::controlarDerecho(entorno, derechoAgendas))
        return *sinDerecho;
    if (!entorno.mensajes().pregunta(
            base::titulo::confirmacion, QStringLiteral("¿Seguro que desea eliminar la plantilla seleccionada?"), false))
        return false;
    if (entorno.conexion().execute(QStringLiteral("DELETE FROM [Agenda Turnos Horarios] WHERE id = ?"), {id}) == 0)
        return registroEliminado();
    return true;
}

} // namespace agenda
