#pragma once

#include <QDateTime>
#include <QString>
#include <QStringList>

#include <vector>

namespace db {
class Connection;
}

namespace agenda {

/// An appointment in the list of those of one patient.
struct TurnoPaciente {
    qint64 id = 0;
    QDateTime momento;
    int doctor = 0;
    QString profesional;
    QString motivo;
    bool llegado = false;
    bool atendido = false;
    QString observaciones;

    /// Date, weekday, hour, professional, reason, arrived, attended, observations.
    [[nodiscard]] QStringList textos() const;
};

/// The patient's appointments: those of today and later first, the next one on top, then the past ones, the latest on
/// top. One statement.
[[nodiscard]] std::vector<TurnoPaciente> turnosDePaciente(db::Connection &conexion, int nrohc, QDate hoy);

} // namespace agenda
