#pragma once

#include <QString>

#include <utility>
#include <vector>

namespace users {

/// The specialties whose consultation forms a user can work with, in the order in which they are offered. The number
/// is what `tipoespecialidadactiva` holds and never changes its meaning.
[[nodiscard]] const std::vector<std::pair<QString, int>> &especialidadesActivas();

} // namespace users
