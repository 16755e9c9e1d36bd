#include "agenda/CambiosTurno.h"

#include "agenda/DiasNoLaborables.h"
#include "agenda/Reserva.h"
#include "agenda/Sobreturnos.h"
#include "agenda/Textos.h"
#include "base/Clock.h"
#include "base/Fechas.h"
#include "db/Config.h"
#include "db/Entorno.h"
#include "db/Historial.h"
#include "db/ListaDoctores.h"
#include "db/Recordset.h"

#include <functional>

namespace agenda {

namespace {

base::Rechazo atencion(const QString &texto) { return {base::titulo::atencion, texto}; }

db::Recordset leer(db::Connection &conexion, qint64 id)
{
    return {conexion, QStringLiteral("SELECT * FROM [Agenda Turnos] WHERE id = ?"), {id}};
}

/// Who has the mark `aplicaraturnos` works on the days from today on only.
base::Control controlarDia(db::Entorno &entorno, QDate fecha)
{
    if (fecha < entorno.clock().today() && db::opcionUsuario(entorno, u"aplicaraturnos").toBool())
        return db::sinPermiso();
    return std::nullopt;
}

base::Control controlarDia(db::Entorno &entorno, const db::Recordset &turno)
{
    return controlarDia(entorno, turno.date(u"Fecha"));
}

/// Right, transaction, re-reading and writing that all changes of one row share. `cambio` sets columns of the row, or
/// refuses.
base::Control cambiar(db::Entorno &entorno, qint64 id, const std::function<base::Control(db::Recordset &)> &cambio)
{
    if (auto sinDerecho = db::controlarDerecho(entorno, derechoCambios))
        return sinDerecho;
    db::Transaction transaccion(entorno.conexion());
    db::Recordset turno = leer(entorno.conexion(), id);
    if (turno.isEmpty())
        return registroEliminado();
    if (turno.integer(u"NroHC") == nroBloqueado)
        return horarioBloqueado();
    if (auto rechazo = controlarDia(entorno, turno))
        return rechazo;
    if (auto rechazo = cambio(turno))
        return rechazo;
    turno.update();
    transaccion.commit();
    return std::nullopt;
}

base::Rechazo atendidoNoPuedeFaltar()
{
    return atencion(
        QStringLiteral("Antes de marcar un turno como 'Ausente', primero debe indicar que no se ha 'Atendido'."));
}

/// Cash movement that goes when the appointment becomes absent; 0 for none. Asks the person, so it must not be called
/// inside a transaction.
qint64 pagoAEliminar(db::Entorno &entorno, qint64 id)
{
    if (db::controlarDerecho(entorno, derechoCambios))
        return 0;
    if (!db::Config(entorno.conexion()).bandera(u"pagocaja"))
        return 0;
    const db::Recordset turno = leer(entorno.conexion(), id);
    if (turno.isEmpty() || !turno.flag(u"llegado") || turno.flag(u"Atendido") || controlarDia(entorno, turno))
        return 0;
    const qint64 idcaja = turno.integer(u"idcaja");
    if (idcaja == 0
        || !entorno.mensajes().pregunta(
            base::titulo::confirmacion,
            QStringLiteral("Existe un pago en Caja que corresponde a este turno. ¿Desea eliminar el pago registrado"
                           " en Caja?"),
            false))
        return 0;
    return idcaja;
}

} // namespace

base::Control marcarLlegado(db::Entorno &entorno, qint64 id, bool llego)
{
    const qint64 idcaja = llego ? 0 : pagoAEliminar(entorno, id);
    return cambiar(entorno, id, [&](db::Recordset &turno) -> base::Control {
        if (!llego && turno.flag(u"Atendido"))
            return atendidoNoPuedeFaltar();
        // Marked once more, the hour at which he really came stays.
        if (!llego || !turno.flag(u"llegado"))
            turno.set(u"fechahorallegada", llego ? QVariant(entorno.clock().now()) : QVariant());
        turno.set(u"llegado", llego);
        // Another station may have taken a new payment while the question was open: only the one asked about goes.
        if (idcaja != 0 && turno.integer(u"idcaja") == idcaja) {
            turno.set(u"idcaja", 0);
            turno.set(u"pagado", false);
            entorno.conexion().execute(QStringLiteral("DELETE FROM [Caja] WHERE id = ?"), {idcaja});
        }
        return std::nullopt;
    });
}

base::Control marcarAtendido(db::Entorno &entorno, qint64 id, bool atendido)
{
    return cambiar(entorno, id, [&](db::Recordset &turno) -> base::Control {
        if (atendido && !turno.flag(u"llegado")) {
            return atencion(
                QStringLiteral("Antes de marcar un turno como 'Atendido', primero debe indicar que 'llegó'."));
        }
        turno.set(u"Atendido", atendido);
        return std::nullopt;
    });
}

base::Control modificar(db::Entorno &entorno, qint64 id, const CambioTurno &cambio)
{
    return cambiar(entorno, id, [&](db::Recordset &turno) -> base::Control {
        if (cambio.fecha && *cambio.fecha != turno.dateTime(u"Fecha")) {
            const int doctor = int(turno.integer(u"Doctor"));
            if (auto rechazo = controlarDia(entorno, cambio.fecha->date()))
                return rechazo;
            if (auto rechazo = controlarDiaLaborable(entorno.conexion(), doctor, cambio.fecha->date())) {
                rechazo->campo = QStringLiteral("fechadia");
                return rechazo;
            }
            if (controlarSobreturno(entorno.conexion(), doctor, *cambio.fecha, id) != Permiso::Permitido) {
                base::Rechazo rechazo = rechazoSobreturnos({*cambio.fecha}, false);
                rechazo.campo = QStringLiteral("listahoras");
                return rechazo;
            }
            turno.set(u"Fecha", *cambio.fecha);
        }
        if (cambio.motivo) {
            if (*cambio.motivo == 0 && db::Config(entorno.conexion()).bandera(u"forzarmotivo")) {
                return base::Rechazo{
                    base::titulo::aviso,
                    QStringLiteral("Debe indicar el motivo de la consulta."),
                    QStringLiteral("motivo")};
            }
            turno.set(u"motivo", *cambio.motivo);
        }
        if (cambio.observacionestur)
            turno.set(u"observacionestur", cambio.observacionestur->trimmed());
        return std::nullopt;
    });
}

base::Resultado<int> liberar(db::Entorno &entorno, const QVector<qint64> &ids)
{
    if (auto sinDerecho = db::controlarDerecho(entorno, u"accesoeliminarturnos"))
        return *sinDerecho;
    if (ids.isEmpty()
        || !entorno.mensajes().pregunta(
            base::titulo::confirmacion,
            QStringLiteral("¿Seguro que desea Eliminar el/los turno/s seleccionado/s?"),
            false))
        return 0;

    db::Connection &conexion = entorno.conexion();
    db::Transaction transaccion(conexion);
    QStringList momentos;
    for (const qint64 id : ids) {
        const db::Recordset turno = leer(conexion, id);
        if (turno.isEmpty())
            return registroEliminado();
        if (auto rechazo = controlarDia(entorno, turno))
            return *rechazo;
        momentos << base::fechaHoraTexto(turno.dateTime(u"Fecha"));
        conexion.execute(QStringLiteral("DELETE FROM [Agenda Turnos] WHERE id = ?"), {id});
    }
    db::registrarHistorial(
        entorno,
        QStringLiteral("Agenda de Turnos"),
        QStringLiteral("Eliminación de turnos. (Fecha/Hora Turno/s: %1)").arg(momentos.join(QStringLiteral(", "))));
    transaccion.commit();
    return int(ids.size());
}

base::Control bloquear(db::Entorno &entorno, int doctor, const QVector<QDateTime> &libres)
{
    if (auto sinDerecho = db::controlarDerecho(entorno, u"accesoasignarturno"))
        return sinDerecho;
    db::Connection &conexion = entorno.conexion();
    db::Transaction transaccion(conexion);
    for (const QDateTime &momento : libres) {
        const QString fecha = conexion.dialect().dateTime(momento);
        const db::Rows ocupado = conexion.query(
            QStringLiteral("SELECT id FROM [Agenda Turnos] WHERE (Fecha = %1) And Doctor = ?").arg(fecha), {doctor});
        if (ocupado->rowCount() > 0) {
            return atencion(
                QStringLiteral("Uno de los horarios seleccionados ya no está libre: fue ocupado desde otro equipo."));
        }
        conexion.execute(
            QStringLiteral("INSERT INTO [Agenda Turnos] (NroHC,Fecha,motivo,Atendido,Doctor,pagado,llegado) VALUES"
                           " (%1,%2,0,0,?,0,0)")
                .arg(QString::number(nroBloqueado), fecha),
            {doctor});
    }
    transaccion.commit();
    return std::nullopt;
}

} // namespace agenda
