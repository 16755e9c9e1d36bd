#pragma once

#include <QDateTime>
#include <QMessageAuthenticationCode>

namespace db {

class ResultSet;

/// Half of an HMAC-SHA256, 128 bits, as RFC 2104 allows; and sums of them modulo 2^128, which do not depend on the
/// order of what is added.
struct Huella {
    quint64 alta = 0;
    quint64 baja = 0;

    auto operator<=>(const Huella &) const = default;
    Huella &operator+=(const Huella &otra);
    Huella &operator-=(const Huella &otra);

    /// Zero for anything that is not 16 bytes long.
    [[nodiscard]] static Huella de(QByteArrayView bytes);
    [[nodiscard]] QByteArray bytes() const;
};

/// The five values of a row of `Historial`.
struct FilaHistorial {
    QDateTime fecha;
    QString equipo;
    int iddoctor = 0;
    QString ventana;
    QString accion;
};

/// A day as a number in calendar order, 20260312; 0 stands for no date and lies before all others.
[[nodiscard]] int claveDia(QDate dia);
/// The same of a stored moment, "yyyy-mm-dd hh:mm:ss"; -1 for a text that is none, which no column of dates should
/// hold.
[[nodiscard]] int claveDia(QByteArrayView momento);
[[nodiscard]] QDate diaDeClave(int clave);

/// The secret of one database's chain: made of the program's database password and the random salt that the chain's
/// first link holds.
class LlaveHistorial
{
public:
    explicit LlaveHistorial(const QByteArray &sal);

    /// HMAC of a row in its canonical form: each of the five values as stored, with its length before it; a Null counts
    /// as empty. Columns as in LectorHistorial. Both yield the same for the same row.
    [[nodiscard]] Huella deFila(const ResultSet &filas, int fila);
    [[nodiscard]] Huella deFila(const FilaHistorial &fila);
    [[nodiscard]] Huella de(QByteArrayView texto);

private:
    [[nodiscard]] Huella deValores(
        QByteArrayView fecha, QByteArrayView equipo, qint64 iddoctor, QByteArrayView ventana, QByteArrayView accion);

    QMessageAuthenticationCode m_mac;
    QByteArray m_texto; ///< kept for its room
};

} // namespace db
