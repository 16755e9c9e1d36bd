#pragma once

#include <QString>

#include <vector>

namespace users {

/// A window that can open by itself when the user begins to work. `numero` is what `ventanainicio` holds and never
/// changes its meaning.
struct VentanaInicio {
    int numero;
    QString ventana; ///< name under which it is registered; empty for none
    QString titulo; ///< as the menu calls it
};

/// All of them in the order in which they are offered; none first.
[[nodiscard]] const std::vector<VentanaInicio> &ventanasInicio();

/// The window of a `ventanainicio`; empty for none and for a number that this version does not know.
[[nodiscard]] QString ventanaInicio(int numero);

} // namespace users
