#include "maintenance/Historial.h"

#include "db/Entorno.h"
#include "db/Error.h"
#include "db/ListaDoctores.h"

#include <QElapsedTimer>

#include <algorithm>

namespace maintenance {

namespace {

// A slice should be over before anybody notices, and yet be worth its while.
constexpr qint64 tramoBreve = 8, tramoLargo = 25; // ms
constexpr qint64 hora = 3600, siglo = 100LL * 366 * 86'400; // s

/// Of the table that an old file which cannot be written to does not have.
db::Rows usos(db::Connection &conexion, const QString &columna)
{
    try {
        return conexion.query(QStringLiteral("SELECT DISTINCT %1 FROM [Historial Usos] ORDER BY %1").arg(columna));
    } catch (const db::Error &error) {
        if (error.kind() != db::Error::Kind::NoSuchTable)
            throw;
        return nullptr;
    }
}

} // namespace

base::Control controlarHistorial(db::Entorno &entorno) { return db::controlarDerecho(entorno, u"accesohistorial"); }

UsuariosHistorial::UsuariosHistorial(db::Connection &conexion)
{
    const auto agregar = [this](const QString &nombre, int id) {
        m_lista.emplace_back(nombre, id);
        m_nombres.insert(id, nombre);
    };
    for (const db::Doctor &usuario : db::usuarios(conexion))
        agregar(usuario.nombre, usuario.id);
    agregar(QStringLiteral("<Usuario sin Identificar>"), 0);
    if (const db::Rows filas = usos(conexion, QStringLiteral("iddoctor")))
        for (int f = 0; f < filas->rowCount(); ++f)
            if (const int id = int(filas->integer(f, 0)); !m_nombres.contains(id))
                agregar(nombre(id), id);
}

QString UsuariosHistorial::nombre(int id) const
{
    const auto suyo = m_nombres.constFind(id);
    return suyo != m_nombres.cend() ? *suyo : QStringLiteral("<Usuario eliminado (Nº %1)>").arg(id);
}

QStringList ventanasHistorial(db::Connection &conexion)
{
    QStringList ventanas;
    if (const db::Rows filas = usos(conexion, QStringLiteral("ventana")))
        for (int f = 0; f < filas->rowCount(); ++f)
            if (const QString ventana = filas->text(f, 0); !ventana.trimmed().isEmpty())
                ventanas << ventana;
    return ventanas;
}

BusquedaHistorial::BusquedaHistorial(db::Connection &conexion, const FiltroHistorial &filtro, int pagina)
    : m_conexion(conexion)
    , m_desde(filtro.desde.isValid() ? QDateTime(filtro.desde, QTime(0, 0)) : QDateTime())
    , m_hasta(filtro.hasta.isValid() ? QDateTime(filtro.hasta, QTime(23, 59, 59)) : QDateTime())
    , m_pagina(pagina)
{
    if (filtro.usuario) {
        m_condiciones << QStringLiteral("iddoctor = ?");
        m_valores << *filtro.usuario;
    }
    if (!filtro.ventana.isEmpty()) {
        m_condiciones << QStringLiteral("ventana = ?");
        m_valores << filtro.ventana;
    }
    if (const QString texto = filtro.texto.trimmed(); !texto.isEmpty())
        m_condiciones << conexion.dialect().contains(conexion.dialect().memo(QStringLiteral("accion")), texto);
}

int BusquedaHistorial::porciento() const
{
    if (m_estado == Estado::Terminada)
        return 100;
    const qint64 todo = m_primera.isValid() ? m_primera.secsTo(m_ultima) : 0;
    return todo > 0 ? int(std::clamp<qint64>(m_llegoA.secsTo(m_ultima) * 100 / todo, 0, 99)) : 0;
}

void BusquedaHistorial::empezar()
{
    const auto extremo = [this](const QString &cual) {
        const db::Rows fila = m_conexion.query(QStringLiteral("SELECT %1(fecha) FROM [Historial]").arg(cual));
        return fila->dateTime(0, 0);
    };
    m_primera = extremo(QStringLiteral("MIN"));
    m_ultima = extremo(QStringLiteral("MAX"));
    if (m_desde.isValid() && !(m_primera > m_desde))
        m_primera = m_desde;
    if (m_hasta.isValid() && !(m_ultima < m_hasta))
        m_ultima = m_hasta;
    if (m_hasta.isValid())
        m_tope = m_hasta;
    m_llegoA = m_ultima;
    m_estado = Estado::ConFecha;
}

db::Rows BusquedaHistorial::consultar(QStringList condiciones, db::Params valores, bool todas)
{
    condiciones << m_condiciones;
    valores << m_valores;
    return m_conexion.query(
        QStringLiteral("SELECT %1fecha,equipo,iddoctor,ventana,accion FROM [Historial] WHERE %2 ORDER BY fecha DESC")
            .arg(
                todas ? QString() : QStringLiteral("TOP %1 ").arg(m_pagina), condiciones.join(QStringLiteral(" and "))),
        valores);
}

BusquedaHistorial::Tanda BusquedaHistorial::paginaCompleta(const db::Rows &filas)
{
    // The last date may go on behind the page: it comes whole with the next one, or by itself when it fills this one.
    const int ultima = filas->rowCount() - 1;
    m_tope = filas->value(ultima, Fecha);
    if (const QDateTime momento = filas->dateTime(ultima, Fecha); momento.isValid())
        m_llegoA = momento;
    m_conTope = filas->utf8(0, Fecha) != filas->utf8(ultima, Fecha);
    if (!m_conTope) {
        const db::Rows todas = consultar({QStringLiteral("fecha = ?")}, {m_tope}, true);
        return {todas, todas->rowCount()};
    }
    int cantidad = ultima;
    while (filas->utf8(cantidad - 1, Fecha) == filas->utf8(ultima, Fecha))
        --cantidad;
    return {filas, cantidad};
}

BusquedaHistorial::Tanda BusquedaHistorial::seguir()
{
    if (m_estado == Estado::PorEmpezar)
        empezar();
    if (m_estado == Estado::Terminada)
        return {};
    if (m_estado == Estado::SinFecha) {
        m_estado = Estado::Terminada;
        const db::Rows filas = consultar({QStringLiteral("fecha IS NULL")}, {}, true);
        return {filas, filas->rowCount()};
    }

    QElapsedTimer reloj;
    reloj.start();
    QStringList condiciones;
    db::Params valores;
    if (m_tope.isValid()) {
        condiciones << (m_conTope ? QStringLiteral("fecha <= ?") : QStringLiteral("fecha < ?"));
        valores << m_tope;
    }
    QDateTime piso = m_desde;
    bool porTramo = false;
    if (!m_condiciones.isEmpty() && m_llegoA.isValid() && m_primera.isValid()) {
        const QDateTime tramo = m_llegoA.addSecs(-m_tramo);
        porTramo = tramo > m_primera;
        if (porTramo)
            piso = tramo;
    }
    if (piso.isValid()) {
        condiciones << QStringLiteral("fecha >= ?");
        valores << piso;
    }
    if (condiciones.isEmpty())
        condiciones << QStringLiteral("fecha IS NOT NULL");
    const db::Rows filas = consultar(condiciones, valores);
    if (filas->rowCount() == m_pagina)
        return paginaCompleta(filas);

    if (porTramo) {
        m_tope = piso;
        m_conTope = false;
        m_llegoA = piso;
        if (reloj.elapsed() < tramoBreve)
            m_tramo = std::min(siglo, m_tramo * 2);
        else if (reloj.elapsed() > tramoLargo)
            m_tramo = std::max(hora, m_tramo / 2);
    } else {
        // Rows without a date are of no day.
        m_estado = m_desde.isValid() || m_hasta.isValid() ? Estado::Terminada : Estado::SinFecha;
        m_llegoA = m_primera;
    }
    return {filas, filas->rowCount()};
}

} // namespace maintenance
