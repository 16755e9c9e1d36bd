#pragma once

#include <QDateTime>
#include <QJsonObject>
#include <QString>
#include <QVector>

#include <optional>

namespace db {

class Entorno;

/// What somebody typed into a window and has not saved: kept so that a crash or a power cut does not lose it.
struct Borrador {
    qint64 id = 0; ///< 0: not stored yet
    QString ventana = {}; ///< the name under which the window is registered
    qint64 registro = 0; ///< the record, as the window counts it; 0: a new one
    int nropaci = 0; ///< the patient that it belongs to, and goes with; 0: none
    QString titulo = {}; ///< how the person knows it: window and record
    QDateTime fecha = {}; ///< when it was last written
    QJsonObject datos = {}; ///< as the window writes it
};

/// The drafts of the current user on this computer; nobody else sees them. Every call may throw db::Error.
class Borradores
{
public:
    explicit Borradores(Entorno &entorno)
        : m_entorno(entorno)
    {
    }

    /// Writes it with the time of now: over its row, when it has one that still exists, else as a new row. Yields the
    /// id of the row.
    qint64 guardar(const Borrador &borrador);
    /// The last one written for that record, other than the one with the id `salvo`.
    [[nodiscard]] std::optional<Borrador> leer(const QString &ventana, qint64 registro, qint64 salvo = 0);
    void borrar(qint64 id);
    /// All of them, last written first, without `datos`. Those whose patient was removed meanwhile are dropped.
    [[nodiscard]] QVector<Borrador> pendientes();

private:
    Entorno &m_entorno;
};

} // namespace db
