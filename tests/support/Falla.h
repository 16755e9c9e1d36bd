#pragma once

#include "db/Error.h"

#include <optional>

namespace soporte {

/// What a call fails with; nothing when it does not, so that a test which expects a failure fails without one.
template <typename Llamada>
std::optional<db::Error> fallaDe(const Llamada &llamada)
{
    try {
        llamada();
    } catch (const db::Error &error) {
        return error;
    }
    return {};
}

} // namespace soporte
