#pragma once

#include "db/Schema.h"

#include <QDateTime>
#include <QString>
#include <QVariant>

#include <memory>
#include <vector>

namespace db {

/// The whole result of a query, read once and then immutable: cells of 16 bytes over one block of text, so that a grid
/// can show a hundred thousand rows without copying them. Rows and columns count from 0; asking for a cell outside is a
/// programming fault.
class ResultSet
{
public:
    struct Field {
        QString name;
        /// Declared type of the table's column; expressions without one are Text, Long or Double by their first value.
        Type type = Type::Text;
    };

    [[nodiscard]] int rowCount() const { return m_rows; }
    [[nodiscard]] int columnCount() const { return int(m_fields.size()); }
    [[nodiscard]] const std::vector<Field> &fields() const { return m_fields; }
    /// Position of the column, without regard to case; -1 when there is none.
    [[nodiscard]] int column(QStringView name) const;

    [[nodiscard]] bool isNull(int row, int column) const;
    /// Null reads as empty text, 0, false or an invalid date; isNull() tells them apart.
    [[nodiscard]] QString text(int row, int column) const;
    [[nodiscard]] qint64 integer(int row, int column) const;
    [[nodiscard]] double real(int row, int column) const;
    [[nodiscard]] bool flag(int row, int column) const { return integer(row, column) != 0; }
    [[nodiscard]] QDateTime dateTime(int row, int column) const;
    /// The stored text without a copy; empty for anything but text and bytes. Valid as long as this object.
    [[nodiscard]] QByteArrayView utf8(int row, int column) const;
    /// QString, qlonglong, double, bool, QDateTime or QByteArray by the field's type; a null QVariant for Null.
    [[nodiscard]] QVariant value(int row, int column) const;

    /// All rows as one text, for a grid or the clipboard. Null is the empty text.
    [[nodiscard]] QString toDelimited(QStringView columnSeparator, QStringView rowSeparator) const;

    /// Engines fill a result with this, row by row and from left to right.
    class Builder
    {
    public:
        explicit Builder(std::vector<Field> fields);
        void reserve(int rows);
        void addNull();
        void addInteger(qint64 value);
        void addReal(double value);
        void addText(QByteArrayView utf8);
        void addBytes(QByteArrayView bytes);
        void endRow();
        [[nodiscard]] std::shared_ptr<const ResultSet> finish();

    private:
        std::unique_ptr<ResultSet> m_result;
    };

private:
    enum class Kind : quint8 { Null, Integer, Real, Text, Bytes };
    struct Cell {
        union {
            qint64 integer;
            double real;
            quint64 offset;
        };
        quint32 size;
        Kind kind;
    };
    [[nodiscard]] const Cell &cell(int row, int column) const;

    std::vector<Field> m_fields;
    std::vector<Cell> m_cells;
    QByteArray m_block;
    int m_rows = 0;
};

/// Reads a stored date-time: "yyyy-mm-dd hh:mm:ss", or its date alone. Invalid when it is not one.
[[nodiscard]] QDateTime readStoredDateTime(QByteArrayView text);
/// The form in which dates are stored.
[[nodiscard]] QString storedDateTime(const QDateTime &value);

} // namespace db
