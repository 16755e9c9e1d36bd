#pragma once

#include <QDate>
#include <QString>
#include <QStringList>

#include <array>
#include <set>
#include <vector>

namespace db {
class Connection;
}

namespace agenda {

/// A month as the calendar lays it out: weeks of seven days, days of other months left invalid.
struct MesCalendario {
    int anio = 0;
    int mes = 0; ///< 1 to 12
    int primerDia = 0; ///< weekday of the first column: 0 Sunday ... 6 Saturday
    std::vector<std::array<QDate, 7>> semanas;

    /// "NOVIEMBRE 2026".
    [[nodiscard]] QString titulo() const;
    /// "Dom" ... "Sáb" from the first column on; short "Do" ... "Sá".
    [[nodiscard]] QStringList encabezados(bool cortos = false) const;
};

[[nodiscard]] MesCalendario mesCalendario(int anio, int mes, int primerDia);

/// First weekday by the setting `primerdiaagendaturnos`: 0 Sunday ... 6 Saturday, or the day's name (its first three
/// letters count). Sunday when it is empty or neither.
[[nodiscard]] int primerDiaSemana(db::Connection &conexion);
[[nodiscard]] int leerDiaSemana(const QString &texto);

/// Days with appointments of the professional; blocked slots are none.
[[nodiscard]] std::set<QDate> diasConTurnos(db::Connection &conexion, int doctor, QDate desde, QDate hasta);

/// The same for all professionals together.
[[nodiscard]] std::set<QDate> diasConTurnosDeTodos(db::Connection &conexion, QDate desde, QDate hasta);

} // namespace agenda
