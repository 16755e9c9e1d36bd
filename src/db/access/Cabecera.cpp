#include "db/access/Cabecera.h"

#include <QFile>
#include <QtEndian>

#include <array>
#include <cstring>
#include <numeric>

namespace db::access {

namespace {

constexpr qsizetype bytesLeidos = 256;

// The header lies under an RC4 stream of this fixed key, the same in every file.
void descubrir(QByteArray &cabecera, qsizetype desde, qsizetype largo)
{
    constexpr std::array<quint8, 4> llave{0xC7, 0xDA, 0x39, 0x6B};
    std::array<quint8, 256> s{};
    std::iota(s.begin(), s.end(), quint8(0));
    for (unsigned i = 0, j = 0; i < s.size(); ++i) {
        j = (j + s[i] + llave[i % llave.size()]) & 0xFF;
        std::swap(s[i], s[j]);
    }
    for (unsigned n = 0, i = 0, j = 0; n < unsigned(largo); ++n) {
        i = (i + 1) & 0xFF;
        j = (j + s[i]) & 0xFF;
        std::swap(s[i], s[j]);
        cabecera[desde + n] = char(quint8(cabecera[desde + n]) ^ s[(s[i] + s[j]) & 0xFF]);
    }
}

QString claveJet4(const QByteArray &cabecera)
{
    // Under the day on which the file was made, four bytes in turn.
    double creada = 0;
    const auto bits = qFromLittleEndian<quint64>(cabecera.constData() + 0x72);
    std::memcpy(&creada, &bits, sizeof creada);
    const bool posible = creada > -1e9 && creada < 1e9;
    const auto mascara = quint32(posible ? qint32(creada) : 0);
    QString clave;
    for (qsizetype i = 0; i < 20; ++i) {
        const char *lugar = cabecera.constData() + 0x42 + i * 2;
        const auto unidad = quint16(qFromLittleEndian<quint16>(lugar) ^ quint16(mascara >> (i % 2 * 16)));
        if (unidad == 0)
            break;
        clave += QChar(unidad);
    }
    return clave;
}

QString claveJet3(const QByteArray &cabecera)
{
    QByteArray clave = cabecera.mid(0x42, 20);
    const qsizetype fin = clave.indexOf('\0');
    return QString::fromLatin1(fin < 0 ? clave : clave.left(fin));
}

} // namespace

bool empiezaComoAccess(QByteArrayView primeros)
{
    return primeros.startsWith(QByteArrayView("\0\1\0\0Standard Jet", 16))
        || primeros.startsWith(QByteArrayView("\0\1\0\0Standard ACE", 16));
}

Cabecera leerCabecera(QByteArrayView primeros)
{
    if (primeros.size() < bytesLeidos || !empiezaComoAccess(primeros))
        return {};
    const int version = quint8(primeros[0x14]);
    if (version > 1 || primeros[13] != 'J')
        return {Cabecera::Formato::Nuevo};
    QByteArray cabecera = primeros.toByteArray();
    descubrir(cabecera, 0x18, version == 0 ? 126 : 128);
    return version == 0 ? Cabecera{Cabecera::Formato::Jet3, claveJet3(cabecera)}
                        : Cabecera{Cabecera::Formato::Jet4, claveJet4(cabecera)};
}

Cabecera leerCabecera(const QString &archivo)
{
    QFile file(archivo);
    return file.open(QIODevice::ReadOnly) ? leerCabecera(QByteArrayView(file.read(bytesLeidos))) : Cabecera();
}

} // namespace db::access
