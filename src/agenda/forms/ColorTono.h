#pragma once

#include "agenda/DiaAgenda.h"

#include <QColor>

namespace agenda {

/// The ground on which a row of the day is painted; an invalid colour for none. Light on every palette: letters on it
/// are black.
[[nodiscard]] QColor colorDe(Tono tono);

} // namespace agenda
