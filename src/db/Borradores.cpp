#include "db/Borradores.h"

#include "base/Clock.h"
#include "db/Entorno.h"
#include "db/Recordset.h"

#include <QJsonDocument>

namespace db {

namespace {

const QString deEstaPersona = QStringLiteral(" FROM [Borradores] WHERE usuario = ? and equipo = ?");

} // namespace

qint64 Borradores::guardar(const Borrador &borrador)
{
    Connection &conexion = m_entorno.conexion();
    // By its id alone: what was typed goes with the window when another user takes over.
    Recordset fila(conexion, QStringLiteral("SELECT * FROM [Borradores] WHERE id = ?"), {borrador.id});
    if (fila.isEmpty())
        fila.addNew();
    fila.set(u"usuario", m_entorno.usuarioActual());
    fila.set(u"equipo", m_entorno.equipo().left(100));
    fila.set(u"ventana", borrador.ventana);
    fila.set(u"registro", borrador.registro);
    fila.set(u"NroPaci", borrador.nropaci);
    fila.set(u"titulo", borrador.titulo.left(255));
    fila.set(u"fecha", m_entorno.clock().now());
    fila.set(u"datos", QString::fromUtf8(QJsonDocument(borrador.datos).toJson(QJsonDocument::Compact)));
    return fila.update();
}

std::optional<Borrador> Borradores::leer(const QString &ventana, qint64 registro, qint64 salvo)
{
    const Recordset fila(
        m_entorno.conexion(),
        QStringLiteral("SELECT *") + deEstaPersona
            + QStringLiteral(" and ventana = ? and registro = ? and id <> ? ORDER BY fecha DESC, id DESC"),
        {m_entorno.usuarioActual(), m_entorno.equipo().left(100), ventana, registro, salvo});
    if (fila.isEmpty())
        return std::nullopt;
    return Borrador{
        .id = fila.integer(u"id"),
        .ventana = ventana,
        .registro = registro,
        .nropaci = int(fila.integer(u"NroPaci")),
        .titulo = fila.text(u"titulo"),
        .fecha = fila.dateTime(u"fecha"),
        .datos = QJsonDocument::fromJson(fila.text(u"datos").toUtf8()).object()};
}

void Borradores::borrar(qint64 id)
{
    m_entorno.conexion().execute(QStringLiteral("DELETE FROM [Borradores] WHERE id = ?"), {id});
}

QVector<Borrador> Borradores::pendientes()
{
    Connection &conexion = m_entorno.conexion();
    const Rows rows = conexion.query(
        QStringLiteral("SELECT id,ventana,registro,NroPaci,titulo,fecha,"
                       "(SELECT COUNT(*) FROM [Pacientes] WHERE [Pacientes].NroHC = [Borradores].NroPaci) AS hay")
            + deEstaPersona + QStringLiteral(" ORDER BY fecha DESC, id DESC"),
        {m_entorno.usuarioActual(), m_entorno.equipo().left(100)});
    QVector<Borrador> todos;
    for (int i = 0; i < rows->rowCount(); ++i) {
        Borrador suyo{
            .id = rows->integer(i, 0),
            .ventana = rows->text(i, 1),
            .registro = rows->integer(i, 2),
            .nropaci = int(rows->integer(i, 3)),
            .titulo = rows->text(i, 4),
            .fecha = rows->dateTime(i, 5),
            .datos = {}};
        if (suyo.nropaci == 0 || rows->integer(i, 6) > 0)
            todos.append(std::move(suyo));
        else if (!conexion.readOnly())
            borrar(suyo.id);
    }
    return todos;
}

} // namespace db
