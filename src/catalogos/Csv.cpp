#include "catalogos/Csv.h"

#include "db/Error.h"

#include <QFile>
#include <QFileInfo>
#include <QStringDecoder>

namespace catalogos {

namespace {

[[noreturn]] void refuse(int line, const QString &reason)
{
    throw db::Error(db::Error::Kind::General, line, QStringLiteral("Línea %1 del catálogo: %2").arg(line).arg(reason));
}

class Reader
{
public:
    explicit Reader(const QString &text)
        : m_text(text)
    {
    }

    QVector<QStringList> read()
    {
        QVector<QStringList> rows;
        while (m_at < m_text.size())
            rows.append(row());
        return rows;
    }

private:
    QStringList row()
    {
        QStringList cells;
        for (;;) {
            cells.append(peek() == u'"' ? quotedCell() : plainCell());
            if (peek() != u',')
                break;
            ++m_at;
        }
        endOfLine();
        return cells;
    }

    QString plainCell()
    {
        const qsizetype from = m_at;
        while (m_at < m_text.size() && peek() != u',' && peek() != u'\n' && peek() != u'\r') {
            if (peek() == u'"')
                refuse(m_line, QStringLiteral("comillas en medio de una celda."));
            ++m_at;
        }
        return m_text.mid(from, m_at - from);
    }

    QString quotedCell()
    {
        const int opened = m_line;
        QString cell;
        for (++m_at; m_at < m_text.size(); ++m_at) {
            if (peek() == u'\n')
                ++m_line;
            if (peek() != u'"') {
                cell.append(peek());
                continue;
            }
            ++m_at;
            if (peek() != u'"')
                return cell;
            cell.append(u'"');
        }
        refuse(opened, QStringLiteral("comillas sin cerrar."));
    }

    void endOfLine()
    {
        if (peek() == u'\r')
            ++m_at;
        if (m_at >= m_text.size())
            return;
        if (peek() != u'\n')
            refuse(m_line, QStringLiteral("sobra texto después de una celda."));
        ++m_at;
        ++m_line;
    }

    [[nodiscard]] QChar peek() const { return m_at < m_text.size() ? m_text.at(m_at) : QChar(); }

    const QString &m_text;
    qsizetype m_at = 0;
    int m_line = 1;
};

} // namespace

int Csv::column(QStringView name) const
{
    const qsizetype i = header.indexOf(name);
    if (i < 0)
        refuse(1, QStringLiteral("falta la columna '%1'.").arg(name));
    return int(i);
}

Csv leerCsv(const QByteArray &bytes)
{
    QStringDecoder decoder(QStringDecoder::Utf8);
    const QString text = decoder.decode(bytes);
    if (decoder.hasError())
        refuse(1, QStringLiteral("el texto no está en UTF-8."));
    Csv csv;
    csv.rows = Reader(text).read();
    if (csv.rows.isEmpty())
        refuse(1, QStringLiteral("falta el encabezado."));
    csv.header = csv.rows.takeFirst();
    for (int r = 0; r < csv.rows.size(); ++r)
        if (csv.rows.at(r).size() != csv.header.size())
            refuse(r + 2, QStringLiteral("la fila no tiene %1 celdas.").arg(csv.header.size()));
    return csv;
}

Csv leerArchivoCsv(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        throw db::Error(
            db::Error::Kind::General,
            0,
            QStringLiteral("No se puede leer el catálogo %1.").arg(QFileInfo(path).fileName()));
    return leerCsv(file.readAll());
}

} // namespace catalogos
