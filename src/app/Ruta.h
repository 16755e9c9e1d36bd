#pragma once

#include <QByteArray>
#include <QString>

namespace app {

/// `ruta.dat`: one record of 472 bytes that says where the database is and how to reach it. Little-endian numbers,
/// texts of fixed width in Windows-1252 padded with blanks:
///
///   0   2  other folder (16-bit flag, -1 or 0)     270   2  server mode (16-bit flag, -1 or 0)
///   2 250  folder                                  272  50  server
/// 252   4  reserved                                322  50  instance
/// 256  14  reserved                                372  50  server user
///                                                  422  50  server password
struct Ruta {
    static constexpr int bytes = 472;
    static constexpr int anchoCarpeta = 250; ///< of `carpeta`
    static constexpr int anchoTexto = 50; ///< of each of the server's texts

    bool otraCarpeta = false;
    QString carpeta = {};
    QByteArray reservado = QByteArray(18, '\0'); ///< bytes 252 to 269, kept as read
    bool modoServidor = false;
    QString servidor = {};
    QString instancia = {};
    QString usuario = {};
    QString clave = {};

    bool operator==(const Ruta &) const = default;

    /// Texts come trimmed; a field whose first character has code 0 is empty. Bytes missing from a short record read as
    /// zeros, bytes beyond it are ignored.
    static Ruta deRegistro(QByteArrayView registro);
    /// Throws db::Error when a text does not fit its field or has characters outside Windows-1252.
    [[nodiscard]] QByteArray aRegistro() const;

    /// A missing or unreadable file leaves every field empty: the database is in the program folder, Access mode.
    static Ruta leer(const QString &archivo);
    /// Replaces the file's record at once or not at all; throws db::Error.
    void guardar(const QString &archivo) const;
};

/// What `ruta.dat` means on a computer whose program lies in `carpetaPrograma`.
struct Destino {
    QString carpetaDatos; ///< without a trailing separator
    QString archivo; ///< path of Datos.mdb
    bool servidor = false; ///< server mode
    QString nombreServidor; ///< server, or server\instance
    QString usuarioServidor;
    QString claveServidor;

    /// As the connection is described to the database door.
    [[nodiscard]] QString cadenaConexion() const;
    bool operator==(const Destino &) const = default;
};

[[nodiscard]] Destino destinoDe(const Ruta &ruta, const QString &carpetaPrograma);

} // namespace app
