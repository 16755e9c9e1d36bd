#include "db/engine/SearchIndex.h"

#include "db/Error.h"
#include "db/engine/EmbeddedEngine.h"
#include "db/engine/SearchTables.h"
#include "db/sql/Collation.h"

#include <algorithm>
#include <unordered_set>

#include <sqlite3.h>

namespace db {

namespace {

using searchtables::null;
using searchtables::separator;

bool isNull(QByteArrayView value) { return value.size() == 1 && value.front() == null; }

// As the engine orders them: Null first.
int compareValues(QByteArrayView one, QByteArrayView other)
{
    if (isNull(one) || isNull(other))
        return int(isNull(other)) - int(isNull(one));
    return sql::compareSpanish(one, other);
}

int compareKeys(qint64 one, qint64 other) { return one < other ? -1 : one > other; }

} // namespace

QByteArrayView SearchIndex::Column::value(size_t row) const
{
    const quint32 begin = row == 0 ? 0 : ends[row - 1] + 1;
    return QByteArrayView(bytes.constData() + begin, qsizetype(ends[row] - begin));
}

SearchIndex::SearchIndex(EmbeddedEngine &engine, const QString &table)
    : m_engine(engine)
    , m_table(table)
{
}

int SearchIndex::columnOf(const QString &name) const
{
    const auto its = std::find_if(m_names.cbegin(), m_names.cend(), [&](const QString &known) {
        return known.compare(name, Qt::CaseInsensitive) == 0;
    });
    return its == m_names.cend() ? -1 : int(its - m_names.cbegin());
}

Rows SearchIndex::search(const Conditions &conditions, const QStringList &columns)
{
    // What an open transaction wrote may yet be undone.
    if (m_engine.inTransaction())
        return {};
    // A second time when another station wrote the columns anew in between.
    for (int attempt = 0; attempt < 2; ++attempt) {
        if (!refresh())
            return {};
        std::vector<int> conditioned, shown;
        for (const Condition &condition : conditions)
            conditioned.push_back(columnOf(condition.column));
        for (const QString &column : columns)
            shown.push_back(columnOf(column));
        std::vector<int> needed{0};
        for (const std::vector<int> &some : {conditioned, shown})
            needed.insert(needed.end(), some.begin(), some.end());
        if (std::any_of(needed.begin(), needed.end(), [](int column) { return column < 0; }))
            return {};
        if (std::all_of(needed.begin(), needed.end(), [this](int column) { return load(column); }))
            return evaluate(conditions, conditioned, shown);
        forget();
    }
    return {};
}

void SearchIndex::forget()
{
    m_version = -1;
    m_columns.clear();
    m_keys.clear();
    m_replaced.clear();
    m_changed.clear();
}

bool SearchIndex::refresh()
{
    // Tables and triggers can only come and go with the file's schema.
    const qint64 schema = m_engine.queryNative("PRAGMA schema_version", {})->integer(0, 0);
    if (schema != m_schema) {
        m_usable
            = m_engine.queryNative("SELECT 1 FROM sqlite_master WHERE name = 'motor_busqueda'", {})->rowCount() > 0;
        if (m_usable) {
            const Rows definition
                = m_engine.queryNative("SELECT definicion FROM motor_busqueda WHERE tabla = ?", {m_table});
            m_usable = definition->rowCount() == 1
                && searchtables::complete(m_engine, m_table, searchtables::list(definition->text(0, 0)));
        }
        m_schema = schema;
        forget();
    }
    if (!m_usable)
        return false;

    const Rows state = m_engine.queryNative(
        "SELECT definicion, version, hasta, coalesce((SELECT max(n) FROM motor_busqueda_cambios), 0) FROM"
        " motor_busqueda WHERE tabla = ?",
        {m_table});
    if (state->rowCount() == 0)
        return false;
    const qint64 last = std::max(state->integer(0, 2), state->integer(0, 3));
    // Numbers that go back belong to a file that was put in the place of this one.
    if (state->integer(0, 1) != m_version || last < m_upTo) {
        forget();
        const SearchList list = searchtables::list(state->text(0, 0));
        m_names = searchtables::columns(list);
        m_ordered = int(list.order.size());
        m_columns.resize(size_t(m_names.size()));
        m_version = state->integer(0, 1);
        m_upTo = state->integer(0, 2);
    }
    if (last == m_upTo)
        return true;
    const Rows changes = m_engine.queryNative(
        "SELECT DISTINCT clave FROM motor_busqueda_cambios WHERE n > ? AND tabla = ?", {m_upTo, m_table});
    std::vector<qint64> keys;
    for (int r = 0; r < changes->rowCount(); ++r)
        if (!changes->isNull(r, 0))
            keys.push_back(changes->integer(r, 0));
    if (!keys.empty() && !takeOver(keys)) {
        forget(); // the next attempt meets the new columns
        return true;
    }
    m_upTo = last;
    return true;
}

bool SearchIndex::load(int column)
{
    if (m_version < 0)
        return false;
    Column &its = m_columns[size_t(column)];
    if (its.loaded)
        return true;
    bool same = true;
    its.bytes.resize(0);
    m_engine.walkNative(
        "SELECT datos, (SELECT version FROM motor_busqueda WHERE tabla = ?1) FROM motor_busqueda_tramos"
        " WHERE tabla = ?1 AND columna = ?2 ORDER BY tramo",
        {m_table, m_names[column]},
        [&](sqlite3_stmt *row) {
            same = same && sqlite3_column_int64(row, 1) == m_version;
            its.bytes.append(static_cast<const char *>(sqlite3_column_blob(row, 0)), sqlite3_column_bytes(row, 0));
        });
    if (!same)
        return false;
    its.ends.clear();
    for (qsizetype end = its.bytes.indexOf(separator); end >= 0; end = its.bytes.indexOf(separator, end + 1))
        its.ends.push_back(quint32(end));
    if (column == 0) {
        m_keys.reserve(its.ends.size());
        for (size_t row = 0; row < its.ends.size(); ++row) {
            const QByteArrayView key = its.value(row);
            m_keys.push_back(QByteArray::fromRawData(key.data(), key.size()).toLongLong());
        }
    }
    // Columns of one version are equally long, unless somebody else wrote into them.
    its.loaded = its.ends.size() == m_keys.size() || column == 0;
    return its.loaded;
}

bool SearchIndex::takeOver(const std::vector<qint64> &keys)
{
    for (int column = 0; column <= m_ordered; ++column)
        if (!load(column))
            return false;
    const std::unordered_set<qint64> written(keys.begin(), keys.end());
    const auto isWritten = [&](qint64 key) { return keys.size() == 1 ? key == keys[0] : written.contains(key); };
    m_replaced.resize(m_keys.size());
    for (size_t row = 0; row < m_keys.size(); ++row)
        if (isWritten(m_keys[row]))
            m_replaced[row] = true;
    std::erase_if(m_changed, [&](const Changed &row) { return isWritten(row.key); });

    for (Changed &row : read(keys)) {
        size_t first = 0, last = m_keys.size();
        while (first < last) {
            const size_t middle = (first + last) / 2;
            if (compare(row, middle) < 0)
                last = middle;
            else
                first = middle + 1;
        }
        row.position = first;
        m_changed.push_back(std::move(row));
    }
    std::sort(m_changed.begin(), m_changed.end(), [this](const Changed &one, const Changed &other) {
        return compare(one, other) < 0;
    });
    return true;
}

std::vector<SearchIndex::Changed> SearchIndex::read(const std::vector<qint64> &keys)
{
    // Always the same number of parameters, so that one prepared statement serves.
    constexpr size_t atOnce = 64;
    QByteArray names;
    for (const QString &name : std::as_const(m_names))
        names += (names.isEmpty() ? "\"" : ", \"") + name.toUtf8().replace('"', "\"\"") + '"';
    const QByteArray sql = "SELECT " + names + " FROM \"" + m_table.toUtf8().replace('"', "\"\"") + "\" WHERE \""
        + m_names[0].toUtf8().replace('"', "\"\"") + "\" IN (?" + QByteArray(",?").repeated(int(atOnce) - 1) + ')';
    std::vector<Changed> rows;
    for (size_t begin = 0; begin < keys.size(); begin += atOnce) {
        Params params;
        for (size_t i = begin; i < begin + atOnce; ++i)
            params << keys[std::min(i, keys.size() - 1)];
        m_engine.walkNative(sql, params, [&](sqlite3_stmt *row) {
            Changed changed{sqlite3_column_int64(row, 0), {}, 0};
            for (int c = 0; c < int(m_names.size()); ++c)
                changed.values.push_back(
                    sqlite3_column_type(row, c) == SQLITE_NULL
                        ? QByteArray(1, null)
                        : QByteArray(reinterpret_cast<const char *>(sqlite3_column_text(row, c))));
            rows.push_back(std::move(changed));
        });
    }
    return rows;
}

int SearchIndex::compare(const Changed &row, size_t position) const
{
    for (size_t c = 1; c <= size_t(m_ordered); ++c)
        if (const int order = compareValues(row.values[c], m_columns[c].value(position)); order != 0)
            return order;
    return compareKeys(row.key, m_keys[position]);
}

int SearchIndex::compare(const Changed &row, const Changed &other) const
{
    for (size_t c = 1; c <= size_t(m_ordered); ++c)
        if (const int order = compareValues(row.values[c], other.values[c]); order != 0)
            return order;
    return compareKeys(row.key, other.key);
}

Rows SearchIndex::evaluate(
    const Conditions &conditions, const std::vector<int> &conditioned, const std::vector<int> &shown) const
{
    std::vector<ResultSet::Field> fields{{m_names[0], Type::Long}};
    for (const int column : shown)
        fields.push_back({m_names[column], Type::Text});
    ResultSet::Builder builder(std::move(fields));
    // A row is what gives the value of each column.
    const auto consider = [&](qint64 key, auto value) {
        for (size_t i = 0; i < conditions.size(); ++i) {
            const QByteArrayView its = value(size_t(conditioned[i]));
            if (isNull(its) || !conditions[i].holds(its))
                return;
        }
        builder.addInteger(key);
        for (const int column : shown) {
            const QByteArrayView its = value(size_t(column));
            if (isNull(its))
                builder.addNull();
            else
                builder.addText(its);
        }
        builder.endRow();
    };
    auto changed = m_changed.cbegin();
    for (size_t row = 0; row <= m_keys.size(); ++row) {
        for (; changed != m_changed.cend() && changed->position == row; ++changed)
            consider(changed->key, [&](size_t column) { return QByteArrayView(changed->values[column]); });
        if (row < m_keys.size() && (m_replaced.empty() || !m_replaced[row]))
            consider(m_keys[row], [&](size_t column) { return m_columns[column].value(row); });
    }
    return builder.finish();
}

} // namespace db
