#pragma once

#include "db/Engine.h"

namespace db {

class EmbeddedEngine;

/// One searched table as this connection knows it: the columns that were asked for so far, in the order of the list,
/// and the rows that were written since the file's columns were. A search walks through the columns of its conditions
/// and nothing else. Every search first looks whether anything was written, here, at another station or by an outside
/// tool.
class SearchIndex
{
public:
    SearchIndex(EmbeddedEngine &engine, const QString &table);

    /// See Engine::search().
    [[nodiscard]] Rows search(const Conditions &conditions, const QStringList &columns);

private:
    struct Column {
        QByteArray bytes;
        std::vector<quint32> ends; ///< of each value
        bool loaded = false;

        [[nodiscard]] QByteArrayView value(size_t row) const;
    };
    /// A row written since: as the table holds it now.
    struct Changed {
        qint64 key;
        std::vector<QByteArray> values; ///< by column; Null as in the file
        size_t position; ///< of the row of the list that it stands before
    };

    [[nodiscard]] bool refresh();
    void forget();
    [[nodiscard]] bool load(int column);
    [[nodiscard]] bool takeOver(const std::vector<qint64> &keys);
    [[nodiscard]] std::vector<Changed> read(const std::vector<qint64> &keys);
    [[nodiscard]] int compare(const Changed &row, size_t position) const;
    [[nodiscard]] int compare(const Changed &row, const Changed &other) const;
    [[nodiscard]] int columnOf(const QString &name) const;
    [[nodiscard]] Rows
    evaluate(const Conditions &conditions, const std::vector<int> &conditioned, const std::vector<int> &shown) const;

    EmbeddedEngine &m_engine;
    QString m_table;
    qint64 m_schema = -1; ///< for which m_usable holds
    bool m_usable = false;
    QString m_definition;
    qint64 m_version = -1;
    qint64 m_upTo = 0; ///< changes known
    QStringList m_names;
    int m_ordered = 0; ///< columns 1 to this give the order
    std::vector<Column> m_columns;
    std::vector<qint64> m_keys; ///< of the first column
    std::vector<bool> m_replaced; ///< rows of the list that were written since
    std::vector<Changed> m_changed; ///< in their order
};

} // namespace db
