#include "agenda/DiasNoLaborables.h"

#include "agenda/Calendario.h"
#include "agenda/Textos.h"
#include "base/Clock.h"
#include "base/Fechas.h"
#include "db/Entorno.h"
#include "db/ListaDoctores.h"
#include "db/Recordset.h"

#include <algorithm>

namespace agenda {

namespace {

DiaNoLaborable deFila(const db::Recordset &fila)
{
    return {int(fila.integer(u"id")), int(fila.integer(u"dia")), int(fila.integer(u"mes")), int(fila.integer(u"anio"))};
}

QString preguntaEliminar(qsizetype cuantas, bool deTodos)
{
    QString texto = cuantas == 1
        ? QStringLiteral("¿Seguro que desea eliminar la fecha seleccionada?")
        : QStringLiteral("¿Seguro que desea eliminar las %1 fechas seleccionadas?").arg(cuantas);
    if (deTodos)
        texto += QStringLiteral("\nSe eliminarán de TODOS los profesionales.");
    return texto;
}

/// How far ahead appointments are looked for on days that are now off.
constexpr int diasVista = 400;

} // namespace

DiaNoLaborable DiaNoLaborable::de(QDate fecha, bool deCadaAnio)
{
    return {0, fecha.day(), fecha.month(), deCadaAnio ? 0 : fecha.year()};
}

bool DiaNoLaborable::igualA(const DiaNoLaborable &otro) const
{
    return dia == otro.dia && mes == otro.mes && anio == otro.anio;
}

bool DiaNoLaborable::abarca(QDate fecha) const
{
    return (dia == 0 || dia == fecha.day()) && (mes == 0 || mes == fecha.month())
        && (anio == 0 || anio == fecha.year());
}

QString DiaNoLaborable::texto() const
{
    const QString elDia = dia == 0 ? QStringLiteral("Todos los días") : QStringLiteral("El día %1").arg(dia);
    const QString delMes
        = mes < 1 || mes > 12 ? QStringLiteral("de cada mes") : QStringLiteral("de %1").arg(base::nombreMes(mes));
    const QString delAnio = anio == 0 ? QStringLiteral("de cada año.") : QStringLiteral("de %1.").arg(anio);
    return elDia + u' ' + delMes + u' ' + delAnio;
}

bool esNoLaborable(db::Connection &conexion, int iddoctor, QDate fecha)
{
    const db::Rows filas = conexion.query(
        QStringLiteral("SELECT * FROM [Agenda Turnos No Se Atiende] WHERE iddoctor = ?"
                       " and (dia = ? Or dia = 0) and (mes = ? Or mes = 0) and (anio = ? Or anio = 0)"),
        {iddoctor, fecha.day(), fecha.month(), fecha.year()});
    return filas->rowCount() > 0;
}

std::set<int> quienesNoAtienden(db::Connection &conexion, QDate fecha)
{
    const db::Rows filas = conexion.query(
        QStringLiteral("SELECT iddoctor FROM [Agenda Turnos No Se Atiende]"
                       " WHERE (dia = ? Or dia = 0) and (mes = ? Or mes = 0) and (anio = ? Or anio = 0)"),
        {fecha.day(), fecha.month(), fecha.year()});
    std::set<int> doctores;
    for (int i = 0; i < filas->rowCount(); ++i)
        doctores.insert(int(filas->integer(i, 0)));
    return doctores;
}

QVector<DiaNoLaborable> listarDiasNoLaborables(db::Connection &conexion, int iddoctor)
{
    db::Recordset filas(
        conexion,
        QStringLiteral("SELECT * FROM [Agenda Turnos No Se Atiende] WHERE iddoctor = ?"
                       " ORDER BY anio DESC,mes DESC,dia DESC"),
        {iddoctor});
    QVector<DiaNoLaborable> lista;
    for (; !filas.eof(); filas.moveNext())
        lista.append(deFila(filas));
    return lista;
}

std::set<QDate> diasNoLaborablesEntre(const QVector<DiaNoLaborable> &lista, QDate desde, QDate hasta)
{
    std::set<QDate> dias;
    for (QDate dia = desde; dia <= hasta; dia = dia.addDays(1)) {
        if (std::any_of(lista.begin(), lista.end(), [dia](const DiaNoLaborable &d) { return d.abarca(dia); }))
            dias.insert(dia);
    }
    return dias;
}

base::Control agregarDiasNoLaborables(db::Connection &conexion, int iddoctor, const QVector<DiaNoLaborable> &dias)
{
    if (dias.isEmpty())
        return sinFechasElegidas();
    db::Transaction transaccion(conexion);
    db::Recordset fila(conexion, QStringLiteral("SELECT * FROM [Agenda Turnos No Se Atiende] WHERE id = 0"));
    for (const DiaNoLaborable &dia : dias) {
        fila.addNew();
        fila.set(u"dia", dia.dia);
        fila.set(u"mes", dia.mes);
        fila.set(u"anio", dia.anio);
        fila.set(u"iddoctor", iddoctor);
        fila.update();
    }
    transaccion.commit();
    return std::nullopt;
}

base::Rechazo sinFechasElegidas()
{
    return {base::titulo::aviso, QStringLiteral("Debe seleccionar la/s fecha/s que no se atenderá.")};
}

base::Resultado<QVector<DiaNoLaborable>> leerPeriodo(const QString &desde, const QString &hasta, bool deCadaAnio)
{
    const QString campoDesde = QStringLiteral("desde"), campoHasta = QStringLiteral("hasta");
    if (desde.trimmed().isEmpty()) {
        base::Rechazo rechazo = sinFechasElegidas();
        rechazo.campo = campoDesde;
        return rechazo;
    }
    const auto primera = base::leerFecha(desde);
    if (!primera)
        return base::Rechazo{base::titulo::aviso, QStringLiteral("ERROR en la Fecha Inicial."), campoDesde};
    const auto ultima = hasta.trimmed().isEmpty() ? primera : base::leerFecha(hasta);
    if (!ultima)
        return base::Rechazo{base::titulo::aviso, QStringLiteral("ERROR en la Fecha Final."), campoHasta};
    if (*ultima < *primera) {
        return base::Rechazo{
            base::titulo::aviso,
            QStringLiteral("La Fecha Final no puede ser anterior a la Fecha Inicial."),
            campoHasta};
    }
    if (primera->daysTo(*ultima) >= maximoPeriodo) {
        return base::Rechazo{
            base::titulo::aviso,
            QStringLiteral("El período no puede abarcar más de %1 días.").arg(maximoPeriodo),
            campoHasta};
    }
    QVector<DiaNoLaborable> dias;
    for (QDate dia = *primera; dia <= *ultima; dia = dia.addDays(1)) {
        const DiaNoLaborable nuevo = DiaNoLaborable::de(dia, deCadaAnio);
        // A whole year "of each year" meets its first day again.
        if (dias.isEmpty() || !dias.first().igualA(nuevo))
            dias.append(nuevo);
    }
    return dias;
}

base::Resultado<AltaDiasNoLaborables>
agregarDiasNoLaborables(db::Entorno &entorno, const QVector<int> &doctores, const QVector<DiaNoLaborable> &dias)
{
    if (auto sinDerecho = db::controlarDerecho(entorno, derechoAgendas))
        return *sinDerecho;
    if (dias.isEmpty() || doctores.isEmpty())
        return sinFechasElegidas();
    db::Connection &conexion = entorno.conexion();
    const QDate hoy = entorno.clock().today(), limite = hoy.addDays(diasVista);
    const std::set<QDate> libres = diasNoLaborablesEntre(dias, hoy, limite);
    AltaDiasNoLaborables alta;
    db::Transaction transaccion(conexion);
    for (const int doctor : doctores) {
        QVector<DiaNoLaborable> tiene = listarDiasNoLaborables(conexion, doctor), nuevos;
        for (const DiaNoLaborable &dia : dias) {
            const auto igual = [&dia](const DiaNoLaborable &otro) { return otro.igualA(dia); };
            if (std::any_of(tiene.begin(), tiene.end(), igual)) {
                ++alta.yaEstaban;
                continue;
            }
            tiene.append(dia);
            nuevos.append(dia);
        }
        if (nuevos.isEmpty())
            continue;
        if (auto rechazo = agregarDiasNoLaborables(conexion, doctor, nuevos))
            return *rechazo;
        alta.agregados += int(nuevos.size());
        for (const QDate &dia : diasConTurnos(conexion, doctor, hoy, limite))
            alta.conTurnos += libres.contains(dia) ? 1 : 0;
    }
    transaccion.commit();
    return alta;
}

base::Resultado<int> eliminarDiasNoLaborables(db::Entorno &entorno, const QVector<int> &ids, bool deTodos)
{
    if (auto sinDerecho = db::controlarDerecho(entorno, derechoAgendas))
        return *sinDerecho;
    if (ids.isEmpty()
        || !entorno.mensajes().pregunta(base::titulo::confirmacion, preguntaEliminar(ids.size(), deTodos), false))
        return 0;
    db::Connection &conexion = entorno.conexion();
    db::Transaction transaccion(conexion);
    QVector<DiaNoLaborable> elegidos;
    for (const int id : ids) {
        const db::Recordset fila(
            conexion, QStringLiteral("SELECT * FROM [Agenda Turnos No Se Atiende] WHERE id = ?"), {id});
        if (fila.isEmpty())
            return registroEliminado();
        elegidos.append(deFila(fila));
    }
    int eliminados = 0;
    for (const DiaNoLaborable &dia : elegidos) {
        eliminados += deTodos
            ? conexion.execute(
                QStringLiteral("DELETE FROM [Agenda Turnos No Se Atiende] WHERE dia = ? and mes = ? and anio = ?"),
                {dia.dia, dia.mes, dia.anio})
            : conexion.execute(QStringLiteral("DELETE FROM [Agenda Turnos No Se Atiende] WHERE id = ?"), {dia.id});
    }
    transaccion.commit();
    return eliminados;
}

base::Control controlarDiaLaborable(db::Connection &conexion, int iddoctor, QDate fecha)
{
    if (!esNoLaborable(conexion, iddoctor, fecha))
        return std::nullopt;
    return base::Rechazo{
        base::titulo::aviso, QStringLiteral("La fecha seleccionada NO corresponde a un día laborable.")};
}

} // namespace agenda
