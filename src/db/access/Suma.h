#pragma once

#include <QByteArrayView>
#include <QVariant>

struct sqlite3_stmt;

namespace db::access {

/// A checksum of a column: equal for equal values in the same rows, whatever the order in which the rows come. Against
/// losses, not against somebody who wants to deceive.
class Suma
{
public:
    /// A value on its way into the file; `fila` is the number under which it will be found.
    void agregar(qint64 fila, const QVariant &valor);
    /// The same value found there: column `columna` of the current row.
    void agregar(qint64 fila, sqlite3_stmt *sentencia, int columna);

    bool operator==(const Suma &) const = default;

private:
    void entero(qint64 fila, qint64 valor);
    void real(qint64 fila, double valor);
    void bytes(qint64 fila, char clase, QByteArrayView valor);

    quint64 m_suma = 0;
    qint64 m_valores = 0;
};

} // namespace db::access
