#include "jet/Fila.h"

namespace jet {

namespace {

/// Where the parts of a row lie, whatever the version.
struct Partes {
    std::size_t columnas = 0; ///< how many there were when it was written
    std::size_t comienzo = 0; ///< of the fixed part
    std::size_t finFijo = 0;
    Bytes mascara;
    std::vector<std::size_t> variables; ///< where each begins, and where the last one ends
};

/// What every row has: how many columns at its beginning, their null mask at its end. All between counts as the fixed
/// part so far.
Partes puntas(Bytes fila, std::size_t columnas, std::size_t comienzo)
{
    const std::size_t bytesMascara = (columnas + 7) / 8;
    if (bytesMascara + comienzo > fila.size())
        throw Danio("una fila no tiene lugar para sus columnas");
    const std::size_t fin = fila.size() - bytesMascara;
    return {columnas, comienzo, fin, parte(fila, fin, bytesMascara), {}};
}

/// The fixed part ends where the first variable column begins, or what tells of them.
void terminarFijo(Partes &p, std::size_t fin)
{
    p.finFijo = p.variables.empty() ? fin : p.variables.front();
    if (p.finFijo > fin)
        throw Danio("una fila está incompleta");
}

Partes partesJet4(Bytes fila, bool hayVariables)
{
    Partes p = puntas(fila, u16(fila, 0), 2);
    std::size_t fin = p.finFijo;
    if (hayVariables) {
        if (fin < 2)
            throw Danio("una fila está incompleta");
        const std::size_t cantidad = u16(fila, fin - 2);
        if (cantidad > p.columnas || (cantidad + 1) * 2 + 2 + p.comienzo > fin)
            throw Danio("una fila no tiene lugar para sus textos");
        for (std::size_t i = 0; i <= cantidad; ++i)
            p.variables.push_back(u16(fila, fin - 4 - i * 2));
        fin -= 2 + (cantidad + 1) * 2;
    }
    terminarFijo(p, fin);
    return p;
}

Partes partesJet3(Bytes fila, bool hayVariables)
{
    Partes p = puntas(fila, u8(fila, 0), 1);
    std::size_t fin = p.finFijo;
    if (hayVariables) {
        if (fin < 1)
            throw Danio("una fila está incompleta");
        const std::size_t cantidad = u8(fila, fin - 1);
        // Places are single bytes; a table of jumps says from which column on they have passed another 256.
        std::size_t saltos = (fila.size() - 1) / 256;
        if (saltos + cantidad + 2 + p.comienzo > fin)
            throw Danio("una fila no tiene lugar para sus textos");
        const std::size_t ultimo = fin - 2 - saltos; // of the first place: they go backwards
        if ((ultimo - cantidad) / 256 < saltos)
            --saltos; // the last jump is a mere filler
        std::size_t usados = 0;
        for (std::size_t i = 0; i <= cantidad; ++i) {
            while (usados < saltos && u8(fila, fin - 2 - usados) == i)
                ++usados;
            p.variables.push_back(u8(fila, ultimo - i) + usados * 256);
        }
        fin = ultimo - cantidad;
    }
    terminarFijo(p, fin);
    return p;
}

std::size_t anchoFijo(const Columna &columna)
{
    switch (columna.tipo) {
    case Tipo::Logico: return 0;
    case Tipo::Byte: return 1;
    case Tipo::Entero: return 2;
    case Tipo::Largo:
    case Tipo::Simple: return 4;
    case Tipo::Moneda:
    case Tipo::Doble:
    case Tipo::Fecha: return 8;
    case Tipo::Guid: return 16;
    case Tipo::Decimal: return 17;
    default: return std::size_t(columna.tamano);
    }
}

constexpr std::size_t cabecera(Version version) { return version == Version::Jet4 ? 12 : 8; }

} // namespace

std::vector<Celda> partirFila(Bytes fila, const Tabla &tabla, Version version)
{
    const Partes p
        = version == Version::Jet4 ? partesJet4(fila, tabla.hayVariables) : partesJet3(fila, tabla.hayVariables);
    std::vector<Celda> celdas;
    celdas.reserve(tabla.columnas.size());
    for (const Columna &columna : tabla.columnas) {
        Celda celda;
        const auto numero = std::size_t(columna.numero);
        const bool presente = numero < p.columnas && (p.mascara[numero / 8] >> (numero % 8) & 1);
        if (columna.tipo == Tipo::Logico) {
            celda.verdadero = presente;
        } else if (presente && columna.fija) {
            const std::size_t desde = p.comienzo + std::size_t(columna.lugarFijo);
            const std::size_t ancho = anchoFijo(columna);
            if (desde + ancho > p.finFijo)
                throw Danio("una fila es más corta que sus columnas");
            celda.crudo = parte(fila, desde, ancho);
        } else if (presente) {
            const auto cual = std::size_t(columna.variable);
            // Written before the first text column came: its place is not there, and neither is the value.
            if (cual + 1 < p.variables.size()) {
                if (p.variables[cual + 1] < p.variables[cual])
                    throw Danio("los textos de una fila se pisan");
                celda.crudo = parte(fila, p.variables[cual], p.variables[cual + 1] - p.variables[cual]);
            }
        }
        celdas.push_back(celda);
    }
    return celdas;
}

int cantidadRanuras(Bytes pagina, Version version)
{
    const std::size_t cantidad = u16(pagina, cabecera(version));
    if (cabecera(version) + 2 + cantidad * 2 > pagina.size())
        throw Danio("una página dice tener más filas de las que caben");
    return int(cantidad);
}

Ranura ranura(Bytes pagina, int cual, Version version)
{
    constexpr std::uint16_t mascara = 0x1FFF;
    if (cual < 0 || cual >= cantidadRanuras(pagina, version))
        throw Danio("una fila no está en su página");
    const std::size_t lugar = cabecera(version) + 2 + std::size_t(cual) * 2;
    const std::uint16_t marcado = u16(pagina, lugar);
    const std::size_t desde = marcado & mascara;
    // Rows fill the page from its end.
    const std::size_t hasta = cual == 0 ? pagina.size() : std::size_t(u16(pagina, lugar - 2) & mascara);
    Ranura r;
    r.movida = marcado & 0x4000;
    r.oculta = marcado & 0x8000;
    if (hasta < desde)
        throw Danio("las filas de una página se pisan");
    r.fila = parte(pagina, desde, hasta - desde);
    return r;
}

bool esPaginaDeDatos(Bytes pagina, std::uint32_t duenio) { return u8(pagina, 0) == 1 && u32(pagina, 4) == duenio; }

Puntero puntero(Bytes bytes, std::size_t lugar)
{
    const std::uint32_t junto = u32(bytes, lugar);
    return {junto >> 8, int(junto & 0xFF)};
}

} // namespace jet
