#pragma once

#include <QByteArray>
#include <QString>

namespace app {

/// `setup.dat`: one record of 47 bytes. 0-36 reserved; 37 the current user's `id` (32 bits, signed); 41 agenda refresh,
/// 43 message check (16 bits, seconds, valid 1 to 60); 45 appointment mode (16 bits). Little-endian.
struct Setup {
    static constexpr int bytes = 47;
    static constexpr int usuarioInicial = 20;
    static constexpr int segundosIniciales = 30;

    QByteArray reservado = QByteArray(37, ' '); ///< kept as read
    qint32 usuarioActual = usuarioInicial;
    qint16 refrescoAgenda = segundosIniciales;
    qint16 controlMensajes = segundosIniciales;
    qint16 modoTurno = 0;

    bool operator==(const Setup &) const = default;

    /// A number that a short record does not hold whole keeps its default.
    static Setup deRegistro(QByteArrayView registro);
    [[nodiscard]] QByteArray aRegistro() const;

    /// The defaults when the file is missing.
    static Setup leer(const QString &archivo);
    /// Writes the record over the file's first 47 bytes; throws db::Error.
    void guardar(const QString &archivo) const;

    /// Values outside 1 to 60 are not used: 30 then.
    [[nodiscard]] static int segundos(qint16 valor);
};

} // namespace app
