#include "agenda/Telefonos.h"

#include "agenda/Textos.h"
#include "db/Entorno.h"
#include "db/Historial.h"
#include "db/ListaDoctores.h"
#include "db/Recordset.h"

namespace agenda {

namespace {

struct Columna {
    QStringView nombre;
    QString Telefono::*texto;
};
constexpr Columna columnas[] = {
    {u"nombre", &Telefono::nombre},
    {u"telefono", &Telefono::telefono},
    {u"celular", &Telefono::celular},
    {u"email", &Telefono::email},
    {u"direccion", &Telefono::direccion},
    {u"observaciones", &Telefono::observaciones},
};

Telefono deFila(const db::Recordset &fila)
{
    Telefono entrada;
    entrada.id = int(fila.integer(u"id"));
    for (const Columna &columna : columnas)
        entrada.*columna.texto = fila.text(columna.nombre);
    return entrada;
}

db::Recordset leerFila(db::Connection &conexion, int id)
{
    return {conexion, QStringLiteral("SELECT * FROM [Telefonos] WHERE id = ?"), {id}};
}

base::Control validar(const Telefono &entrada)
{
    if (entrada.nombre.trimmed().isEmpty())
        return base::Rechazo{base::titulo::aviso, QStringLiteral("Debe ingresar el Nombre."), QStringLiteral("nombre")};
    const QString numeros = entrada.telefono + entrada.celular + entrada.email;
    if (numeros.trimmed().isEmpty())
        return base::Rechazo{
            base::titulo::aviso,
            QStringLiteral("Debe ingresar un Teléfono, un Celular o un Correo electrónico."),
            QStringLiteral("telefono")};
    return std::nullopt;
}

} // namespace

std::vector<Telefono> listarTelefonos(db::Connection &conexion)
{
    db::Recordset filas(conexion, QStringLiteral("SELECT * FROM [Telefonos] ORDER BY nombre,id"));
    std::vector<Telefono> entradas;
    for (; !filas.eof(); filas.moveNext())
        entradas.push_back(deFila(filas));
    return entradas;
}

std::optional<Telefono> leerTelefono(db::Connection &conexion, int id)
{
    const db::Recordset fila = leerFila(conexion, id);
    return fila.isEmpty() ? std::nullopt : std::optional(deFila(fila));
}

base::Resultado<int> guardarTelefono(db::Entorno &entorno, const Telefono &entrada)
{
    if (auto sinDerecho = db::controlarDerecho(entorno, derechoAgendas))
        return *sinDerecho;
    if (auto falta = validar(entrada))
        return *falta;
    db::Transaction transaccion(entorno.conexion());
    db::Recordset fila = leerFila(entorno.conexion(), entrada.id);
    if (entrada.id == 0)
        fila.addNew();
    else if (fila.isEmpty())
        return registroEliminado();
    for (const Columna &columna : columnas)
        fila.set(columna.nombre, (entrada.*columna.texto).trimmed());
    const qint64 id = fila.update();
    transaccion.commit();
    return int(id);
}

base::Resultado<bool> eliminarTelefono(db::Entorno &entorno, int id)
{
    if (auto sinDerecho = db::controlarDerecho(entorno, derechoAgendas))
        return *sinDerecho;
    const auto entrada = leerTelefono(entorno.conexion(), id);
    if (!entrada)
        return registroEliminado();
    if (!entorno.mensajes().pregunta(
            base::titulo::confirmacion,
            QStringLiteral("¿Seguro que desea eliminar a ' %1 ' de la lista de teléfonos?").arg(entrada->nombre),
            false))
        return false;
    db::Transaction transaccion(entorno.conexion());
    if (entorno.conexion().execute(QStringLiteral("DELETE FROM [Telefonos] WHERE id = ?"), {id}) == 0)
        return registroEliminado();
    db::registrarHistorial(
        entorno,
        QStringLiteral("Teléfonos"),
        QStringLiteral("Se eliminó a '%1' de la lista de teléfonos.").arg(entrada->nombre));
    transaccion.commit();
    return true;
}

} // namespace agenda
