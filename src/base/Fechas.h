#pragma once

#include <QDate>
#include <QDateTime>
#include <QString>

#include <optional>

namespace base {

class Mensajes;
struct Rechazo;

/// Reads a date as a person types it, day first: "05/03/1980", "5/3/80", "5-3-1980", "5.3.80", "05031980". Two-digit
/// years are read as Access did: 00-29 are 2000-2029, 30-99 are 1930-1999. Empty optional for anything else, also for a
/// day that does not exist and for blanks.
[[nodiscard]] std::optional<QDate> leerFecha(QStringView texto);

/// Reads "dd/mm/yyyy hh:nn" with the date part as in leerFecha() and the hour as "8:05" or "08:05".
[[nodiscard]] std::optional<QDateTime> leerFechaHora(QStringView texto);

/// "dd/mm/yyyy"; the empty text for an invalid date.
[[nodiscard]] QString fechaTexto(QDate fecha);

/// "dd/mm/yyyy hh:nn"; the empty text for an invalid date-time.
[[nodiscard]] QString fechaHoraTexto(const QDateTime &momento);

/// 31/12/9999, stored where a patient's birth date is unknown.
[[nodiscard]] QDate fechaDesconocida();

/// What the date check says of a text that is no date: "El Formato de Fecha debe ser dd/mm/aaaa", a line break and
/// `detalle`, titled "ERROR en la fecha...".
[[nodiscard]] Rechazo fechaInvalida(const QString &detalle);

/// The system's date check: true when `texto` is a date; otherwise shows fechaInvalida() and yields false.
[[nodiscard]] bool verificarFecha(Mensajes &mensajes, QStringView texto, const QString &detalle);

/// The system's age text between two dates: "" when `hasta` is before `desde`, "12d" below 30 days, "20sem 3d" up to
/// 364 days, else years and months, "2a 4m", both counted in calendar boundaries crossed.
[[nodiscard]] QString textoEdad(QDate desde, QDate hasta);

/// Calendar-year boundaries between both dates (year minus year, not completed years).
[[nodiscard]] int aniosCalendario(QDate desde, QDate hasta);

/// Spanish month names of the lists: "Enero" ... "Diciembre"; `mes` 1 to 12.
[[nodiscard]] QString nombreMes(int mes);

/// Day of the week as the tables count it: Sunday 1 ... Saturday 7.
[[nodiscard]] int diaSemana(QDate fecha);

} // namespace base
