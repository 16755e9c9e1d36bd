#pragma once

#include <QStringList>

#include <memory>

namespace db {
class Entorno;
}
namespace ui {
class Ventanas;
}

namespace agenda {

class Enlaces;

/// Makes the agenda's windows known under their names. Without `enlaces` the system opens addresses.
void registrarVentanas(db::Entorno &entorno, ui::Ventanas &ventanas, std::shared_ptr<Enlaces> enlaces = nullptr);

/// The windows that show appointments: to be loaded again when one was given or changed; without `menos`, which has
/// done so itself.
[[nodiscard]] QStringList ventanasDeTurnos(const QString &menos = {});
/// The windows that show which days and hours are attended: to be loaded again when those change.
[[nodiscard]] QStringList ventanasDeDiasLibres();

} // namespace agenda
