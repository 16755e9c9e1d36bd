#include "users/VentanaInicio.h"

#include <algorithm>

namespace users {

const std::vector<VentanaInicio> &ventanasInicio()
{
    // Only places to work in: not those for settings, copies or help.
    static const std::vector<VentanaInicio> todas{
        {0, {}, u"<Ninguna>"_qs},
        {1, u"agendas"_qs, u"Agendas"_qs},
        {2, u"elecpaci"_qs, u"Pacientes"_qs},
        {3, u"contable"_qs, u"Ordenes"_qs},
        {4, u"contables"_qs, u"Pagos"_qs},
        {5, u"saldosfiltro"_qs, u"Saldos"_qs},
        {6, u"caja"_qs, u"Caja"_qs},
        {7, u"listados"_qs, u"Listados"_qs},
        {8, u"estadisticas"_qs, u"Estadísticas"_qs},
        {9, u"graficos"_qs, u"Recursos"_qs},
        {10, u"chat"_qs, u"Chat"_qs},
    };
    return todas;
}

QString ventanaInicio(int numero)
{
    const auto &todas = ventanasInicio();
    const auto suya = std::find_if(
        todas.cbegin(), todas.cend(), [numero](const VentanaInicio &ventana) { return ventana.numero == numero; });
    return suya == todas.cend() ? QString() : suya->ventana;
}

} // namespace users
