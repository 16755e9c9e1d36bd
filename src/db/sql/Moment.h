#pragma once

#include <QByteArray>

#include <optional>

namespace db::sql {

/// A date and time of day as the functions reckon with it; years 100 to 9999.
struct Moment {
    int year = 1899, month = 12, day = 30;
    int hour = 0, minute = 0, second = 0;

    bool operator==(const Moment &) const = default;

    [[nodiscard]] qint64 julianDay() const;
    [[nodiscard]] int secondOfDay() const { return (hour * 60 + minute) * 60 + second; }
    /// Sunday 1 ... Saturday 7.
    [[nodiscard]] int weekday() const;
    /// Days since 1899-12-30 with the time as a fraction, the number that Access keeps.
    [[nodiscard]] double serial() const;
    /// "yyyy-mm-dd hh:mm:ss"
    [[nodiscard]] QByteArray stored() const;

    /// No value outside the years 100 to 9999; `seconds` may lie outside the day.
    [[nodiscard]] static std::optional<Moment> fromDay(qint64 julianDay, qint64 seconds);
    [[nodiscard]] static std::optional<Moment> fromSerial(double serial);
    /// The stored form, or its date alone.
    [[nodiscard]] static std::optional<Moment> fromStored(QByteArrayView text);
    /// The stored form or what a person types, day first.
    [[nodiscard]] static std::optional<Moment> fromText(QByteArrayView text);
};

enum class Interval { Year, Quarter, Month, DayOfYear, Day, Weekday, Week, Hour, Minute, Second };

/// "yyyy", "q", "m", "y", "d", "w", "ww", "h", "n", "s".
[[nodiscard]] std::optional<Interval> readInterval(QByteArrayView name);
/// Boundaries crossed from one to the other; Weekday counts whole weeks, Week the Sundays.
[[nodiscard]] qint64 dateDiff(Interval interval, const Moment &from, const Moment &to);
/// Months end on their last day; no value outside the years 100 to 9999.
[[nodiscard]] std::optional<Moment> dateAdd(Interval interval, qint64 count, const Moment &to);
[[nodiscard]] int datePart(Interval interval, const Moment &of);

} // namespace db::sql
