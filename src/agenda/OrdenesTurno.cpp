#include "agenda/OrdenesTurno.h"

#include "agenda/Textos.h"
#include "base/Fechas.h"
#include "base/Numeros.h"
#include "db/Connection.h"

#include <algorithm>

namespace agenda {

namespace {

const QString separacion = QStringLiteral("   ");
const QString separacionRenglon = QStringLiteral("     -     ");
/// Letters of a practice's name that fit into the line of a list.
constexpr int letrasPractica = 40;

QString siNo(bool valor) { return valor ? QStringLiteral("Si") : QStringLiteral("No"); }

enum Columna {
    ColId,
    ColSesiones,
    ColFecha,
    ColNumero,
    ColCosto,
    ColEntregada,
    ColAutorizada,
    ColPagado,
    ColRealizadas,
    ColPractica
};

OrdenTurno leer(const db::ResultSet &filas, int i)
{
    OrdenTurno orden;
    orden.id = filas.integer(i, ColId);
    orden.sesiones = int(filas.integer(i, ColSesiones));
    orden.fecha = filas.dateTime(i, ColFecha).date();
    orden.numero = filas.integer(i, ColNumero);
    orden.costo = filas.real(i, ColCosto);
    orden.entregada = filas.flag(i, ColEntregada);
    orden.autorizada = filas.flag(i, ColAutorizada);
    orden.pagado = filas.real(i, ColPagado);
    orden.realizadas = int(filas.integer(i, ColRealizadas));
    orden.practica = filas.text(i, ColPractica).simplified();
    return orden;
}

} // namespace

QStringList OrdenTurno::detalle() const
{
    const QString suNumero = numero > 0 ? QString::number(numero) : QString();
    const QString proxima = pendientes() > 0 ? QString::number(realizadas + 1) : QStringLiteral("No hay pendientes");
    return {
        QStringLiteral("Nº Orden: ") + suNumero + separacion + QStringLiteral("Fecha Orden: ")
            + base::fechaTexto(fecha),
        QStringLiteral("Costo: $") + base::dinero(costo) + separacion + QStringLiteral("Pagó: $") + base::dinero(pagado)
            + separacion + QStringLiteral("Debe: $") + base::dinero(debe()),
        QStringLiteral("Orden Entregada: ") + siNo(entregada) + separacion + QStringLiteral("Orden Autorizada: ")
            + siNo(autorizada),
        QStringLiteral("Total de Sesiones: ") + QString::number(sesiones) + separacion
            + QStringLiteral("Sesiones Realizadas: ") + QString::number(realizadas),
        QStringLiteral("Próximo Nº Sesión: ") + proxima};
}

QString OrdenTurno::renglon() const
{
    return QStringLiteral("Nº Orden: ") + (numero > 0 ? QString::number(numero) : QString()) + separacionRenglon
        + QStringLiteral("Fecha: ") + base::fechaTexto(fecha) + separacionRenglon + QStringLiteral("Práctica: ")
        + practica.left(letrasPractica) + QStringLiteral("...") + separacionRenglon
        + QStringLiteral("Sesiones Pendientes: ") + QString::number(pendientes());
}

std::vector<OrdenTurno> ordenesDelPaciente(db::Connection &conexion, int nrohc)
{
    const db::Rows filas = conexion.query(
        QStringLiteral(
            "SELECT id,sesiones,fecha,numero,costo,entregada,autorizada,"
            "(SELECT SUM(importe) FROM [Pacientes Pagos] WHERE [Pacientes Pagos].idorden = [Pacientes Ordenes].id"
            " and quien = 'P') AS pagado,"
            "(SELECT COUNT(id) FROM [Pacientes Sesiones] WHERE [Pacientes Sesiones].idorden = [Pacientes Ordenes].id)"
            " AS realizadas,"
            "(SELECT nombre FROM [Lista Nomenclador] WHERE [Lista Nomenclador].id = [Pacientes Ordenes].idpractica)"
            " AS practica FROM [Pacientes Ordenes] WHERE NroPaci = ? ORDER BY fecha,id"),
        {nrohc});
    std::vector<OrdenTurno> ordenes;
    ordenes.reserve(size_t(filas->rowCount()));
    for (int i = 0; i < filas->rowCount(); ++i)
        ordenes.push_back(leer(*filas, i));
    return ordenes;
}

std::vector<OrdenTurno> ordenesConSesiones(db::Connection &conexion, int nrohc)
{
    std::vector<OrdenTurno> ordenes = ordenesDelPaciente(conexion, nrohc);
    std::erase_if(ordenes, [](const OrdenTurno &orden) { return orden.pendientes() == 0; });
    return ordenes;
}

QStringList detalleOrdenes(db::Connection &conexion, qint64 idTurno)
{
    const db::Rows turno
        = conexion.query(QStringLiteral("SELECT NroHC,idorden FROM [Agenda Turnos] WHERE id = ?"), {idTurno});
    if (turno->rowCount() == 0 || turno->integer(0, 0) == nroBloqueado)
        return {};
    std::vector<OrdenTurno> ordenes = ordenesDelPaciente(conexion, int(turno->integer(0, 0)));
    std::reverse(ordenes.begin(), ordenes.end());
    const qint64 propia = turno->integer(0, 1);
    std::stable_partition(
        ordenes.begin(), ordenes.end(), [propia](const OrdenTurno &orden) { return orden.id == propia; });
    QStringList lineas;
    for (const OrdenTurno &orden : ordenes) {
        if (!lineas.isEmpty())
            lineas << QString();
        lineas << orden.detalle();
    }
    return lineas;
}

} // namespace agenda
