#include "db/sql/Moment.h"

#include "base/Fechas.h"

#include <cmath>

namespace db::sql {

namespace {

constexpr qint64 secondsPerDay = 86400;
const qint64 serialZero = QDate(1899, 12, 30).toJulianDay();

qint64 floorDivide(qint64 a, qint64 b) { return a / b - (a % b != 0 && (a < 0) != (b < 0)); }

/// `count` digits at `at`, or -1.
int digits(QByteArrayView text, qsizetype at, int count)
{
    int number = 0;
    for (qsizetype i = at; i < at + count; ++i) {
        const char c = text[i];
        if (c < '0' || c > '9')
            return -1;
        number = number * 10 + (c - '0');
    }
    return number;
}

void put(char *to, int number, int width)
{
    for (int i = width - 1; i >= 0; --i, number /= 10)
        to[i] = char('0' + number % 10);
}

} // namespace

qint64 Moment::julianDay() const { return QDate(year, month, day).toJulianDay(); }

int Moment::weekday() const { return int((julianDay() + 1) % 7) + 1; }

double Moment::serial() const
{
    const double days = double(julianDay() - serialZero), time = secondOfDay() / double(secondsPerDay);
    return days < 0 ? days - time : days + time;
}

QByteArray Moment::stored() const
{
    char text[] = "0000-00-00 00:00:00";
    put(text, year, 4);
    put(text + 5, month, 2);
    put(text + 8, day, 2);
    put(text + 11, hour, 2);
    put(text + 14, minute, 2);
    put(text + 17, second, 2);
    return {text, 19};
}

std::optional<Moment> Moment::fromDay(qint64 julianDay, qint64 seconds)
{
    const qint64 days = floorDivide(seconds, secondsPerDay);
    const int rest = int(seconds - days * secondsPerDay);
    static const qint64 first = QDate(100, 1, 1).toJulianDay(), last = QDate(9999, 12, 31).toJulianDay();
    if (julianDay + days < first || julianDay + days > last)
        return std::nullopt;
    Moment moment;
    QDate::fromJulianDay(julianDay + days).getDate(&moment.year, &moment.month, &moment.day);
    moment.hour = rest / 3600;
    moment.minute = rest / 60 % 60;
    moment.second = rest % 60;
    return moment;
}

std::optional<Moment> Moment::fromSerial(double serial)
{
    if (!(std::abs(serial) < 4e6))
        return std::nullopt;
    // Before the zero day the fraction still counts forward from midnight.
    const double days = std::trunc(serial);
    return fromDay(serialZero + qint64(days), qint64(std::llround(std::abs(serial - days) * double(secondsPerDay))));
}

std::optional<Moment> Moment::fromStored(QByteArrayView text)
{
    if ((text.size() != 10 && text.size() != 16 && text.size() != 19) || text[4] != '-' || text[7] != '-')
        return std::nullopt;
    Moment moment;
    moment.year = digits(text, 0, 4);
    moment.month = digits(text, 5, 2);
    moment.day = digits(text, 8, 2);
    if (text.size() > 10) {
        if (text[10] != ' ' || text[13] != ':')
            return std::nullopt;
        moment.hour = digits(text, 11, 2);
        moment.minute = digits(text, 14, 2);
        if (text.size() == 19) {
            if (text[16] != ':')
                return std::nullopt;
            moment.second = digits(text, 17, 2);
        }
        if (moment.hour < 0 || moment.hour > 23 || moment.minute < 0 || moment.minute > 59 || moment.second < 0
            || moment.second > 59)
            return std::nullopt;
    }
    if (moment.year < 100 || moment.month < 1 || moment.day < 1 || moment.month > 12
        || !QDate::isValid(moment.year, moment.month, moment.day))
        return std::nullopt;
    return moment;
}

std::optional<Moment> Moment::fromText(QByteArrayView text)
{
    if (const auto stored = fromStored(text))
        return stored;
    if (text.size() > 40)
        return std::nullopt;
    const QString typed = QString::fromUtf8(text).trimmed();
    if (const auto date = base::leerFecha(typed))
        return Moment{date->year(), date->month(), date->day(), 0, 0, 0};
    if (const auto both = base::leerFechaHora(typed))
        return Moment{
            both->date().year(),
            both->date().month(),
            both->date().day(),
            both->time().hour(),
            both->time().minute(),
            0};
    for (const QString &form : {QStringLiteral("H:mm"), QStringLiteral("H:mm:ss")}) {
        if (const QTime time = QTime::fromString(typed, form); time.isValid())
            return Moment{1899, 12, 30, time.hour(), time.minute(), time.second()};
    }
    return std::nullopt;
}

std::optional<Interval> readInterval(QByteArrayView name)
{
    static constexpr std::pair<QByteArrayView, Interval> names[]
        = {{"yyyy", Interval::Year},
           {"q", Interval::Quarter},
           {"m", Interval::Month},
           {"y", Interval::DayOfYear},
           {"d", Interval::Day},
           {"w", Interval::Weekday},
           {"ww", Interval::Week},
           {"h", Interval::Hour},
           {"n", Interval::Minute},
           {"s", Interval::Second}};
    for (const auto &[known, interval] : names) {
        if (known == name)
            return interval;
    }
    return std::nullopt;
}

qint64 dateDiff(Interval interval, const Moment &from, const Moment &to)
{
    if (interval == Interval::Year)
        return to.year - from.year;
    if (interval == Interval::Quarter)
        return (to.year - from.year) * 4 + (to.month - 1) / 3 - (from.month - 1) / 3;
    if (interval == Interval::Month)
        return (to.year - from.year) * 12 + to.month - from.month;

    const qint64 first = from.julianDay(), last = to.julianDay(), days = last - first;
    switch (interval) {
    case Interval::Weekday: return days / 7;
    case Interval::Week:
        // Weeks begin on Sunday: Julian day 6 is one.
        return floorDivide(last + 1, 7) - floorDivide(first + 1, 7);
    case Interval::Hour: return days * 24 + to.hour - from.hour;
    case Interval::Minute: return days * 1440 + (to.hour * 60 + to.minute) - (from.hour * 60 + from.minute);
    case Interval::Second: return days * secondsPerDay + to.secondOfDay() - from.secondOfDay();
    default: return days;
    }
}

std::optional<Moment> dateAdd(Interval interval, qint64 count, const Moment &to)
{
    if (std::abs(count) > 400'000'000'000)
        return std::nullopt;
    int months = 0;
    switch (interval) {
    case Interval::Year: months = 12; break;
    case Interval::Quarter: months = 3; break;
    case Interval::Month: months = 1; break;
    case Interval::Week: return Moment::fromDay(to.julianDay() + count * 7, to.secondOfDay());
    case Interval::Hour: return Moment::fromDay(to.julianDay(), to.secondOfDay() + count * 3600);
    case Interval::Minute: return Moment::fromDay(to.julianDay(), to.secondOfDay() + count * 60);
    case Interval::Second: return Moment::fromDay(to.julianDay(), to.secondOfDay() + count);
    default: return Moment::fromDay(to.julianDay() + count, to.secondOfDay());
    }
    const qint64 month = qint64(to.year) * 12 + to.month - 1 + count * months;
    const qint64 year = floorDivide(month, 12);
    if (year < 100 || year > 9999)
        return std::nullopt;
    Moment moment = to;
    moment.year = int(year);
    moment.month = int(month - year * 12) + 1;
    moment.day = std::min(to.day, QDate(moment.year, moment.month, 1).daysInMonth());
    return moment;
}

int datePart(Interval interval, const Moment &of)
{
    switch (interval) {
    case Interval::Year: return of.year;
    case Interval::Quarter: return (of.month - 1) / 3 + 1;
    case Interval::Month: return of.month;
    case Interval::DayOfYear: return QDate(of.year, of.month, of.day).dayOfYear();
    case Interval::Day: return of.day;
    case Interval::Weekday: return of.weekday();
    case Interval::Week: {
        // The week that holds 1 January is the first one; weeks begin on Sunday.
        const Moment newYear{of.year, 1, 1, 0, 0, 0};
        return int(dateDiff(Interval::Week, newYear, of)) + 1;
    }
    case Interval::Hour: return of.hour;
    case Interval::Minute: return of.minute;
    case Interval::Second: return of.second;
    }
    return 0;
}

} // namespace db::sql
