#include "db/sql/Values.h"

#include "db/sql/Format.h"

#include <QDate>

#include <cmath>

namespace db::sql {

namespace {

using Value = sqlite3_value;

void formatBy(sqlite3_context *context, const FormatPattern &pattern, Value *value)
{
    if (!pattern.isValid()) {
        sqlite3_result_error(context, "Formato desconocido", -1);
        return;
    }
    if (pattern.isDate()) {
        if (const auto moment = momentOf(value)) {
            giveText(context, pattern.moment(*moment));
            return;
        }
    } else if (const auto number = numberOf(value)) {
        giveText(context, pattern.number(*number));
        return;
    }
    giveText(context, textOf(value));
}

/// format(value [, pattern]). Null is the empty text; a text that does not fit its pattern stays as it is.
void format(sqlite3_context *context, int count, Value **values)
{
    if (isNull(values[0])) {
        giveText(context, "");
        return;
    }
    if (count == 1 || isNull(values[1])) {
        const auto moment = sqlite3_value_type(values[0]) == SQLITE_TEXT && sqlite3_value_bytes(values[0]) == 19
            ? Moment::fromStored(utf8(values[0]))
            : std::nullopt;
        giveText(context, moment ? generalDate(*moment) : textOf(values[0]));
        return;
    }
    auto *pattern = static_cast<FormatPattern *>(sqlite3_get_auxdata(context, 1));
    const bool known = pattern != nullptr;
    if (!known)
        pattern = new FormatPattern(utf8(values[1]));
    formatBy(context, *pattern, values[0]);
    // The pattern is nearly always a literal, read once per statement. Last, because the engine may free it at once.
    if (!known)
        sqlite3_set_auxdata(context, 1, pattern, [](void *used) { delete static_cast<FormatPattern *>(used); });
}

void diff(sqlite3_context *context, int, Value **values)
{
    const auto interval = readInterval(utf8(values[0]));
    const auto from = momentOf(values[1]), to = momentOf(values[2]);
    if (interval && from && to)
        sqlite3_result_int64(context, dateDiff(*interval, *from, *to));
    else
        sqlite3_result_null(context);
}

void add(sqlite3_context *context, int, Value **values)
{
    const auto interval = readInterval(utf8(values[0]));
    const auto count = numberOf(values[1]);
    const auto to = momentOf(values[2]);
    if (interval && count && to && std::abs(*count) < 1e12)
        giveMoment(context, dateAdd(*interval, qint64(std::nearbyint(*count)), *to));
    else
        sqlite3_result_null(context);
}

void part(sqlite3_context *context, int, Value **values)
{
    const auto interval = readInterval(utf8(values[0]));
    const auto moment = momentOf(values[1]);
    if (interval && moment)
        sqlite3_result_int(context, datePart(*interval, *moment));
    else
        sqlite3_result_null(context);
}

/// dateserial(year, month, day): months and days beyond their range carry over.
void dateSerial(sqlite3_context *context, int, Value **values)
{
    double numbers[3];
    for (int i = 0; i < 3; ++i) {
        const auto number = numberOf(values[i]);
        if (!number || std::abs(*number) > 1e6) {
            sqlite3_result_null(context);
            return;
        }
        numbers[i] = std::nearbyint(*number);
    }
    if (numbers[0] >= 0 && numbers[0] < 100)
        numbers[0] += numbers[0] < 30 ? 2000 : 1900;
    std::optional<Moment> moment = Moment::fromDay(QDate(2000, 1, 1).toJulianDay(), 0);
    moment = dateAdd(Interval::Month, qint64(numbers[0] - 2000) * 12 + qint64(numbers[1]) - 1, *moment);
    giveMoment(context, moment ? dateAdd(Interval::Day, qint64(numbers[2]) - 1, *moment) : std::nullopt);
}

void timeSerial(sqlite3_context *context, int, Value **values)
{
    double seconds = 0;
    for (int i = 0; i < 3; ++i) {
        const auto number = numberOf(values[i]);
        if (!number || std::abs(*number) > 1e6) {
            sqlite3_result_null(context);
            return;
        }
        seconds = seconds * 60 + std::nearbyint(*number);
    }
    giveMoment(context, Moment::fromDay(Moment().julianDay(), qint64(seconds)));
}

void dateValue(sqlite3_context *context, int, Value **values)
{
    auto moment = momentOf(values[0]);
    if (moment)
        moment = Moment{moment->year, moment->month, moment->day, 0, 0, 0};
    giveMoment(context, moment);
}

void timeValue(sqlite3_context *context, int, Value **values)
{
    auto moment = momentOf(values[0]);
    if (moment)
        moment = Moment{1899, 12, 30, moment->hour, moment->minute, moment->second};
    giveMoment(context, moment);
}

void toDate(sqlite3_context *context, int, Value **values) { giveMoment(context, momentOf(values[0])); }

void isDate(sqlite3_context *context, int, Value **values)
{
    sqlite3_result_int(
        context, sqlite3_value_type(values[0]) == SQLITE_TEXT && Moment::fromText(utf8(values[0])).has_value());
}

/// A date and a number of days, in either order.
void plus(sqlite3_context *context, int, Value **values)
{
    const auto a = numberOf(values[0]), b = numberOf(values[1]);
    if (a && b)
        giveMoment(context, Moment::fromSerial(*a + *b));
    else
        sqlite3_result_null(context);
}

/// Two dates give the days between them, a date and a number the date so many days before.
void minus(sqlite3_context *context, int, Value **values)
{
    const auto a = numberOf(values[0]), b = numberOf(values[1]);
    const bool bothDates = Moment::fromStored(utf8(values[0])) && Moment::fromStored(utf8(values[1]));
    if (!a || !b)
        sqlite3_result_null(context);
    else if (bothDates)
        giveNumber(context, *a - *b);
    else
        giveMoment(context, Moment::fromSerial(*a - *b));
}

} // namespace

const std::vector<Function> &dateFunctions()
{
    static const std::vector<Function> functions{
        {"v_format", 1, format},
        {"v_format", 2, format},
        {"v_datediff", 3, diff},
        {"v_dateadd", 3, add},
        {"v_datepart", 2, part},
        {"v_dateserial", 3, dateSerial},
        {"v_timeserial", 3, timeSerial},
        {"v_datevalue", 1, dateValue},
        {"v_timevalue", 1, timeValue},
        {"v_cdate", 1, toDate},
        {"v_isdate", 1, isDate},
        {"v_dateplus", 2, plus},
        {"v_dateminus", 2, minus},
    };
    return functions;
}

} // namespace db::sql
