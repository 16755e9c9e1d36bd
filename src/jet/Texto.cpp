#include "jet/Texto.h"

namespace jet {

namespace {

/// Takes UTF-16 one unit at a time and writes UTF-8.
class Escritor
{
public:
    void unidad(char16_t u)
    {
        const bool alta = u >= 0xD800 && u < 0xDC00;
        const bool baja = u >= 0xDC00 && u < 0xE000;
        if (m_alta && baja) {
            escribir(0x10000 + (char32_t(m_alta - 0xD800) << 10) + (u - 0xDC00));
            m_alta = 0;
            return;
        }
        terminar();
        if (alta)
            m_alta = u;
        else
            baja ? falta() : escribir(u);
    }
    void terminar()
    {
        if (m_alta)
            falta();
        m_alta = 0;
    }
    Texto texto;

private:
    void falta()
    {
        texto.exacto = false;
        escribir(0xFFFD);
    }
    void escribir(char32_t c)
    {
        std::string &s = texto.utf8;
        const auto sigue = [&](unsigned corrimiento) { s += char(0x80 | ((c >> corrimiento) & 0x3F)); };
        if (c < 0x80) {
            s += char(c);
        } else if (c < 0x800) {
            s += char(0xC0 | (c >> 6));
            sigue(0);
        } else if (c < 0x10000) {
            s += char(0xE0 | (c >> 12));
            sigue(6);
            sigue(0);
        } else {
            s += char(0xF0 | (c >> 18));
            sigue(12);
            sigue(6);
            sigue(0);
        }
    }

    char16_t m_alta = 0;
};

} // namespace

Texto textoUnicode(Bytes crudo)
{
    Escritor escritor;
    const bool comprimible = crudo.size() >= 2 && crudo[0] == 0xFF && crudo[1] == 0xFE;
    bool comprimido = comprimible;
    std::size_t i = comprimible ? 2 : 0;
    while (i < crudo.size()) {
        if (comprimible && crudo[i] == 0) {
            comprimido = !comprimido;
            ++i;
        } else if (comprimido) {
            escritor.unidad(crudo[i++]);
        } else {
            escritor.unidad(u16(crudo, i));
            i += 2;
        }
    }
    escritor.terminar();
    return std::move(escritor.texto);
}

const TablaDePagina &windows1252()
{
    static const TablaDePagina tabla = [] {
        // What Windows itself makes of 0x80 to 0x9F; the five without a character stay as they are.
        constexpr char16_t segunda[32]
            = {0x20AC, 0x81,   0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
               0x2039, 0x0152, 0x8D,   0x017D, 0x8F,   0x90,   0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
               0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x9D,   0x017E, 0x0178};
        TablaDePagina t{};
        for (std::size_t i = 0; i < t.size(); ++i)
            t[i] = i >= 0x80 && i < 0xA0 ? segunda[i - 0x80] : char16_t(i);
        return t;
    }();
    return tabla;
}

Texto textoDePagina(Bytes crudo, const TablaDePagina &tabla)
{
    Escritor escritor;
    for (const std::uint8_t byte : crudo)
        escritor.unidad(tabla[byte]);
    escritor.terminar();
    return std::move(escritor.texto);
}

} // namespace jet
