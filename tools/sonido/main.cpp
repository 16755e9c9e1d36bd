#include <QByteArray>
#include <QFile>
#include <QtEndian>

#include <cmath>
#include <cstdio>

namespace {

constexpr int muestrasPorSegundo = 22'050;
constexpr double duracion = 0.8; // seconds
constexpr double pi = 3.14159265358979323846;

/// A small bell: a note with two overtones that fade before it does. `t` in seconds from its stroke.
double campana(double nota, double t)
{
    if (t < 0)
        return 0;
    const double golpe = 1 - std::exp(-t * 400); // without it the stroke would click
    return golpe
        * (std::exp(-t * 6) * std::sin(2 * pi * nota * t) + 0.35 * std::exp(-t * 9) * std::sin(4 * pi * nota * t)
           + 0.12 * std::exp(-t * 14) * std::sin(6 * pi * nota * t));
}

template <typename T>
void agregar(QByteArray &bytes, T valor)
{
    valor = qToLittleEndian(valor);
    bytes.append(reinterpret_cast<const char *>(&valor), sizeof valor);
}

} // namespace

/// sonido FILE: writes the sound of a chat notice, two bells, as a WAV file: mono, 16 bits.
int main(int argc, char *argv[])
{
    if (argc != 2)
        return 2;
    QByteArray muestras;
    constexpr int total = int(muestrasPorSegundo * duracion);
    for (int i = 0; i < total; ++i) {
        const double t = double(i) / muestrasPorSegundo;
        const double fin = std::min(1.0, (duracion - t) * 20); // fades to nothing at the end
        const double valor = campana(659.26, t) + campana(987.77, t - 0.16);
        agregar(muestras, qint16(std::lround(valor * fin * 0.32 * 32'767)));
    }

    QByteArray wav = "RIFF";
    agregar(wav, quint32(36 + muestras.size()));
    wav += "WAVEfmt ";
    agregar(wav, quint32(16));
    agregar(wav, quint16(1)); // plain samples
    agregar(wav, quint16(1)); // channel
    agregar(wav, quint32(muestrasPorSegundo));
    agregar(wav, quint32(muestrasPorSegundo * 2));
    agregar(wav, quint16(2));
    agregar(wav, quint16(16));
    wav += "data";
    agregar(wav, quint32(muestras.size()));
    wav += muestras;

    QFile archivo(QFile::decodeName(argv[1]));
    if (archivo.open(QIODevice::WriteOnly) && archivo.write(wav) == wav.size())
        return 0;
    std::fprintf(stderr, "no se puede escribir %s\n", argv[1]);
    return 1;
}
