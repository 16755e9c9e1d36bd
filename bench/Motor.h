#pragma once

#include <QString>
#include <QVariantList>

struct sqlite3;

namespace db {
class Connection;
}

namespace medicion {

/// The engine without anything of ours above it but the functions and the order of text that its statements call.
class Motor
{
public:
    /// The handle of an open connection: same file, same page cache.
    explicit Motor(db::Connection &conexion);

    /// Prepares, binds whole numbers, steps through every row and takes every column. Yields the rows.
    int ejecutar(const QByteArray &sql, const std::vector<qint64> &valores = {});
    /// The same with a statement in the Access dialect, translated beforehand.
    [[nodiscard]] static QByteArray traducida(const QString &sql);

    /// Opens a file of its own with the password, reads its catalogue and closes it.
    static void abrirYCerrar(const QString &archivo, const QString &clave);

private:
    sqlite3 *m_base;
};

} // namespace medicion
