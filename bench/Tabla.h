#pragma once

#include <QString>

#include <functional>
#include <vector>

namespace medicion {

/// Milliseconds that a piece of work takes.
[[nodiscard]] double cronometrar(const std::function<void()> &trabajo);

/// Times two ways of the same work and prints them side by side, as Markdown.
class Tabla
{
public:
    /// Runs both in turn `veces` times, so that whatever else the computer does meets both, and keeps the medians.
    void comparar(
        const QString &operacion, const std::function<void()> &nuestra, const std::function<void()> &cruda, int veces);
    /// A pair of single times, for what happens once a process.
    void agregar(const QString &operacion, double nuestra, double cruda);

    void imprimir(const QString &titulo) const;

private:
    struct Fila {
        QString operacion;
        double nuestra;
        double cruda;
    };
    std::vector<Fila> m_filas;
};

} // namespace medicion
