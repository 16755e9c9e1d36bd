#pragma once

#include <QString>

#include <functional>

namespace app {

class Modulo;

/// The start-up sequence, once per run: settings file, first database from the template, network settings, connection,
/// check, upgrade, default professional, companion program.
class Arranque
{
public:
    enum class Destino {
        Sistema, ///< show the main window
        Acceso ///< users must log in first
    };
    /// Starts a program without waiting for it; its absence is not an error.
    using Lanzador = std::function<void(const QString &programa)>;

    Arranque(Modulo &modulo, Lanzador lanzador);

    [[nodiscard]] Destino iniciar();

    /// Starts the program if the file exists, without waiting.
    static void lanzar(const QString &programa);

private:
    void crearSetup();
    void copiarPlantilla();
    void lanzarCompaniero();

    Modulo &m_modulo;
    Lanzador m_lanzador;
};

} // namespace app
