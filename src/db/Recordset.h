#pragma once

#include "db/Connection.h"

namespace db {

/// A result moved through freely, updatable when it comes from one table: addNew() or a current row, set(), update().
/// Column names are taken without regard to case; an unknown one throws. Opened on the first row when there is one.
class Recordset
{
public:
    Recordset(Connection &connection, const QString &sql, const Params &params = {});

    [[nodiscard]] const ResultSet &rows() const { return *m_rows; }
    [[nodiscard]] Rows shared() const { return m_rows; }
    [[nodiscard]] int recordCount() const { return m_rows->rowCount(); }
    [[nodiscard]] bool isEmpty() const { return m_rows->rowCount() == 0; }
    [[nodiscard]] bool eof() const { return m_row >= m_rows->rowCount(); }
    [[nodiscard]] bool bof() const { return m_row < 0; }
    void moveFirst() { m_row = 0; }
    void moveLast() { m_row = m_rows->rowCount() - 1; }
    void moveNext() { ++m_row; }
    void movePrevious() { --m_row; }

    /// Cells of the current row as stored (not what set() changed). Null reads as empty text, 0, false, invalid date.
    [[nodiscard]] bool isNull(QStringView column) const;
    [[nodiscard]] QString text(QStringView column) const;
    [[nodiscard]] qint64 integer(QStringView column) const;
    [[nodiscard]] double real(QStringView column) const;
    [[nodiscard]] bool flag(QStringView column) const;
    [[nodiscard]] QDateTime dateTime(QStringView column) const;
    [[nodiscard]] QDate date(QStringView column) const { return dateTime(column).date(); }
    [[nodiscard]] QVariant value(QStringView column) const;

    /// Begins a new row; update() inserts it.
    void addNew();
    /// Sets a column of the new or current row; nothing is written before update(). Values are fitted to the column's
    /// type: single-precision numbers are rounded, flags become -1/0, a text longer than its column is refused.
    void set(QStringView column, const QVariant &value);
    /// Writes what was set: an INSERT after addNew(), else an UPDATE of the row by `id` (or, in a table without one, of
    /// the row that still has every value read). Throws Error::Kind::RowGone when another station removed it. Yields
    /// the `id` of the row (0 in a table without counter). The recordset is not re-read.
    qint64 update();
    void cancelUpdate();

private:
    [[nodiscard]] int columnOf(QStringView column) const;
    void checkUpdatable() const;

    Connection &m_connection;
    QString m_table;
    Rows m_rows;
    QVector<Column> m_declared;
    int m_row = 0;
    bool m_adding = false;
    std::vector<std::pair<int, QVariant>> m_pending;
};

} // namespace db
