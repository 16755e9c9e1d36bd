#include "maintenance/Reemplazo.h"

#include "db/Entorno.h"
#include "db/Historial.h"
#include "db/ListaDoctores.h"
#include "maintenance/Entradas.h"

#include <QLocale>
#include <QSet>

namespace maintenance {

namespace {

using Repetido = UsoLista::Repetido;

QString cantidadTexto(int cantidad, const UsoLista &uso)
{
    const QLocale argentino(QLocale::Spanish, QLocale::Argentina);
    return argentino.toString(cantidad) + u' ' + (cantidad == 1 ? uso.uno : uso.varios);
}

QString conCondicion(const QString &sql, const UsoLista &uso)
{
    return uso.condicion.isEmpty() ? sql : sql + QStringLiteral(" And ") + uso.condicion;
}

/// Records of `id` that say the same as one of `destino`.
QSet<qint64> repetidos(db::Connection &conexion, const UsoLista &uso, qint64 id, qint64 destino)
{
    if (uso.repetido == Repetido::Queda || destino == 0)
        return {};
    const db::Dialect &d = conexion.dialect();
    QStringList iguales;
    for (const QString &columna : uso.clave)
        iguales << QStringLiteral("suyo.%1 = otro.%1").arg(d.identifier(columna));
    const db::Rows rows = conexion.query(
        QStringLiteral("SELECT suyo.id FROM %1 AS suyo INNER JOIN %1 AS otro ON (%2) WHERE suyo.%3 = ? And otro.%3 = ?")
            .arg(
                d.identifier(uso.tabla),
                iguales.join(QStringLiteral(" And ")),
                d.identifier(uso.columnas.constFirst())),
        {id, destino});
    QSet<qint64> ids;
    for (int i = 0; i < rows->rowCount(); ++i)
        ids.insert(rows->integer(i, 0));
    return ids;
}

/// What stands in the way of a replacement, or is lost by it.
struct Choques {
    base::Control rechazo;
    QStringList descartados; ///< "12 precios"
};

Choques buscarChoques(db::Connection &conexion, const Lista &lista, qint64 id, qint64 destino)
{
    Choques choques;
    for (const UsoLista &uso : lista.usos) {
        const int cantidad = int(repetidos(conexion, uso, id, destino).size());
        if (cantidad == 0)
            continue;
        if (uso.repetido == Repetido::SeDescarta)
            choques.descartados << cantidadTexto(cantidad, uso);
        else
            choques.rechazo = base::Rechazo{
                base::titulo::aviso,
                QStringLiteral("No se puede reemplazar: %1 ya figura%2 también con la otra entrada, y quedaría%2 "
                               "repetida%3. Corríjalo primero en la ficha de esos pacientes.")
                    .arg(
                        cantidadTexto(cantidad, uso),
                        cantidad == 1 ? QString() : QStringLiteral("n"),
                        cantidad == 1 ? QString() : QStringLiteral("s"))};
    }
    return choques;
}

void pasarUsos(db::Connection &conexion, const UsoLista &uso, qint64 id, qint64 destino)
{
    const db::Dialect &d = conexion.dialect();
    const QString tabla = d.identifier(uso.tabla);
    for (const qint64 repetido : repetidos(conexion, uso, id, destino))
        conexion.execute(QStringLiteral("DELETE FROM %1 WHERE id = ?").arg(tabla), {repetido});
    for (const QString &columna : uso.columnas)
        conexion.execute(
            conCondicion(QStringLiteral("UPDATE %1 SET %2 = ? WHERE %2 = ?").arg(tabla, d.identifier(columna)), uso),
            {destino, id});
}

void borrar(db::Connection &conexion, const Lista &lista, qint64 id)
{
    conexion.execute(
        QStringLiteral("DELETE FROM %1 WHERE id = ?").arg(conexion.dialect().identifier(lista.tabla)), {id});
}

} // namespace

QString CuentaUsos::texto() const
{
    QStringList textos;
    for (const Parte &parte : partes)
        textos << cantidadTexto(parte.cantidad, *parte.uso);
    const QString ultima = textos.isEmpty() ? QString() : textos.takeLast();
    return textos.isEmpty() ? ultima : textos.join(QStringLiteral(", ")) + QStringLiteral(" y ") + ultima;
}

CuentaUsos contarUsos(db::Connection &conexion, const Lista &lista, qint64 id)
{
    const db::Dialect &d = conexion.dialect();
    CuentaUsos cuenta;
    for (const UsoLista &uso : lista.usos) {
        QStringList alguna;
        for (const QString &columna : uso.columnas)
            alguna << d.identifier(columna) + QStringLiteral(" = ?");
        const QString sql = QStringLiteral("SELECT COUNT(id) FROM %1 WHERE (%2)")
                                .arg(d.identifier(uso.tabla), alguna.join(QStringLiteral(" Or ")));
        const int cantidad = int(conexion.query(conCondicion(sql, uso), db::Params(alguna.size(), id))->integer(0, 0));
        if (cantidad > 0)
            cuenta.partes.append({&uso, cantidad});
    }
    return cuenta;
}

base::Resultado<Eliminacion> eliminarEntrada(db::Entorno &entorno, const Lista &lista, qint64 id)
{
    if (auto sinDerecho = db::controlarDerecho(entorno, u"accesoconfiguracion"))
        return *sinDerecho;
    db::Connection &conexion = entorno.conexion();
    const auto entrada = leerEntrada(conexion, lista, id);
    if (!entrada)
        return entradaEliminada();
    const QString nombre = textoEntrada(lista, *entrada);
    if (const CuentaUsos usos = contarUsos(conexion, lista, id); usos.estaEnUso()) {
        const bool reemplazar = entorno.mensajes().pregunta(
            base::titulo::atencion,
            QStringLiteral("Esta entrada está en uso en %1: si se eliminara, esos registros quedarían sin «%2».\n"
                           "¿Desea elegir otra entrada que la reemplace?")
                .arg(usos.texto(), nombre),
            false);
        return reemplazar ? Eliminacion::PideReemplazo : Eliminacion::Cancelada;
    }
    if (!entorno.mensajes().pregunta(
            base::titulo::confirmacion,
            QStringLiteral("¿Seguro que desea eliminar «%1» de la lista %2?").arg(nombre, lista.titulo),
            false))
        return Eliminacion::Cancelada;

    db::Transaction transaccion(conexion);
    if (!leerEntrada(conexion, lista, id))
        return entradaEliminada();
    // Another station may have chosen it while the question was open.
    if (const CuentaUsos usos = contarUsos(conexion, lista, id); usos.estaEnUso())
        return base::Rechazo{
            base::titulo::atencion,
            QStringLiteral("No se eliminó «%1»: mientras tanto se usó en %2.").arg(nombre, usos.texto())};
    borrar(conexion, lista, id);
    db::registrarHistorial(
        entorno, ventanaHistorial, QStringLiteral("Se eliminó «%1» de la lista %2.").arg(nombre, lista.titulo));
    transaccion.commit();
    return Eliminacion::Hecha;
}

base::Resultado<bool> reemplazarEntrada(db::Entorno &entorno, const Lista &lista, qint64 id, qint64 destino)
{
    if (auto sinDerecho = db::controlarDerecho(entorno, u"accesoconfiguracion"))
        return *sinDerecho;
    if (id == destino || destino < 0 || (destino == 0 && !lista.vaciable))
        return base::Rechazo{
            base::titulo::aviso,
            QStringLiteral("Debe seleccionar la entrada que queda en su lugar."),
            QStringLiteral("destino")};
    db::Connection &conexion = entorno.conexion();
    const auto suya = leerEntrada(conexion, lista, id), otra = leerEntrada(conexion, lista, destino);
    if (!suya || (destino != 0 && !otra))
        return entradaEliminada();
    const Choques choques = buscarChoques(conexion, lista, id, destino);
    if (choques.rechazo)
        return *choques.rechazo;

    const QString nombre = textoEntrada(lista, *suya);
    const QString nuevo = otra ? QStringLiteral("«%1»").arg(textoEntrada(lista, *otra)) : QStringLiteral("ninguna");
    const CuentaUsos usos = contarUsos(conexion, lista, id);
    QString pregunta = usos.estaEnUso()
        ? QStringLiteral("Se cambiará «%1» por %2 en %3, y «%1» se eliminará de la lista %4.")
              .arg(nombre, nuevo, usos.texto(), lista.titulo)
        : QStringLiteral("«%1» no está en uso: sólo se eliminará de la lista %2.").arg(nombre, lista.titulo);
    if (!choques.descartados.isEmpty())
        pregunta += QStringLiteral("\nAdemás se elimina de «%1» lo que %2 ya tiene definido: %3.")
                        .arg(nombre, nuevo, choques.descartados.join(QStringLiteral(", ")));
    pregunta += QStringLiteral("\nEsta acción no se puede deshacer. ¿Seguro que desea continuar?");
    if (!entorno.mensajes().pregunta(base::titulo::confirmacion, pregunta, false))
        return false;

    db::Transaction transaccion(conexion);
    if (!leerEntrada(conexion, lista, id) || (destino != 0 && !leerEntrada(conexion, lista, destino)))
        return entradaEliminada();
    if (const Choques ahora = buscarChoques(conexion, lista, id, destino); ahora.rechazo)
        return *ahora.rechazo;
    const CuentaUsos cambiados = contarUsos(conexion, lista, id);
    for (const UsoLista &uso : lista.usos)
        pasarUsos(conexion, uso, id, destino);
    borrar(conexion, lista, id);
    db::registrarHistorial(
        entorno,
        ventanaHistorial,
        QStringLiteral("Se reemplazó «%1» por %2 en la lista %3. (%4)")
            .arg(
                nombre,
                nuevo,
                lista.titulo,
                cambiados.estaEnUso() ? cambiados.texto() : QStringLiteral("No estaba en uso")));
    transaccion.commit();
    return true;
}

} // namespace maintenance
