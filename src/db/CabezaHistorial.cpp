#include "db/CabezaHistorial.h"

#include "db/CadenaHistorial.h"
#include "db/Entorno.h"
#include "db/Error.h"

#include <QFile>

namespace db {

namespace {

constexpr int basesRecordadas = 20;

QString archivo(Entorno &entorno) { return entorno.carpetaPrograma() + QStringLiteral("/historial.dat"); }

/// How the file calls the database: where it is, in letters that hold no blank.
QByteArray lugar(Entorno &entorno)
{
    const bool servidor = entorno.conexion().dialect().kind() == Dialect::Kind::SqlServer;
    return (servidor ? QByteArrayLiteral("servidor") : entorno.carpetaDatos().toUtf8()).toPercentEncoding("/:\\");
}

QList<QByteArray> lineas(Entorno &entorno)
{
    QFile datos(archivo(entorno));
    return datos.open(QIODevice::ReadOnly) ? datos.read(64 * 1024).split('\n') : QList<QByteArray>();
}

} // namespace

std::optional<CabezaHistorial> cabezaRecordada(Entorno &entorno)
{
    const QByteArray suyo = lugar(entorno) + ' ';
    for (const QByteArray &linea : lineas(entorno)) {
        if (!linea.startsWith(suyo))
            continue;
        const QList<QByteArray> partes = linea.mid(suyo.size()).split(' ');
        bool esNumero = false;
        CabezaHistorial cabeza;
        cabeza.orden = partes.value(1).toInt(&esNumero);
        cabeza.sal = QByteArray::fromHex(partes.value(0));
        cabeza.sello = Huella::de(QByteArray::fromHex(partes.value(2)));
        cabeza.fecha = partes.value(3).replace('T', ' ');
        // A line that a power cut left half written remembers nothing.
        if (partes.size() == 5 && partes[4] == "." && esNumero)
            return cabeza;
    }
    return std::nullopt;
}

bool sigueEnCadena(CadenaHistorial &cadena, const CabezaHistorial &cabeza)
{
    const Eslabon &comienzo = cadena.comienzo();
    if (cabeza.sal != comienzo.sal)
        return false;
    if (cabeza.orden <= comienzo.orden)
        return cabeza.orden < comienzo.orden || cabeza.sello == comienzo.sello;
    const std::optional<Eslabon> eslabon = cadena.eslabon(cabeza.orden);
    return eslabon && eslabon->sello == cabeza.sello;
}

void recordarCabeza(Entorno &entorno, const CabezaHistorial &cabeza)
{
    const QByteArray suyo = lugar(entorno) + ' ';
    QByteArray texto = suyo + cabeza.sal.toHex() + ' ' + QByteArray::number(cabeza.orden) + ' '
        + cabeza.sello.bytes().toHex() + ' ' + QByteArray(cabeza.fecha).replace(' ', 'T') + " .\n";
    int otras = 0;
    for (const QByteArray &linea : lineas(entorno))
        if (!linea.isEmpty() && !linea.startsWith(suyo) && ++otras < basesRecordadas)
            texto += linea + '\n';
    // Rewritten in place, without waiting for the disk: it happens with every entry of the log.
    QFile datos(archivo(entorno));
    if (datos.open(QIODevice::WriteOnly))
        datos.write(texto);
}

void aceptarFinal(Entorno &entorno)
{
    CadenaHistorial cadena(entorno.conexion());
    try {
        const std::optional<Eslabon> ultimo = cadena.abrir() ? cadena.cola() : std::nullopt;
        if (ultimo)
            recordarCabeza(entorno, {cadena.comienzo().sal, ultimo->orden, ultimo->sello, ultimo->fecha});
    } catch (const Error &error) {
        if (error.kind() != Error::Kind::NoSuchTable)
            throw;
    }
}

} // namespace db
