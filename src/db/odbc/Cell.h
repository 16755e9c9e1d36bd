#pragma once

#include "db/odbc/Odbc.h"

#include <QByteArray>

namespace db::odbc {

/// Reads the cells of a statement's current row, in the order of their columns. Of the statement it only keeps a
/// reference. Everything throws Failed with what the driver reports.
class Cell
{
public:
    explicit Cell(const Handle &statement)
        : m_statement(statement)
    {
    }

    /// A value of fixed size; false for NULL.
    [[nodiscard]] bool fixed(SQLUSMALLINT column, SQLSMALLINT type, void *value, SQLLEN size);
    /// A text (SQL_C_WCHAR, SQL_C_CHAR) or bytes (SQL_C_BINARY) of any length, piece by piece into data(); false for
    /// NULL. Throws db::Error when the driver stops before what it announced.
    [[nodiscard]] bool pieces(SQLUSMALLINT column, SQLSMALLINT type);
    /// What pieces() put together, without a terminator.
    [[nodiscard]] const QByteArray &data() const { return m_data; }

private:
    const Handle &m_statement;
    QByteArray m_piece;
    QByteArray m_data;
};

} // namespace db::odbc
