#pragma once

#include "db/Error.h"

#include <QStringList>

#include <optional>

namespace db::access {

/// The ODBC driver for old Access databases among those installed, whatever its language calls it; the one that also
/// knows the newer format first. Elsewhere than on Windows "MDBTools", good enough to try the reading out, not to carry
/// data over: it loses some.
[[nodiscard]] std::optional<QString> elegirControladorAccess(const QStringList &instalados);

/// What the person is told when there is none: what to install.
[[nodiscard]] Error sinControladorAccess();

/// The text for the driver; it holds the password: never shown, never logged. Throws db::Error for a password or a
/// folder that cannot be written there.
[[nodiscard]] QString conexionAccess(const QString &controlador, const QString &archivo, const QString &clave);

} // namespace db::access
