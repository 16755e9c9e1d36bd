#include "patients/BusquedaRapida.h"

#include "patients/ListaPacientes.h"

#include <algorithm>

namespace patients {

namespace {

/// The filters to try one after the other until one finds somebody.
std::vector<FiltroPacientes> filtros(const QString &texto)
{
    QString numero = texto;
    numero.remove(u'.').remove(u' ');
    if (numero.size() >= 3 && std::all_of(numero.cbegin(), numero.cend(), [](QChar c) { return c.isDigit(); })) {
        const auto deDni = [](const QString &dni) {
            return FiltroPacientes{.reducido = false, .actividad = FiltroPacientes::Actividad::Todos, .dni = dni};
        };
        std::vector<FiltroPacientes> dnis{deDni(numero)};
        if (numero != texto)
            dnis.push_back(deDni(texto)); // stored with its points
        return dnis;
    }
    const auto deNombre = [](const QString &apellido, const QString &nombres) {
        return FiltroPacientes{.reducido = true, .apellido = apellido.trimmed(), .nombres = nombres.trimmed()};
    };
    if (const auto coma = texto.indexOf(u','); coma >= 0)
        return {deNombre(texto.left(coma), texto.mid(coma + 1))};
    std::vector<FiltroPacientes> nombres{deNombre(texto, {})};
    // "De la Fuente María": the longest surname first.
    for (auto blanco = texto.lastIndexOf(u' '); blanco > 0; blanco = texto.lastIndexOf(u' ', blanco - 1))
        nombres.push_back(deNombre(texto.left(blanco), texto.mid(blanco + 1)));
    return nombres;
}

} // namespace

BusquedaRapida buscarRapido(db::Entorno &entorno, const QString &texto, int tope)
{
    const QString buscado = texto.simplified();
    if (buscado.size() < 2)
        return {};
    ListaPacientes lista(entorno);
    for (const FiltroPacientes &filtro : filtros(buscado)) {
        if (lista.buscar(filtro) || lista.cantidad() == 0)
            continue;
        BusquedaRapida hallados{{}, lista.cantidad(), filtro.apellido, filtro.nombres};
        for (int i = 0; i < std::min(tope, lista.cantidad()); ++i)
            hallados.pacientes.push_back(
                {int(lista.filas()->integer(i, ColNroHC)), lista.texto(i, ColNombre), lista.texto(i, ColDni)});
        return hallados;
    }
    return {};
}

} // namespace patients
