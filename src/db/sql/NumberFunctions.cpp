#include "db/sql/Values.h"

#include "db/sql/Format.h"

#include <charconv>
#include <cmath>

namespace db::sql {

namespace {

using Value = sqlite3_value;

/// Runs `compute` on the arguments as numbers; Null, or what is no number, gives Null.
template <typename Compute>
void onNumbers(sqlite3_context *context, int count, Value **values, Compute compute)
{
    double numbers[2] = {0, 0};
    for (int i = 0; i < count && i < 2; ++i) {
        const auto number = numberOf(values[i]);
        if (!number) {
            sqlite3_result_null(context);
            return;
        }
        numbers[i] = *number;
    }
    compute(numbers[0], numbers[1]);
}

/// To the nearest whole number, halves to the even one.
double toEven(double number) { return std::nearbyint(number); }

template <double (*compute)(double)>
void one(sqlite3_context *context, int count, Value **values)
{
    onNumbers(context, count, values, [context](double number, double) { giveNumber(context, compute(number)); });
}

double sign(double number) { return (number > 0) - (number < 0); }

double root(double number) { return std::sqrt(number); }

double down(double number) { return std::floor(number); }

double towardsZero(double number) { return std::trunc(number); }

double single(double number) { return double(float(number)); }

double absolute(double number) { return std::abs(number); }

double same(double number) { return number; }

template <bool halvesToEven>
void round(sqlite3_context *context, int count, Value **values)
{
    onNumbers(context, count, values, [=](double number, double places) {
        if (std::abs(places) > 15) {
            sqlite3_result_double(context, number);
            return;
        }
        const double scale = std::pow(10.0, std::trunc(places));
        // Twelve digits are what a value stands for: 0.145 is a half although its binary form lies below.
        char buffer[64];
        const char *end
            = std::to_chars(buffer, buffer + sizeof buffer, number * scale, std::chars_format::general, 12).ptr;
        double clean = 0;
        std::from_chars(buffer, end, clean);
        giveNumber(context, (halvesToEven ? toEven(clean) : std::round(clean)) / scale);
    });
}

void modulo(sqlite3_context *context, int count, Value **values)
{
    onNumbers(context, count, values, [context](double a, double b) {
        a = toEven(a);
        b = toEven(b);
        if (b == 0)
            sqlite3_result_null(context);
        else
            giveNumber(context, std::fmod(a, b));
    });
}

void wholeDivision(sqlite3_context *context, int count, Value **values)
{
    onNumbers(context, count, values, [context](double a, double b) {
        b = toEven(b);
        if (b == 0)
            sqlite3_result_null(context);
        else
            giveNumber(context, std::trunc(toEven(a) / b));
    });
}

void power(sqlite3_context *context, int count, Value **values)
{
    onNumbers(context, count, values, [context](double a, double b) { giveNumber(context, std::pow(a, b)); });
}

void isNumeric(sqlite3_context *context, int, Value **values)
{
    sqlite3_result_int(context, !Moment::fromStored(utf8(values[0])) && numberOf(values[0]).has_value());
}

/// The number at the beginning of a text, decimal point; 0 when there is none.
void val(sqlite3_context *context, int, Value **values)
{
    if (isNull(values[0])) {
        sqlite3_result_null(context);
        return;
    }
    QByteArray text;
    for (const char c : utf8(values[0])) {
        if (c != ' ' && c != '\t' && text.size() < 60)
            text += c;
    }
    const char *from = text.constData(), *const to = from + text.size();
    if (from < to && *from == '+')
        ++from;
    double number = 0;
    if (from < to && (*from == '-' || *from == '.' || (*from >= '0' && *from <= '9')))
        std::from_chars(from, to, number);
    giveNumber(context, std::isfinite(number) ? number : 0);
}

/// With a blank in the place of the sign, and a decimal point.
void str(sqlite3_context *context, int count, Value **values)
{
    onNumbers(context, count, values, [context](double number, double) {
        const QByteArray text = numberText(number).replace(',', '.');
        giveText(context, number < 0 ? text : ' ' + text);
    });
}

} // namespace

const std::vector<Function> &numberFunctions()
{
    static const std::vector<Function> functions{
        {"v_abs", 1, one<absolute>},
        {"v_int", 1, one<down>},
        {"v_fix", 1, one<towardsZero>},
        {"v_sgn", 1, one<sign>},
        {"v_sqr", 1, one<root>},
        {"v_clng", 1, one<toEven>},
        {"v_cint", 1, one<toEven>},
        {"v_cdbl", 1, one<same>},
        {"v_csng", 1, one<single>},
        {"v_round", 1, round<true>},
        {"v_round", 2, round<true>},
        {"v_roundaway", 2, round<false>},
        {"v_mod", 2, modulo},
        {"v_idiv", 2, wholeDivision},
        {"v_pow", 2, power},
        {"v_isnumeric", 1, isNumeric},
        {"v_val", 1, val},
        {"v_str", 1, str},
    };
    return functions;
}

} // namespace db::sql
