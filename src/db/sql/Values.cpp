#include "db/sql/Values.h"

#include "base/Numeros.h"
#include "db/sql/Format.h"

#include <cmath>

namespace db::sql {

QByteArrayView utf8(sqlite3_value *value)
{
    const auto *text = reinterpret_cast<const char *>(sqlite3_value_text(value));
    return text ? QByteArrayView(text, sqlite3_value_bytes(value)) : QByteArrayView();
}

QByteArray textOf(sqlite3_value *value)
{
    if (sqlite3_value_type(value) == SQLITE_FLOAT)
        return numberText(sqlite3_value_double(value));
    return utf8(value).toByteArray();
}

std::optional<double> numberOf(sqlite3_value *value)
{
    switch (sqlite3_value_type(value)) {
    case SQLITE_INTEGER:
    case SQLITE_FLOAT: return sqlite3_value_double(value);
    case SQLITE_TEXT: {
        const QByteArrayView text = utf8(value);
        if (text.size() > 60)
            return std::nullopt;
        if (const auto number = base::leerNumero(QString::fromUtf8(text)))
            return number;
        if (const auto moment = Moment::fromStored(text))
            return moment->serial();
        return std::nullopt;
    }
    default: return std::nullopt;
    }
}

std::optional<Moment> momentOf(sqlite3_value *value)
{
    switch (sqlite3_value_type(value)) {
    case SQLITE_INTEGER:
    case SQLITE_FLOAT: return Moment::fromSerial(sqlite3_value_double(value));
    case SQLITE_TEXT: return Moment::fromText(utf8(value));
    default: return std::nullopt;
    }
}

void giveText(sqlite3_context *context, QByteArrayView text)
{
    sqlite3_result_text64(
        context, text.isNull() ? "" : text.data(), sqlite3_uint64(text.size()), SQLITE_TRANSIENT, SQLITE_UTF8);
}

void giveNumber(sqlite3_context *context, double number)
{
    if (std::trunc(number) == number && std::abs(number) < 9e15)
        sqlite3_result_int64(context, qint64(number));
    else if (std::isfinite(number))
        sqlite3_result_double(context, number);
    else
        sqlite3_result_null(context);
}

void giveMoment(sqlite3_context *context, const std::optional<Moment> &moment)
{
    if (moment)
        giveText(context, moment->stored());
    else
        sqlite3_result_null(context);
}

} // namespace db::sql
