#include "agenda/DiasNoLaborables.h"

#include "base/Fechas.h"
#include "db/Entorno.h"
#include "db/Recordset.h"

#include <algorithm>

namespace agenda {

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

QVector<DiaNoLaborable> listarDiasNoLaborables(db::Connection &conexion, int iddoctor)
{
    db::Recordset filas(
        conexion,
        QStringLiteral("SELECT * FROM [Agenda Turnos No Se Atiende] WHERE iddoctor = ?"
                       " ORDER BY anio DESC,mes DESC,dia DESC"),
        {iddoctor});
    QVector<DiaNoLaborable> lista;
    for (; !filas.eof(); filas.moveNext()) {
        lista.append(
            {int(filas.integer(u"id")),
             int(filas.integer(u"dia")),
             int(filas.integer(u"mes")),
             int(filas.integer(u"anio"))});
    }
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
    if (dias.isEmpty()) {
        return base::Rechazo{base::titulo::aviso, QStringLiteral("Debe seleccionar la/s fecha/s que no se atenderá.")};
    }
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

bool eliminarDiaNoLaborable(db::Entorno &entorno, int id)
{
    if (!entorno.mensajes().pregunta(
            base::titulo::confirmacion, QStringLiteral("¿Seguro que desea eliminar la fecha seleccionada?"), false))
        return false;
    entorno.conexion().execute(QStringLiteral("DELETE FROM [Agenda Turnos No Se Atiende] WHERE id = ?"), {id});
    return true;
}

base::Control controlarDiaLaborable(db::Connection &conexion, int iddoctor, QDate fecha)
{
    if (!esNoLaborable(conexion, iddoctor, fecha))
        return std::nullopt;
    return base::Rechazo{
        base::titulo::aviso, QStringLiteral("La fecha seleccionada NO corresponde a un día laborable.")};
}

} // namespace agenda
