#pragma once

#include "base/Mensajes.h"
#include "db/Engine.h"
#include "db/HuellaHistorial.h"

#include <QMutex>
#include <QStringList>
#include <QVector>

#include <atomic>

/// Moves a whole database from the embedded file to a SQL Server and back. Both ways work through the engines, make
/// something new beside what there is, compare both sides value by value, and only then leave it there: whatever stops
/// them before that, nothing of it remains and the source is as it was. Both block for as long as they take, use no
/// connection but their own, and are meant for a thread of their own.
namespace db::migracion {

/// How a server is reached.
struct Servidor {
    QString nombre; ///< computer, or computer\\instance
    QString usuario;
    QString clave;

    /// "Provider=SQLOLEDB; Initial Catalog=master; Data Source=...; UID=...; PWD=..."
    [[nodiscard]] QString cadena(const QString &catalogo) const;
};

/// How far it is; written by the work, read by whoever shows it.
struct Estado {
    QString que; ///< "Copiando", "Comprobando"...
    QString tabla; ///< empty between the tables
    int numero = 0; ///< of the table, from 1
    int tablas = 0;
    qint64 filas = 0; ///< of the table, done and in all
    qint64 filasTabla = 0;
    qint64 hechas = 0; ///< rows copied and compared
    qint64 total = 0;
};

class Seguimiento
{
public:
    void cancelar() { m_cancelado = true; }
    [[nodiscard]] bool cancelado() const { return m_cancelado; }
    [[nodiscard]] Estado estado() const;
    void poner(const Estado &estado);

private:
    std::atomic<bool> m_cancelado = false;
    mutable QMutex m_candado;
    Estado m_estado;
};

/// What was found in a table of both sides.
struct TablaComparada {
    QString tabla;
    qint64 filasOrigen = 0;
    qint64 filasDestino = 0;
    Huella sumaOrigen;
    Huella sumaDestino;

    [[nodiscard]] bool igual() const { return filasOrigen == filasDestino && sumaOrigen == sumaDestino; }
};

struct Desenlace {
    enum class Tipo {
        Hecha, ///< the new database is there and was proved
        Cancelada,
        Rechazada, ///< it cannot begin: see `motivo`
        Fallada,
        NoCoincide ///< both sides differ, see `tablas`; the new one was thrown away
    };
    Tipo tipo = Tipo::Cancelada;
    QString motivo = {}; ///< for the person; holds no password
    QVector<TablaComparada> tablas = {};
    QStringList avisos = {}; ///< what is not exactly as it was
    QStringList mensajes = {}; ///< what the upgrade of the new database said
    QString apartado = {}; ///< where an existing Datos.mdb was put aside to

    [[nodiscard]] qint64 filas() const;
};

/// Places where the outer world can be replaced.
struct Pasos {
    std::function<void(const Estado &)> alAvanzar = {};
};

struct PedidoAlServidor {
    QString cadenaOrigen; ///< of the embedded file
    /// True: the data that the practice works with, whose dates are clamped first and which nobody may write to
    /// meanwhile. False: the empty template.
    bool datosActuales = true;
    Servidor servidor;
    Schema esquema; ///< what the new database is brought up to
    Engines motores;
};

/// Makes the database `Datos` on the server, with every table, default, key and index of the source. The source is held
/// against writing the whole time, as rows that another station saved behind the copy's back would be lost when
/// everybody goes over to the server; they may read.
[[nodiscard]] Desenlace alServidor(const PedidoAlServidor &pedido, Seguimiento &seguimiento, const Pasos &pasos = {});

struct PedidoAlArchivo {
    QString cadenaOrigen; ///< of the server database
    EmbeddedFile destino;
    /// Where a Datos.mdb that is there already is put aside to, when the new one is whole; empty: it is refused.
    QString apartar;
    Schema esquema;
    Engines motores;
};

/// The way back: makes a new Datos.mdb out of a server database, held against writing as above.
[[nodiscard]] Desenlace alArchivo(const PedidoAlArchivo &pedido, Seguimiento &seguimiento, const Pasos &pasos = {});

} // namespace db::migracion
