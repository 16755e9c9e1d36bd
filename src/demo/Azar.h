#pragma once

#include <QtGlobal>

#include <cstddef>

namespace demo {

/// Numbers that look random and are the same on every computer for the same seed (splitmix64). The library's own
/// distributions differ from one to the next.
class Azar
{
public:
    explicit Azar(quint64 semilla)
        : m_estado(semilla)
    {
    }

    quint64 siguiente()
    {
        quint64 z = (m_estado += 0x9e3779b97f4a7c15ull);
        z = (z ^ (z >> 30)) * 0xbf58476d1ce4e5b9ull;
        z = (z ^ (z >> 27)) * 0x94d049bb133111ebull;
        return z ^ (z >> 31);
    }

    /// From `desde` to `hasta`, both included.
    int entre(int desde, int hasta) { return desde + int(siguiente() % quint64(qint64(hasta) - desde + 1)); }
    /// True `veces` times of a thousand.
    bool porMil(int veces) { return entre(0, 999) < veces; }
    bool porCiento(int veces) { return entre(0, 99) < veces; }

    template <typename Lista>
    const auto &uno(const Lista &lista)
    {
        return lista[std::size_t(siguiente() % quint64(std::size(lista)))];
    }

    /// One of a list of pairs {value, weight}.
    template <typename Lista>
    const auto &pesado(const Lista &lista)
    {
        int total = 0;
        for (const auto &par : lista)
            total += par.second;
        int n = entre(0, total - 1);
        for (const auto &par : lista)
            if ((n -= par.second) < 0)
                return par.first;
        return lista[0].first;
    }

private:
    quint64 m_estado;
};

} // namespace demo
