#pragma once

#include <QDateTime>
#include <QString>
#include <QVector>

namespace db {
class Connection;
}

namespace agenda {

/// An appointment that a patient has already.
struct TurnoDelPaciente {
    qint64 id = 0;
    QDateTime fecha;
    QString profesional;

    bool operator==(const TurnoDelPaciente &) const = default;
};

/// The patient's appointments on the days of those moments, with whichever professional, by date; read with one
/// statement. `menos` is the appointment that is being changed, which is not news.
[[nodiscard]] QVector<TurnoDelPaciente>
turnosDeEsosDias(db::Connection &conexion, int nrohc, const QVector<QDateTime> &momentos, qint64 menos = 0);

/// What the person who books is told of them: "Ya tiene turno ese día: 10:20 con Dra. Gómez", or, where `variosDias`
/// are asked about, each with its date. A hint, never a refusal; empty when there are none.
[[nodiscard]] QString avisoMismoDia(const QVector<TurnoDelPaciente> &turnos, bool variosDias);
/// Which of those moments are on a day off of the professional or at an hour that is blocked: "No se atiende:
/// 25/12/2026, 28/12/2026 10:20."; empty when none is. Two statements.
[[nodiscard]] QString avisoSinAtencion(db::Connection &conexion, int doctor, const QVector<QDateTime> &momentos);
/// The whole notice of a booking for those moments: which of its days are over, avisoSinAtencion() and avisoMismoDia().
[[nodiscard]] QString avisoDeReserva(
    const QVector<TurnoDelPaciente> &turnos,
    const QVector<QDateTime> &momentos,
    QDate hoy,
    const QString &sinAtencion = {});

} // namespace agenda
