#pragma once

#include <QString>
#include <QStringList>
#include <QVariant>
#include <QVector>

#include <optional>

namespace db {

/// What a column holds. The engines know how each is stored.
enum class Type {
    Counter, ///< auto-numbered 32-bit key
    Text, ///< up to `size` characters, compared without regard to case
    Memo, ///< text of any length
    Integer, ///< 16-bit number
    Long, ///< 32-bit number
    Single, ///< single-precision number; all money
    Double, ///< double-precision number
    Flag, ///< -1 or 0
    DateTime, ///< date, time or both; years 100 to 9999
    Binary ///< bytes of any length
};

/// One column of a table. Built with the functions of namespace `db::columna`.
struct Column {
    QString name;
    Type type = Type::Text;
    int size = 0; ///< characters of a Text
    std::optional<QVariant> initial; ///< default of new rows; also given to existing rows when the column is added
    std::optional<QVariant> existing; ///< given to existing rows instead of `initial` when the column is added

    /// New rows begin with this value.
    [[nodiscard]] Column def(const QVariant &value) const;
    /// Rows that exist when the upgrade adds the column get this value, new rows nothing.
    [[nodiscard]] Column existentes(const QVariant &value) const;
};

struct Index {
    QStringList columns;
    bool unique = false;
    /// Holds what a list shows, so that the embedded engine reads it instead of the wide rows. Ordered by bytes: an
    /// outside tool that orders words in another way agrees with it. The server has none of these.
    bool ofList = false;
};

/// The columns of a table that is searched as one types. The embedded engine keeps them apart from the wide rows, in
/// the order of the list (see Engine::search); the server has nothing of it.
struct SearchList {
    QString key; ///< column of whole numbers that tells the rows apart
    QStringList order; ///< columns of text that put them in their order
    QStringList others = {}; ///< further columns that conditions may name
};

struct Table {
    QString name;
    QVector<Column> columns;
    QVector<Index> indexes;
    QStringList key = {}; ///< primary key of a table without counter
    int counterStart = 0; ///< the counter stands here in a new table: the first row gets the number after it
    std::optional<SearchList> search = {};

    /// Case-insensitive; null when there is no such column.
    [[nodiscard]] const Column *column(QStringView columnName) const;
};

/// All tables of one owner, or of the whole system.
struct Schema {
    QVector<Table> tables;

    [[nodiscard]] const Table *table(QStringView name) const;
    Schema &operator+=(const Schema &other);
};

/// Short builders, so that a table reads as a list.
namespace columna {
[[nodiscard]] Column contador(const QString &name = QStringLiteral("id"));
[[nodiscard]] Column texto(const QString &name, int size = 255);
[[nodiscard]] Column memo(const QString &name);
[[nodiscard]] Column entero(const QString &name); ///< Type::Integer
[[nodiscard]] Column largo(const QString &name); ///< Type::Long
[[nodiscard]] Column simple(const QString &name); ///< Type::Single
[[nodiscard]] Column doble(const QString &name); ///< Type::Double
[[nodiscard]] Column bandera(const QString &name); ///< Type::Flag, initial 0
[[nodiscard]] Column fecha(const QString &name); ///< Type::DateTime
[[nodiscard]] Column binario(const QString &name);
} // namespace columna

} // namespace db
