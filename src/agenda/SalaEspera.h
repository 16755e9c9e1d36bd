#pragma once

#include <QDateTime>
#include <QString>

#include <optional>
#include <vector>

namespace db {
class Connection;
}

namespace agenda {

/// A patient who has arrived and was not attended yet.
struct EnEspera {
    qint64 id = 0; ///< of the appointment
    int nrohc = 0;
    int doctor = 0;
    QTime hora; ///< of the appointment
    QString paciente;
    QString profesional;
    QDateTime llegada; ///< invalid: not known, an older program marked it

    /// Whole minutes at `ahora`; none when the arrival is not known, or was on another day. A clock that is ahead at
    /// another station makes no negative ones.
    [[nodiscard]] std::optional<int> minutos(const QDateTime &ahora) const;
    /// "35 min", "1 h 05 min"; "—" when it is not known.
    [[nodiscard]] QString espera(const QDateTime &ahora) const;
};

/// Who waits on a day, the longest waiting first; those whose arrival is not known last, by the hour of the
/// appointment. One statement.
[[nodiscard]] std::vector<EnEspera> cargarSala(db::Connection &conexion, QDate fecha);

} // namespace agenda
