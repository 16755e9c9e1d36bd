#include "Tabla.h"

#include <QElapsedTimer>

#include <algorithm>
#include <cstdio>

namespace medicion {

namespace {

double mediana(std::vector<double> tiempos)
{
    std::sort(tiempos.begin(), tiempos.end());
    return tiempos[tiempos.size() / 2];
}

} // namespace

double cronometrar(const std::function<void()> &trabajo)
{
    QElapsedTimer reloj;
    reloj.start();
    trabajo();
    return double(reloj.nsecsElapsed()) / 1e6;
}

void Tabla::comparar(
    const QString &operacion, const std::function<void()> &nuestra, const std::function<void()> &cruda, int veces)
{
    // Once unmeasured: pages read, statements prepared.
    nuestra();
    cruda();
    std::vector<double> nuestras, crudas;
    for (int i = 0; i < veces; ++i) {
        nuestras.push_back(cronometrar(nuestra));
        crudas.push_back(cronometrar(cruda));
    }
    agregar(operacion, mediana(nuestras), mediana(crudas));
}

void Tabla::agregar(const QString &operacion, double nuestra, double cruda)
{
    m_filas.push_back({operacion, nuestra, cruda});
}

void Tabla::imprimir(const QString &titulo) const
{
    std::printf(
        "### %s\n\n| operación | Vastelo (ms) | motor solo (ms) | razón |\n|---|---:|---:|---:|\n",
        qUtf8Printable(titulo));
    for (const Fila &fila : m_filas)
        std::printf(
            "| %s | %.2f | %.2f | %.2f |\n",
            qUtf8Printable(fila.operacion),
            fila.nuestra,
            fila.cruda,
            fila.nuestra / fila.cruda);
    std::printf("\n");
    std::fflush(stdout);
}

} // namespace medicion
