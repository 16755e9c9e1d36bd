#pragma once

#include "agenda/GrillaDia.h"

#include <QDateTime>
#include <QString>
#include <QStringList>

#include <vector>

namespace db {
class Connection;
}

namespace agenda {

/// A displayed row of the day: a free start time, an appointment or a blocked slot. Texts are as shown.
struct FilaDia {
    enum class Clase { Libre, Turno, Bloqueado };

    QTime hora;
    Clase clase = Clase::Libre;
    qint64 id = 0; ///< 0 for a free start time
    int nrohc = 0;
    bool deGrilla = true; ///< false: its hour is no start time of the template
    bool llegado = false;
    bool atendido = false;
    bool pacienteEliminado = false;
    int turnosDeLaHora = 0; ///< appointments that share this hour, blocked rows not counted
    QString paciente;
    QString cobertura;
    QString telefono;
    QString motivo;
    QString importe;
    QString saldo;
    QString observaciones;

    /// Identifies the row across reloads: the appointment's `id`, or a negative number made of the free hour.
    [[nodiscard]] qint64 clave() const;
    /// Hour, patient, coverage, telephones, reason, cash amount, balance, arrived, attended, observations.
    [[nodiscard]] QStringList textos() const;
};

/// A start time with its occupation: "10:20  Ocupado".
struct HoraOcupada {
    QTime hora;
    QString texto;
};

/// How a row is painted.
enum class Tono { Ninguno, Atendido, Pasado, Sobreturno };

/// One professional's day as the book shows it.
struct DiaAgenda {
    int doctor = 0;
    QDate fecha;
    bool hayPlantilla = false;
    bool noLaborable = false;
    GrillaDia grilla;
    AjustesSobreturno ajustes;
    std::vector<FilaDia> filas; ///< by hour, those of one hour in the order in which they were given
    int turnos = 0; ///< without blocked slots

    [[nodiscard]] QDateTime momento(const FilaDia &fila) const { return {fecha, fila.hora}; }
    /// Attended; else a start time that holds extra appointments, where the template asks for it; else a free start
    /// time before `ahora`.
    [[nodiscard]] Tono tono(const FilaDia &fila, const QDateTime &ahora) const;
    /// Every start time with what it is followed by; each cell of the slot table once.
    [[nodiscard]] std::vector<HoraOcupada> ocupacion() const;
    /// The free/occupied list of the day with its total.
    [[nodiscard]] QStringList resumen() const;
};

/// Loads a day. `hoy` says from which January the balances count where only the current year does.
[[nodiscard]] DiaAgenda cargarDia(db::Connection &conexion, int doctor, QDate fecha, QDate hoy);

/// What a start time of the summary and of the time picker is followed by: "  ========", "  Ocupado !!", "  Ocupado" or
/// nothing.
[[nodiscard]] QString textoOcupacion(bool bloqueado, int turnos);

/// Deletes the scratch row that an interrupted older version may have left.
void quitarFilaTemporal(db::Connection &conexion);

} // namespace agenda
