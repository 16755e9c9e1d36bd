#include "jet/Largo.h"

namespace jet {

namespace {

constexpr std::uint32_t duenioLargo = 0x4C41564C; // "LVAL"

Bytes trozo(Libro &libro, Puntero donde)
{
    const Bytes pagina = libro.pagina(donde.pagina);
    if (!esPaginaDeDatos(pagina, duenioLargo))
        throw Danio("un texto largo no está donde debería");
    const Ranura r = ranura(pagina, donde.ranura, libro.version());
    if (r.movida || r.oculta)
        throw Danio("un texto largo no está donde debería");
    libro.contar(r.fila.size());
    return r.fila;
}

} // namespace

void Libro::contar(std::size_t bytes)
{
    m_contados += bytes;
    if (m_contados > tamano())
        throw Danio("hay datos que llevan siempre al mismo lugar");
}

std::vector<std::uint8_t> leerLargo(Libro &libro, Bytes enFila)
{
    if (enFila.empty())
        return {};
    const std::uint32_t marcado = u32(enFila, 0);
    const std::size_t largo = marcado & 0x3FFFFFFF;
    if (largo > valorMaximo)
        throw Danio("un texto largo dice ser demasiado largo");
    if (marcado & 0x80000000) {
        const Bytes dentro = parte(enFila, 12, largo);
        return {dentro.begin(), dentro.end()};
    }
    if (largo == 0)
        return {};
    Puntero donde = puntero(enFila, 4);
    if (marcado & 0x40000000) {
        const Bytes entero = parte(trozo(libro, donde), 0, largo);
        return {entero.begin(), entero.end()};
    }
    std::vector<std::uint8_t> juntado;
    while (juntado.size() < largo) {
        const Bytes fila = trozo(libro, donde);
        donde = puntero(fila, 0);
        const std::size_t queda = largo - juntado.size();
        const Bytes datos = fila.subspan(4, std::min(fila.size() - 4, queda));
        if (datos.empty())
            throw Danio("un texto largo está incompleto");
        juntado.insert(juntado.end(), datos.begin(), datos.end());
    }
    return juntado;
}

} // namespace jet
