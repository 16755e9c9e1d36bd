#pragma once

#include <QByteArray>
#include <QString>

namespace db::access {

/// What the first page of a file tells about an old Access database.
struct Cabecera {
    enum class Formato {
        Otro, ///< not an Access file
        Jet3, ///< Access 97
        Jet4, ///< Access 2000 to 2003
        Nuevo ///< Access 2007 or later
    };
    Formato formato = Formato::Otro;
    QString clave = {}; ///< the password that Access would ask for; empty when it would not

    [[nodiscard]] bool legible() const { return formato == Formato::Jet3 || formato == Formato::Jet4; }
};

/// The bytes that begin every Access file, as many as the salt of one of ours.
[[nodiscard]] bool empiezaComoAccess(QByteArrayView primeros);

/// Reads from a file's first 256 bytes; fewer are no Access file.
[[nodiscard]] Cabecera leerCabecera(QByteArrayView primeros);
/// The same of a file, which must not be one that this process has open as a database of ours.
[[nodiscard]] Cabecera leerCabecera(const QString &archivo);

} // namespace db::access
