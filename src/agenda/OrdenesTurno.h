#pragma once

#include <QDate>
#include <QString>
#include <QStringList>

#include <vector>

namespace db {
class Connection;
}

namespace agenda {

/// An insurance order as the book tells of it beside an appointment of its patient.
struct OrdenTurno {
    qint64 id = 0;
    qint64 numero = 0; ///< 0 or less: it has none
    QDate fecha;
    double costo = 0; ///< what it costs the patient
    double pagado = 0; ///< what the patient paid of it
    bool entregada = false;
    bool autorizada = false;
    int sesiones = 0; ///< that it allows
    int realizadas = 0;
    QString practica;

    [[nodiscard]] double debe() const { return costo - pagado; }
    [[nodiscard]] int pendientes() const { return qMax(0, sesiones - realizadas); }
    /// Five lines of facts "Nº Orden: ...", "Costo: $...", "Próximo Nº Sesión: ...".
    [[nodiscard]] QStringList detalle() const;
    /// The line by which it is chosen for a session.
    [[nodiscard]] QString renglon() const;
};

/// Orders of a patient, oldest first; one statement.
[[nodiscard]] std::vector<OrdenTurno> ordenesDelPaciente(db::Connection &conexion, int nrohc);
/// Those with sessions left.
[[nodiscard]] std::vector<OrdenTurno> ordenesConSesiones(db::Connection &conexion, int nrohc);

/// What the book tells below the grid of the orders of an appointment's patient: the appointment's own first, then from
/// the newest on. Empty when there are none, and for a row that is no appointment or is gone.
[[nodiscard]] QStringList detalleOrdenes(db::Connection &conexion, qint64 idTurno);

} // namespace agenda
