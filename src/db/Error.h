#pragma once

#include <QString>

#include <exception>

namespace db {

/// A failure of the database: caught at the window's edge and shown once. Never holds values of a row, only statements
/// and names.
class Error : public std::exception
{
public:
    enum class Kind {
        General,
        CannotOpen, ///< the file or server cannot be opened at all
        NotADatabase, ///< foreign file, other password, or damaged beyond reading
        Closed, ///< the connection is not open
        NoSuchTable,
        NoSuchColumn,
        Syntax, ///< text that the dialect does not know
        Busy, ///< another station held the file too long
        ReadOnly,
        Full,
        Constraint,
        Corrupt,
        RowGone, ///< another station removed the row that was to be changed
        Moved, ///< the file was removed or replaced while open
        Lost, ///< the server went away: what was not committed is undone
        OldAccess ///< the file is an Access database of an older version: it can be converted (db/access)
    };

    Error(Kind kind, int number, QString description);

    [[nodiscard]] Kind kind() const { return m_kind; }
    /// The engine's own number.
    [[nodiscard]] int number() const { return m_number; }
    /// For the person, in Spanish where the failure is one that she can do something about.
    [[nodiscard]] const QString &description() const { return m_description; }
    [[nodiscard]] const char *what() const noexcept override { return m_what.constData(); }

private:
    Kind m_kind;
    int m_number;
    QString m_description;
    QByteArray m_what;
};

} // namespace db
