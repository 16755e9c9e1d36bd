#pragma once

#include "app/Esquema.h"
#include "db/Connection.h"
#include "db/engine/EmbeddedEngine.h"
#include "db/migracion/Migracion.h"
#include "db/migracion/Sentencias.h"
#include "demo/Archivo.h"
#include "support/BaseDePrueba.h"
#include "support/ServidorDePrueba.h"

#include <QFile>
#include <QtTest>

/// A practice with everything that an old database may hold, made once, and a server to move it to.
class Practica
{
public:
    explicit Practica(bool vacia = false)
    {
        const QString modelo = vacia ? soporte::plantilla() : llena();
        if (!QFile::copy(modelo, archivo()) || !QFile::setPermissions(archivo(), QFile::ReadOwner | QFile::WriteOwner))
            qFatal("no practice");
    }

    soporte::ServidorDePrueba servidor;
    db::migracion::Seguimiento seguimiento;
    db::migracion::Pasos pasos;

    [[nodiscard]] QString archivo() const { return m_carpeta.filePath(QStringLiteral("Datos.mdb")); }
    [[nodiscard]] QString carpeta() const { return m_carpeta.path(); }
    [[nodiscard]] std::unique_ptr<db::Connection> local() const { return abrir(archivo()); }
    [[nodiscard]] static std::unique_ptr<db::Connection> abrir(const QString &archivo)
    {
        return db::Connection::open(soporte::cadenaAccess(archivo), db::Engines::standard());
    }
    [[nodiscard]] std::unique_ptr<db::Connection> remota()
    {
        return db::Connection::open(servidor.cadena(), servidor.motores());
    }

    [[nodiscard]] db::migracion::PedidoAlServidor ida(bool datosActuales = true)
    {
        return {
            .cadenaOrigen = soporte::cadenaAccess(datosActuales ? archivo() : soporte::plantilla()),
            .datosActuales = datosActuales,
            .servidor
            = {QLatin1String(servidor.nombre), QLatin1String(servidor.usuario), QLatin1String(servidor.clave)},
            .esquema = app::esquemaCompleto(),
            .motores = servidor.motores()};
    }
    [[nodiscard]] db::migracion::Desenlace alServidor(bool datosActuales = true)
    {
        return db::migracion::alServidor(ida(datosActuales), seguimiento, pasos);
    }
    [[nodiscard]] db::migracion::PedidoAlArchivo vuelta(const QString &destino)
    {
        return {
            .cadenaOrigen = servidor.cadena(),
            .destino = {destino, QStringLiteral("kestrel428")},
            .apartar = {},
            .esquema = app::esquemaCompleto(),
            .motores = servidor.motores()};
    }

private:
    static QString llena()
    {
        static const QTemporaryDir carpeta;
        const QString archivo = carpeta.filePath(QStringLiteral("Datos.mdb"));
        if (QFile::exists(archivo))
            return archivo;
        demo::Medida medida{
            .pacientes = 60, .turnos = 300, .ordenes = 60, .consultas = 120, .acciones = 100, .hoy = {2026, 11, 22}};
        if (!demo::crearArchivo(soporte::plantilla(), archivo, medida))
            qFatal("no practice");
        const auto base = abrir(archivo);
        // An old table of another program, with names and values of every kind.
        base->createTable(
            {.name = QStringLiteral("Tabla de O'Higgins"),
             .columns
             = {db::columna::contador(QStringLiteral("Número")),
                db::columna::texto(QStringLiteral("plan"), 10).def(QStringLiteral("d'accord")),
                db::columna::memo(QStringLiteral("revi-ong")),
                db::columna::entero(QStringLiteral("chico")).def(-1),
                db::columna::simple(QStringLiteral("importe")),
                db::columna::doble(QStringLiteral("exacto")),
                db::columna::bandera(QStringLiteral("si o no")),
                db::columna::fecha(QStringLiteral("cuándo")),
                db::columna::binario(QStringLiteral("bytes"))},
             .indexes = {{{QStringLiteral("plan"), QStringLiteral("chico")}, true}, {{QStringLiteral("cuándo")}}}});
        const QString insertar
            = QStringLiteral("INSERT INTO [Tabla de O'Higgins] (plan,[revi-ong],chico,importe,exacto,[si o no],"
                             "[cuándo],bytes) VALUES (?,?,?,?,?,?,?,?)");
        const QDateTime hora(QDate(2008, 10, 19), QTime(0, 0), Qt::UTC); // the clocks went forward at this midnight
        QByteArray ceros("\0\1\0\0\xff", 5);
        base->execute(insertar, {"O'Neil", "año 😀 \r\n\"x\"", 7, 0.1, 1.0 / 3, true, hora, ceros});
        base->execute(
            insertar,
            {"😀😀😀😀😀😀😀😀", QString(100'000, u'ñ'), 70'000, -0.0, 1e300, false, hora.addSecs(1), QByteArray("")});
        base->execute(insertar, {"", "", QVariant(), QVariant(), QVariant(), QVariant(), QVariant(), QVariant()});
        base->execute(
            insertar,
            {QVariant(),
             QVariant(),
             3,
             1234.565,
             -0.5,
             true,
             QDateTime(QDate(1492, 10, 12), QTime(0, 0)),
             QByteArray(300'000, '\xfe')});
        base->execute(insertar, {"borrada", "", 9, 0, 0, false, hora, QVariant()});
        base->execute(QStringLiteral("DELETE FROM [Tabla de O'Higgins] WHERE plan = 'borrada'"));
        for (const char *tabla : {"Usuarios", "Estadisticas"})
            base->createTable({QLatin1String(tabla), {db::columna::texto(QStringLiteral("nombre"))}, {}});
        // Born and seen before the server's time.
        base->execute(
            QStringLiteral("UPDATE [Pacientes] SET FeNac = ?, UltimaCons = ? WHERE id = 1"),
            {QDate(1000, 1, 1), QDate(1752, 12, 31)});
        return archivo;
    }

    QTemporaryDir m_carpeta;
};
