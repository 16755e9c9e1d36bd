#pragma once

#include <QString>

namespace ui {

/// What this computer remembers of a person's way of looking at things (column widths): nothing that the practice would
/// miss. Kept in one ini file that the program names at start; without a file, as in tests, nothing is stored.
class Preferencias
{
public:
    /// An empty path forgets the file.
    static void usarArchivo(const QString &ruta);
    [[nodiscard]] static QString leer(const QString &clave, const QString &sinValor = {});
    /// A file that cannot be written is no reason to disturb anybody.
    static void guardar(const QString &clave, const QString &valor);
};

} // namespace ui
