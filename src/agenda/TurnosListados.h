#pragma once

#include <QDateTime>
#include <QString>

#include <vector>

namespace db {
class Connection;
}

namespace agenda {

/// An appointment or blocked slot with what leaves the book about it: on paper, in a file, in a message. Texts are as
/// stored, trimmed; empty for what is not known.
struct TurnoListado {
    qint64 id = 0;
    int nrohc = 0;
    int doctor = 0;
    QDateTime momento; ///< to the minute
    QDateTime asignado; ///< when it was given; invalid where nobody wrote it down
    bool bloqueado = false;
    bool pacienteEliminado = false;
    bool atendido = false;
    QString medico;
    QString apellido;
    QString nombres;
    QString tel;
    QString celular;
    QString afiliado;
    QString cobertura;
    QString motivo;
    QString importe; ///< "1.234,50"
    QString observaciones;

    /// "Paz, Eva", or that the patient was deleted, or that nobody is attended.
    [[nodiscard]] QString paciente() const;
    /// "Tel. 0341 4123456 / Cel. 0341 156123456".
    [[nodiscard]] QString telefonos() const;
};

/// Those of a professional (0: of all of them) in a range of days, both included, by time.
[[nodiscard]] std::vector<TurnoListado> listarTurnos(db::Connection &conexion, int doctor, QDate desde, QDate hasta);

/// `NomDoc`, or "<Médico sin Identificar>".
[[nodiscard]] QString nombreProfesional(db::Connection &conexion, int doctor);

/// "Martes 24 de noviembre de 2026".
[[nodiscard]] QString fechaLarga(QDate fecha);

} // namespace agenda
