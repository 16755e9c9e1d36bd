#include "printing/AnchosTabla.h"

#include "printing/Letra.h"

#include <algorithm>
#include <numeric>

namespace printing {

namespace {

constexpr double comun = 9;
/// A column of long texts may wrap rather than make the whole list small.
constexpr double mayorParte = 0.35;
/// Texts of so few characters are not parted.
constexpr qsizetype cortos = 10;

double sumar(const std::vector<double> &numeros) { return std::accumulate(numeros.begin(), numeros.end(), 0.0); }

/// What the columns need at the common size of letter; at another size they need their share of it.
struct Necesidad {
    std::vector<double> lineas; ///< nothing wraps
    std::vector<double> palabras; ///< no word is broken
};

Necesidad medir(const Tabla &tabla)
{
    const Letra normal(comun, false), negrita(comun, true);
    const size_t cuantas = size_t(tabla.columnas.size());
    Necesidad necesidad{std::vector<double>(cuantas), std::vector<double>(cuantas)};
    const auto contar = [&](size_t i, const Letra &letra, const QString &texto) {
        const Letra::Anchos anchos = letra.anchos(texto);
        necesidad.lineas[i] = qMax(necesidad.lineas[i], anchos.linea);
        // An amount with its sign, an hour with "hs.": short texts stay whole.
        const double entero = texto.size() <= cortos ? anchos.linea : anchos.palabra;
        necesidad.palabras[i] = qMax(necesidad.palabras[i], entero);
    };
    for (size_t i = 0; i < cuantas; ++i)
        contar(i, negrita, tabla.columnas[qsizetype(i)].titulo);
    for (const Fila &fila : tabla.filas) {
        if (fila.clase == Fila::Clase::Grupo)
            continue;
        const Letra &suya = fila.clase == Fila::Clase::Total ? negrita : normal;
        for (size_t i = 0; i < qMin(cuantas, size_t(fila.celdas.size())); ++i)
            contar(i, suya, fila.celdas[qsizetype(i)]);
    }
    return necesidad;
}

/// The needs at a size of letter, with the room around the texts.
std::vector<double> aTamano(const std::vector<double> &necesidad, double puntos)
{
    std::vector<double> suyas(necesidad.size());
    std::transform(necesidad.begin(), necesidad.end(), suyas.begin(), [&](double n) {
        // The sizes of letters are rounded: a little more than the exact share.
        return n * puntos / comun * 1.01 + 2 * margenCelda() + 2;
    });
    return suyas;
}

/// Narrower than what is needed: the columns that need least keep it, the others share the rest alike.
std::vector<double> apretar(std::vector<double> anchos, double ancho)
{
    std::vector<double> deMenorAMayor = anchos;
    std::sort(deMenorAMayor.begin(), deMenorAMayor.end());
    double queda = ancho;
    for (size_t i = 0; i < deMenorAMayor.size(); ++i) {
        const double parte = queda / double(deMenorAMayor.size() - i);
        if (deMenorAMayor[i] > parte) {
            for (double &suyo : anchos)
                suyo = qMin(suyo, parte);
            break;
        }
        queda -= deMenorAMayor[i];
    }
    return anchos;
}

/// What is left goes to the columns with a weight, or to all in proportion to what they have.
void estirar(std::vector<double> &anchos, const Tabla &tabla, double ancho)
{
    const double sobra = ancho - sumar(anchos);
    double pesos = 0;
    for (const Columna &columna : tabla.columnas)
        pesos += qMax(0.0, columna.peso);
    const double total = sumar(anchos);
    for (size_t i = 0; i < anchos.size(); ++i) {
        const double parte = pesos > 0 ? qMax(0.0, tabla.columnas[qsizetype(i)].peso) / pesos : anchos[i] / total;
        anchos[i] += sobra * parte;
    }
}

} // namespace

double margenCelda() { return enUnidades(1.2); }

AnchosTabla repartir(const Tabla &tabla, double ancho)
{
    AnchosTabla reparto;
    if (tabla.columnas.isEmpty())
        return reparto;
    const Necesidad necesidad = medir(tabla);
    const double tope = ancho * (tabla.columnas.size() > 2 ? mayorParte : 1);
    for (const double puntos : {comun, 8.0}) {
        std::vector<double> lineas = aTamano(necesidad.lineas, puntos);
        for (double &suya : lineas)
            suya = qMin(suya, tope);
        if (sumar(lineas) <= ancho) {
            estirar(lineas, tabla, ancho);
            return {puntos, lineas};
        }
    }
    for (const double puntos : {8.0, 7.0, 6.0, 5.0}) {
        std::vector<double> anchos = aTamano(necesidad.palabras, puntos);
        for (double &suyo : anchos)
            suyo = qMin(suyo, tope);
        const double minimo = sumar(anchos);
        if (minimo > ancho)
            continue;
        const std::vector<double> lineas = aTamano(necesidad.lineas, puntos);
        const double falta = sumar(lineas) - minimo;
        for (size_t i = 0; i < anchos.size() && falta > 0; ++i)
            anchos[i] += (lineas[i] - anchos[i]) * qMin(1.0, (ancho - minimo) / falta);
        return {puntos, anchos};
    }
    reparto.puntos = 5;
    reparto.columnas = apretar(aTamano(necesidad.palabras, reparto.puntos), ancho);
    return reparto;
}

bool convieneApaisada(const Tabla &tabla, const Hoja &parada)
{
    return repartir(tabla, enUnidades(parada.interior().width())).puntos < comun;
}

} // namespace printing
