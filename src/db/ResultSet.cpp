#include "db/ResultSet.h"

namespace db {

namespace {

int digits(const char *p, int count)
{
    int value = 0;
    for (int i = 0; i < count; ++i) {
        if (p[i] < '0' || p[i] > '9')
            return -1;
        value = value * 10 + (p[i] - '0');
    }
    return value;
}

} // namespace

QDateTime readStoredDateTime(QByteArrayView text)
{
    if (text.size() != 10 && text.size() != 19)
        return {};
    const char *p = text.data();
    const QDate date(digits(p, 4), digits(p + 5, 2), digits(p + 8, 2));
    if (!date.isValid() || p[4] != '-' || p[7] != '-')
        return {};
    if (text.size() == 10)
        return QDateTime(date, QTime(0, 0));
    const QTime time(digits(p + 11, 2), digits(p + 14, 2), digits(p + 17, 2));
    return time.isValid() ? QDateTime(date, time) : QDateTime();
}

QString storedDateTime(const QDateTime &value) { return value.toString(QStringLiteral("yyyy-MM-dd HH:mm:ss")); }

int ResultSet::column(QStringView name) const
{
    for (size_t i = 0; i < m_fields.size(); ++i)
        if (name.compare(m_fields[i].name, Qt::CaseInsensitive) == 0)
            return int(i);
    return -1;
}

const ResultSet::Cell &ResultSet::cell(int row, int column) const
{
    Q_ASSERT(row >= 0 && row < m_rows && column >= 0 && column < columnCount());
    return m_cells[size_t(row) * m_fields.size() + size_t(column)];
}

bool ResultSet::isNull(int row, int column) const { return cell(row, column).kind == Kind::Null; }

QByteArrayView ResultSet::utf8(int row, int column) const
{
    const Cell &c = cell(row, column);
    if (c.kind != Kind::Text && c.kind != Kind::Bytes)
        return {};
    return QByteArrayView(m_block).sliced(qsizetype(c.offset), c.size);
}

QString ResultSet::text(int row, int column) const
{
    const Cell &c = cell(row, column);
    switch (c.kind) {
    case Kind::Null: return {};
    case Kind::Integer: return QString::number(c.integer);
    case Kind::Real: {
        const bool single = m_fields[size_t(column)].type == Type::Single;
        return single ? QString::number(float(c.real)) : QString::number(c.real, 'g', QLocale::FloatingPointShortest);
    }
    case Kind::Text:
    case Kind::Bytes: break;
    }
    return QString::fromUtf8(utf8(row, column));
}

qint64 ResultSet::integer(int row, int column) const
{
    const Cell &c = cell(row, column);
    switch (c.kind) {
    case Kind::Null: return 0;
    case Kind::Integer: return c.integer;
    case Kind::Real: return qint64(c.real);
    case Kind::Text:
    case Kind::Bytes: break;
    }
    return QByteArray::fromRawData(utf8(row, column).data(), c.size).trimmed().toLongLong();
}

double ResultSet::real(int row, int column) const
{
    const Cell &c = cell(row, column);
    switch (c.kind) {
    case Kind::Null: return 0;
    case Kind::Integer: return double(c.integer);
    case Kind::Real: return c.real;
    case Kind::Text:
    case Kind::Bytes: break;
    }
    return QByteArray::fromRawData(utf8(row, column).data(), c.size).trimmed().toDouble();
}

QDateTime ResultSet::dateTime(int row, int column) const { return readStoredDateTime(utf8(row, column)); }

QVariant ResultSet::value(int row, int column) const
{
    const Cell &c = cell(row, column);
    if (c.kind == Kind::Null)
        return {};
    switch (m_fields[size_t(column)].type) {
    case Type::Flag: return flag(row, column);
    case Type::DateTime: {
        const QDateTime moment = dateTime(row, column);
        return moment.isValid() ? QVariant(moment) : QVariant(text(row, column));
    }
    case Type::Binary: return utf8(row, column).toByteArray();
    default: break;
    }
    if (c.kind == Kind::Integer)
        return qlonglong(c.integer);
    if (c.kind == Kind::Real)
        return c.real;
    return text(row, column);
}

QString ResultSet::toDelimited(QStringView columnSeparator, QStringView rowSeparator) const
{
    QString out;
    for (int r = 0; r < m_rows; ++r) {
        for (int c = 0; c < columnCount(); ++c) {
            if (c > 0)
                out += columnSeparator;
            out += text(r, c);
        }
        out += rowSeparator;
    }
    return out;
}

ResultSet::Builder::Builder(std::vector<Field> fields)
    : m_result(std::make_unique<ResultSet>())
{
    m_result->m_fields = std::move(fields);
}

void ResultSet::Builder::reserve(int rows) { m_result->m_cells.reserve(size_t(rows) * m_result->m_fields.size()); }

void ResultSet::Builder::addNull() { m_result->m_cells.push_back({{.integer = 0}, 0, Kind::Null}); }

void ResultSet::Builder::addInteger(qint64 value)
{
    m_result->m_cells.push_back({{.integer = value}, 0, Kind::Integer});
}

void ResultSet::Builder::addReal(double value) { m_result->m_cells.push_back({{.real = value}, 0, Kind::Real}); }

void ResultSet::Builder::addText(QByteArrayView utf8)
{
    m_result->m_cells.push_back({{.offset = quint64(m_result->m_block.size())}, quint32(utf8.size()), Kind::Text});
    m_result->m_block.append(utf8);
}

void ResultSet::Builder::addBytes(QByteArrayView bytes)
{
    m_result->m_cells.push_back({{.offset = quint64(m_result->m_block.size())}, quint32(bytes.size()), Kind::Bytes});
    m_result->m_block.append(bytes);
}

void ResultSet::Builder::endRow()
{
    ++m_result->m_rows;
    Q_ASSERT(m_result->m_cells.size() == size_t(m_result->m_rows) * m_result->m_fields.size());
}

std::shared_ptr<const ResultSet> ResultSet::Builder::finish()
{
    return std::shared_ptr<const ResultSet>(std::move(m_result));
}

} // namespace db
