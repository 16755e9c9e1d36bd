#pragma once

#include <QString>
#include <QStringList>
#include <QVector>

namespace catalogos {

/// A table read from comma-separated text with a header. Every row has as many cells as the header.
struct Csv {
    QStringList header;
    QVector<QStringList> rows;

    /// Position of the column with exactly this name; throws db::Error when there is none.
    [[nodiscard]] int column(QStringView name) const;
};

/// Reads UTF-8 text in the form of RFC 4180: cells separated by commas; a cell in quotes may hold commas, line breaks
/// and doubled quotes; lines end in LF or CRLF, the last one may lack its end. Throws db::Error, with the number of the
/// line, for an open quote, text beside quotes, a row of another length or bytes that are not UTF-8.
[[nodiscard]] Csv leerCsv(const QByteArray &text);
/// The same from a file; throws db::Error when it cannot be read.
[[nodiscard]] Csv leerArchivoCsv(const QString &path);

} // namespace catalogos
