#include "users/Claves.h"

#include "db/sql/Letters.h"

#include <QByteArray>
#include <QRandomGenerator>

#include <argon2.h>

#include <array>
#include <new>

namespace users::claves {

namespace {

constexpr QStringView version = u"§1";
constexpr int bytesSal = 12, bytesMarca = 12, bytesTodo = bytesSal + 2 * bytesMarca;
constexpr uint32_t vueltas = 2, memoriaKib = 19 * 1024, hilos = 1;
/// Which of both tags: the last byte of the salt, and the tag's place in the stored bytes.
enum class Marca : char { SinMayusculas = 'i', Exacta = 'e' };

constexpr auto opciones = QByteArray::Base64Encoding | QByteArray::OmitTrailingEquals;

int lugar(Marca marca) { return marca == Marca::SinMayusculas ? bytesSal : bytesSal + bytesMarca; }

/// As the databases compare: only the case of letters is passed over.
QString plegada(QString clave)
{
    for (QChar &c : clave)
        c = QChar(char16_t(db::sql::letter(c.unicode()).folded));
    return clave;
}

QString recortada(const QString &clave) { return clave.trimmed().normalized(QString::NormalizationForm_C); }

QByteArray calcular(const QString &clave, const QByteArray &sal, Marca marca)
{
    const QByteArray texto = (marca == Marca::Exacta ? recortada(clave) : plegada(recortada(clave))).toUtf8();
    const QByteArray salada = sal + char(marca);
    QByteArray salida(bytesMarca, '\0');
    const int fallo = argon2id_hash_raw(
        vueltas,
        memoriaKib,
        hilos,
        texto.constData(),
        size_t(texto.size()),
        salada.constData(),
        size_t(salada.size()),
        salida.data(),
        size_t(salida.size()));
    if (fallo != ARGON2_OK)
        throw std::bad_alloc(); // with fixed parameters there is nothing else that could be missing
    return salida;
}

/// In a time that does not tell where both differ.
bool iguales(QByteArrayView a, QByteArrayView b)
{
    Q_ASSERT(a.size() == b.size());
    unsigned diferencia = 0;
    for (qsizetype i = 0; i < a.size(); ++i)
        diferencia |= uchar(a[i]) ^ uchar(b[i]);
    return diferencia == 0;
}

bool comparar(const QString &guardada, const QString &escrita, Marca marca)
{
    if (vacia(guardada) || vacia(escrita))
        return false;
    if (!esHuella(guardada)) {
        const QString una = recortada(guardada), otra = recortada(escrita);
        return marca == Marca::Exacta ? una == otra : plegada(una) == plegada(otra);
    }
    const auto bytes = QByteArray::fromBase64Encoding(
        guardada.trimmed().mid(version.size()).toLatin1(), opciones | QByteArray::AbortOnBase64DecodingErrors);
    if (!bytes || bytes.decoded.size() != bytesTodo || guardada.trimmed().size() != ancho)
        return false;
    const QByteArray calculada = calcular(escrita, bytes.decoded.left(bytesSal), marca);
    return iguales(calculada, QByteArrayView(bytes.decoded).sliced(lugar(marca), bytesMarca));
}

} // namespace

bool vacia(QStringView clave) { return clave.trimmed().isEmpty(); }

bool esHuella(QStringView guardada) { return guardada.trimmed().startsWith(version); }

QString huella(const QString &clave)
{
    Q_ASSERT(!vacia(clave));
    std::array<quint32, bytesSal / sizeof(quint32)> azar{};
    QRandomGenerator::system()->fillRange(azar.data(), qsizetype(azar.size()));
    const QByteArray sal(reinterpret_cast<const char *>(azar.data()), bytesSal);
    const QByteArray bytes = sal + calcular(clave, sal, Marca::SinMayusculas) + calcular(clave, sal, Marca::Exacta);
    return version.toString() + QString::fromLatin1(bytes.toBase64(opciones));
}

bool coincide(const QString &guardada, const QString &escrita) { return comparar(guardada, escrita, Marca::Exacta); }

bool coincideSinMayusculas(const QString &guardada, const QString &escrita)
{
    return comparar(guardada, escrita, Marca::SinMayusculas);
}

} // namespace users::claves
