#include "agenda/forms/Enlaces.h"

#include <QDesktopServices>
#include <QUrl>

namespace agenda {

bool EnlacesDelSistema::abrir(const QUrl &direccion) { return QDesktopServices::openUrl(direccion); }

} // namespace agenda
