#include "tds/servidor/Mensaje.h"

#include <QtEndian>

#include <stdexcept>
#include <sys/socket.h>

namespace tds {

namespace {

constexpr int tamanioPaquete = 4096;
constexpr int encabezado = 8;

bool leerTodo(int socket, char *destino, qsizetype cantidad)
{
    while (cantidad > 0) {
        const auto leidos = ::recv(socket, destino, size_t(cantidad), 0);
        if (leidos <= 0)
            return false;
        destino += leidos;
        cantidad -= leidos;
    }
    return true;
}

} // namespace

std::optional<Mensaje> recibir(int socket)
{
    Mensaje mensaje;
    while (true) {
        char cabeza[encabezado];
        if (!leerTodo(socket, cabeza, encabezado))
            return std::nullopt;
        const int largo = qFromBigEndian<quint16>(cabeza + 2);
        if (largo < encabezado)
            return std::nullopt;
        mensaje.clase = Clase(quint8(cabeza[0]));
        QByteArray cuerpo(largo - encabezado, '\0');
        if (!leerTodo(socket, cuerpo.data(), cuerpo.size()))
            return std::nullopt;
        mensaje.datos += cuerpo;
        if (cabeza[1] & 1)
            return mensaje;
    }
}

bool enviar(int socket, const QByteArray &datos)
{
    const qsizetype porPaquete = tamanioPaquete - encabezado;
    qsizetype lugar = 0;
    quint8 orden = 1;
    do {
        const QByteArray parte = datos.mid(lugar, porPaquete);
        lugar += parte.size();
        QByteArray paquete(encabezado, '\0');
        paquete[0] = char(Clase::Respuesta);
        paquete[1] = lugar >= datos.size() ? 1 : 0;
        qToBigEndian<quint16>(quint16(parte.size() + encabezado), paquete.data() + 2);
        paquete[6] = char(orden++);
        paquete += parte;
        if (::send(socket, paquete.constData(), size_t(paquete.size()), MSG_NOSIGNAL) != paquete.size())
            return false;
    } while (lugar < datos.size());
    return true;
}

QByteArray Lector::tomar(qsizetype cantidad)
{
    if (cantidad < 0 || m_lugar + cantidad > m_datos.size())
        throw std::runtime_error("mensaje incompleto");
    const QByteArray bytes = m_datos.mid(m_lugar, cantidad);
    m_lugar += cantidad;
    return bytes;
}

QString Lector::texto(qsizetype caracteres)
{
    const QByteArray bytes = tomar(caracteres * 2);
    QString texto(caracteres, Qt::Uninitialized);
    memcpy(texto.data(), bytes.constData(), size_t(bytes.size()));
    return texto;
}

void Lector::saltarEncabezados()
{
    const auto total = numero<quint32>();
    (void)tomar(qsizetype(total) - 4);
}

QByteArray Lector::porPartes(bool &nulo)
{
    const auto total = numero<quint64>();
    nulo = total == ~quint64(0);
    QByteArray todo;
    if (nulo)
        return todo;
    while (const auto parte = numero<quint32>())
        todo += tomar(parte);
    return todo;
}

QVariant Lector::valor()
{
    const auto deTexto = [](const QByteArray &bytes) {
        QString texto(bytes.size() / 2, Qt::Uninitialized);
        memcpy(texto.data(), bytes.constData(), size_t(bytes.size() / 2 * 2));
        // An empty text is no Null.
        return QVariant(texto.isNull() ? QStringLiteral("") : texto);
    };
    const auto tipo = numero<quint8>();
    switch (tipo) {
    case 0x26: // INTN
    case 0x68: // BITN
    case 0x6D: // FLTN
    case 0x6F: { // DATETIMN
        (void)numero<quint8>();
        const auto largo = numero<quint8>();
        const QByteArray bytes = tomar(largo);
        if (largo == 0)
            return {};
        const char *p = bytes.constData();
        if (tipo == 0x6F)
            return fechaDeBytes(bytes);
        if (tipo == 0x6D)
            return largo == 4 ? QVariant(double(qFromLittleEndian<float>(p))) : qFromLittleEndian<double>(p);
        switch (largo) {
        case 1: return int(quint8(p[0]));
        case 2: return int(qFromLittleEndian<qint16>(p));
        case 4: return qFromLittleEndian<qint32>(p);
        default: return qlonglong(qFromLittleEndian<qint64>(p));
        }
    }
    case 0xE7: // NVARCHAR
    case 0xA7: // VARCHAR
    case 0xA5: { // VARBINARY
        const auto maximo = numero<quint16>();
        if (tipo != 0xA5)
            (void)tomar(5);
        bool nulo = false;
        QByteArray bytes;
        if (maximo == 0xFFFF) {
            bytes = porPartes(nulo);
        } else {
            const auto largo = numero<quint16>();
            nulo = largo == 0xFFFF;
            if (!nulo)
                bytes = tomar(largo);
        }
        if (nulo)
            return {};
        if (tipo == 0xA5)
            return bytes.isNull() ? QByteArray("") : bytes;
        return tipo == 0xE7 ? deTexto(bytes) : QVariant(QString::fromLatin1(bytes));
    }
    case 0x63: // NTEXT
    case 0x23: // TEXT
    case 0x22: { // IMAGE
        (void)numero<quint32>();
        if (tipo != 0x22)
            (void)tomar(5);
        const auto largo = numero<qint32>();
        if (largo < 0)
            return {};
        const QByteArray bytes = tomar(largo);
        if (tipo == 0x22)
            return bytes.isNull() ? QByteArray("") : bytes;
        return tipo == 0x63 ? deTexto(bytes) : QVariant(QString::fromLatin1(bytes));
    }
    default: throw std::runtime_error("tipo de parámetro desconocido");
    }
}

void Escritor::textoCorto(const QString &texto)
{
    numero<quint8>(quint8(texto.size()));
    bytes(utf16(texto));
}

void Escritor::textoLargo(const QString &texto)
{
    numero<quint16>(quint16(texto.size()));
    bytes(utf16(texto));
}

QByteArray utf16(const QString &texto) { return {reinterpret_cast<const char *>(texto.utf16()), texto.size() * 2}; }

QByteArray bytesDeFecha(const QDateTime &momento)
{
    QByteArray bytes(8, '\0');
    qToLittleEndian<qint32>(qint32(QDate(1900, 1, 1).daysTo(momento.date())), bytes.data());
    const qint64 partes = (qint64(momento.time().msecsSinceStartOfDay()) * 3 + 5) / 10;
    qToLittleEndian<quint32>(quint32(partes), bytes.data() + 4);
    return bytes;
}

QDateTime fechaDeBytes(const QByteArray &bytes)
{
    if (bytes.size() == 4) // to the minute
        return QDate(1900, 1, 1)
            .addDays(qFromLittleEndian<quint16>(bytes.constData()))
            .startOfDay()
            .addSecs(qFromLittleEndian<quint16>(bytes.constData() + 2) * 60);
    const QDate dia = QDate(1900, 1, 1).addDays(qFromLittleEndian<qint32>(bytes.constData()));
    const auto partes = qFromLittleEndian<quint32>(bytes.constData() + 4);
    return {dia, QTime::fromMSecsSinceStartOfDay(int((qint64(partes) * 10 + 1) / 3))};
}

QByteArray comparacion() { return QByteArray("\x0A\x0C\xD0\x00\x00", 5); }

} // namespace tds
