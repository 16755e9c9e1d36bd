#pragma once

#include <QByteArray>
#include <QDateTime>
#include <QString>
#include <QVariant>

#include <optional>

/// The wire format of SQL Server's protocol (TDS 7.4) as far as a client of this program meets it. Source: Microsoft
/// Open Specifications, [MS-TDS].
namespace tds {

enum class Clase : quint8 {
    Lote = 0x01,
    Llamada = 0x03,
    Respuesta = 0x04,
    Atencion = 0x06,
    Transaccion = 0x0E,
    Ingreso = 0x10,
    Previo = 0x12
};

/// A whole message, its packets joined.
struct Mensaje {
    Clase clase = Clase::Respuesta;
    QByteArray datos;
};

/// Reads one message from a socket; empty when the client went away.
[[nodiscard]] std::optional<Mensaje> recibir(int socket);
/// Sends one message in packets of the size agreed on; false when the client went away.
bool enviar(int socket, const QByteArray &datos);

/// Reads the fields of a message one after the other. A message that ends too early throws std::runtime_error.
class Lector
{
public:
    explicit Lector(QByteArray datos)
        : m_datos(std::move(datos))
    {
    }

    template <typename Numero>
    Numero numero()
    {
        Numero valor{};
        const QByteArray bytes = tomar(qsizetype(sizeof(Numero)));
        memcpy(&valor, bytes.constData(), sizeof(Numero));
        return valor;
    }
    [[nodiscard]] QByteArray tomar(qsizetype cantidad);
    /// UTF-16 text of so many characters.
    [[nodiscard]] QString texto(qsizetype caracteres);
    [[nodiscard]] QString textoCorto() { return texto(numero<quint8>()); }
    /// Skips what precedes the text of a batch or a call.
    void saltarEncabezados();
    [[nodiscard]] bool termino() const { return m_lugar >= m_datos.size(); }
    [[nodiscard]] QString resto() { return texto((m_datos.size() - m_lugar) / 2); }
    [[nodiscard]] QByteArray en(qsizetype lugar, qsizetype cantidad) const { return m_datos.mid(lugar, cantidad); }
    [[nodiscard]] qsizetype lugar() const { return m_lugar; }
    /// A parameter of a call: its type and its value.
    [[nodiscard]] QVariant valor();

private:
    [[nodiscard]] QByteArray porPartes(bool &nulo);

    QByteArray m_datos;
    qsizetype m_lugar = 0;
};

/// Writes the fields of an answer.
class Escritor
{
public:
    template <typename Numero>
    void numero(Numero valor)
    {
        m_datos.append(reinterpret_cast<const char *>(&valor), qsizetype(sizeof(Numero)));
    }
    void byte(int valor) { m_datos.append(char(valor)); }
    void bytes(const QByteArray &bytes) { m_datos.append(bytes); }
    /// UTF-16 text behind its length in characters: one byte, or two.
    void textoCorto(const QString &texto);
    void textoLargo(const QString &texto);
    [[nodiscard]] const QByteArray &datos() const { return m_datos; }

private:
    QByteArray m_datos;
};

[[nodiscard]] QByteArray utf16(const QString &texto);
/// The 8 bytes of a datetime: days since 1900-01-01 and three-hundredths of a second.
[[nodiscard]] QByteArray bytesDeFecha(const QDateTime &momento);
[[nodiscard]] QDateTime fechaDeBytes(const QByteArray &bytes);
/// Modern_Spanish_CI_AS as a column names it.
[[nodiscard]] QByteArray comparacion();

} // namespace tds
