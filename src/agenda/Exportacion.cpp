#include "agenda/Exportacion.h"

#include "agenda/Textos.h"
#include "db/Connection.h"
#include "db/Entorno.h"
#include "db/Historial.h"
#include "db/ListaDoctores.h"

#include <QSaveFile>

namespace agenda {

base::Control
exportarArchivo(db::Entorno &entorno, const QString &archivo, const QByteArray &bytes, const QString &accion)
{
    if (auto sinDerecho = db::controlarDerecho(entorno, derechoAgendas))
        return sinDerecho;
    QSaveFile destino(archivo);
    const auto fallo = [&destino] {
        return base::Rechazo{
            base::titulo::error, QStringLiteral("No se pudo escribir el archivo: %1").arg(destino.errorString())};
    };
    if (!destino.open(QIODevice::WriteOnly) || destino.write(bytes) != bytes.size())
        return fallo();
    db::Transaction transaccion(entorno.conexion());
    db::registrarHistorial(entorno, QStringLiteral("Agenda de Turnos"), accion);
    if (!destino.commit())
        return fallo();
    transaccion.commit();
    return std::nullopt;
}

QString cantidadTurnos(int cantidad)
{
    return cantidad == 1 ? QStringLiteral("1 turno") : QStringLiteral("%1 turnos").arg(cantidad);
}

} // namespace agenda
