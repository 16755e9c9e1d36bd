#pragma once

#include <QDate>
#include <QString>

#include <vector>

namespace db {
class Connection;
}

namespace patients {

/// A patient of the register who may be the one being entered.
struct Parecido {
    int nrohc = 0;
    QString nombre = {}; ///< "Apellido apellido2, Nombres"
    QString dni = {};
    QDate nacimiento = {}; ///< invalid: unknown
    QString motivo = {}; ///< why he is shown, as the person reads it

    bool operator==(const Parecido &) const = default;
};

/// What is known of the patient being entered; anything may be missing.
struct Conocido {
    QString apellido = {};
    QString nombres = {};
    QString dni = {};
    QDate nacimiento = {};

    bool operator==(const Conocido &) const = default;
};

/// Likely duplicates, at most `tope`: the same document, or one that differs in one digit or in two neighbouring digits
/// exchanged; the same surname and birth date; surname and names exchanged; the same surname and names. Letter case and
/// points in the document do not matter. A hint for the person who types, never a refusal.
[[nodiscard]] std::vector<Parecido> buscarParecidos(db::Connection &conexion, const Conocido &conocido, int tope = 5);

/// The documents at one slip of the finger from this one of 6 to 9 digits, itself included, without points; empty for
/// any other text.
[[nodiscard]] QStringList documentosCercanos(const QString &dni);

} // namespace patients
