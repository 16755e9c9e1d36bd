#include "base/Windows1252.h"

namespace base {

namespace {
// Codes 0x80 to 0x9F; all others equal Latin-1. Source: the Unicode Consortium's mapping table CP1252.
constexpr char16_t altos[32] = {
    0x20AC, 0xFFFD, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0xFFFD, 0x017D, 0xFFFD, 0xFFFD, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0xFFFD, 0x017E, 0x0178,
};
} // namespace

QString desdeWindows1252(QByteArrayView bytes)
{
    QString texto;
    texto.reserve(bytes.size());
    for (const char c : bytes) {
        const auto codigo = static_cast<unsigned char>(c);
        texto += QChar(codigo >= 0x80 && codigo < 0xA0 ? altos[codigo - 0x80] : char16_t(codigo));
    }
    return texto;
}

std::optional<QByteArray> aWindows1252(QStringView texto)
{
    QByteArray bytes;
    bytes.reserve(texto.size());
    for (const QChar c : texto) {
        const char16_t u = c.unicode();
        if (u < 0x80 || (u >= 0xA0 && u <= 0xFF)) {
            bytes += char(u);
            continue;
        }
        int i = 0;
        while (i < 32 && (altos[i] != u || u == 0xFFFD))
            ++i;
        if (i == 32)
            return std::nullopt;
        bytes += char(0x80 + i);
    }
    return bytes;
}

} // namespace base
