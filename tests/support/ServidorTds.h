#pragma once

#include <QProcess>
#include <QString>

namespace soporte {

/// The test server of tests/tds in a process of its own, on a free port of this computer; killed at the end.
class ServidorTds
{
public:
    /// Its databases are the files of the folder, "<name>.mdb". Starts at once; a failure ends the test program.
    explicit ServidorTds(const QString &carpeta, int puerto = 0);
    ~ServidorTds();

    /// Whether the tests are to run the server's dialect through the real driver and this server.
    [[nodiscard]] static bool pedido();

    [[nodiscard]] int puerto() const { return m_puerto; }
    [[nodiscard]] static QString usuario() { return QStringLiteral("sa"); }
    [[nodiscard]] static QString clave() { return QStringLiteral("Clave{de}=prueba"); }
    /// As the program names it: "127.0.0.1,<port>".
    [[nodiscard]] QString servidor() const;
    [[nodiscard]] QString cadena(const QString &base = QStringLiteral("Datos")) const;

    /// As if its plug were pulled.
    void matar();
    /// The same server again, on the same port.
    void arrancar();
    /// It stays where it is: what is sent to it arrives and is never answered, until it goes on.
    void detener() const;
    void seguir() const;

private:
    QString m_carpeta;
    int m_puerto;
    QProcess m_proceso;
};

} // namespace soporte
