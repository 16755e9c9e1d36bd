#include "db/sql/Functions.h"

#include "db/Error.h"
#include "db/sql/Collation.h"
#include "db/sql/LikePattern.h"
#include "db/sql/Utf8.h"
#include "db/sql/Values.h"

namespace db::sql {

namespace {

/// like(pattern, text [, escape]): what the LIKE operator calls.
void like(sqlite3_context *context, int count, sqlite3_value **values)
{
    if (isNull(values[0]) || isNull(values[1]) || (count == 3 && isNull(values[2]))) {
        sqlite3_result_null(context);
        return;
    }
    auto *pattern = static_cast<LikePattern *>(sqlite3_get_auxdata(context, 0));
    const bool known = pattern != nullptr;
    if (!known) {
        char32_t escape = 0;
        if (const QByteArrayView sign = count == 3 ? utf8(values[2]) : QByteArrayView(); !sign.isEmpty()) {
            const auto *at = reinterpret_cast<const uchar *>(sign.data());
            escape = nextCharacter(at, at + sign.size());
        }
        pattern = new LikePattern(utf8(values[0]), escape);
    }
    sqlite3_result_int(context, pattern->matches(utf8(values[1])));
    // Last, because the engine may free it at once.
    if (!known)
        sqlite3_set_auxdata(context, 0, pattern, [](void *used) { delete static_cast<LikePattern *>(used); });
}

int collate(void *, int sizeA, const void *a, int sizeB, const void *b)
{
    return compareSpanish({static_cast<const char *>(a), sizeA}, {static_cast<const char *>(b), sizeB});
}

void check(sqlite3 *database, int code)
{
    if (code != SQLITE_OK)
        throw Error(Error::Kind::General, code, QString::fromUtf8(sqlite3_errmsg(database)));
}

} // namespace

void registerFunctions(sqlite3 *database)
{
    constexpr int flags = SQLITE_UTF8 | SQLITE_DETERMINISTIC | SQLITE_INNOCUOUS;
    for (const auto *functions : {&textFunctions(), &numberFunctions(), &dateFunctions()}) {
        for (const Function &function : *functions)
            check(
                database,
                sqlite3_create_function_v2(
                    database,
                    function.name,
                    function.arguments,
                    flags,
                    nullptr,
                    function.run,
                    nullptr,
                    nullptr,
                    nullptr));
    }
    for (const int arguments : {2, 3})
        check(
            database,
            sqlite3_create_function_v2(database, "like", arguments, flags, nullptr, like, nullptr, nullptr, nullptr));
    // The engine's own NOCASE knows the 26 letters only. Every index of ours is built in this order.
    check(database, sqlite3_create_collation_v2(database, "NOCASE", SQLITE_UTF8, nullptr, collate, nullptr));
}

} // namespace db::sql
